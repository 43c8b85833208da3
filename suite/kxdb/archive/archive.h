// The suite's archive of tests and staff: a data base file, and a copy beside it that is kept alike, so that
// a damaged page of one is mended from the other. Portable.
//
// A save is one transaction, on the disk when it returns; killed at any instant the archive holds every save
// that returned and none by halves. Every page carries a checksum, so damage is found when it is read. A file
// that is damaged is put aside under a name of its own (archive.kxdb.damaged-N) and made anew from its copy,
// which the log tells.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "lib/modules/archive_records.h"
#include "lib/reporter.h"
#include "suite/kxdb/archive/archive_file.h"
#include "suite/kxdb/archive/catalogue.h"

namespace kx::db {

// Who saves and when, yyyymmddhhmmss.
struct Saver {
    std::string name;
    std::int64_t time = 0;
};

// What became of a save.
struct SaveResult {
    ArchiveAnswer answer = kArchiveNotDone;
    ListingRow stored;  // what stands in the archive now; for kArchiveChanged the other's save
};

class Archive {
  public:
    // Opens or makes the archive. Throws SqliteError, ArchiveTooNew, std::runtime_error for a file that is
    // something else. `log` outlives the archive.
    Archive(const std::filesystem::path& file, Reporter& log);

    // Whether the file has just been made.
    bool IsNew() const { return isNew_; }

    // The row without id, sequence and revision, which are given here.
    SaveResult Add(TestRow row, const Saver& saver);
    // In place of the revision that row.listing names; the source of the first save stays.
    SaveResult Update(TestRow row, const Saver& saver);
    SaveResult Delete(std::int64_t id, std::int64_t revision, const Saver& saver);
    // None for a deleted test as well.
    std::optional<TestRow> Fetch(std::int64_t id);

    std::int64_t Count(const ArchiveFilter& filter);
    std::vector<ListingRow> List(const ArchiveFilter& filter, ArchiveOrder order, std::int64_t first,
                                 std::int64_t capacity);

    std::vector<StaffRow> Staff(Role role);
    // New people, in one transaction; their ids are given here.
    void AddStaff(std::vector<StaffRow> people);
    // A row with id 0 is added, another replaced or deleted; none when there is no such person of that role.
    std::optional<StaffRow> SaveStaff(StaffRow row);

  private:
    using Work = std::function<void(ArchiveFile&)>;
    // A search; the tests that the last one found stand in matches_.
    struct Search {
        std::vector<std::string> words;  // folded
        std::int64_t from = 0;           // of the time, and the first outside
        std::int64_t to = 0;
        std::int64_t sequence = -1;
        ArchiveOrder order = kArchiveNewestFirst;

        bool operator==(const Search&) const = default;
    };

    static bool Passes(const ArchiveFilter& filter, const Catalogue::Row& match);
    // Places in the catalogue's rows.
    const std::vector<std::uint32_t>& Matches(ArchiveFile& file, const ArchiveFilter& filter,
                                              ArchiveOrder order);

    SaveResult Replace(TestRow row, const Saver& saver);
    // Runs `work` on the file, which is mended from its copy and asked again when it proves damaged.
    void Read(const Work& work);
    // Runs `work` inside one transaction and carries what it saved to the copy before another program can
    // write.
    void Write(const Work& work);
    // The copy need not be as durable: after a loss of power it is brought up from the file.
    bool OpenOrMend(std::optional<ArchiveFile>& file, const std::filesystem::path& path, bool durable);
    void PutAside(const std::filesystem::path& path);
    void MendMain();
    void BringCopyUp();

    std::filesystem::path mainPath_;
    std::filesystem::path copyPath_;
    Reporter& log_;
    std::optional<ArchiveFile> main_;
    std::optional<ArchiveFile>
        copy_;  // none while it cannot be written: the log says so, the next save tries again
    bool isNew_ = false;
    Catalogue catalogue_;
    Search search_;
    std::vector<std::uint32_t> matches_;
};

}  // namespace kx::db
