#include "suite/kxinterp/interpreter.h"

#include <random>

#include "tests/rig/recorded_reports.h"
#include "tests/unit/records/text_table.h"
#include "tests/unit/suite/ecg_cases.h"

namespace kx::test {
namespace {

using interp::Interpret;

const KxAnnotationStore* AsShared(const AnnotationStore& store) { return reinterpret_cast<const KxAnnotationStore*>(&store); }

// First-degree block, left axis, left voltage: one number, one negative number, two numbers.
const std::string kThreeFindings = "pr=214 axis=-40 V1=0,200,2250 ";

RecordedReports reports;

const TextTable kTexts({{30036, "Sinus rhythm."},
                        {30042, "AV 1 (PR %d ms)."},
                        {30026, "Axis %d, 100%% left"},
                        {30073, "Sokolow-Lyon %d.%d mV %d %s %"},
                        {30132, "ECG Nomale"},
                        {30133, "ECG Boderline"}});

TEST(Interpreter, WritesOneStatementALine) {
    const KxMeasurementSet set = EcgWith(kThreeFindings);
    const auto beats = SteadyBeats();
    KxInterpretationResult result;
    std::memset(&result, 0x5A, sizeof result);
    reports.Take();
    ASSERT_TRUE(Interpret(&set, AsShared(beats), kTexts, &result, reports));
    EXPECT_STREQ("Sinus rhythm.\r\nAV 1 (PR 214 ms).\r\nAxis -40, 100% left\r\nSokolow-Lyon 3.6 mV %d %s %\r\nECG Boderline", result.text);
    EXPECT_STREQ("BOR", result.code);
    EXPECT_TRUE(result.size == sizeof result && result.resultTime == 10000 && result.flags == 3 && result.extra == 4);
    EXPECT_TRUE(reports.Take().empty());

    ASSERT_TRUE(Interpret(&set, nullptr, TextTable({{30036, "Sinus rhythm."}}), &result, reports));
    EXPECT_STREQ("Sinus rhythm.\r\n30042\r\n30026\r\n30073\r\n30133", result.text);
    const auto reported = reports.Take();
    ASSERT_EQ(4u, reported.size());
    EXPECT_TRUE(reported[0].ends_with("no text of statement 30042")) << reported[0];
}

TEST(Interpreter, KeepsTheHeavyStatementsWhenTheTextIsFull) {
    // One more that is abnormal, the last statement, and a note, which goes first.
    const KxMeasurementSet set = EcgWith(kThreeFindings + "qtc=500 V2=0,900,800");
    for (const auto& [length, kept] : {std::pair{150u, 6u}, {168u, 5u}, {203u, 4u}, {255u, 3u}}) {
        TextTable texts({{30134, "ECG non nomale"}});
        for (const std::uint32_t code : {30026u, 30033u, 30036u, 30042u, 30073u, 30076u}) {
            texts.texts[code] = std::to_string(code) + std::string(length - 5, '.');
        }
        KxInterpretationResult result{};
        ASSERT_TRUE(Interpret(&set, nullptr, texts, &result, reports));
        const std::string text = result.text;
        EXPECT_TRUE(text.ends_with("\r\nECG non nomale") && text.find("30076.") != text.npos) << length;
        EXPECT_TRUE(result.extra == kept && (text.find("30033.") != text.npos) == (kept == 6)) << length;
    }
}

TEST(Interpreter, RefusesWhatItCannotRead) {
    const KxMeasurementSet set = EcgWith("");
    KxMeasurementSet other = set;
    other.size = sizeof other - 2;
    KxInterpretationResult result{};
    result.extra = 77;
    EXPECT_FALSE(Interpret(nullptr, nullptr, kTexts, &result, reports) || Interpret(&set, nullptr, kTexts, nullptr, reports) ||
                 Interpret(&other, nullptr, kTexts, &result, reports));
    EXPECT_EQ(77u, result.extra);
}

TEST(Interpreter, SurvivesAnyNumbers) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        KxMeasurementSet set;
        auto* bytes = reinterpret_cast<std::uint8_t*>(&set);
        std::generate(bytes, bytes + sizeof set,
                      [&] { return static_cast<std::uint8_t>(round % 3 == 0 || random() % 4 == 0 ? random() : 0); });
        set.size = sizeof set;
        AnnotationStore store(30, true);
        for (std::uint32_t i = 0; i < 30; ++i) {
            const auto t = static_cast<std::uint32_t>(random());
            store.Append(static_cast<std::uint8_t>(random() % 30), round % 2 == 0 ? t : i * 150 + t % 300);
        }
        KxInterpretationResult result{};
        ASSERT_TRUE(Interpret(&set, AsShared(store), TextTable(), &result, reports));
        ASSERT_TRUE(result.text[0] != '\0' && result.text[sizeof result.text - 1] == '\0');
    }
}

}  // namespace
}  // namespace kx::test
