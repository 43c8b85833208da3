// The system services as a host uses them: the log beside the module and the listener.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "suite/kxsys/kxsys.h"
#include "tests/windows/modules/spy.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

fs::path TestFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path();
}

// A copy of the product's module in a folder of its own, so that its log is the test's.
class KxSys : public testing::Test {
  protected:
    void SetUp() override {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        fs::copy_file(TestFolder() / "../../bin/kxsys.dll", folder_ / "sistema.dll");
        module_ = LoadLibraryExW((folder_ / "sistema.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        ASSERT_NE(module_, nullptr);
        Find<decltype(&SETLISTENER)>("SETLISTENER")(&KxSys::Hear, this);
    }
    void TearDown() override {
        FreeLibrary(module_);
        fs::remove_all(folder_);
    }

    template <class Function>
    Function Find(const char* name) const {
        return kxtest::FindExport<Function>(module_, name);
    }
    fs::path LogFile() const { return folder_ / "sistema.log"; }
    std::vector<std::string> Logged() const {
        std::ifstream file(LogFile(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        std::vector<std::string> lines;
        std::size_t start = 0;
        for (std::size_t end; (end = bytes.find("\r\n", start)) != std::string::npos; start = end + 2) {
            lines.push_back(bytes.substr(start, end - start));
        }
        EXPECT_EQ(start, bytes.size()) << "the last line has no end";
        return lines;
    }
    // Without its time stamp.
    static std::string Report(const std::string& line) { return line.substr(line.find('\t') + 1); }
    std::vector<std::string> Heard() const {
        std::vector<std::string> reports;
        for (const std::string& line : heard_) {
            reports.push_back(Report(line));
        }
        return reports;
    }

    std::vector<std::string> heard_;

  private:
    static void KXSYS_CALL Hear(void* context, const char* line) {
        static_cast<KxSys*>(context)->heard_.emplace_back(line);
    }

    const fs::path folder_ = TestFolder() / "kxsys-test";
    HMODULE module_ = nullptr;
};

// CALL(NAME, arguments): the export with the type that kxsys.h gives it.
#define CALL(name, ...) Find<decltype(&name)>(#name)(__VA_ARGS__)

TEST_F(KxSys, WritesEachReportAsOneLineAndTellsTheListener) {
    CALL(SETBATCHMODE, 1);
    const struct {
        std::function<std::uint32_t()> call;
        const char* expected;
        std::uint32_t result;
    } rows[] = {
        {[&] { return CALL(LOGMEMORYERROR, "hyptrphy", 60); }, "Memoria\thyptrphy, riga 60", 1},
        {[&] { return CALL(LOGOEMERROR, "hyptrphy", 422, "no Wpar or tst"); },
         "Programma\tno Wpar or tst (hyptrphy, riga 422)", 1},
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
        heard_.clear();
        fs::remove(LogFile());
        EXPECT_EQ(row.call(), row.result) << row.expected;
        EXPECT_THAT(Heard(), ElementsAre(row.expected));
        EXPECT_EQ(Logged(), heard_) << row.expected;
        EXPECT_TRUE(std::regex_match(heard_.at(0), stamp)) << heard_[0];
    }
}

TEST_F(KxSys, ALogThatCannotBeWrittenStopsNothing) {
    fs::create_directory(LogFile());
    EXPECT_EQ(CALL(LOGINFORMATION, "heard"), 1u);
    EXPECT_THAT(Heard(), ElementsAre("Informazione\theard"));
    CALL(SETLISTENER, nullptr, nullptr);
    EXPECT_EQ(CALL(LOGINFORMATION, "lost"), 0u);
    EXPECT_EQ(heard_.size(), 1u);
}

TEST_F(KxSys, BadTextsAreTakenAsFarAsTheyCanBeRead) {
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
        heard_.clear();
        CALL(LOGOEMERROR, row.text, 7, row.text);
        EXPECT_THAT(Heard(), ElementsAre("Programma\t" + row.expected + " (" + row.expected + ", riga 7)"));
        EXPECT_EQ(Logged().back(), heard_.at(0));
    }
    VirtualFree(pages, 0, MEM_RELEASE);
}

}  // namespace
