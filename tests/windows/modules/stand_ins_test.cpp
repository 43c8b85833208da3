// The suite's stand-ins as a host uses them: what they export, their version, and what each does from its folder.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <regex>

#include "lib/dbclient/test_record.h"
#include "lib/modules/database_records.h"
#include "lib/modules/version_info.h"
#include "suite/kxsys/kxsys.h"
#include "tests/rig/suite.h"
#include "tests/rig/suite_exports.h"
#include "tests/unit/suite/ecg_cases.h"
#include "tests/unit/suite/stress_test.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

template <class... Parameters>
constexpr int Count(std::uint32_t(__stdcall*)(Parameters...)) {
    static_assert(((sizeof(Parameters) == 4) && ...));
    return sizeof...(Parameters);
}
#define SAME_COUNT(name, count, kinds) static_assert(Count(static_cast<decltype(&name)>(nullptr)) == (count));
KX_SYS_EXPORTS(SAME_COUNT)

// A module of the product, from bin/ or copied into a folder of the test's.
class StandIn {
  public:
    explicit StandIn(const std::string& file)
        : module_(LoadLibraryExA((file.find(':') == std::string::npos ? Beside("..\\..\\bin\\" + file) : file).c_str(), nullptr,
                                 LOAD_WITH_ALTERED_SEARCH_PATH)) {
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

TEST(StandIns, ExportWhatTheProductCallsAndAreOfItsVersion) {
#define EXPORT_NAME(name, count, kinds) #name,
    const struct {
        const char* file;
        std::vector<const char*> exports;
    } rows[] = {
        {"kxsys.dll", {KX_SYS_EXPORTS(EXPORT_NAME) "SETBATCHMODE", "SETLISTENER"}},
        {"kxdb.dll", {KX_DB_EXPORTS(EXPORT_NAME)}},
        {"kxrender.dll", {KX_RENDER_EXPORTS(EXPORT_NAME)}},
        {"kxinterp.dll", {KX_INTERP_EXPORTS(EXPORT_NAME)}},
        {"kxanalyze.dll", {KX_ANALYZE_EXPORTS(EXPORT_NAME)}},
    };
    for (const auto& row : rows) {
        const StandIn module(row.file);
        const VersionInfo info(module.Handle());
        EXPECT_EQ(info.PackedVersion(), unsigned{KX_VERSION_MAJOR << 24 | KX_VERSION_MINOR << 16 | KX_VERSION_PATCH << 8}) << row.file;
        EXPECT_STREQ(info.FileVersion(), KX_VERSION_TEXT) << row.file;
        EXPECT_EQ(std::string(info.InternalName()) + ".dll", row.file);
        EXPECT_STRNE(info.FileDescription(), "") << row.file;
        for (const char* const name : row.exports) {
            EXPECT_NE(GetProcAddress(module.Handle(), name), nullptr) << row.file << " " << name;
        }
        module.Call("LIBSTART");
        module.Call("LIBSTOP");
    }
}

// ---- kxdb.dll: a new archive begins with the staff file beside it

class Database : public testing::Test {
  protected:
    Database() { SetEnvironmentVariableA("KX_ARCHIVE", folder_.Named("archive.kxdb").c_str()); }
    ~Database() override { module_.Call("RESET"); }

    void Write(const std::string& text) { WriteBytes(folder_.Named("staff.csv"), text); }
    std::uint32_t Technicians() { return module_.Call("TECH_LIST", technicians_.data(), 4u); }

    TempFolder folder_;
    StandIn module_{Copied(folder_, "kxdb.dll", "kxdb.dll")};
    std::vector<TechnicianRecord> technicians_{5};
};

TEST_F(Database, KeepsWhoIsAddedAndDeletedBesideThePeopleOfTheFile) {
    Write("tecnico;Bassi;Elena\n");
    EXPECT_EQ(1u, Technicians());
    TechnicianRecord added{};
    EXPECT_EQ(0u, module_.Call("TECH_ADD", &added)) << "without a name";
    std::strcpy(added.lastName, "Verdi");
    EXPECT_EQ(1u, module_.Call("TECH_ADD", &added));
    DeleteFileA(folder_.Named("staff.csv").c_str());
    module_.Call("RESET");
    EXPECT_EQ(2u, Technicians());
    EXPECT_STREQ("Bassi", technicians_[0].lastName);
    EXPECT_STREQ("Verdi", technicians_[1].lastName);
    EXPECT_EQ(1u, module_.Call("TECH_DELETE", &technicians_[0]));
    EXPECT_EQ(0u, module_.Call("TECH_DELETE", &technicians_[0]));
    EXPECT_EQ(1u, Technicians());
    EXPECT_STREQ("Verdi", technicians_[0].lastName);
}

TEST_F(Database, LeavesAFileAloneThatIsTooLong) {
    Write(std::string((1 << 20) + 1, '#'));
    EXPECT_EQ(0u, Technicians());
}

// ---- kxinterp.dll and kxrender.dll with the library's own texts

TEST(Interpreter, SpeaksTheLibrarysOwnStatements) {
    const StandIn module("kxinterp.dll");
    const StandIn library("kxdialogs.dll");
    KxInterpretationResult result{};
    KxMeasurementSet set = EcgWith("");
    const AnnotationStore beats = SteadyBeats();
    const auto interpret = [&](const KxMeasurementSet* of, const AnnotationStore* with) {
        return module.Call("INTERPRET", of, &result, with, 0u, 0u, 0u);
    };
    EXPECT_EQ(1u, interpret(&set, &beats));
    EXPECT_STREQ("Sinus rhythm.\r\nECG Nomale", result.text);
    set.prInterval = 214;
    SetQrs(set, KX_LEAD_II, 300, 800, 0);
    SetQrs(set, KX_LEAD_AVF, 300, 800, 0);
    EXPECT_EQ(1u, interpret(&set, nullptr));
    EXPECT_STREQ(
        "Sinus rhythm.\r\nBlocco AV di primo grado (PR 214 ms).\r\nInfarto miocardico inferiore, et\xE0 indeterminata.\r\nECG non nomale",
        result.text);
    EXPECT_EQ(0u, interpret(nullptr, nullptr));
}

TEST(Renderer, RunsTheStressScriptBesideIt) {
    const StandIn module("kxrender.dll");
    const std::string script = ReadBytes(Beside("..\\..\\bin\\stress.scr"));
    TestRecord test;
    FillTreadmillTest(test);
    std::vector<char> buffer(script.size() + 4096, '\x5A');
    const auto size = static_cast<std::uint32_t>(buffer.size());
    const auto create = [&module](const char* with, char* into, std::uint32_t room, KxTestRecord* of) {
        return module.Call("CREATETEXT", with, into, room, of, 0u, 0u);
    };
    EXPECT_EQ(1u, create(script.c_str(), buffer.data(), size, &test));
    EXPECT_STREQ(kTreadmillReport, buffer.data());
    // A short buffer holds whole lines, terminated, and nothing behind it is touched.
    std::memset(buffer.data(), 0x5A, buffer.size());
    EXPECT_EQ(1u, create(script.c_str(), buffer.data(), 60, &test));
    EXPECT_STREQ("Test da sforzo al tappeto rotante, durata 9:30 min.", buffer.data());
    EXPECT_EQ('\x5A', buffer[60]);
    // Dates are the user's, pick lists the library's own when it is there.
    test.SetSex(KX_SEX_FEMALE);
    test.acquisitionTime = {2024, 31, 5, 4, 13, 0, 59};
    EXPECT_EQ(1u, create("{#9}", buffer.data(), size, &test));
    EXPECT_NE(nullptr, std::strstr(buffer.data(), "2024")) << buffer.data();
    {
        const StandIn library("kxdialogs.dll");
        EXPECT_EQ(1u, create("{#3}", buffer.data(), size, &test));
        EXPECT_STREQ("Donna", buffer.data());
    }
    EXPECT_EQ(0u, create(nullptr, buffer.data(), size, &test));
    EXPECT_EQ(0u, create(script.c_str(), nullptr, size, &test));
    EXPECT_EQ(0u, create(script.c_str(), buffer.data(), 0, &test));
    EXPECT_EQ(0u, create(script.c_str(), buffer.data(), size, nullptr));
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
        {[&] { return CALL(LOGEXCEPTION, "TableDialog"); }, "Eccezione\tTableDialog", 1},
        {[&] { return CALL(LOGSYSTEMERROR, "File not found.\r\n"); }, "Sistema\tFile not found.", 1},
        {[&] { return CALL(LOGINFORMATION, "perch\xE9\tno"); }, "Informazione\tperch\xE9 no", 1},
        {[&] { return CALL(LOGOEMMESSAGE, "100 %d %s"); }, "Messaggio\t100 %d %s", 1},
        {[&] { return CALL(LOGSERVICESTART, "x"); }, "Avvio\tx", 1},
        {[&] { return CALL(LOGSERVICESTOP, "x"); }, "Arresto\tx", 1},
        {[&] { return CALL(LOGTHREADSTART, 5); }, "Thread\tavviato 5", 1},
        {[&] { return CALL(LOGTHREADSTOP, 0xFFFFFFFF); }, "Thread\tterminato 4294967295", 1},
        {[&] { return CALL(LOGCOMWRITE, 1, 2); }, "Seriale\tscrittura 1, 2", 1},
        {[&] { return CALL(LOGCOMREAD, 3, 4); }, "Seriale\tlettura 3, 4", 1},
        {[&] { return CALL(DISPLAY, 1, 2); }, "Schermo\t1, 2", 0},
        {[&] { return CALL(SENDEMAIL, 1, 2); }, "Posta\t1, 2", 0},
        {[&] { return CALL(SHOWINFORMATION, nullptr, "a"); }, "Informazione\ta", 1},
        {[&] { return CALL(SHOWSYSTEMERROR, nullptr, "b"); }, "Sistema\tb", 1},
        {[&] { return CALL(INQUIRE, nullptr, "Uscire?", 0); }, "Domanda\tUscire? No", 0},
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

TEST_F(SystemLog, ThatCannotBeWrittenStopsNothing) {
    CreateDirectoryA(LogFile().c_str(), nullptr);
    EXPECT_EQ(CALL(LOGINFORMATION, "heard"), 1u);
    EXPECT_THAT(Heard(), ElementsAre("Informazione\theard"));
    CALL(SETLISTENER, nullptr, nullptr);
    EXPECT_EQ(CALL(LOGINFORMATION, "lost"), 0u);
    EXPECT_THAT(Heard(), testing::IsEmpty());
}

TEST_F(SystemLog, TakesBadTextsAsFarAsTheyCanBeRead) {
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
}

}  // namespace
}  // namespace kx::test
