#include "suite/kxdb/archive/archive_file.h"

namespace kx::db {

namespace {

constexpr std::int64_t kSchemaVersion = 1;

// Lists scan the two indexes alone, which hold all that a filter asks for; the blocks lie apart, so that no
// list reads them.
constexpr char kSchema[] =
    "CREATE TABLE tests (id INTEGER PRIMARY KEY, sequence INTEGER NOT NULL, revision INTEGER NOT NULL,"
    " deleted INTEGER NOT NULL, time INTEGER NOT NULL, name TEXT NOT NULL, patient TEXT NOT NULL,"
    " state INTEGER NOT NULL, type INTEGER NOT NULL, words TEXT NOT NULL, entry BLOB NOT NULL,"
    " saved_by BLOB NOT NULL, saved_at INTEGER NOT NULL);"
    "CREATE TABLE blocks (id INTEGER PRIMARY KEY, source TEXT NOT NULL, block BLOB NOT NULL);"
    "CREATE TABLE staff (id INTEGER PRIMARY KEY, sequence INTEGER NOT NULL, deleted INTEGER NOT NULL,"
    " role INTEGER NOT NULL, record BLOB NOT NULL);"
    "CREATE INDEX tests_by_time ON tests (deleted, time, id, state, type, words);"
    "CREATE INDEX tests_by_name ON tests (deleted, name, time, id, state, type, words);"
    "CREATE INDEX tests_by_patient ON tests (deleted, patient, time, id, state, type, words);"
    "CREATE INDEX tests_by_state ON tests (deleted, state, type);"
    "CREATE INDEX tests_by_sequence ON tests (sequence);"
    "CREATE INDEX staff_by_sequence ON staff (sequence);"
    "PRAGMA user_version = 1;";

constexpr char kListingColumns[] =
    "id, sequence, revision, deleted, time, name, patient, state, type, words, entry, saved_by, saved_at";

ListingRow ReadListing(const Statement& row) {
    ListingRow listing;
    listing.id = row.Number(0);
    listing.sequence = row.Number(1);
    listing.revision = row.Number(2);
    listing.deleted = row.Number(3) != 0;
    listing.time = row.Number(4);
    listing.name = row.Text(5);
    listing.patientId = row.Text(6);
    listing.state = row.Number(7);
    listing.testType = row.Number(8);
    listing.words = row.Text(9);
    listing.entry = row.Block(10);
    listing.savedBy = row.Block(11);
    listing.savedAt = row.Number(12);
    return listing;
}

StaffRow ReadStaff(const Statement& row) {
    return {row.Number(0), row.Number(1), row.Number(2) != 0, static_cast<Role>(row.Number(3)),
            std::string(row.Block(4))};
}

}  // namespace

ArchiveFile::ArchiveFile(const std::filesystem::path& file, bool durable) : database_(file, durable) {
    Migrate();
}

// Each version of the schema brings the one before it forward; there has been one so far.
void ArchiveFile::Migrate() {
    std::int64_t version = database_.Number("PRAGMA user_version");
    if (version == 0) {
        Transaction transaction(database_);
        version = database_.Number("PRAGMA user_version");  // another program may have been faster
        if (version == 0) {
            database_.Execute(kSchema);
            isNew_ = true;
            version = kSchemaVersion;
        }
        transaction.Commit();
    }
    if (version > kSchemaVersion) {
        throw ArchiveTooNew("the archive was made by a newer version (" + std::to_string(version) + ")");
    }
}

std::int64_t ArchiveFile::Sequence() {
    return database_.Number(
        "SELECT max(ifnull((SELECT max(sequence) FROM tests), 0),"
        " ifnull((SELECT max(sequence) FROM staff), 0))");
}

void ArchiveFile::Put(const TestRow& row) {
    const ListingRow& l = row.listing;
    Statement tests = database_.Prepare(
        "INSERT INTO tests VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)"
        " ON CONFLICT (id) DO UPDATE SET sequence = ?2, revision = ?3, deleted = ?4, time = ?5, name = ?6,"
        " patient = ?7, state = ?8, type = ?9, words = ?10, entry = ?11, saved_by = ?12, saved_at = ?13"
        " WHERE sequence < ?2");
    tests.Bind(1, l.id)
        .Bind(2, l.sequence)
        .Bind(3, l.revision)
        .Bind(4, std::int64_t{l.deleted})
        .Bind(5, l.time);
    tests.Bind(6, l.name).Bind(7, l.patientId).Bind(8, l.state).Bind(9, l.testType).Bind(10, l.words);
    tests.BindBlock(11, l.entry).BindBlock(12, l.savedBy).Bind(13, l.savedAt).Run();
    if (l.deleted) {
        database_.Prepare("DELETE FROM blocks WHERE id = ?").Bind(1, l.id).Run();
        return;
    }
    database_.Prepare("INSERT OR REPLACE INTO blocks VALUES (?, ?, ?)")
        .Bind(1, l.id)
        .Bind(2, std::string_view(row.source))
        .BindBlock(3, row.block)
        .Run();
}

void ArchiveFile::Put(const StaffRow& row) {
    database_
        .Prepare(
            "INSERT INTO staff VALUES (?1, ?2, ?3, ?4, ?5) ON CONFLICT (id) DO UPDATE SET sequence = ?2,"
            " deleted = ?3, role = ?4, record = ?5 WHERE sequence < ?2")
        .Bind(1, row.id)
        .Bind(2, row.sequence)
        .Bind(3, std::int64_t{row.deleted})
        .Bind(4, static_cast<std::int64_t>(row.role))
        .BindBlock(5, row.record)
        .Run();
}

std::int64_t ArchiveFile::NextTestId() {
    return database_.Number("SELECT ifnull(max(id), 0) + 1 FROM tests");
}

std::int64_t ArchiveFile::NextStaffId() {
    return database_.Number("SELECT ifnull(max(id), 0) + 1 FROM staff");
}

std::optional<ListingRow> ArchiveFile::FindListing(std::int64_t id) {
    Statement row = database_.Prepare(std::string("SELECT ") + kListingColumns + " FROM tests WHERE id = ?");
    row.Bind(1, id);
    return row.Step() ? std::optional(ReadListing(row)) : std::nullopt;
}

std::optional<TestRow> ArchiveFile::FindTest(std::int64_t id) {
    std::optional<ListingRow> listing = FindListing(id);
    if (!listing) {
        return std::nullopt;
    }
    TestRow test{std::move(*listing), {}, {}};
    Statement row = database_.Prepare("SELECT source, block FROM blocks WHERE id = ?");
    if (row.Bind(1, id).Step()) {
        test.source = row.Text(0);
        test.block = row.Block(1);
    }
    return test;
}

std::optional<StaffRow> ArchiveFile::FindStaff(std::int64_t id) {
    Statement row = database_.Prepare("SELECT id, sequence, deleted, role, record FROM staff WHERE id = ?");
    return row.Bind(1, id).Step() ? std::optional(ReadStaff(row)) : std::nullopt;
}

std::vector<StaffRow> ArchiveFile::Staff(Role role) {
    std::vector<StaffRow> staff;
    Statement row = database_.Prepare(
        "SELECT id, sequence, deleted, role, record FROM staff WHERE role = ? AND deleted = 0 ORDER BY id");
    row.Bind(1, static_cast<std::int64_t>(role));
    while (row.Step()) {
        staff.push_back(ReadStaff(row));
    }
    return staff;
}

void ArchiveFile::CatchUp(ArchiveFile& from) {
    Transaction transaction(database_);
    // A save between the tests and the staff would be passed over for ever.
    Transaction snapshot(from.database_, Transaction::Purpose::kRead);
    const std::int64_t last = Sequence();
    Statement tests = from.database_.Prepare("SELECT id FROM tests WHERE sequence > ?");
    tests.Bind(1, last);
    while (tests.Step()) {
        Put(*from.FindTest(tests.Number(0)));
    }
    Statement staff =
        from.database_.Prepare("SELECT id, sequence, deleted, role, record FROM staff WHERE sequence > ?");
    staff.Bind(1, last);
    while (staff.Step()) {
        Put(ReadStaff(staff));
    }
    transaction.Commit();
}

}  // namespace kx::db
