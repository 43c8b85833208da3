// Any bytes as the record of a host and as what it points to: every text of it ends within its buffer, and
// reading changes nothing.
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_list_entry.h"
#include "lib/dbclient/test_record.h"
#include "tests/fuzz/targets.h"
#include "tests/unit/picture_locale.h"

namespace kx::fuzz {
namespace {

// Above every code of a field. An input is asked for one code in eight.
constexpr int kCodesEnd = 760;
constexpr int kCodeStep = 8;

class OneList final : public ResourceTexts {
  public:
    std::size_t LoadText(std::uint32_t, char* buffer, std::size_t) const override {
        constexpr char kList[] = "0^...^1^Uomo^2^Donna";
        std::memcpy(buffer, kList, sizeof kList);
        return sizeof kList - 1;
    }
};

// A record and what its pointers lead to, all of it the host's, and what is asked of it.
struct Host {
    KxTestRecord test;
    KxEpisodeRecord episode;
    KxStressStage stage;
    KxPressureReading reading;
    KxHolterData holter;
    KxHolterSummary summary;
    KxSpirometry spirometry;
    KxHistoryEntry entries[kHistoryCapacity];
    KxHistory history;
    KxSeriesPoint points[2];
    KxValueSeries values;
    std::int32_t timeMs, eventValue, eventHeartRate, stTimeMs;
    std::uint8_t eventClass, amplitudeUnit, understood, firstCode;
    std::uint16_t size;
};

void Connect(Host& host) {
    KxTestRecord& test = host.test;
    std::memset(&test.buffer7584, 0, sizeof test - offsetof(KxTestRecord, buffer7584));
    test.episodeCount = host.history.count;
    test.episodes[0] = &host.episode;
    test.stageCount = test.pressureCount = 1;
    test.stages[0] = test.currentStage = &host.stage;
    test.pressures[0] = test.pressureSummary = &host.reading;
    test.holterData = &host.holter;
    test.holterSummary = &host.summary;
    test.spirometry = &host.spirometry;
    test.history = &host.history;
    std::fill(std::begin(test.series), std::end(test.series), &host.values);
    host.episode.samples = nullptr;
    host.history.entries = host.entries;
    host.values.points = host.points;
    // Understood or not, as the input has it; a count that is understood is the points' own.
    const auto mark = [&host]<class... Records>(Records&... records) {
        if (host.understood % 4 != 0) {
            ((records.size = sizeof records, records.mark = kMarkOf<Records>), ...);
        }
    };
    mark(host.stage, host.reading, host.holter, host.summary, host.spirometry, host.values);
    host.values.count %= 3;
}

void RenderEverything(const Host& host, const TestRecord& test, std::vector<char>& buffer) {
    const OneList texts;
    const test::PictureLocale locale = test::Italian();
    SummaryRequest request(texts, locale);
    request.timeMs = host.timeMs;
    request.eventClass = host.eventClass;
    request.eventValue = host.eventValue;
    request.eventHeartRate = host.eventHeartRate;
    request.stTimeMs = host.stTimeMs;
    request.amplitudeUnit = static_cast<AmplitudeUnit>(host.amplitudeUnit % 4);
    for (int code = host.firstCode % kCodeStep - 1; code < kCodesEnd; code += kCodeStep) {
        FieldText(test, code, buffer.data(), buffer.size(), request);
        Require(std::memchr(buffer.data(), '\0', buffer.size()) != nullptr);
    }
    const std::string text(test.text332, strnlen(test.text332, sizeof test.text332 - 1));
    Require(ExpandPlaceholders(test, text.c_str(), buffer.data(), buffer.size()));
    Require(std::memchr(buffer.data(), '\0', buffer.size()) != nullptr);
}

}  // namespace

// The input over and over: a short one reaches every field.
void RecordTexts(Bytes input) {
    const auto host = std::make_unique<Host>();
    for (std::size_t i = 0; i < sizeof *host && !input.empty(); ++i) {
        reinterpret_cast<std::uint8_t*>(host.get())[i] = input[i % input.size()];
    }
    Connect(*host);
    std::vector<char> buffer(1 + host->size % 700u);
    const auto before = std::make_unique<KxTestRecord>(host->test);
    RenderEverything(*host, *TestRecord::Of(&host->test), buffer);
    Require(std::memcmp(before.get(), &host->test, sizeof *before) == 0);
    const auto listed = std::make_unique<TestListEntry>(*TestRecord::Of(&host->test));
    Require(listed->SameTest(listed.get()) && !listed->IsNewerThan(listed.get()));
}

}  // namespace kx::fuzz
