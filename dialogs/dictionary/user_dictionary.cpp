#include "dialogs/dictionary/user_dictionary.h"

#include <windows.h>

#include "dialogs/dialog_library.h"
#include "dialogs/dictionary/user_dictionary_dialog.h"
#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_files.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoFolderLine = 1687;
constexpr std::uint32_t kTestTypeLine = 1697;

}  // namespace

bool EditUserDictionary(const DialogLibrary& library, Window* owner, std::uint32_t testType) {
    const char* const fileName = StatementFileName(testType, StatementUse::kDictionary);
    char path[MAX_PATH];
    // A module without a folder is reported before a type without a file.
    if (!PathBesideLibrary(library.instance.Handle(), fileName != nullptr ? fileName : "", kNoFolderLine,
                           library.Reports(), path)) {
        return false;
    }
    if (fileName == nullptr) {
        library.Reports().LOGOEMERROR(kInterpSource, kTestTypeLine, "ptype");
        return false;
    }
    const ActivationScope controls(library.Controls());
    return UserDictionaryDialog(library, owner, path, library.Services()).Run();
}

}  // namespace kx
