// The archive loses no save that returned and shows none by halves, whatever happens to the program or the files.
#include "suite/kxdb/archive/archive.h"

#include <sqlite3.h>

#include <map>
#include <random>

#include "lib/dbclient/test_block.h"
#include "lib/dbclient/test_record.h"
#include "lib/timestmp.h"
#include "suite/kxdb/archive/listing.h"
#include "suite/kxdb/archive_service.h"
#include "tests/rig/recorded_reports.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

namespace kx::db {
namespace {

namespace fs = std::filesystem;

// What save `revision` of a test holds, so that a reader can tell a whole block from a part or a mixture.
std::string BlockOf(std::int64_t id, std::int64_t revision) {
    std::mt19937 random(static_cast<unsigned>(id * 1000 + revision));
    std::string block(20'000 + random() % 20'000, '\0');
    for (char& c : block) {
        c = static_cast<char>(random());
    }
    return block;
}

TestRow RowOf(const std::string& words, std::int64_t time, std::int64_t state = 0) {
    TestRow row;
    row.listing.name = row.listing.patientId = row.listing.words = words;
    row.listing.time = time;
    row.listing.state = state;
    row.listing.testType = 2;
    row.source = "C:\\ecg\\" + words + ".hea";
    return row;
}

class ArchiveTest : public ::testing::Test {
  protected:
    ArchiveTest() {
        // A program that is killed loses nothing that it wrote, flushed or not: memory serves as the disk.
        const fs::path memory = "/dev/shm";
        const fs::path root = fs::is_directory(memory) ? memory : fs::temp_directory_path();
        folder_ = root / ("kx_archive_" + std::to_string(std::random_device()()));
        fs::create_directories(folder_);
    }
    ~ArchiveTest() override { fs::remove_all(folder_); }

    Archive Open() { return {File(), log_}; }
    fs::path File() const { return folder_ / "archive.kxdb"; }

    // Adds the test, or saves it over what is there.
    static SaveResult SaveNext(Archive& archive, std::int64_t id, TestRow row) {
        const auto stored = archive.Fetch(id);
        row.listing.id = id;
        row.listing.revision = stored ? stored->listing.revision : 0;
        row.block = BlockOf(id, row.listing.revision + 1);
        return stored ? archive.Update(row, {"Bianchi", 20'261'125'110'000}) : archive.Add(row, {"Rossi", 20'261'125'100'000});
    }

    std::int64_t Save(Archive& archive, const std::string& words, int revisions = 1, std::int64_t state = 0) {
        const std::int64_t id = archive.Count({}) + 1;
        for (int revision = 1; revision <= revisions; ++revision) {
            const SaveResult saved = SaveNext(archive, id, RowOf(words, 20'261'125'080'000 + std::ssize(words), state));
            EXPECT_TRUE(saved.answer == kArchiveDone && saved.stored.id == id && saved.stored.revision == revision);
        }
        return id;
    }

    // Every test of the list is whole; gives the revisions by id.
    static std::map<std::int64_t, std::int64_t> Whole(Archive& archive) {
        std::map<std::int64_t, std::int64_t> revisions;
        for (const ListingRow& row : archive.List({}, kArchiveByName, 0, 1000)) {
            const auto test = archive.Fetch(row.id);
            EXPECT_TRUE(test && test->block == BlockOf(row.id, row.revision)) << row.id;
            revisions[row.id] = row.revision;
        }
        return revisions;
    }

    fs::path folder_;
    test::RecordedReports log_;
};

TEST_F(ArchiveTest, ASaveOverSomebodyElsesIsRefusedAndADeletedTestIsGone) {
    Archive archive = Open();
    EXPECT_TRUE(archive.IsNew());
    const std::int64_t id = Save(archive, "rossi mario", 3);
    Archive other = Open();
    EXPECT_FALSE(other.IsNew());
    const TestRow mine = *archive.Fetch(id);
    ASSERT_EQ(SaveNext(other, id, mine).answer, kArchiveDone);
    const SaveResult refused = archive.Update(mine, {"Verdi", 0});
    EXPECT_TRUE(refused.answer == kArchiveChanged && refused.stored.revision == 4 && refused.stored.savedBy == "Bianchi");
    EXPECT_EQ(Whole(archive)[id], 4);
    EXPECT_EQ(archive.Fetch(id)->source, "C:\\ecg\\rossi mario.hea");

    EXPECT_EQ(archive.Delete(id, 3, {}).answer, kArchiveChanged);
    EXPECT_EQ(archive.Delete(id, 4, {}).answer, kArchiveDone);
    EXPECT_EQ(archive.Update(mine, {}).answer, kArchiveAbsent);
    EXPECT_TRUE(!archive.Fetch(id) && archive.Count({}) == 0 && log_.Take().empty());
}

TEST_F(ArchiveTest, ListsByWordsStatesDatesAndPages) {
    Archive archive = Open();
    for (const char* name : {"rossi mario 17", "rossi anna 18", "bianchi ugo 19", "d'andrea lia 20"}) {
        Save(archive, name, 1, name[0] == 'r' ? 2 : 0);
    }
    const auto listed = [&](std::function<void(ArchiveFilter&)> change, ArchiveOrder order, int first, int capacity) {
        ArchiveFilter filter{};
        change(filter);
        std::string names = std::to_string(archive.Count(filter)) + ":";
        for (const ListingRow& test : archive.List(filter, order, first, capacity)) {
            names += ' ' + test.name.substr(0, test.name.find(' '));
        }
        return names;
    };
    EXPECT_EQ(listed([](ArchiveFilter& f) { std::strcpy(f.words, "  R\xD2SSI 1"); }, kArchiveByName, 0, 10), "2: rossi rossi");
    EXPECT_EQ(listed([](ArchiveFilter& f) { f.states = 1; }, kArchiveByName, 0, 10), "2: bianchi d'andrea");
    EXPECT_EQ(listed([](ArchiveFilter&) {}, kArchiveByName, 1, 2), "4: d'andrea rossi");
    EXPECT_EQ(listed([](ArchiveFilter&) {}, kArchiveNewestFirst, 0, 1), "4: d'andrea");
    for (const auto& [day, found] : {std::pair<std::uint16_t, const char*>{1125, "4: d'andrea"}, {1126, "0:"}}) {
        const auto on = [day](ArchiveFilter& f) { f.fromYear = f.toYear = 2026, f.fromMonthDay = f.toMonthDay = day; };
        EXPECT_EQ(listed(on, kArchiveNewestFirst, 0, 1), found);
    }
}

// What a list keeps in memory is what stands in the file, whoever saved since.
TEST_F(ArchiveTest, AListThatIsOpenFollowsEverySave) {
    Archive shown = Open(), other = Open();
    std::mt19937 random(7);
    std::vector<ListingRow> tests;
    const auto ids = [](Archive& archive, ArchiveOrder order, const char* words) {
        ArchiveFilter filter{};
        std::strcpy(filter.words, words);
        std::vector<std::int64_t> found;
        for (const ListingRow& row : archive.List(filter, order, 0, 1000)) {
            found.push_back(row.id);
        }
        EXPECT_EQ(archive.Count(filter), static_cast<std::int64_t>(found.size()));
        return found;
    };
    for (int step = 0; step < 120; ++step) {
        Archive& saver = random() % 2 == 0 ? shown : other;
        TestRow row = RowOf((random() % 2 == 0 ? "rossi " : "verdi ") + std::to_string(random() % 7), 20'261'125'000'000 + random() % 5);
        const std::size_t chosen = random() % std::max<std::size_t>(tests.size(), 1);
        if (tests.size() < 5 || random() % 3 != 0) {
            tests.push_back(saver.Add(row, {}).stored);
        } else if (random() % 3 == 0) {
            EXPECT_EQ(saver.Delete(tests[chosen].id, tests[chosen].revision, {}).answer, kArchiveDone);
            tests.erase(tests.begin() + static_cast<std::ptrdiff_t>(chosen));
        } else {
            row.listing.id = tests[chosen].id, row.listing.revision = tests[chosen].revision;
            const SaveResult saved = saver.Update(row, {});
            EXPECT_EQ(saved.answer, kArchiveDone);
            tests[chosen] = saved.stored;
        }
        const auto order = static_cast<ArchiveOrder>(step / 8 % 4);
        const char* words = step % 2 == 0 ? "" : "rossi";
        Archive fresh = Open();
        ASSERT_EQ(ids(shown, order, words), ids(fresh, order, words)) << step;
        EXPECT_EQ(ids(shown, order, "").size(), tests.size()) << step;
    }
}

TEST_F(ArchiveTest, EverySaveSurvivesAFlippedByteOrACutOfEitherFile) {
    std::map<std::int64_t, std::int64_t> saved;
    for (int i = 1; i <= 5; ++i) {
        Archive archive = Open();
        saved[Save(archive, "paziente " + std::to_string(i), 1 + i % 2)] = 1 + i % 2;
    }
    const auto expectWhole = [&](const char* damage, std::uintmax_t at) {
        Archive archive = Open();
        ASSERT_EQ(Whole(archive), saved) << damage << at;
    };
    std::mt19937 random(7);
    for (const char* name : {"archive.kxdb", "archive.kxdb-copy"}) {
        SCOPED_TRACE(name);
        const std::uintmax_t size = fs::file_size(folder_ / name);
        for (std::uintmax_t page = 0; page < size; page += 8192) {
            std::fstream stream(folder_ / name, std::ios::in | std::ios::out | std::ios::binary);
            const auto at = static_cast<std::streamoff>(page + random() % 8192);
            const int byte = stream.seekg(at).get();
            stream.seekp(at).put(static_cast<char>(byte ^ 0x5A));
            stream.close();
            ASSERT_NO_FATAL_FAILURE(expectWhole("flipped in the page at ", page));
        }
        for (const std::uintmax_t cut : {size - 1, size / 2, std::uintmax_t{100}, std::uintmax_t{0}}) {
            fs::resize_file(folder_ / name, cut);
            ASSERT_NO_FATAL_FAILURE(expectWhole("cut at ", cut));
        }
        fs::remove(folder_ / name);
        expectWhole("gone", 0);
    }
}

TEST_F(ArchiveTest, AnArchiveOfANewerVersionIsLeftAlone) {
    Open();
    {
        Database database(File());
        database.Execute("PRAGMA user_version = 99");
    }
    EXPECT_THROW(Open(), ArchiveTooNew);
    EXPECT_EQ(Database(File()).Number("PRAGMA user_version"), 99);
}

// As the module's exports use it: the file and the staff that it begins with.
ArchiveService::Settings settings;

TEST_F(ArchiveTest, TheServiceTakesGivesAndRefusesTests) {
    settings = {folder_ / "new" / "archive.kxdb", {{{{}, "Bassi", "Elena", "G."}}, {{{}, "Forti", "", "", "Cardiologo"}}}};
    ArchiveService service([](Reporter&) { return settings; }, log_);
    TestRecord record;
    record.SetPatientName("Anna", "Maria", "Rossi");
    record.acquisitionTime = DateTime(2024, 2, 29, 13, 5, 59);
    std::vector<std::uint8_t> block = WriteTestBlock(record), back(block.size());
    ArchivedTest test{};
    test.size = sizeof test, test.block = block.data(), test.blockSize = static_cast<std::uint32_t>(block.size());
    std::strcpy(test.source, "a.hea");
    std::strcpy(test.savedBy, "Bassi");
    const DateTime before = DateTime();
    ASSERT_EQ(service.Add(&test), kArchiveDone);
    KxDateTime savedAt;
    std::memcpy(&savedAt, test.savedAt, sizeof savedAt);
    EXPECT_LT(std::abs(DateTime(savedAt).MillisecondsSince(before)), 60'000);
    KxTestListEntry entry{};
    EXPECT_TRUE(service.List(nullptr, kArchiveById, 0, nullptr, 0) == 1 && service.List(nullptr, kArchiveById, 0, &entry, 1) == 1);
    EXPECT_STREQ(entry.sortName, "Rossi, Anna Maria");

    ArchivedTest fetched{};
    fetched.size = sizeof fetched, fetched.id = test.id, fetched.block = back.data(), fetched.blockCapacity = test.blockSize - 1;
    EXPECT_EQ(service.Fetch(&fetched), kArchiveTooLarge);
    fetched.blockCapacity = fetched.blockSize;
    ASSERT_EQ(service.Fetch(&fetched), kArchiveDone);
    EXPECT_TRUE(back == block && fetched.revision == 1);
    EXPECT_EQ(std::string(fetched.source) + fetched.savedBy, "a.heaBassi");
    ASSERT_EQ(service.Update(&fetched), kArchiveDone);
    EXPECT_TRUE(service.Update(&test) == kArchiveChanged && test.revision == 2) << "what was fetched before";
    block.back() ^= 1;
    EXPECT_EQ(service.Update(&test), kArchiveNotDone);
    EXPECT_STREQ(test.problem, "il blocco dell'esame non \xE8 intero");
    EXPECT_TRUE(service.Delete(&fetched) == kArchiveDone && service.Fetch(&fetched) == kArchiveAbsent);
    test.size = sizeof test - 1;
    EXPECT_TRUE(service.Add(&test) == kArchiveNotDone && service.Add(nullptr) == kArchiveNotDone);

    TechnicianRecord people[3]{};
    std::strcpy(people[0].lastName, "Nuova");
    EXPECT_EQ(service.SaveTechnician(&people[0], true, false), 1u);
    EXPECT_TRUE(service.ListTechnicians(0, people, 3) == 2 && service.ListTechnicians(1, people, 3) == 1);
    EXPECT_EQ(service.ListTechnicians(0, people, 3), 2u);
    EXPECT_EQ(std::string(people[0].lastName) + people[1].lastName, "BassiNuova");
    EXPECT_TRUE(service.SaveTechnician(&people[0], false, true) == 1 && service.ListTechnicians(0, people, 3) == 1);
    PhysicianRecord physician{};
    EXPECT_TRUE(service.ListPhysicians(0, &physician, 1) == 1 && service.ListPhysicians(0, &physician, 0) == 0);
    EXPECT_STREQ(physician.title, "Cardiologo");
    EXPECT_TRUE(log_.Take().empty());

    service.Close();
    settings.file = folder_ / "new";  // is a folder
    EXPECT_FALSE(service.Opens());
    EXPECT_EQ(log_.Take().size(), 1u);
}

TEST(ArchivedTimes, ComeBackFromTheirNumbersInTheirOrder) {
    std::int64_t last = 0;
    for (DateTime time(2023, 12, 31, 22, 58, 57); time.Year() < 2025; time.AddMilliseconds(7'654'321'000)) {
        const std::int64_t number = db::NumberOf(time);
        EXPECT_TRUE(number > last && DateTime(db::TimeOf(number)).MillisecondsSince(time) == 0) << number;
        last = number;
    }
    EXPECT_EQ(db::NumberOf(DateTime::None()), 0);
}

TEST(SqliteError, SaysWhatTheUserCanDo) {
    const std::pair<int, const char*> rows[] = {
        {SQLITE_BUSY_SNAPSHOT, "busy"}, {SQLITE_LOCKED, "busy"},       {SQLITE_FULL, "full"},   {SQLITE_CORRUPT_INDEX, "damage"},
        {SQLITE_NOTADB, "damage"},      {SQLITE_IOERR_DATA, "damage"}, {SQLITE_IOERR_READ, ""}, {SQLITE_IOERR_SHORT_READ, "damage"},
        {SQLITE_CANTOPEN, ""}};
    for (const auto& [code, expected] : rows) {
        const SqliteError error(code, "text");
        EXPECT_EQ(std::string(error.IsBusy() ? "busy" : "") + (error.IsFull() ? "full" : "") + (error.IsDamage() ? "damage" : ""), expected)
            << code;
    }
    Database database(":memory:");
    try {
        database.Execute("nonsense");
        FAIL();
    } catch (const SqliteError& error) {
        EXPECT_STREQ(error.what(), "near \"nonsense\": syntax error");
    }
}

#ifndef _WIN32

TEST_F(ArchiveTest, AFullDiskRefusesTheSaveAndKeepsTheRest) {
    Archive archive = Open();
    const std::int64_t id = Save(archive, "prima", 2);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit full = before;
    full.rlim_cur = static_cast<rlim_t>(fs::file_size(folder_ / "archive.kxdb-wal") + 10'000);
    setrlimit(RLIMIT_FSIZE, &full);
    const TestRow row = *archive.Fetch(id);
    EXPECT_THROW(SaveNext(archive, id, row), SqliteError);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(Whole(archive)[id], 2);
    EXPECT_EQ(SaveNext(archive, id, row).answer, kArchiveDone);
    EXPECT_EQ(Whole(archive)[id], 3);
}

// A child saves without end and tells each save that returned; it is killed in the middle.
TEST_F(ArchiveTest, EverySaveThatReturnedIsThereAfterTheProgramWasKilled) {
    constexpr int kKills = 200;
    std::map<std::int64_t, std::int64_t> told;
    std::mt19937 random(11);
    for (int kill = 0; kill < kKills; ++kill) {
        int channel[2];
        ASSERT_EQ(pipe(channel), 0);
        const pid_t child = fork();
        if (child == 0) {
            Archive archive = Open();
            for (std::int64_t round = 0;; ++round) {
                const SaveResult saved = SaveNext(archive, 1 + round % 7, RowOf("paziente", 20'261'125'080'000));
                const std::int64_t report[] = {saved.stored.id, saved.stored.revision};
                if (saved.answer != kArchiveDone || write(channel[1], report, sizeof report) != sizeof report) {
                    _exit(1);
                }
            }
        }
        close(channel[1]);
        const auto hear = [&] {
            std::int64_t report[2];
            const bool heard = read(channel[0], report, sizeof report) == sizeof report;
            return heard && (told[report[0]] = report[1]) > 0;
        };
        if (kill % 2 != 0) {
            hear();  // a busy machine may not even open it in the time that follows
        }
        usleep(static_cast<useconds_t>(random() % 20'000));
        ::kill(child, SIGKILL);
        while (hear()) {
        }
        close(channel[0]);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    Archive archive = Open();
    const auto stored = Whole(archive);
    ASSERT_FALSE(told.empty());
    for (const auto& [id, revision] : told) {
        EXPECT_TRUE(stored.contains(id) && stored.at(id) >= revision) << id << " at " << revision;
    }
    Database database(File());
    Statement check = database.Prepare("PRAGMA integrity_check");
    ASSERT_TRUE(check.Step());
    EXPECT_EQ(check.Text(0), "ok");
}

#endif

}  // namespace
}  // namespace kx::db
