#include "dialogs/interpretation/completion_entries.h"

#include "dialogs/interpretation/interp_report.h"
#include "dialogs/interpretation/library_folder.h"
#include "dialogs/interpretation/staff_list.h"
#include "dialogs/statements/statement_files.h"

namespace kx {
namespace {

constexpr std::uint32_t kManyPhysiciansLine = 1049;
constexpr StaffListLines kPhysicianLines{1059, 1061};
constexpr std::uint32_t kTestTypeLine = 1071;
constexpr std::uint32_t kNoFolderLine = 1076;
constexpr std::uint32_t kNoReadLine = 1099;

constexpr std::size_t kNameSize = 512;

}  // namespace

void AddStatementEntries(HMODULE module, std::uint32_t testType, StatementMatcher& matcher, Reporter& log) {
    const char* const fileName = StatementFileName(testType, StatementUse::kLibrary);
    if (fileName == nullptr) {
        log.LOGOEMERROR(kInterpSource, kTestTypeLine, "ptype invalid and !is_phys");
        return;
    }
    char path[MAX_PATH];
    if (!PathBesideLibrary(module, fileName, kNoFolderLine, log, path)) {
        return;
    }
    StatementLibrary statements;
    if (!ReadStatementFile(path, statements, &log)) {
        log.LOGOEMERROR(kInterpSource, kNoReadLine, "no read");
        return;
    }
    matcher.AddStatements(statements, &log);
}

void AddPhysicianEntries(StatementMatcher& matcher, Reporter& log) {
    const StaffList<PhysicianRecord> physicians = ListPhysicians(kPhysicianLines, log);
    if (physicians.reported > kStaffListCapacity) {
        log.LOGOEMERROR(kInterpSource, kManyPhysiciansLine, "string limit 1024");
    }
    char name[kNameSize];
    for (std::uint32_t i = 0; i < physicians.count; ++i) {
        if (!IsNameless(physicians.records[i])) {
            matcher.Add({name, DisplayName(physicians.records[i], name, sizeof name)}, {});
        }
    }
}

}  // namespace kx
