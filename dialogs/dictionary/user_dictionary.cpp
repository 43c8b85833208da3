#include "dialogs/dictionary/user_dictionary.h"

#include <windows.h>

#include "dialogs/dialog_library.h"
#include "dialogs/dictionary/user_dictionary_dialog.h"
#include "dialogs/statements/statement_files.h"

namespace kx {
namespace {

constexpr char kSource[] = "interp";
constexpr std::uint32_t kNoFolderLine = 1687;
constexpr std::uint32_t kNoFileLine = 1697;

}  // namespace

bool EditUserDictionary(const DialogLibrary& library, Window* owner, std::uint32_t testType) {
    char module[MAX_PATH] = {};
    char path[MAX_PATH];
    // Without a handle the system would tell the program's own path.
    if (library.instance.Handle() != nullptr) {
        GetModuleFileNameA(library.instance.Handle(), module, sizeof module);
    }
    const char* const name = StatementFileName(testType, StatementUse::kDictionary);
    if (!StatementFilePath(module, name != nullptr ? name : "", path, sizeof path)) {
        library.Reports().LOGOEMERROR(kSource, kNoFolderLine, module);
        return false;
    }
    if (name == nullptr) {
        library.Reports().LOGOEMERROR(kSource, kNoFileLine, "ptype");
        return false;
    }
    const ActivationScope controls(library.Controls());
    return UserDictionaryDialog(library, owner, path, library.Services()).Run();
}

}  // namespace kx
