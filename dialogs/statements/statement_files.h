// Which statement file belongs to a test, where it stands, and how it is read and replaced.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dialogs/statements/statement_library.h"
#include "lib/reporter.h"

// Declared as <windows.h> does, which the portable half is not to include.
struct HINSTANCE__;

namespace kx {

// Of a path with its terminator, as the system counts it (MAX_PATH).
inline constexpr std::size_t kPathSize = 260;

enum class StatementUse {
    kLibrary,     // the comment library and the typing completion
    kDictionary,  // the dialog that maintains the file, which also knows the high-resolution test
};

// The name of the statement file of a test type (KX_TEST_...), with the backslash before it; null for a type
// that has none in that use.
const char* StatementFileName(std::uint32_t testType, StatementUse use);

// Puts fileName, a backslash and a name, behind the directory of the module: modulePath up to its last
// backslash. False, and an empty path, when modulePath has no backslash or the result does not fit.
bool StatementFilePath(std::string_view modulePath, std::string_view fileName, char* path, std::size_t size);

// The same for a loaded module. False: reported as the module's path with the source "interp" and the line.
bool PathBesideLibrary(HINSTANCE__* module, const char* fileName, std::uint32_t line, Reporter& log,
                       char (&path)[kPathSize]);

// Of a file on the disk: what differs once somebody has saved it. All zeros where there is no file.
struct FileStamp {
    std::uint64_t created = 0;  // in the system's own units, as the next
    std::uint64_t written = 0;
    std::uint64_t size = 0;  // bytes

    bool operator==(const FileStamp&) const = default;
};
FileStamp StampOf(const char* path);

// Reads the file at path. False, with the report "no read" to log and an empty library, when it cannot be
// read.
bool ReadStatementFile(const char* path, StatementLibrary& library, Reporter* log);

// Writes the library in place of the file at path, or as a new file. False, with the report "no write" to
// log, when that fails for whatever reason; the file that was there is then unchanged.
bool WriteStatementFile(const char* path, const StatementLibrary& library, Reporter* log);

}  // namespace kx
