// One file of the archive: its schema, and rows in and out. The archive keeps two of them alike (archive.h).
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "suite/kxdb/archive/sqlite.h"

namespace kx::db {

// Newer than this program knows: it is left alone.
class ArchiveTooNew : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What lists show of a test and search in it.
struct ListingRow {
    std::int64_t id = 0;
    std::int64_t sequence = 0;  // the number of the save, over all tests and persons; larger is later
    std::int64_t revision = 0;
    bool deleted = false;   // a deleted test stays as a row without a block, so that both files learn of it
    std::int64_t time = 0;  // yyyymmddhhmmss
    std::string name;       // folded, to sort by
    std::string patientId;  // folded
    std::int64_t state = 0;
    std::int64_t testType = 0;
    std::string words;  // folded, what search looks in
    std::string entry;  // the KxTestListEntry without the zeros at its end
    std::string savedBy;
    std::int64_t savedAt = 0;  // yyyymmddhhmmss
};

struct TestRow {
    ListingRow listing;
    std::string source;  // UTF-8
    std::string block;
};

enum class Role : std::int64_t { kTechnician = 0, kPhysician = 1 };

struct StaffRow {
    std::int64_t id = 0;
    std::int64_t sequence = 0;
    bool deleted = false;
    Role role = Role::kTechnician;
    std::string record;  // a TechnicianRecord or PhysicianRecord
};

class ArchiveFile {
  public:
    // Opens or makes the file; an older schema is brought forward. Throws SqliteError, ArchiveTooNew.
    explicit ArchiveFile(const std::filesystem::path& file, bool durable = true);

    Database& Connection() { return database_; }
    // Whether this file has just been made.
    bool IsNew() const { return isNew_; }
    // The number of the last save; 0 before the first.
    std::int64_t Sequence();

    // Puts a row in; one that is there gives way to a later save alone.
    void Put(const TestRow& row);
    void Put(const StaffRow& row);
    std::int64_t NextTestId();
    std::int64_t NextStaffId();

    std::optional<ListingRow> FindListing(std::int64_t id);
    std::optional<TestRow> FindTest(std::int64_t id);
    std::optional<StaffRow> FindStaff(std::int64_t id);
    std::vector<StaffRow> Staff(Role role);

    // Everything that was saved in `from` after the last save here, in one transaction.
    void CatchUp(ArchiveFile& from);

  private:
    void Migrate();

    Database database_;
    bool isNew_ = false;
};

}  // namespace kx::db
