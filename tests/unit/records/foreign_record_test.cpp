// A record that a host filled byte by byte, whatever it holds. Each record lies in a block of its own exact
// size, so that the sanitizers see a read or write outside it.
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx::test {
namespace {

std::unique_ptr<KxTestRecord> Filled(int byte) {
    auto test = std::make_unique<KxTestRecord>();
    std::memset(test.get(), byte, sizeof *test);
    // What a pointer leads to is the host's word: none of them leads anywhere, whatever the counts between say.
    KxTestRecord& t = *test;
    t.buffer7584 = t.ecg = t.object7600 = t.object7604 = t.annotations = t.annotations2 = nullptr;
    t.series9796 = nullptr, t.currentStage = nullptr, t.pressureSummary = nullptr, t.holterData = nullptr, t.holterSummary = nullptr;
    t.spirometry = nullptr, t.history = nullptr;
    const auto clear = [](auto&... arrays) { (std::memset(arrays, 0, sizeof arrays), ...); };
    clear(t.episodes, t.blocks, t.series, t.stages, t.pressures, t.rawBlocks);
    return test;
}

TEST(ForeignRecord, IsReadWithinItsCountsAndChangedInPlaceAndNowhereElse) {
    const auto host = Filled(0xFF);
    TestRecord& test = *TestRecord::Of(host.get());
    EXPECT_EQ(test.EpisodeCount(), 256u);
    for (const int i : {0, 255, 256, -2}) {
        EXPECT_TRUE(test.Stage(i) == nullptr && test.Pressure(i) == nullptr && test.RawBlock(i) == nullptr) << i;
        EXPECT_EQ(test.Episode(static_cast<std::uint32_t>(i)), nullptr) << i;
    }
    EXPECT_EQ(test.LongestEpisodeBetween(0, 1000), nullptr);

    const std::string longText(10000, 'x');
    const DateTime time(2013, 11, 5);
    for (const auto set :
         {&TestRecord::SetPatientId, &TestRecord::SetConfirmedBy, &TestRecord::SetOverreadBy, &TestRecord::SetOriginalBy}) {
        (test.*set)(longText.c_str());
    }
    test.SetDevice(longText.c_str(), longText.c_str(), longText.c_str());
    test.SetPatientName("a", "b", "c");
    test.SetConfirmedInterpretation(&time, longText.c_str());
    EXPECT_EQ(test.AddEpisode(0, 12, 10, 500, 1000), nullptr);  // episodeCount says that it is full
    EXPECT_FALSE(test.AddHistoryEntry(2, time, "x"));

    auto expected = Filled(0xFF);
    const auto store = [](const std::string& text, auto&... fields) {
        ((std::memset(fields, 0, sizeof fields), std::memcpy(fields, text.c_str(), std::min(text.size(), sizeof fields - 1))), ...);
    };
    KxTestRecord& e = *expected;
    store(longText, e.patientId, e.confirmedBy, e.overreadBy, e.originalBy, e.deviceName, e.deviceSerial, e.deviceRevision,
          e.interpretationText);
    store("c^a^b^", e.patientName);
    e.reportState = 2, e.confirmedTime = time, e.modified = 1;
    EXPECT_EQ(std::memcmp(host.get(), expected.get(), sizeof *expected), 0);
}

struct ForeignTexts : testing::Test {
    std::string Shown(int code) const {
        std::vector<char> text(600);
        const bool known = FieldText(*TestRecord::Of(host.get()), code, text.data(), text.size(), request);
        return (known ? "" : "!") + std::string(text.data());
    }
    TextTable texts;
    PictureLocale locale = Italian();
    SummaryRequest request{texts, locale};
    std::unique_ptr<KxTestRecord> host = Filled(0);
};

// A host's own idea of a sub-record: whatever its bytes, no value of it is shown and none of what it might point
// to is read.
TEST_F(ForeignTexts, SubRecordsOfAnotherLayoutAreLeftAlone) {
    for (const std::uint32_t size : {0u, 16u, 40u, 424u, 440u, 672u, 2176u, 0x55555555u}) {
        std::vector<std::uint32_t> own(544, size);
        void* const address = own.data();
        for (int code = 0; code < 760; ++code) {
            host = Filled(0);
            const std::string expected = Shown(code);
            std::ranges::fill(host->series, static_cast<KxValueSeries*>(address));
            host->stageCount = host->pressureCount = 1;
            host->stages[0] = host->currentStage = static_cast<KxStressStage*>(address);
            host->pressures[0] = host->pressureSummary = static_cast<KxPressureReading*>(address);
            host->holterData = static_cast<KxHolterData*>(address);
            host->holterSummary = static_cast<KxHolterSummary*>(address);
            host->spirometry = static_cast<KxSpirometry*>(address);
            EXPECT_EQ(Shown(code), expected) << code << ", size " << size;
        }
    }
}

}  // namespace
}  // namespace kx::test
