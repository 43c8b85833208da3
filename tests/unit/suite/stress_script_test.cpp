// The stress test's script that is shipped, over tests as the recorders leave them.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>

#include "lib/dbclient/test_record.h"
#include "suite/kxrender/test_values.h"
#include "tests/unit/collected_reports.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"
#include "tests/unit/suite/stress_test.h"

namespace {

using kx::TestRecord;

std::string Report(const TestRecord& test) {
    std::ifstream stream(KX_SOURCE_DIR "/suite/kxrender/stress.scr", std::ios::binary);
    const std::string script((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    const kx::test::TextTable texts;
    const kx::test::PictureLocale locale = kx::test::Italian();
    kx::SummaryRequest request(texts, locale);
    request.revolutionsPerMinute = "giri/min";
    char buffer[4096];
    kx::test::CollectedReports reports;
    EXPECT_TRUE(
        kx::render::RunScript(script, kx::render::TestValues(test, request), buffer, sizeof buffer, reports));
    EXPECT_EQ(std::vector<std::string>(), reports.texts);
    return buffer;
}

TEST(StressScript, ReportsATreadmillTest) {
    TestRecord test;
    kx::test::FillTreadmillTest(test);
    EXPECT_EQ(kx::test::kTreadmillReport, Report(test));
}

TEST(StressScript, ReportsAnErgometerTest) {
    TestRecord test;
    kx::test::FillTreadmillTest(test);
    test.exerciseDevice = 1;
    test.peakSpeed = 6000;
    test.peakGradeOrLoad = 1250;
    test.maxHeartRate = 120;
    test.bloodPressure = 0;
    test.Stage(1)->stLevel = -40;
    EXPECT_EQ(
        "Test da sforzo al cicloergometro, durata 9:30 min.\r\n"
        "Carico massimo: 125 W a 60 giri/min.\r\n"
        "\r\n"
        "Frequenza cardiaca massima 120 battiti/min (71 % della teorica, 170 battiti/min).\r\n"
        "Test submassimale: l'85 % della frequenza teorica non \xE8 stato raggiunto.\r\n"
        "Pressione arteriosa al picco 180 / 90 mmHg.\r\n"
        "Doppio prodotto al picco 21600 mmHg/min.\r\n"
        "\r\n"
        "Nessuno slivellamento significativo del tratto ST (massimo 0.5 mm @ 3:00 [II]).\r\n"
        "\r\n"
        "Interpretazione automatica: da confermare a cura del medico.",
        Report(test));
}

TEST(StressScript, SaysWhatIsMissing) {
    TestRecord test;
    const std::string report = Report(test);
    EXPECT_NE(std::string::npos, report.find("Pressione arteriosa al picco non rilevata.")) << report;
    EXPECT_NE(std::string::npos, report.find("Tratto ST: misura non disponibile.")) << report;
    EXPECT_EQ(std::string::npos, report.find("...")) << report;
    EXPECT_EQ(std::string::npos, report.find("massimale")) << report;
}

}  // namespace
