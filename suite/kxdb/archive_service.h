// The archive as the module's exports use it: which file, opened when it is first asked for, and no exception
// beyond.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "include/kxdialogs.h"
#include "lib/modules/archive_records.h"
#include "lib/modules/database_records.h"
#include "lib/reporter.h"
#include "suite/kxdb/archive/archive.h"
#include "suite/kxdb/staff_list.h"

namespace kx::db {

class ArchiveService {
  public:
    // Which file it is, made at first use, and the staff that a new one begins with; asked for at each
    // opening.
    struct Settings {
        std::filesystem::path file;
        StaffList staff;
    };
    using AskSettings = Settings (*)(Reporter&);

    // `log` outlives the service.
    ArchiveService(AskSettings settings, Reporter& log) : settings_(settings), log_(log) {}

    bool Opens();                                // CONFIG: whether there is an archive to work with
    void Close() noexcept { archive_.reset(); }  // RESET: the next use opens what is set then

    ArchiveAnswer Add(ArchivedTest* test);
    ArchiveAnswer Update(ArchivedTest* test);
    ArchiveAnswer Delete(ArchivedTest* test);
    ArchiveAnswer Fetch(ArchivedTest* test);
    // How many entries were written; without a buffer, how many tests the filter lets through.
    std::uint32_t List(const ArchiveFilter* filter, std::uint32_t order, std::uint32_t first,
                       KxTestListEntry* buffer, std::uint32_t capacity);

    std::uint32_t ListTechnicians(std::uint32_t first, TechnicianRecord* buffer, std::uint32_t capacity);
    std::uint32_t ListPhysicians(std::uint32_t first, PhysicianRecord* buffer, std::uint32_t capacity);
    // 1 done, 0 not. The first reserved word of the record is the person's id, 0 and then set for a new one.
    std::uint32_t SaveTechnician(TechnicianRecord* record, bool isNew, bool deleted);
    std::uint32_t SavePhysician(PhysicianRecord* record, bool isNew, bool deleted);

  private:
    Archive& Opened();
    template <class Work>
    ArchiveAnswer Answer(ArchivedTest* test, Work work);
    ArchiveAnswer Save(ArchivedTest* test, bool isNew);
    template <class Record>
    std::uint32_t ListStaff(Role role, std::uint32_t first, Record* buffer, std::uint32_t capacity);
    template <class Record>
    std::uint32_t SavePerson(Role role, Record* record, bool isNew, bool deleted);
    std::string Reason();

    AskSettings settings_;
    Reporter& log_;
    std::unique_ptr<Archive> archive_;
};

}  // namespace kx::db
