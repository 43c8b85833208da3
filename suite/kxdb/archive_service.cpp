#include "suite/kxdb/archive_service.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <system_error>

#include "lib/timestmp.h"
#include "suite/kxdb/archive/listing.h"

namespace kx::db {

namespace {

constexpr char kSource[] = "archive.kxdb";
constexpr std::uint32_t kFailedLine = 3;

template <std::size_t N>
std::string TextOf(const char (&field)[N]) {
    return {field, strnlen(field, N)};
}

template <std::size_t N>
void SetText(char (&field)[N], std::string_view text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), length);
}

std::uint32_t IdOf(const std::uint8_t (&reserved)[20]) {
    std::uint32_t id;
    std::memcpy(&id, reserved, sizeof id);
    return id;
}

template <class Record>
std::string BytesOf(const Record& record) {
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

void TakeStored(const ListingRow& row, ArchivedTest& test) {
    test.id = static_cast<std::uint32_t>(row.id);
    test.revision = static_cast<std::uint32_t>(row.revision);
    SetText(test.savedBy, row.savedBy);
    const KxDateTime time = TimeOf(row.savedAt);
    std::memcpy(test.savedAt, &time, sizeof time);
}

const char* WordsOf(TestBlockFault fault) {
    switch (fault) {
        case TestBlockFault::kNewer:
            return "l'esame viene da una versione pi\xF9 recente";
        case TestBlockFault::kNoMemory:
            return "memoria insufficiente";
        default:
            return "il blocco dell'esame non \xE8 intero";
    }
}

}  // namespace

Archive& ArchiveService::Opened() {
    if (archive_ == nullptr) {
        const Settings settings = settings_(log_);
        std::error_code failed;
        std::filesystem::create_directories(settings.file.parent_path(), failed);
        archive_ = std::make_unique<Archive>(settings.file, log_);
        if (archive_->IsNew()) {
            std::vector<StaffRow> people;
            for (const TechnicianRecord& one : settings.staff.technicians) {
                people.push_back({0, 0, false, Role::kTechnician, BytesOf(one)});
            }
            for (const PhysicianRecord& one : settings.staff.physicians) {
                people.push_back({0, 0, false, Role::kPhysician, BytesOf(one)});
            }
            archive_->AddStaff(std::move(people));
        }
    }
    return *archive_;
}

// Why the work could not be done, in the words of the user; called in a handler.
std::string ArchiveService::Reason() {
    std::string reason;
    try {
        throw;
    } catch (const SqliteError& failure) {
        reason = failure.IsFull()     ? "il disco \xE8 pieno"
                 : failure.IsBusy()   ? "l'archivio \xE8 occupato da un altro programma"
                 : failure.IsDamage() ? "l'archivio \xE8 danneggiato"
                                      : "l'archivio non si pu\xF2 aprire o scrivere";
        reason += std::string(" (") + failure.what() + ")";
    } catch (const ArchiveTooNew&) {
        reason = "l'archivio viene da una versione pi\xF9 recente";
    } catch (const std::bad_alloc&) {
        reason = "memoria insufficiente";
    } catch (const std::exception& failure) {
        reason = failure.what();
    }
    log_.LOGOEMERROR(kSource, kFailedLine, reason.c_str());
    return reason;
}

bool ArchiveService::Opens() {
    try {
        Opened();
        return true;
    } catch (...) {
        Reason();
        return false;
    }
}

template <class Work>
ArchiveAnswer ArchiveService::Answer(ArchivedTest* test, Work work) {
    if (test == nullptr || test->size < sizeof *test) {
        return kArchiveNotDone;
    }
    test->problem[0] = '\0';
    try {
        return work(Opened());
    } catch (...) {
        SetText(test->problem, Reason());
        return kArchiveNotDone;
    }
}

ArchiveAnswer ArchiveService::Save(ArchivedTest* test, bool isNew) {
    return Answer(test, [&](Archive& archive) {
        TestRow row;
        const std::span block(static_cast<const std::uint8_t*>(test->block),
                              test->block != nullptr ? test->blockSize : 0);
        const TestBlockFault fault = DescribeTest(block, row);
        if (fault != TestBlockFault::kNone) {
            SetText(test->problem, WordsOf(fault));
            return kArchiveNotDone;
        }
        const Saver saver{TextOf(test->savedBy), NumberOf(DateTime())};
        row.source = TextOf(test->source);
        row.listing.id = test->id;
        row.listing.revision = test->revision;
        const SaveResult saved =
            isNew ? archive.Add(std::move(row), saver) : archive.Update(std::move(row), saver);
        if (saved.answer != kArchiveAbsent) {
            TakeStored(saved.stored, *test);
        }
        return saved.answer;
    });
}

ArchiveAnswer ArchiveService::Add(ArchivedTest* test) {
    return Save(test, true);
}

ArchiveAnswer ArchiveService::Update(ArchivedTest* test) {
    return Save(test, false);
}

ArchiveAnswer ArchiveService::Delete(ArchivedTest* test) {
    return Answer(test, [&](Archive& archive) {
        const SaveResult deleted =
            archive.Delete(test->id, test->revision, {TextOf(test->savedBy), NumberOf(DateTime())});
        if (deleted.answer != kArchiveAbsent) {
            TakeStored(deleted.stored, *test);
        }
        return deleted.answer;
    });
}

ArchiveAnswer ArchiveService::Fetch(ArchivedTest* test) {
    return Answer(test, [&](Archive& archive) {
        const std::optional<TestRow> stored = archive.Fetch(test->id);
        if (!stored) {
            return kArchiveAbsent;
        }
        TakeStored(stored->listing, *test);
        SetText(test->source, stored->source);
        test->blockSize = static_cast<std::uint32_t>(stored->block.size());
        if (test->block == nullptr || test->blockCapacity < test->blockSize) {
            return kArchiveTooLarge;
        }
        std::memcpy(test->block, stored->block.data(), stored->block.size());
        return kArchiveDone;
    });
}

std::uint32_t ArchiveService::List(const ArchiveFilter* filter, std::uint32_t order, std::uint32_t first,
                                   KxTestListEntry* buffer, std::uint32_t capacity) {
    const ArchiveFilter all{};
    const ArchiveFilter& wanted = filter != nullptr && filter->size >= sizeof *filter ? *filter : all;
    try {
        if (buffer == nullptr) {
            return static_cast<std::uint32_t>(Opened().Count(wanted));
        }
        const std::vector<ListingRow> rows =
            Opened().List(wanted, static_cast<ArchiveOrder>(order), first, capacity);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            FillEntry(rows[i], buffer[i]);
        }
        return static_cast<std::uint32_t>(rows.size());
    } catch (...) {
        Reason();
        return 0;
    }
}

template <class Record>
std::uint32_t ArchiveService::ListStaff(Role role, std::uint32_t first, Record* buffer,
                                        std::uint32_t capacity) {
    if (buffer == nullptr || capacity == 0) {
        return 0;
    }
    try {
        std::vector<Record> records;
        for (const StaffRow& row : Opened().Staff(role)) {
            Record record{};
            std::memcpy(&record, row.record.data(), std::min(row.record.size(), sizeof record));
            const auto id = static_cast<std::uint32_t>(row.id);
            std::memcpy(record.reserved0, &id, sizeof id);
            records.push_back(record);
        }
        return ListRecords(records, first, buffer, capacity);
    } catch (...) {
        Reason();
        return 0;
    }
}

std::uint32_t ArchiveService::ListTechnicians(std::uint32_t first, TechnicianRecord* buffer,
                                              std::uint32_t capacity) {
    return ListStaff(Role::kTechnician, first, buffer, capacity);
}

std::uint32_t ArchiveService::ListPhysicians(std::uint32_t first, PhysicianRecord* buffer,
                                             std::uint32_t capacity) {
    return ListStaff(Role::kPhysician, first, buffer, capacity);
}

template <class Record>
std::uint32_t ArchiveService::SavePerson(Role role, Record* record, bool isNew, bool deleted) {
    if (record == nullptr || (record->lastName[0] == '\0' && !deleted) ||
        (!isNew && IdOf(record->reserved0) == 0)) {
        return 0;
    }
    try {
        const std::int64_t id = isNew ? 0 : IdOf(record->reserved0);
        const auto saved = Opened().SaveStaff({id, 0, deleted, role, BytesOf(*record)});
        if (!saved) {
            return 0;
        }
        const auto given = static_cast<std::uint32_t>(saved->id);
        std::memcpy(record->reserved0, &given, sizeof given);
        return 1;
    } catch (...) {
        Reason();
        return 0;
    }
}

std::uint32_t ArchiveService::SaveTechnician(TechnicianRecord* record, bool isNew, bool deleted) {
    return SavePerson(Role::kTechnician, record, isNew, deleted);
}

std::uint32_t ArchiveService::SavePhysician(PhysicianRecord* record, bool isNew, bool deleted) {
    return SavePerson(Role::kPhysician, record, isNew, deleted);
}

}  // namespace kx::db
