#include "suite/kxrender/script.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/unit/collected_reports.h"

namespace {

using kx::render::RunScript;
using kx::test::CollectedReports;

class TableValues final : public kx::render::ScriptValues {
  public:
    std::string Field(int code) const override {
        static const std::map<int, std::string> kFields = {{1, "Anna Rossi"},
                                                           {2, "  7.5 "},
                                                           {3, "NG"},
                                                           {4, ".."},
                                                           {5, "..."},
                                                           {6, "*"},
                                                           {7, ""},
                                                           {8, "101 %"},
                                                           {9, "-1.5 mm @ 3:10"},
                                                           {10, "0"},
                                                           {11, "Load"},
                                                           {12, " 3.1  mph,   12 %"},
                                                           {13, "[{#1}] \\ {%2}"},
                                                           {14, "riga\r\nriga"},
                                                           {15, "a b"}};
        const auto found = kFields.find(code);
        return found != kFields.end() ? found->second : "";
    }
    std::string WithPatient(const std::string& text) const override {
        std::string result = text;
        for (std::size_t at = result.find("{%2}"); at != result.npos; at = result.find("{%2}", at)) {
            result.replace(at, 4, "Rossi");
        }
        return result;
    }
};

struct Row {
    const char* script;
    const char* report;
};

TEST(Script, FillsFieldsBracketsAndPlaceholders) {
    for (const Row& row : {
             Row{"", ""},
             Row{"Testo", "Testo"},
             Row{"# commento\nTesto", "Testo"},
             Row{"Nome {#1}, valore {#2} mV", "Nome Anna Rossi, valore 7.5 mV"},
             Row{"{#12}|{#8}", "3.1 mph, 12 %|101 %"},
             Row{
                 "{#3}{#4}{#5}{#6}{#7}{#99}",
                 "..................",
             },
             Row{"Sig.ra {%2}: {#8}", "Sig.ra Rossi: 101 %"},
             Row{"prima [{#1}] dopo", "prima Anna Rossi dopo"},
             Row{"prima[ {#3}] dopo", "prima dopo"},
             Row{"prima[ {#1}, {#3}, {#1}] dopo[ {#8}]", "prima dopo 101 %"},
             Row{"[solo testo]", "solo testo"},
             Row{"[ {#3} {%2} ]fine", "fine"},
             Row{"\\[{#1}\\] \\\\ \\# \\", "[Anna Rossi] \\ # \\"},
             Row{"\\# non un commento", "# non un commento"},
             Row{"\\?1 non una condizione", "?1 non una condizione"},
             Row{"{#13}", "[{#1}] \\ {%2}"},  // a value is taken as it is
             Row{"{#14}", "riga\r\nriga"},
             Row{"{#} {#x} {#1 {1} {", "{#} {#x} {#1 {1} {"},
             Row{"{#99999999999}", "{#99999999999}"},
             Row{"\\{#1}", "{#1}"},
             Row{"a\nb\r\nc", "a\r\nb\r\nc"},
             Row{"\n\n\na\n\n\n\nb\n\n", "a\r\n\r\nb"},
             Row{"a\n\n?3 nulla\n\nb", "a\r\n\r\nb"},
             Row{"Perch\xC3\xA9 no", "Perch\xE9 no"},
             Row{"Perch\xE9 no", "Perch\xE9 no"},
         }) {
        char buffer[256];
        CollectedReports reports;
        ASSERT_TRUE(RunScript(row.script, TableValues(), buffer, sizeof buffer, reports));
        EXPECT_STREQ(row.report, buffer) << row.script;
        EXPECT_EQ(std::vector<std::string>(), reports.texts) << row.script;
    }
}

TEST(Script, ShowsALineWhenItsConditionsHold) {
    const char* const kHold[] = {
        "?1",     "?!3",      "?10",     "?8>100",   "?8>=101",        "?8<=101",    "?8=101",   "?8!=102",
        "?9<=-1", "?9<=-1.5", "?2=7.50", "?11=Load", "?11!=Elevation", "?11>Carico", "?1 ?8>100"};
    const char* const kDoNot[] = {"?3",     "?7",     "?99",     "?!1",       "?10>0",
                                  "?8>101", "?8<101", "?8!=101", "?9>-1.5",   "?11=load",
                                  "?1>5",   "?3=0",   "?3!=0",   "?1 ?8<100", "?3 ?1"};
    std::vector<std::pair<const char*, bool>> rows;
    for (const char* condition : kHold) {
        rows.emplace_back(condition, true);
    }
    for (const char* condition : kDoNot) {
        rows.emplace_back(condition, false);
    }
    for (const auto& [condition, holds] : rows) {
        char buffer[64];
        CollectedReports reports;
        ASSERT_TRUE(
            RunScript(std::string(condition) + " riga", TableValues(), buffer, sizeof buffer, reports));
        EXPECT_STREQ(holds ? "riga" : "", buffer) << condition;
        EXPECT_EQ(std::vector<std::string>(), reports.texts) << condition;
    }
}

TEST(Script, LeavesOutALineThatItCannotUnderstand) {
    for (const Row& row :
         {Row{"?", "condizione"}, Row{"? riga", "condizione"}, Row{"?x riga", "condizione"},
          Row{"?-1 riga", "condizione"}, Row{"?1> riga", "condizione"}, Row{"?1~2 riga", "condizione"},
          Row{"?!1=2 riga", "condizione"}, Row{"?!! riga", "condizione"}, Row{"[{#1}", "parentesi"},
          Row{"{#1}]", "parentesi"}, Row{"[[{#1}]]", "parentesi"}}) {
        char buffer[64];
        CollectedReports reports;
        ASSERT_TRUE(RunScript(std::string("prima\n") + row.script + "\ndopo", TableValues(), buffer,
                              sizeof buffer, reports));
        EXPECT_STREQ("prima\r\ndopo", buffer) << row.script;
        ASSERT_EQ(1u, reports.texts.size()) << row.script;
        EXPECT_TRUE(reports.texts[0].starts_with(std::string("script: ") + row.report)) << reports.texts[0];
    }
}

TEST(Script, NeverWritesBeyondItsBuffer) {
    const char* script = "{#1}\n\nuno\ndue";
    const std::string whole = "Anna Rossi\r\n\r\nuno\r\ndue";
    for (std::size_t size = 1; size < whole.size() + 3; ++size) {
        std::vector<char> buffer(size, 'x');
        CollectedReports reports;
        ASSERT_TRUE(RunScript(script, TableValues(), buffer.data(), size, reports));
        const std::size_t fits = size > whole.size() ? whole.size() : size > 17 ? 17 : size > 10 ? 10 : 0;
        EXPECT_EQ(whole.substr(0, fits), buffer.data()) << size;
        EXPECT_EQ(fits == whole.size() ? 0u : 1u, reports.texts.size()) << size;
    }
    CollectedReports reports;
    EXPECT_FALSE(RunScript(script, TableValues(), nullptr, 10, reports));
    char one = 'x';
    EXPECT_FALSE(RunScript(script, TableValues(), &one, 0, reports));
    EXPECT_EQ('x', one);
}

}  // namespace
