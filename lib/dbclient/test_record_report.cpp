// The report of a test record: original, overread and confirmed interpretation with their times.
#include <cstdio>
#include <cstring>
#include <iterator>

#include "lib/dbclient/record_pick_list.h"
#include "lib/dbclient/test_record.h"

namespace kx {

namespace {

constexpr std::uint32_t kReportStateList = 914;
constexpr std::size_t kStateTextSize = 128;

constexpr std::uint32_t kMains60 = 1u << 0;
constexpr std::uint32_t kMains50 = 1u << 1;
constexpr std::uint32_t kArtifact = 1u << 2;
constexpr std::uint32_t kBaseline = 1u << 3;
constexpr std::uint32_t kArtifactVariant2 = 1u << 6;
constexpr std::uint32_t kArtifactVariant3 = 1u << 7;

template <std::size_t N>
const char* Copied(const char (&field)[N], char (&buffer)[N]) {
    CopyField(field, buffer, N);
    return buffer;
}

}  // namespace

const char* TestRecord::InterpretationText(char* buffer, std::size_t size) const {
    if (buffer != nullptr && size > 0) {
        CopyField(interpretationText, buffer, size);
        return buffer;
    }
    static char copy[sizeof interpretationText];
    const bool terminated = std::memchr(interpretationText, '\0', sizeof interpretationText) != nullptr;
    return terminated ? interpretationText : Copied(interpretationText, copy);
}

void TestRecord::SetOriginalInterpretation(const KxDateTime* time, const char* text) {
    reportState = KX_REPORT_ORIGINAL;
    originalTime = time != nullptr ? *time : KxDateTime{};
    SetText(interpretationText, text);
}

void TestRecord::SetOverreadInterpretation(const KxDateTime* time, const char* text) {
    Set(reportState, KX_REPORT_OVERREAD);
    if (time != nullptr && std::memcmp(time, &overreadTime, sizeof overreadTime) != 0) {
        overreadTime = *time;
        modified = 1;
    }
    SetText(interpretationText, text);
}

void TestRecord::SetConfirmedInterpretation(const KxDateTime* time, const char* text) {
    reportState = KX_REPORT_CONFIRMED;
    confirmedTime = time != nullptr ? *time : KxDateTime{};
    SetText(interpretationText, text);
}

void TestRecord::CheckExternalReview() {
    if (IsOriginal() && history != nullptr && History::Of(*history).HasAction(kActionReviewedOutside)) {
        reportState = KX_REPORT_REVIEWED_OUTSIDE;
    }
}

const char* TestRecord::OriginalBy() const {
    static char copy[sizeof originalBy];
    return Copied(originalBy, copy);
}

const char* TestRecord::OverreadBy() const {
    static char copy[sizeof overreadBy];
    return Copied(overreadBy, copy);
}

const char* TestRecord::ConfirmedBy() const {
    static char copy[sizeof confirmedBy];
    return Copied(confirmedBy, copy);
}

void TestRecord::ReportStateText(const ResourceTexts& texts, char* buffer, std::size_t size) const {
    RecordListText(texts, kReportStateList, reportState, buffer, size);
}

void TestRecord::ReportStateAndAuthorText(const ResourceTexts& texts, char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return;
    }
    char stateText[kStateTextSize] = "";
    ReportStateText(texts, stateText, sizeof stateText);
    switch (reportState) {
        case KX_REPORT_ORIGINAL:
            std::snprintf(buffer, size, "%s - <%s>", stateText, OriginalBy());
            break;
        case KX_REPORT_OVERREAD:
            std::snprintf(buffer, size, "%s - <%s>", stateText, OverreadBy());
            break;
        case KX_REPORT_CONFIRMED:
            std::snprintf(buffer, size, "%s (%s)", stateText, ConfirmedBy());
            break;
        default:
            break;
    }
}

std::uint32_t TestRecord::MainsFrequency() const {
    if ((filterFlags & kMains50) != 0) {
        return 50;
    }
    return (filterFlags & kMains60) != 0 ? 60 : 0;
}

void TestRecord::SetMainsFrequency(std::uint32_t hz) {
    SetFilterBits(kMains50 | kMains60, hz == 50 ? kMains50 : hz == 60 ? kMains60 : 0);
}

std::uint32_t TestRecord::ArtifactFilter() const {
    if ((filterFlags & kArtifact) == 0) {
        return 0;
    }
    if ((filterFlags & kArtifactVariant2) != 0) {
        return 2;
    }
    return (filterFlags & kArtifactVariant3) != 0 ? 3 : 1;
}

void TestRecord::SetArtifactFilter(bool on, bool variant2, bool variant3) {
    SetFilterBits(kArtifact | kArtifactVariant2 | kArtifactVariant3, (on ? kArtifact : 0) |
                                                                         (variant2 ? kArtifactVariant2 : 0) |
                                                                         (variant3 ? kArtifactVariant3 : 0));
}

bool TestRecord::BaselineFilter() const {
    return (filterFlags & kBaseline) != 0;
}

void TestRecord::SetBaselineFilter(bool on) {
    SetFilterBits(kBaseline, on ? kBaseline : 0);
}

void TestRecord::SetDevice(const char* name, const char* serial, const char* revision) {
    StoreField(deviceName, name);
    StoreField(deviceSerial, serial);
    StoreField(deviceRevision, revision);
}

void TestRecord::DeviceText(char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return;
    }
    char name[sizeof deviceName];
    char serial[sizeof deviceSerial];
    char revision[sizeof deviceRevision];
    std::snprintf(buffer, size, "%s (SN: %s) rev %s", Copied(deviceName, name), Copied(deviceSerial, serial),
                  Copied(deviceRevision, revision));
}

void TestRecord::SetText7189(int index, const char* text) {
    if (index >= 0 && index < static_cast<int>(std::size(text7189))) {
        StoreField(text7189[index], text);
    }
}

void TestRecord::SetExerciseDevice(std::uint32_t device, bool inKilometres) {
    Set(exerciseDevice, device);
    Set(metricSpeed, inKilometres ? 1 : 0);
}

void TestRecord::SetBit(std::uint32_t& field, int bit, bool on) {
    if (bit >= 0 && bit < 32) {
        const std::uint32_t mask = std::uint32_t{1} << bit;
        Set(field, on ? field | mask : field & ~mask);
    }
}

}  // namespace kx
