// The texts of an event of a recording: its class and its heart rate.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

// What the value of an event is.
enum class EventValue { kNone, kCount, kPercent, kPauseMs, kStChange };

struct EventClass {
    int number;
    const char* name;
    EventValue value;
};

constexpr EventClass kEventClasses[] = {
    {0, "Normal Beats", EventValue::kNone},     {1, "Max. HR", EventValue::kNone},
    {2, "Min. HR", EventValue::kNone},          {3, "Tachycardia", EventValue::kCount},
    {4, "Bradycardia", EventValue::kCount},     {5, "Isolated SVEB", EventValue::kPercent},
    {6, "SVEB Pair", EventValue::kPercent},     {7, "SVEB Run", EventValue::kCount},
    {8, "Isolated VEB", EventValue::kPercent},  {10, "Isolated VEB (R on T)", EventValue::kPercent},
    {11, "VEB Pair", EventValue::kPercent},     {12, "Bigeminy", EventValue::kCount},
    {13, "VEB Run", EventValue::kCount},        {14, "Pause", EventValue::kPauseMs},
    {15, "STe Change", EventValue::kStChange},  {16, "Irregular Rhythm", EventValue::kCount},
    {17, "Noise", EventValue::kNone},           {18, "User", EventValue::kNone},
    {23, "Trigeminy", EventValue::kCount},      {24, "Quadrigeminy", EventValue::kCount},
    {25, "Aberrant", EventValue::kNone},        {26, "A Pace", EventValue::kNone},
    {27, "V Pace", EventValue::kNone},          {28, "AV Pace", EventValue::kNone},
    {29, "Sense Failure", EventValue::kNone},   {30, "Capture Failure", EventValue::kNone},
    {31, "Inhibition", EventValue::kNone},      {32, "VEB Triplet", EventValue::kPercent},
    {33, "SVEB Triplet", EventValue::kPercent}, {34, "Atrial Fib.", EventValue::kCount},
};

// Has a heart rate, but no name.
constexpr EventClass kUnnamedRateClass = {19, "?", EventValue::kNone};

const EventClass* FindClass(int number) {
    const auto* found = std::find_if(std::begin(kEventClasses), std::end(kEventClasses),
                                     [number](const EventClass& one) { return one.number == number; });
    if (found != std::end(kEventClasses)) {
        return found;
    }
    return number == kUnnamedRateClass.number ? &kUnnamedRateClass : nullptr;
}

// Shorter buffers could not hold every heart-rate text.
constexpr std::size_t kShortestRateBuffer = 33;
constexpr char kUnknownRate[] = "HR: 0";

// The high byte of the value is the change in tenths of the unit, the low byte more by 10 than what is shown
// behind it.
void PutStChange(const SummaryOutput& output) {
    const auto value = static_cast<std::uint32_t>(output.request.eventValue);
    // The byte is a signed one.
    const int tenths = static_cast<int>((value >> 8 & 0xFF) ^ 0x80) - 0x80;
    const char* unit = output.request.amplitudeUnitName;
    char change[24];
    std::snprintf(change, sizeof change, "%c%d.%d %.8s", tenths < 0 ? '-' : '+', std::abs(tenths) / 10,
                  std::abs(tenths) % 10, unit != nullptr ? unit : "");
    output.Print("HR: %d (%s (%d))", output.request.eventHeartRate, change,
                 static_cast<int>(value & 0xFF) - 10);
}

void PutRateAndValue(const SummaryOutput& output, EventValue kind) {
    const int rate = output.request.eventHeartRate;
    const int value = output.request.eventValue;
    switch (kind) {
        case EventValue::kNone:
            output.Print("HR: %d", rate);
            break;
        case EventValue::kCount:
            output.Print("HR: %d (%d)", rate, value);
            break;
        case EventValue::kPercent:
            output.Print("HR: %d (%d%%)", rate, value);
            break;
        case EventValue::kPauseMs:
            output.Print("HR: %d (%d.%d s)", rate, value / 1000, std::abs(value % 1000) / 100);
            break;
        case EventValue::kStChange:
            PutStChange(output);
            break;
    }
}

}  // namespace

void PutEventName(const SummaryOutput& output) {
    const char* custom = output.request.eventText;
    if (custom != nullptr && custom[0] != '\0') {
        output.Put(custom);
        return;
    }
    const EventClass* event = FindClass(output.request.eventClass);
    output.Put(event != nullptr ? event->name : "?");
}

void PutEventHeartRate(const SummaryOutput& output) {
    if (output.size < kShortestRateBuffer) {
        return;
    }
    const EventClass* event = FindClass(output.request.eventClass);
    if (event == nullptr) {
        output.Put("...");
        return;
    }
    PutRateAndValue(output, event->value);
    constexpr std::size_t kRateAt = sizeof kUnknownRate - 2;
    if (std::strncmp(output.buffer, kUnknownRate, sizeof kUnknownRate - 1) == 0) {
        output.buffer[kRateAt] = '?';
    }
}

}  // namespace kx
