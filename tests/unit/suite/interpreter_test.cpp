#include "suite/kxinterp/interpreter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tests/unit/collected_reports.h"
#include "tests/unit/records/text_table.h"
#include "tests/unit/suite/ecg_cases.h"

namespace {

using kx::interp::Interpret;
using kx::test::CollectedReports;
using kx::test::NormalEcg;
using kx::test::SteadyBeats;

kx::test::TextTable TableTexts(const std::map<std::uint32_t, std::string>& texts) {
    kx::test::TextTable table;
    table.texts = texts;
    return table;
}

const KxAnnotationStore* AsShared(const kx::AnnotationStore& store) {
    return reinterpret_cast<const KxAnnotationStore*>(&store);
}

// First-degree block, left axis, left voltage: one number, one negative number, two numbers.
KxMeasurementSet ThreeFindings() {
    KxMeasurementSet set = NormalEcg();
    set.prInterval = 214;
    set.qrsAxis = -40;
    kx::test::SetQrs(set, KX_LEAD_V1, 0, 200, 2250);
    return set;
}

const kx::test::TextTable kTexts = TableTexts({{30036, "Sinus rhythm."},
                                               {30042, "AV 1 (PR %d ms)."},
                                               {30026, "Axis %d, 100%% left"},
                                               {30073, "Sokolow-Lyon %d.%d mV %d %s %"},
                                               {30132, "ECG Nomale"},
                                               {30133, "ECG Boderline"}});

TEST(Interpreter, WritesOneStatementALine) {
    const KxMeasurementSet set = ThreeFindings();
    const auto beats = SteadyBeats();
    KxInterpretationResult result;
    std::memset(&result, 0x5A, sizeof result);
    CollectedReports reports;
    ASSERT_TRUE(Interpret(&set, AsShared(beats), kTexts, &result, reports));
    EXPECT_STREQ(
        "Sinus rhythm.\r\nAV 1 (PR 214 ms).\r\nAxis -40, 100% left\r\nSokolow-Lyon 3.6 mV %d %s %\r\nECG "
        "Boderline",
        result.text);
    EXPECT_EQ(sizeof result, result.size);
    EXPECT_EQ(10000u, result.resultTime);
    EXPECT_STREQ("BOR", result.code);
    EXPECT_EQ(3u, result.flags);
    EXPECT_EQ(4u, result.extra);
    EXPECT_EQ(std::vector<std::string>(), reports.texts);

    KxInterpretationResult again{};
    ASSERT_TRUE(Interpret(&set, AsShared(beats), kTexts, &again, reports));
    EXPECT_EQ(0, std::memcmp(&result, &again, sizeof result));
}

TEST(Interpreter, ReportsATextThatIsMissingAndNamesItsCode) {
    const KxMeasurementSet set = ThreeFindings();
    CollectedReports reports;
    KxInterpretationResult result{};
    ASSERT_TRUE(Interpret(&set, nullptr, TableTexts({{30036, "Sinus rhythm."}}), &result, reports));
    EXPECT_STREQ("Sinus rhythm.\r\n30042\r\n30026\r\n30073\r\n30133", result.text);
    ASSERT_EQ(4u, reports.texts.size());
    EXPECT_EQ("kxinterp: no text of statement 30042", reports.texts[0]);
}

TEST(Interpreter, KeepsTheHeavyStatementsWhenTheTextIsFull) {
    KxMeasurementSet set = ThreeFindings();
    set.qtc = 500;                                   // abnormal, the last statement
    kx::test::SetQrs(set, KX_LEAD_V2, 0, 900, 800);  // a note
    struct Row {
        std::size_t length;  // of each statement
        std::size_t kept;
    };
    for (const Row& row : {Row{150, 6}, Row{168, 5}, Row{203, 4}, Row{255, 3}}) {
        const std::string filler(row.length - 6, '.');
        std::map<std::uint32_t, std::string> texts;
        for (const std::uint32_t code : {30026u, 30033u, 30036u, 30042u, 30073u, 30076u}) {
            texts[code] = std::to_string(code) + " " + filler;
        }
        texts[30134] = "ECG non nomale";
        CollectedReports reports;
        KxInterpretationResult result{};
        ASSERT_TRUE(Interpret(&set, nullptr, TableTexts(texts), &result, reports));
        const std::string text = result.text;
        ASSERT_LT(text.size(), sizeof result.text);
        EXPECT_TRUE(text.ends_with("\r\nECG non nomale")) << row.length;
        EXPECT_NE(std::string::npos, text.find("30076 ")) << row.length;
        EXPECT_EQ(row.kept, result.extra) << row.length;
        EXPECT_EQ(row.kept == 6, text.find("30033 ") != std::string::npos)
            << "the last of the lightest goes first";
    }
}

TEST(Interpreter, RefusesWhatItCannotRead) {
    const KxMeasurementSet set = NormalEcg();
    KxMeasurementSet other = set;
    other.size = sizeof other - 2;
    KxInterpretationResult result{};
    result.extra = 77;
    CollectedReports reports;
    EXPECT_FALSE(Interpret(nullptr, nullptr, kTexts, &result, reports));
    EXPECT_FALSE(Interpret(&set, nullptr, kTexts, nullptr, reports));
    EXPECT_FALSE(Interpret(&other, nullptr, kTexts, &result, reports));
    EXPECT_EQ(3u, reports.texts.size());
    EXPECT_EQ(77u, result.extra);

    // Stores that hold nothing, or say that they hold more than they have.
    KxAnnotation entry{100, 1, 0, 0};
    for (const KxAnnotationStore& store : {KxAnnotationStore{5, 5, nullptr, 0, {}, 240, 1220, {}},
                                           KxAnnotationStore{0, 9, &entry, 0, {}, 240, 1220, {}},
                                           KxAnnotationStore{1, UINT32_MAX, &entry, 0, {}, 240, 1220, {}}}) {
        EXPECT_TRUE(Interpret(&set, &store, kTexts, &result, reports));
        EXPECT_STREQ("Sinus rhythm.\r\nECG Nomale", result.text);
    }
}

TEST(Interpreter, SurvivesAnyNumbers) {
    std::uint32_t state = 1;
    const auto next = [&state] { return state = state * 1664525 + 1013904223; };
    const kx::test::CodeTexts texts;
    for (int round = 0; round < 3000; ++round) {
        KxMeasurementSet set;
        auto* bytes = reinterpret_cast<std::uint8_t*>(&set);
        for (std::size_t i = 0; i < sizeof set; ++i) {
            const std::uint32_t value = next() >> 16;
            bytes[i] = round % 3 == 0   ? static_cast<std::uint8_t>(value)
                       : value % 5 == 0 ? 0x80
                       : value % 7 == 0 ? 0xFF
                                        : 0;
        }
        set.size = sizeof set;
        kx::AnnotationStore store(20, true);
        for (int i = 0; i < 20; ++i) {
            store.Append(static_cast<std::uint8_t>(next() >> 28), next());
        }
        KxInterpretationResult result{};
        CollectedReports reports;
        ASSERT_TRUE(Interpret(&set, AsShared(store), texts, &result, reports));
        ASSERT_EQ('\0', result.text[sizeof result.text - 1]);
        ASSERT_NE('\0', result.text[0]);
    }
}

}  // namespace
