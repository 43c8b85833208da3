#include "suite/kxdb/archive/archive.h"

#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace kx::db {

using namespace std::string_view_literals;

namespace {

constexpr char kSource[] = "archive.kxdb";
constexpr std::uint32_t kMendedLine = 1;
constexpr std::uint32_t kCopyLostLine = 2;

std::filesystem::path Beside(const std::filesystem::path& file, const char* suffix) {
    std::filesystem::path name = file;
    return name += suffix;
}

// A file that never was an archive: it is not to be put aside as a damaged one. One with its copy beside it
// was.
bool IsSomethingElse(const std::filesystem::path& file, const std::filesystem::path& copy) {
    constexpr std::string_view kBeginning = "SQLite format 3\0"sv;
    std::ifstream stream(file, std::ios::binary);
    std::string beginning(kBeginning.size(), '\0');
    stream.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    return stream.gcount() > 0 &&
           beginning.substr(0, static_cast<std::size_t>(stream.gcount())) != kBeginning &&
           !std::filesystem::exists(copy);
}

// The first of archive.kxdb.damaged-1, -2, … that is free.
std::filesystem::path NameForDamaged(const std::filesystem::path& file) {
    for (int number = 1;; ++number) {
        std::filesystem::path name = Beside(file, (".damaged-" + std::to_string(number)).c_str());
        if (!std::filesystem::exists(name)) {
            return name;
        }
    }
}

}  // namespace

Archive::Archive(const std::filesystem::path& file, Reporter& log)
    : mainPath_(file), copyPath_(Beside(file, "-copy")), log_(log) {
    if (IsSomethingElse(mainPath_, copyPath_)) {
        throw std::runtime_error("il file non \xE8 un archivio");
    }
    const bool mainOpens = OpenOrMend(main_, mainPath_, true);
    isNew_ = mainOpens && main_->IsNew();
    BringCopyUp();
    // A main file that was lost, emptied or damaged gets back what the copy still holds.
    if (copy_ && copy_->Sequence() > main_->Sequence()) {
        main_->CatchUp(*copy_);
        log_.LOGOEMERROR(kSource, kMendedLine, "archivio ripristinato dalla copia");
        isNew_ = false;
    }
}

// Opens the file; one that is damaged is put aside and begun anew. Whether it was whole.
bool Archive::OpenOrMend(std::optional<ArchiveFile>& file, const std::filesystem::path& path, bool durable) {
    try {
        file.emplace(path, durable);
        file->Sequence();
        return true;
    } catch (const SqliteError& failure) {
        if (!failure.IsDamage()) {
            throw;
        }
    }
    file.reset();
    PutAside(path);
    file.emplace(path, durable);
    return false;
}

void Archive::PutAside(const std::filesystem::path& path) {
    const std::filesystem::path aside = NameForDamaged(path);
    for (const char* part : {"", "-wal", "-shm"}) {
        std::error_code absent;
        std::filesystem::rename(Beside(path, part), Beside(aside, part), absent);
    }
    log_.LOGOEMERROR(kSource, kMendedLine,
                     ("archivio danneggiato, messo da parte: " + aside.filename().string()).c_str());
}

void Archive::MendMain() {
    if (!copy_) {
        BringCopyUp();
    }
    main_.reset();
    PutAside(mainPath_);
    main_.emplace(mainPath_);
    if (copy_) {
        main_->CatchUp(*copy_);
    }
}

// What the copy has not got yet. It may fail where the save itself did not: the next one makes up for it.
void Archive::BringCopyUp() {
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            if (!copy_) {
                OpenOrMend(copy_, copyPath_, false);
            }
            copy_->CatchUp(*main_);
            return;
        } catch (const SqliteError& failure) {
            copy_.reset();
            if (!failure.IsDamage() || attempt > 0) {
                log_.LOGOEMERROR(
                    kSource, kCopyLostLine,
                    (std::string("copia dell'archivio non aggiornata: ") + failure.what()).c_str());
                return;
            }
            PutAside(copyPath_);
        }
    }
}

void Archive::Read(const Work& work) {
    try {
        work(*main_);
    } catch (const SqliteError& failure) {
        if (!failure.IsDamage()) {
            throw;
        }
        MendMain();
        work(*main_);
    }
}

void Archive::Write(const Work& work) {
    Read([&work](ArchiveFile& file) {
        Transaction transaction(file.Connection());
        work(file);
        transaction.Commit();
    });
    BringCopyUp();
}

SaveResult Archive::Add(TestRow row, const Saver& saver) {
    Write([&](ArchiveFile& file) {
        row.listing.id = file.NextTestId();
        row.listing.sequence = file.Sequence() + 1;
        row.listing.revision = 1;
        row.listing.savedBy = saver.name;
        row.listing.savedAt = saver.time;
        file.Put(row);
    });
    return {kArchiveDone, std::move(row.listing)};
}

SaveResult Archive::Replace(TestRow row, const Saver& saver) {
    SaveResult result;
    Write([&](ArchiveFile& file) {
        const std::optional<TestRow> stored = file.FindTest(row.listing.id);
        if (!stored || stored->listing.deleted) {
            result.answer = kArchiveAbsent;
            return;
        }
        if (stored->listing.revision != row.listing.revision) {
            result = {kArchiveChanged, stored->listing};
            return;
        }
        TestRow next = row;
        if (next.listing.deleted) {
            next.listing = stored->listing;
            next.listing.deleted = true;
        }
        next.listing.sequence = file.Sequence() + 1;
        next.listing.revision = stored->listing.revision + 1;
        next.listing.savedBy = saver.name;
        next.listing.savedAt = saver.time;
        next.source = stored->source;
        file.Put(next);
        result = {kArchiveDone, next.listing};
    });
    return result;
}

SaveResult Archive::Update(TestRow row, const Saver& saver) {
    row.listing.deleted = false;
    return Replace(std::move(row), saver);
}

SaveResult Archive::Delete(std::int64_t id, std::int64_t revision, const Saver& saver) {
    TestRow row;
    row.listing.id = id;
    row.listing.revision = revision;
    row.listing.deleted = true;
    return Replace(std::move(row), saver);
}

std::optional<TestRow> Archive::Fetch(std::int64_t id) {
    std::optional<TestRow> test;
    Read([&](ArchiveFile& file) { test = file.FindTest(id); });
    return test && !test->listing.deleted ? test : std::nullopt;
}

std::vector<StaffRow> Archive::Staff(Role role) {
    std::vector<StaffRow> staff;
    Read([&](ArchiveFile& file) { staff = file.Staff(role); });
    return staff;
}

void Archive::AddStaff(std::vector<StaffRow> people) {
    Write([&](ArchiveFile& file) {
        std::int64_t id = file.NextStaffId();
        const std::int64_t sequence = file.Sequence() + 1;
        for (StaffRow& person : people) {
            person.id = id++;
            person.sequence = sequence;
            file.Put(person);
        }
    });
}

std::optional<StaffRow> Archive::SaveStaff(StaffRow row) {
    bool done = false;
    Write([&](ArchiveFile& file) {
        if (row.id == 0) {
            row.id = file.NextStaffId();
        } else {
            const std::optional<StaffRow> stored = file.FindStaff(row.id);
            if (!stored || stored->deleted || stored->role != row.role) {
                return;
            }
        }
        row.sequence = file.Sequence() + 1;
        file.Put(row);
        done = true;
    });
    return done ? std::optional(row) : std::nullopt;
}

}  // namespace kx::db
