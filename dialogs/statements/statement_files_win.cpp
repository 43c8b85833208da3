// Statement files on disk: read, written in place of the old one, and told apart by time and size.
#include <windows.h>

#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_files.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "lib/fileutil.h"
#include "lib/replacing_file.h"

namespace kx {
namespace {

static_assert(kPathSize == MAX_PATH);
constexpr std::uint32_t kNoWriteLine = 337;

std::uint64_t Joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

}  // namespace

bool PathBesideLibrary(HINSTANCE__* module, const char* fileName, std::uint32_t line, Reporter& log,
                       char (&path)[kPathSize]) {
    char modulePath[MAX_PATH] = {};
    // The last byte stays 0 where the system cuts a path without terminating it.
    GetModuleFileNameA(module, modulePath, sizeof modulePath - 1);
    if (StatementFilePath(modulePath, fileName, path, sizeof path)) {
        return true;
    }
    log.LOGOEMERROR(kInterpSource, line, modulePath);
    return false;
}

FileStamp StampOf(const char* path) {
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (GetFileAttributesExA(path, GetFileExInfoStandard, &found) == FALSE) {
        return {};
    }
    return {Joined(found.ftCreationTime.dwHighDateTime, found.ftCreationTime.dwLowDateTime),
            Joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime),
            Joined(found.nFileSizeHigh, found.nFileSizeLow)};
}

bool ReadStatementFile(const char* path, StatementLibrary& library, Reporter* log) {
    DataFile file;
    // Without a name the reading fails and says so.
    file.SetName(path);
    return StatementReader(log).Read(file, library);
}

bool WriteStatementFile(const char* path, const StatementLibrary& library, Reporter* log) {
    ReplacingFile file(path != nullptr ? path : "");
    WriteStatements(library, file);
    if (file.Commit()) {
        return true;
    }
    if (log != nullptr) {
        log->LOGOEMERROR(kInterpSource, kNoWriteLine, "no write");
    }
    return false;
}

}  // namespace kx
