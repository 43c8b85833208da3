#include "lib/dbclient/summary_text.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

constexpr std::int64_t kStripMs = 10000;
constexpr std::int64_t kBeforeEventMs = 5000;
constexpr char kNoEpisode[] = "..";

// The measurements that a report always has a place for: without an episode they are shown as not there.
constexpr int kShownWithoutEpisode[] = {20,  21,  22,  34,  105, 106, 107, 135,
                                        136, 137, 138, 139, 368, 371, 372, 373};

// The intervals of the episode around the event under review.
bool RenderEventMeasurement(const SummaryOutput& output) {
    const KxHolterData* data = output.test.HolterData();
    if (data == nullptr || data->hasCurrentEvent == 0) {
        return false;
    }
    const EpisodeRecord* episode = output.test.LongestEpisodeBetween(
        std::int64_t{data->eventStartMs} - kBeforeEventMs, data->eventEndMs);
    return episode != nullptr &&
           RhythmFieldText(episode->measurements, output.code, output.buffer, output.size);
}

constexpr bool (*kFamilies[])(const SummaryOutput&) = {
    RenderSiteField,          RenderPatientField,    RenderReportField,
    RenderHolterRateField,    RenderPressureField,   RenderStressField,
    RenderHolterSummaryField, RenderSpirometryField, RenderMeasurementField,
};

}  // namespace

bool RenderMeasurementField(const SummaryOutput& output) {
    const SummaryRequest& request = output.request;
    const EpisodeRecord* episode =
        output.test.LongestEpisodeBetween(request.timeMs, std::int64_t{request.timeMs} + kStripMs);
    if (episode == nullptr) {
        output.Put(kNoEpisode);
        if (std::count(std::begin(kShownWithoutEpisode), std::end(kShownWithoutEpisode), output.code) != 0) {
            return true;
        }
    } else if (MeasurementFieldText(episode->measurements, output.code, output.buffer, output.size,
                                    request.amplitudeUnit, request.stTimeMs)) {
        return true;
    }
    return RenderEventMeasurement(output);
}

bool FieldText(const TestRecord& test, int code, char* buffer, std::size_t size,
               const SummaryRequest& request) try {
    if (buffer == nullptr || size == 0) {
        return false;
    }
    buffer[0] = '\0';
    const SummaryOutput output = {test, request, code, buffer, size};
    return std::any_of(std::begin(kFamilies), std::end(kFamilies),
                       [&output](auto render) { return render(output); });
} catch (const std::bad_alloc&) {
    return false;
}

}  // namespace kx
