// The suite's stand-ins as a host uses them: what the data base and the log do from their folder.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <regex>

#include "include/kxdialogs.h"
#include "lib/modules/database_records.h"
#include "lib/modules/version_info.h"
#include "suite/kxsys/kxsys.h"
#include "tests/rig/suite.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

// A module of the product, copied into a folder of the test's.
class StandIn {
  public:
    explicit StandIn(const std::string& file) : module_(LoadLibraryExA(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)) {
        EXPECT_NE(module_, nullptr) << file;
    }
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;
    ~StandIn() { FreeLibrary(module_); }

    HMODULE Handle() const { return module_; }
    template <class... Arguments>
    std::uint32_t Call(const char* name, Arguments... arguments) const {
        const FARPROC address = GetProcAddress(module_, name);
        if (address == nullptr) {
            ADD_FAILURE() << "no " << name;
            return 0;
        }
        return reinterpret_cast<std::uint32_t(__stdcall*)(Arguments...)>(reinterpret_cast<void*>(address))(arguments...);
    }

  private:
    HMODULE module_;
};

std::string Copied(const TempFolder& folder, const char* file, const char* name) {
    EXPECT_TRUE(CopyFileA(Beside(std::string("..\\..\\bin\\") + file).c_str(), folder.Named(name).c_str(), FALSE));
    return folder.Named(name);
}

// ---- kxdb.dll: the people of the file beside it

TEST(Database, KeepsWhoIsAddedAndDeletedBesideThePeopleOfTheFile) {
    const TempFolder folder;
    SetEnvironmentVariableA("KX_ARCHIVE", folder.Named("archive.kxdb").c_str());
    const StandIn module(Copied(folder, "kxdb.dll", "kxdb.dll"));
    std::vector<TechnicianRecord> people(5);
    const auto list = [&] { return module.Call("TECH_LIST", people.data(), 4u); };
    WriteBytes(folder.Named("staff.csv"), "tecnico;Bassi;Elena\n");
    EXPECT_EQ(1u, list());
    TechnicianRecord added{};
    EXPECT_EQ(0u, module.Call("TECH_ADD", &added)) << "without a name";
    std::strcpy(added.lastName, "Verdi");
    EXPECT_EQ(1u, module.Call("TECH_ADD", &added));
    DeleteFileA(folder.Named("staff.csv").c_str());
    module.Call("RESET");
    EXPECT_EQ(2u, list());
    EXPECT_STREQ("Bassi", people[0].lastName);
    EXPECT_EQ(1u, module.Call("TECH_DELETE", &people[0]));
    EXPECT_EQ(1u, list());
    EXPECT_STREQ("Verdi", people[0].lastName);
    module.Call("RESET");
}

// ---- kxsys.dll: the log beside the module and the listener

class SystemLog : public testing::Test {
  protected:
    SystemLog() { CallExport<decltype(&SETLISTENER)>("SETLISTENER", &SystemLog::Hear, this); }

    template <class Function, class... Arguments>
    std::uint32_t CallExport(const char* name, Arguments... arguments) {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_.Handle(), name)))(arguments...);
    }
    std::string LogFile() const { return folder_.Named("sistema.log"); }
    // What the listener heard since the last call, without time stamps.
    std::vector<std::string> Heard() {
        std::vector<std::string> reports;
        for (const std::string& line : std::exchange(heard_, {})) {
            reports.push_back(line.substr(line.find('\t') + 1));
        }
        return reports;
    }

    TempFolder folder_;
    StandIn module_{Copied(folder_, "kxsys.dll", "sistema.dll")};
    std::vector<std::string> heard_;

  private:
    static void KXSYS_CALL Hear(void* context, const char* line) { static_cast<SystemLog*>(context)->heard_.emplace_back(line); }
};

// CALL(NAME, arguments): the export with the type that kxsys.h gives it.
#define CALL(name, ...) CallExport<decltype(&name)>(#name, __VA_ARGS__)

TEST_F(SystemLog, HasEachReportAsOneLineWhichTheListenerHears) {
    CALL(SETBATCHMODE, 1);
    const struct {
        std::function<std::uint32_t()> call;
        const char* expected;
        std::uint32_t result;
    } rows[] = {
        {[&] { return CALL(LOGMEMORYERROR, "hyptrphy", 60); }, "Memoria\thyptrphy, riga 60", 1},
        {[&] { return CALL(LOGOEMERROR, "hyptrphy", 422, "no Wpar or tst"); }, "Programma\tno Wpar or tst (hyptrphy, riga 422)", 1},
        {[&] { return CALL(LOGSYSTEMERROR, "File not found.\r\n"); }, "Sistema\tFile not found.", 1},
        {[&] { return CALL(LOGINFORMATION, "perch\xE9\tno"); }, "Informazione\tperch\xE9 no", 1},
        {[&] { return CALL(LOGTHREADSTOP, 0xFFFFFFFF); }, "Thread\tterminato 4294967295", 1},
        {[&] { return CALL(DISPLAY, 1, 2); }, "Schermo\t1, 2", 0},
        {[&] { return CALL(INQUIRE, nullptr, "Uscire?", 2); }, "Domanda\tUscire? S\xEC", 1},
    };
    const std::regex stamp(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\t.*)");
    for (const auto& row : rows) {
        DeleteFileA(LogFile().c_str());
        EXPECT_EQ(row.call(), row.result) << row.expected;
        ASSERT_EQ(heard_.size(), 1u) << row.expected;
        EXPECT_EQ(ReadBytes(LogFile()), heard_[0] + "\r\n") << row.expected;
        EXPECT_TRUE(std::regex_match(heard_[0], stamp)) << heard_[0];
        EXPECT_THAT(Heard(), ElementsAre(row.expected));
    }
}

TEST_F(SystemLog, TakesBadTextsAsFarAsTheyCanBeReadAndNeedsNoFile) {
    CreateDirectoryA(LogFile().c_str(), nullptr);
    // A page without a terminator before one that cannot be read.
    constexpr std::size_t kPage = 4096;
    auto* const pages = static_cast<char*>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
    ASSERT_NE(VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE), nullptr);
    std::fill(pages, pages + kPage, 'x');
    const std::string longText(5000, 'y');
    const struct {
        const char* text;
        std::string expected;
    } rows[] = {{nullptr, ""},
                {reinterpret_cast<const char*>(1), ""},
                {reinterpret_cast<const char*>(0xFFFFFFFF), ""},
                {pages + kPage - 3, "xxx"},
                {pages + kPage, ""},
                {longText.c_str(), std::string(KXSYS_LONGEST_TEXT, 'y')}};
    for (const auto& row : rows) {
        CALL(LOGOEMERROR, row.text, 7, row.text);
        EXPECT_THAT(Heard(), ElementsAre("Programma\t" + row.expected + " (" + row.expected + ", riga 7)"));
    }
    VirtualFree(pages, 0, MEM_RELEASE);
    CALL(SETLISTENER, nullptr, nullptr);
    EXPECT_EQ(CALL(LOGINFORMATION, "lost"), 0u);
    EXPECT_THAT(Heard(), testing::IsEmpty());
}

}  // namespace
}  // namespace kx::test
