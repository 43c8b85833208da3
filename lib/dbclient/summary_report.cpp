// The fields of the report and the recording.
#include <cstring>
#include <string_view>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

constexpr std::uint32_t kSecondMs = 1000;
constexpr std::uint32_t kMinuteMs = 60000;
constexpr std::uint32_t kHourMs = 3600000;
constexpr std::uint32_t kDayMs = 86400000;
constexpr std::string_view kReviewedOutside =
    "\r\n*** ECG Interpretation review performed in Word or an EMR program ***";

void PutAcquisition(const SummaryOutput& output) {
    DateTime(output.test.acquisitionTime).DateAndTime(output.buffer, output.size, output.request.locale);
}

// Date and offset together, cut as one text: an offset alone would be read as the time.
void PutAcquisitionAndTime(const SummaryOutput& output) {
    const int seconds = output.request.timeMs / static_cast<int>(kSecondMs);
    if (seconds == 0) {
        PutAcquisition(output);
        return;
    }
    char date[64] = "";
    DateTime(output.test.acquisitionTime).DateAndTime(date, sizeof date, output.request.locale);
    output.Print("%s (+%ds)", static_cast<const char*>(date), seconds);
}

void PutRecordingDuration(const SummaryOutput& output) {
    const std::uint32_t ms = output.test.recordingDurationMs;
    const auto print = [&output](const char* format, auto... values) {
        output.Print(format, static_cast<long>(values)...);
    };
    if (ms >= kDayMs) {
        print("%ld hr", ms / kHourMs);
    } else if (ms >= kHourMs) {
        print("%ld:%02ld", ms / kHourMs, ms / kMinuteMs % 60);
    } else {
        print("%ld:%02ld", ms / kMinuteMs, ms / kSecondMs % 60);
    }
}

void PutInterpretation(const SummaryOutput& output) {
    output.test.InterpretationText(output.buffer, output.size);
    const std::size_t used = std::strlen(output.buffer);
    if (output.test.externalReview != 0 && used + kReviewedOutside.size() < output.size) {
        CopyText(kReviewedOutside, output.buffer + used, output.size - used);
    }
}

void PutState(const SummaryOutput& output) {
    output.test.ReportStateText(output.request.texts, output.buffer, output.size);
}

void PutStateAndAuthor(const SummaryOutput& output) {
    output.test.ReportStateAndAuthorText(output.request.texts, output.buffer, output.size);
}

void PutConfirmationDate(const SummaryOutput& output) {
    if (output.test.IsConfirmed()) {
        output.test.ConfirmedTime().ShortDate(output.buffer, output.size, output.request.locale);
    }
}

void PutFilters(const SummaryOutput& output) {
    const std::uint32_t hz = output.test.MainsFrequency();
    const char* first = output.test.ArtifactFilter() != 0 ? "Artifact"
                        : hz == 50                        ? "50 Hz"
                        : hz == 60                        ? "60 Hz"
                                                          : "";
    if (output.test.BaselineFilter()) {
        output.Print("%s%sBaseline", first, first[0] != '\0' ? ", " : "");
    } else {
        output.Put(first[0] != '\0' ? first : "None");
    }
}

// A time before the recording's start has its sign in front of the whole.
void PutTime(const SummaryOutput& output) {
    const std::int64_t ms = output.request.timeMs;
    const auto size = static_cast<std::uint32_t>(ms < 0 ? -ms : ms);
    const unsigned minutes = size / kMinuteMs % 60;
    const unsigned seconds = size / kSecondMs % 60;
    if (ms < 0 || size >= kHourMs) {
        output.Print("%s%u:%02u:%02u", ms < 0 ? "-" : "", size / kHourMs, minutes, seconds);
    } else {
        output.Print("%2u:%02u", minutes, seconds);
    }
}

void PutTimeOfDay(const SummaryOutput& output) {
    DateTime(output.test.acquisitionTime)
        .TimeAfter(output.request.timeMs, output.buffer, output.size, output.request.locale);
}

constexpr SummaryField kReportFields[] = {
    {9, PutAcquisition},
    {33, PutFilters},
    {68, PutGetter<&TestRecord::DeviceText>},
    {70, PutInterpretation},
    {71, PutState},
    {125, PutAcquisitionAndTime},
    {142, PutStateAndAuthor},
    {213, PutText<&KxTestRecord::overreadBy>},
    {214, PutText<&KxTestRecord::originalBy>},
    {452, PutTime},
    {453, PutEventName},
    {493, PutRecordingDuration},
    {498, PutTimeOfDay},
    {499, PutEventHeartRate},
    {649, PutConfirmationDate},
};

}  // namespace

bool RenderReportField(const SummaryOutput& output) {
    return RenderField(kReportFields, output);
}

}  // namespace kx
