// Any bytes as the record of a host and as what it points to: every text of it ends within its buffer, and
// reading changes nothing.
#include <cstring>
#include <memory>
#include <vector>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_list_entry.h"
#include "lib/dbclient/test_record.h"
#include "tests/fuzz/targets.h"
#include "tests/rig/plain_locale.h"

namespace kx::fuzz {
namespace {

// Above every code of a field. An input is asked for one code in eight.
constexpr int kCodesEnd = 760;
constexpr int kCodeStep = 8;

class OneList final : public ResourceTexts {
  public:
    std::size_t LoadText(std::uint32_t, char* buffer, std::size_t size) const override {
        constexpr char kList[] = "0^...^1^Uomo^2^Donna";
        Require(size >= sizeof kList);
        std::memcpy(buffer, kList, sizeof kList);
        return sizeof kList - 1;
    }
};

// The input over and over: a short one reaches every field.
struct Source {
    Bytes input;
    std::size_t at = 0;

    template <class... Objects>
    void Fill(Objects&... objects) {
        (FillBytes(&objects, sizeof objects), ...);
    }
    void FillBytes(void* object, std::size_t count) {
        for (auto* to = static_cast<std::uint8_t*>(object); count > 0; --count, ++at) {
            *to++ = input[at % input.size()];
        }
    }
    template <class T>
    T Take() {
        T value;
        Fill(value);
        return value;
    }
};

// A record and what its pointers lead to, all of it the host's.
struct HostTest {
    explicit HostTest(Source& bytes) {
        bytes.Fill(points, values);
        values.points = points;
        bytes.FillBytes(&test, offsetof(KxTestRecord, buffer7584));
        bytes.FillBytes(&episode, offsetof(KxEpisodeRecord, samples));
        bytes.Fill(episode.measurements, stage, reading, holter, summary, spirometry, entries, history.count);
        history.entries = entries;
        test.episodeCount = bytes.Take<std::uint32_t>();
        test.episodes[0] = &episode;
        test.stageCount = test.pressureCount = 1;
        test.stages[0] = test.currentStage = &stage;
        test.pressures[0] = test.pressureSummary = &reading;
        // Understood or not, as the input has it; a count that is understood is the points' own.
        const bool understood = bytes.Take<std::uint8_t>() % 4 != 0;
        Mark(understood, stage, reading, holter, summary, spirometry, values);
        values.count %= 3;
        for (KxValueSeries*& series : test.series) {
            series = &values;
        }
        test.holterData = &holter;
        test.holterSummary = &summary;
        test.spirometry = &spirometry;
        test.history = &history;
    }

    template <class... Records>
    static void Mark(bool understood, Records&... records) {
        if (understood) {
            ((records.size = sizeof records, records.mark = kMarkOf<Records>), ...);
        }
    }

    KxTestRecord test{};
    KxEpisodeRecord episode{};
    KxStressStage stage;
    KxPressureReading reading;
    KxHolterData holter;
    KxHolterSummary summary;
    KxSpirometry spirometry;
    KxHistoryEntry entries[kHistoryCapacity];
    KxHistory history{};
    KxSeriesPoint points[2];
    KxValueSeries values{};
};

void RenderEverything(const TestRecord& test, Source& bytes, std::vector<char>& buffer) {
    const OneList texts;
    const test::PlainLocale locale;
    SummaryRequest request(texts, locale);
    request.timeMs = bytes.Take<std::int32_t>();
    request.eventClass = bytes.Take<std::uint8_t>();
    request.eventValue = bytes.Take<std::int32_t>();
    request.eventHeartRate = bytes.Take<std::int32_t>();
    request.amplitudeUnit = static_cast<AmplitudeUnit>(bytes.Take<std::uint8_t>() % 4);
    request.stTimeMs = bytes.Take<std::int32_t>();
    for (int code = bytes.Take<std::uint8_t>() % kCodeStep - 1; code < kCodesEnd; code += kCodeStep) {
        FieldText(test, code, buffer.data(), buffer.size(), request);
        Require(std::memchr(buffer.data(), '\0', buffer.size()) != nullptr);
    }
    char text[sizeof test.text332];
    std::memcpy(text, test.text332, sizeof text);
    text[sizeof text - 1] = '\0';
    Require(ExpandPlaceholders(test, text, buffer.data(), buffer.size()));
    Require(std::memchr(buffer.data(), '\0', buffer.size()) != nullptr);
}

}  // namespace

void RecordTexts(Bytes input) {
    if (input.empty()) {
        return;
    }
    Source bytes{input};
    std::vector<char> buffer(1 + bytes.Take<std::uint16_t>() % 700u);
    const auto host = std::make_unique<HostTest>(bytes);
    const auto before = std::make_unique<KxTestRecord>(host->test);
    RenderEverything(*TestRecord::Of(&host->test), bytes, buffer);
    Require(std::memcmp(before.get(), &host->test, sizeof *before) == 0);
    const auto listed = std::make_unique<TestListEntry>(*TestRecord::Of(&host->test));
    Require(listed->SameTest(listed.get()) && !listed->IsNewerThan(listed.get()));
}

}  // namespace kx::fuzz
