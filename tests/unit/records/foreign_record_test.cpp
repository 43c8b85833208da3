// A record that a host filled byte by byte, whatever it holds. Each record lies in a block of its own exact
// size, so that the sanitizers see a read or write outside it.
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_list_entry.h"
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

void ReadEverything(TestRecord& test) {
    TextTable texts;
    texts.texts = {{913, "0^...^1^Uomo^2^Donna"}, {914, "a^b^c"}, {963, "0^x"}};
    const PictureLocale locale = Italian();
    std::vector<char> buffer(8192);
    char* text = buffer.data();
    for (const std::size_t size : {buffer.size(), std::size_t{16}, std::size_t{1}, std::size_t{0}}) {
        for (const auto getter :
             {&TestRecord::PatientId, &TestRecord::LastName, &TestRecord::FirstName, &TestRecord::MiddleName, &TestRecord::FullName,
              &TestRecord::SortName, &TestRecord::Address, &TestRecord::AgeText, &TestRecord::WeightText, &TestRecord::HeightText,
              &TestRecord::BloodPressureText, &TestRecord::DeviceText}) {
            text[0] = '\0';
            (test.*getter)(text, size);
            EXPECT_TRUE(size == 0 || std::strlen(text) < size);
            (test.*getter)(nullptr, size);
        }
        for (const auto getter : {&TestRecord::ReportStateText, &TestRecord::ReportStateAndAuthorText}) {
            (test.*getter)(texts, text, size);
        }
        test.SexText(texts, text, size);
        test.RaceText(texts, text, size);
        test.ClinicalFlagText(texts, 0, text, size);
        test.ClinicalDateText(text, size, locale);
        EXPECT_LE(std::strlen(test.InterpretationText(text, size)), 4095u);
    }
    EXPECT_TRUE(std::strlen(test.OriginalBy()) <= 63 && std::strlen(test.OverreadBy()) <= 63 && std::strlen(test.ConfirmedBy()) <= 38);
    test.LastChangeTime();
    for (const int i : {0, 255, 256, -2}) {
        EXPECT_TRUE(test.Stage(i) == nullptr && test.Pressure(i) == nullptr && test.RawBlock(i) == nullptr) << i;
        EXPECT_EQ(test.Episode(static_cast<std::uint32_t>(i)), nullptr) << i;
    }
    EXPECT_EQ(test.LongestEpisodeBetween(0, 1000), nullptr);
    const auto entry = std::make_unique<TestListEntry>(test);
    entry->AcquisitionText(text, buffer.size(), locale);
    EXPECT_TRUE(entry->SameTest(entry.get()));
}

TEST(ForeignRecord, IsReadWithinItsFields) {
    for (const int byte : {0x00, 0x41, 0x5E, 0x7F, 0xFF}) {
        const auto host = Filled(byte);
        SCOPED_TRACE(byte);
        ReadEverything(*TestRecord::Of(host.get()));
    }
}

TEST(ForeignRecord, IsChangedInPlaceAndNowhereElse) {
    const auto host = Filled(0xFF);
    TestRecord& test = *TestRecord::Of(host.get());
    const std::string longText(10000, 'x');
    for (const auto set :
         {&TestRecord::SetPatientId, &TestRecord::SetConfirmedBy, &TestRecord::SetOverreadBy, &TestRecord::SetOriginalBy}) {
        (test.*set)(longText.c_str());
    }
    test.SetDevice(longText.c_str(), longText.c_str(), longText.c_str());
    test.SetPatientName("a", "b", "c");
    const DateTime time(2013, 11, 5);
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
    expected->reportState = 2;
    expected->confirmedTime = time;
    expected->modified = 1;
    EXPECT_EQ(std::memcmp(host.get(), expected.get(), sizeof *expected), 0);
}

TEST(ForeignRecord, ItsHistoryIsTheHosts) {
    KxHistoryEntry entries[16] = {};
    KxHistory history = {0xFFFFFFFFu, entries};
    auto host = Filled(0);
    host->history = &history;
    TestRecord& test = *TestRecord::Of(host.get());
    EXPECT_FALSE(test.AddHistoryEntry(2, DateTime(2013, 1, 1), "full"));
    entries[15].year = 2012;
    EXPECT_EQ(test.LastChangeTime().Year(), 2012);
    history.count = 3;
    EXPECT_TRUE(test.AddHistoryEntry(2, DateTime(2013, 1, 1), "reviewer"));
    EXPECT_EQ(history.count, 4u);
    EXPECT_STREQ(entries[3].user, "reviewer");
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsReviewedOutside());
}

// A host's own idea of a sub-record: whatever its bytes, no value of it is shown and none of what it might point
// to is read.
TEST(ForeignRecord, SubRecordsOfAnotherLayoutAreLeftAlone) {
    TextTable texts;
    const PictureLocale locale = Italian();
    const SummaryRequest request(texts, locale);
    std::vector<char> expected(600), text(600);
    auto host = Filled(0);
    TestRecord& test = *TestRecord::Of(host.get());
    for (const std::uint32_t size : {0u, 8u, 16u, 40u, 424u, 440u, 672u, 2176u, 0x55555555u}) {
        std::vector<std::uint8_t> own(2176, 0x55);
        std::memcpy(own.data(), &size, sizeof size);
        void* const address = own.data();
        for (int code = 0; code < 760; ++code) {
            *host = *Filled(0);
            const bool known = FieldText(test, code, expected.data(), expected.size(), request);
            for (KxValueSeries*& series : host->series) {
                series = static_cast<KxValueSeries*>(address);
            }
            host->stageCount = host->pressureCount = 1;
            host->stages[0] = host->currentStage = static_cast<KxStressStage*>(address);
            host->pressures[0] = host->pressureSummary = static_cast<KxPressureReading*>(address);
            host->holterData = static_cast<KxHolterData*>(address);
            host->holterSummary = static_cast<KxHolterSummary*>(address);
            host->spirometry = static_cast<KxSpirometry*>(address);
            EXPECT_EQ(FieldText(test, code, text.data(), text.size(), request), known) << code;
            EXPECT_STREQ(text.data(), expected.data()) << code << ", size " << size;
        }
    }
}

TEST(ForeignRecord, ValuesBeyondTheirLimitsAreNotGiven) {
    TextTable texts;
    const PictureLocale locale = Italian();
    SummaryRequest request(texts, locale);
    request.timeMs = 100;
    auto host = Filled(0);
    KxSeriesPoint point{0, 70};
    KxValueSeries series{sizeof series, KX_MARK_SERIES, KX_SERIES_POINTS + 1, &point};
    KxStressStage stage{};
    stage.size = sizeof stage;
    stage.mark = KX_MARK_STAGE;
    host->series[0] = &series;
    host->stageCount = 1;
    host->stages[0] = host->currentStage = &stage;
    const TestRecord& test = *TestRecord::Of(host.get());
    const auto shown = [&](int code) {
        char text[64];
        EXPECT_TRUE(FieldText(test, code, text, sizeof text, request)) << code;
        return std::string(text);
    };
    EXPECT_EQ(shown(95), "...");
    series.count = 1;
    EXPECT_EQ(shown(95), "70");
    series.points = nullptr;
    EXPECT_EQ(shown(95), "...");
    for (const std::int32_t level : {KX_ST_LIMIT + 1, -KX_ST_LIMIT - 1, INT32_MIN}) {
        stage.stLevel = level;
        for (const int code : {80, 360, 440, 494}) {
            EXPECT_EQ(shown(code), "...") << code << ", " << level;
        }
    }
    stage.stLevel = -KX_ST_LIMIT;
    EXPECT_EQ(shown(494), "-100.0 mm @ 0:00 [I]");
}

TEST(ForeignRecord, ItsEpisodeIsReadAndChangedInPlace) {
    std::vector<std::int16_t> samples(24);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::int16_t>(i);
    }
    KxEpisodeRecord episode{};
    episode.storedLeads = 12;
    episode.samplesPerLead = 2;
    episode.totalSize = 3176 + 48;
    episode.formatVersion = 5;
    episode.samples = samples.data();
    for (std::uint32_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
        episode.leadTable[slot] = {slot < 12 ? slot : std::uint32_t{KX_LEAD_EMPTY}, 2 * slot};
    }
    auto host = Filled(0);
    host->episodeCount = 0xFFFFFFFFu;  // one there, the others null
    host->episodes[0] = &episode;
    TestRecord& test = *TestRecord::Of(host.get());
    EpisodeRecord* first = test.Episode(0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(test.Episode(1), nullptr);
    EXPECT_EQ(test.EpisodeCount(), 256u);
    EXPECT_EQ(first->Sample(11, 1), 23);
    EXPECT_TRUE(first->DeriveLimbLeads());
    EXPECT_EQ(samples[4], 2);  // III = II - I
    first->SetEndTimeMs(10000);
    first->durationSeconds = 10;
    EXPECT_EQ(test.LongestEpisodeBetween(0, 10000), first);
    EXPECT_EQ(first->Serialize().size(), 3224u);

    // A table and counts that lie past the samples.
    episode.leadTable[0].sampleOffset = 23;
    episode.leadTable[1].sampleOffset = 0xFFFFFFFFu;
    EXPECT_EQ(first->Samples(0), nullptr);
    EXPECT_EQ(first->Sample(1, 0), 0);
    episode.samplesPerLead = 0x80000000u;
    EXPECT_EQ(first->Serialize().size(), 0u);
    first->ClearSamples();
    EXPECT_EQ(samples[23], 23);
    episode.samples = nullptr;
    EXPECT_EQ(first->Sample(2, 0), 0);
    EXPECT_FALSE(first->DeriveLimbLeads());
    EXPECT_TRUE(first->Serialize().empty());
}

}  // namespace
}  // namespace kx::test
