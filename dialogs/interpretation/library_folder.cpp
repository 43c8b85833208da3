#include "dialogs/interpretation/library_folder.h"

#include "dialogs/interpretation/interp_report.h"
#include "dialogs/statements/statement_files.h"

namespace kx {

bool PathBesideLibrary(HMODULE module, const char* fileName, std::uint32_t line, Reporter& log,
                       char (&path)[MAX_PATH]) {
    char modulePath[MAX_PATH] = {};
    // The last byte stays 0 where the system cuts a path without terminating it.
    GetModuleFileNameA(module, modulePath, sizeof modulePath - 1);
    if (StatementFilePath(modulePath, fileName, path, sizeof path)) {
        return true;
    }
    log.LOGOEMERROR(kInterpSource, line, modulePath);
    return false;
}

}  // namespace kx
