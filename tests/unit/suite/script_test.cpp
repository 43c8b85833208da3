// Report scripts: fields, brackets, conditions, and the stress test's script that is shipped.
#include "suite/kxrender/script.h"

#include <iterator>
#include <tuple>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxrender/test_values.h"
#include "tests/rig/recorded_reports.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx::test {
namespace {

using render::RunScript;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class TableValues final : public render::ScriptValues {
  public:
    std::string Field(int code) const override {
        const char* const fields[] = {
            "",     "Anna Rossi",        "  7.5 ",         "NG",          "..", "...", "*", "", "101 %", "-1.5 mm @ 3:10", "0",
            "Load", " 3.1  mph,   12 %", "[{#1}] \\ {%2}", "riga\r\nriga"};
        return code < 0 || code >= static_cast<int>(std::size(fields)) ? "" : fields[code];
    }
    std::string WithPatient(const std::string& text) const override {
        const std::size_t at = text.find("{%2}");
        return at == text.npos ? text : std::string(text).replace(at, 4, "Rossi");
    }
};

std::string Rendered(const std::string& script, RecordedReports& reports) {
    char buffer[256];
    EXPECT_TRUE(RunScript(script, TableValues(), buffer, sizeof buffer, reports));
    return buffer;
}

TEST(Script, FillsFieldsBracketsAndPlaceholders) {
    const std::pair<const char*, const char*> rows[] = {
        {"# commento\nTesto", "Testo"},
        {"Nome {#1}, valore {#2} mV", "Nome Anna Rossi, valore 7.5 mV"},
        {"{#12}", "3.1 mph, 12 %"},
        {"{#3}{#4}{#5}{#6}{#7}{#99}", ".................."},
        {"Sig.ra {%2}: {#8}", "Sig.ra Rossi: 101 %"},
        {"prima[ {#1}, {#3}, {#1}] dopo[ {#8}]", "prima dopo 101 %"},
        {"[ {#3} {%2} ]fine[solo testo]", "finesolo testo"},
        {"\\[{#1}\\] \\\\ \\# \\", "[Anna Rossi] \\ # \\"},
        {"\\?1 non una condizione", "?1 non una condizione"},
        {"{#13}", "[{#1}] \\ {%2}"},  // a value is taken as it is
        {"{#14}", "riga\r\nriga"},
        {"{#} {#x} {#1 {1} {#99999999999} \\{#1} {", "{#} {#x} {#1 {1} {#99999999999} {#1} {"},
        {"\n\n\na\r\n\n\n\nb\n\n", "a\r\n\r\nb"},
        {"a\n\n?3 nulla\n\nb", "a\r\n\r\nb"},
        {"Perch\xC3\xA9 no", "Perch\xE9 no"}};
    for (const auto& [script, report] : rows) {
        RecordedReports reports;
        EXPECT_EQ(report, Rendered(script, reports)) << script;
        EXPECT_THAT(reports.Take(), IsEmpty()) << script;
    }
}

TEST(Script, ShowsALineWhenItsConditionsHold) {
    const char* const kHold[] = {"?1",      "?!3",      "?10",     "?8>100",   "?8>=101",        "?8<=101",    "?8=101",
                                 "?8!=102", "?9<=-1.5", "?2=7.50", "?11=Load", "?11!=Elevation", "?11>Carico", "?1 ?8>100"};
    const char* const kDoNot[] = {"?3",      "?7",       "?99",  "?!1",  "?10>0", "?8>101",    "?8<101", "?8!=101",
                                  "?9>-1.5", "?11=load", "?1>5", "?3=0", "?3!=0", "?1 ?8<100", "?3 ?1"};
    RecordedReports reports;
    for (const char* condition : kHold) {
        EXPECT_EQ("riga", Rendered(std::string(condition) + " riga", reports)) << condition;
    }
    for (const char* condition : kDoNot) {
        EXPECT_EQ("", Rendered(std::string(condition) + " riga", reports)) << condition;
    }
    EXPECT_THAT(reports.Take(), IsEmpty());
    for (const char* line : {"?", "?x riga", "?-1 riga", "?1> riga", "?1~2 riga", "?!1=2 riga", "?!! riga", "[{#1}", "{#1}]", "[[{#1}]]"}) {
        EXPECT_EQ("prima\r\ndopo", Rendered(std::string("prima\n") + line + "\ndopo", reports)) << line;
        EXPECT_THAT(reports.Take(), ElementsAre(StartsWith(line[0] == '?' ? "oem script 2 condizione" : "oem script 2 parentesi"))) << line;
    }
}

// A stress test on a treadmill, and the report that the shipped script makes of it.
void FillTreadmillTest(TestRecord& test) {
    test.SetTestType(KX_TEST_STRESS);
    test.exerciseDevice = 0;
    test.metricSpeed = 1;
    test.exerciseTimeMs = 570000;
    test.targetHeartRate = 170;
    test.maxHeartRate = 152;
    test.bloodPressure = 120u << 16 | 80;
    test.peakBloodPressure = 180u << 16 | 90;
    test.peakSpeed = 420;        // hundredths of a mile per hour
    test.peakGradeOrLoad = 140;  // tenths of a percent
    test.peakMets = 101;
    for (const auto& [level, ms, lead] : {std::tuple{50, 180000, KX_LEAD_II}, {-150, 500000, KX_LEAD_V5}}) {
        auto stage = NewSubRecord<KxStressStage>();
        stage->stLevel = level;
        stage->stTimeMs = static_cast<std::uint32_t>(ms);
        stage->stLead = static_cast<std::uint32_t>(lead);
        test.AddStage(std::move(stage));
    }
}

constexpr char kTreadmillReport[] =
    "Test da sforzo al tappeto rotante, durata 9:30 min.\r\n"
    "Livello massimo: 6.8 km/h, pendenza 14.0 %.\r\n"
    "\r\n"
    "Frequenza cardiaca massima 152 battiti/min (89 % della teorica, 170 battiti/min).\r\n"
    "Test massimale per frequenza cardiaca (almeno l'85 % della teorica).\r\n"
    "Pressione arteriosa al picco 180 / 90 mmHg (a riposo 120/80 mmHg).\r\n"
    "Doppio prodotto al picco 27360 mmHg/min.\r\n"
    "\r\n"
    "Sottoslivellamento del tratto ST: -1.5 mm @ 8:20 [V5]. Considerare ischemia inducibile.\r\n"
    "\r\n"
    "Interpretazione automatica: da confermare a cura del medico.";

// The stress test's script that is shipped, over tests as the recorders leave them.
std::string StressReport(const TestRecord& test) {
    std::ifstream stream(KX_SOURCE_DIR "/suite/kxrender/stress.scr", std::ios::binary);
    const std::string script((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    const TextTable texts;
    const PictureLocale locale = Italian();
    SummaryRequest request(texts, locale);
    request.revolutionsPerMinute = "giri/min";
    char buffer[4096];
    RecordedReports reports;
    EXPECT_TRUE(RunScript(script, render::TestValues(test, request), buffer, sizeof buffer, reports));
    EXPECT_THAT(reports.Take(), IsEmpty());
    return buffer;
}

TEST(StressScript, ReportsTestsAndSaysWhatIsMissing) {
    TestRecord test, empty;
    FillTreadmillTest(test);
    EXPECT_EQ(kTreadmillReport, StressReport(test));
    test.exerciseDevice = 1, test.peakSpeed = 6000, test.peakGradeOrLoad = 1250, test.maxHeartRate = 120, test.bloodPressure = 0;
    test.Stage(1)->stLevel = -40;
    EXPECT_THAT(StressReport(test),
                AllOf(StartsWith("Test da sforzo al cicloergometro, durata 9:30 min.\r\nCarico massimo: 125 W a 60 giri/min.\r\n\r\n"),
                      HasSubstr("Test submassimale: l'85 % della frequenza teorica non \xE8 stato raggiunto.\r\n"
                                "Pressione arteriosa al picco 180 / 90 mmHg.\r\n"),
                      HasSubstr("Nessuno slivellamento significativo del tratto ST (massimo 0.5 mm @ 3:00 [II]).")));
    const std::string report = StressReport(empty);
    EXPECT_THAT(report, AllOf(HasSubstr("Pressione arteriosa al picco non rilevata."), HasSubstr("Tratto ST: misura non disponibile."),
                              Not(HasSubstr("...")), Not(HasSubstr("massimale"))));
}

}  // namespace
}  // namespace kx::test
