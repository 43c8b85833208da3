#include "dialogs/statements/statement_files.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "lib/fileutil.h"
#include "lib/replacing_file.h"

namespace kx {
namespace {

constexpr char kSource[] = "interp";
constexpr std::uint32_t kNoWriteLine = 337;

}  // namespace

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
        log->LOGOEMERROR(kSource, kNoWriteLine, "no write");
    }
    return false;
}

}  // namespace kx
