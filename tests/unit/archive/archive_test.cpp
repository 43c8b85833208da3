// The archive loses no save that returned and shows none by halves, whatever happens to the program or the files.
#include "suite/kxdb/archive/archive.h"

#include <map>
#include <random>

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

    // Adds a test and saves it again until it stands at the revision.
    std::int64_t Save(Archive& archive, const std::string& words, int revisions = 1, std::int64_t state = 0) {
        TestRow row = RowOf(words, 20'261'125'080'000 + static_cast<std::int64_t>(words.size()), state);
        const std::int64_t id = archive.Count({}) + 1;
        row.block = BlockOf(id, 1);
        SaveResult saved = archive.Add(row, {"Rossi", 20'261'125'100'000});
        for (int revision = 2; revision <= revisions; ++revision) {
            row.listing.id = saved.stored.id;
            row.listing.revision = revision - 1;
            row.block = BlockOf(id, revision);
            saved = archive.Update(row, {"Bianchi", 20'261'125'110'000});
        }
        EXPECT_EQ(saved.answer, kArchiveDone);
        return saved.stored.id;
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

    static void FlipByte(const fs::path& file, std::uintmax_t at) {
        std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
        stream.seekg(static_cast<std::streamoff>(at));
        const int byte = stream.get();
        stream.seekp(static_cast<std::streamoff>(at));
        stream.put(static_cast<char>(byte ^ 0x5A));
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
    TestRow theirs = *other.Fetch(id);
    theirs.block = BlockOf(id, 4);
    ASSERT_EQ(other.Update(theirs, {"Verdi", 20'261'125'120'000}).answer, kArchiveDone);
    const SaveResult refused = archive.Update(mine, {"Bianchi", 0});
    EXPECT_EQ(refused.answer, kArchiveChanged);
    EXPECT_EQ(refused.stored.revision, 4);
    EXPECT_EQ(refused.stored.savedBy, "Verdi");
    EXPECT_EQ(Whole(archive)[id], 4);
    EXPECT_EQ(archive.Fetch(id)->source, "C:\\ecg\\rossi mario.hea");

    EXPECT_EQ(archive.Delete(id, 3, {}).answer, kArchiveChanged);
    EXPECT_EQ(archive.Delete(id, 4, {}).answer, kArchiveDone);
    EXPECT_FALSE(archive.Fetch(id));
    EXPECT_EQ(archive.Update(mine, {}).answer, kArchiveAbsent);
    EXPECT_EQ(archive.Count({}), 0);
    EXPECT_TRUE(log_.Take().empty());
}

TEST_F(ArchiveTest, ListsByWordsStatesDatesAndPages) {
    Archive archive = Open();
    for (const char* name : {"rossi mario 17", "rossi anna 18", "bianchi ugo 19", "d'andrea lia 20"}) {
        Save(archive, name, 1, name[0] == 'r' ? 2 : 0);
    }
    const auto names = [&](ArchiveFilter filter, ArchiveOrder order, int first, int capacity) {
        std::string all;
        for (const ListingRow& row : archive.List(filter, order, first, capacity)) {
            all += row.name.substr(0, row.name.find(' ')) + ' ';
        }
        return all;
    };
    ArchiveFilter words{};
    std::strcpy(words.words, "  R\xD2SSI 1");
    EXPECT_EQ(archive.Count(words), 2);
    EXPECT_EQ(names(words, kArchiveByName, 0, 10), "rossi rossi ");
    ArchiveFilter state{};
    state.states = 1;
    EXPECT_EQ(names(state, kArchiveByName, 0, 10), "bianchi d'andrea ");
    EXPECT_EQ(names({}, kArchiveByName, 1, 2), "d'andrea rossi ");
    EXPECT_EQ(names({}, kArchiveNewestFirst, 0, 1), "d'andrea ");
    ArchiveFilter day{};
    day.fromYear = day.toYear = 2026;
    day.fromMonthDay = day.toMonthDay = 1125;
    EXPECT_EQ(archive.Count(day), 4);
    day.fromMonthDay = 1126;
    EXPECT_EQ(archive.Count(day), 0);
}

// What a list keeps in memory is what stands in the file, whoever saved since.
TEST_F(ArchiveTest, AListThatIsOpenFollowsEverySave) {
    Archive shown = Open();
    Archive other = Open();
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
        if (tests.size() < 5 || random() % 3 != 0) {
            tests.push_back(saver.Add(row, {}).stored);
        } else {
            ListingRow& chosen = tests[random() % tests.size()];
            row.listing.id = chosen.id;
            row.listing.revision = chosen.revision;
            const bool deleted = random() % 3 == 0;
            const SaveResult saved = deleted ? saver.Delete(chosen.id, chosen.revision, {}) : saver.Update(row, {});
            EXPECT_EQ(saved.answer, kArchiveDone);
            chosen = saved.stored;
            if (deleted) {
                std::erase_if(tests, [&](const ListingRow& test) { return test.id == saved.stored.id; });
            }
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
    {
        Archive archive = Open();
        for (int i = 1; i <= 5; ++i) {
            saved[Save(archive, "paziente " + std::to_string(i), 1 + i % 2)] = 1 + i % 2;
        }
    }
    std::mt19937 random(7);
    for (const char* name : {"archive.kxdb", "archive.kxdb-copy"}) {
        const std::uintmax_t size = fs::file_size(folder_ / name);
        for (std::uintmax_t page = 0; page < size; page += 8192) {
            FlipByte(folder_ / name, page + random() % 8192);
            Archive archive = Open();
            EXPECT_EQ(Whole(archive), saved) << name << " page at " << page;
            if (HasFailure()) {
                return;
            }
        }
        for (const std::uintmax_t cut : {size - 1, size / 2, std::uintmax_t{100}, std::uintmax_t{0}}) {
            fs::resize_file(folder_ / name, cut);
            Archive archive = Open();
            EXPECT_EQ(Whole(archive), saved) << name << " cut at " << cut;
        }
        fs::remove(folder_ / name);
        Archive archive = Open();
        EXPECT_EQ(Whole(archive), saved) << name << " gone";
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
    TestRow row = *archive.Fetch(id);
    row.block = BlockOf(id, 3);
    EXPECT_THROW(archive.Update(row, {}), SqliteError);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(Whole(archive)[id], 2);
    EXPECT_EQ(archive.Update(row, {}).answer, kArchiveDone);
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
                const std::int64_t id = 1 + round % 7;
                TestRow row = RowOf("paziente", 20'261'125'080'000);
                const auto stored = archive.Fetch(id);
                row.listing.id = id;
                row.listing.revision = stored ? stored->listing.revision : 0;
                row.block = BlockOf(id, row.listing.revision + 1);
                const SaveResult saved = stored ? archive.Update(row, {}) : archive.Add(row, {});
                const std::int64_t report[] = {saved.stored.id, saved.stored.revision};
                if (saved.answer != kArchiveDone || write(channel[1], report, sizeof report) != sizeof report) {
                    _exit(1);
                }
            }
        }
        close(channel[1]);
        usleep(static_cast<useconds_t>(random() % 20'000));
        ::kill(child, SIGKILL);
        std::int64_t report[2];
        while (read(channel[0], report, sizeof report) == sizeof report) {
            told[report[0]] = report[1];
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
