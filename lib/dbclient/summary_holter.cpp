// The fields of Holter and ABPM recordings.
#include <cmath>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

// The templates of the suite use codes below 650. Those of the heart rates and of ABPM are this library's own
// and stand apart from them.
enum : int {
    kMeanRate = 700,
    kMinRate = 701,
    kMinRateTime = 702,
    kMaxRate = 703,
    kMaxRateTime = 704,
    kMeanPressure = 720,    // of the summary
    kPressureAtTime = 721,  // the last reading until the time
    kHeartRateAtTime = 722,
};

template <auto kField>
void PutRate(const SummaryOutput& output) {
    const KxHolterData* data = output.test.HolterData();
    if (data == nullptr || data->*kField == 0) {
        output.PutMissing();
    } else {
        output.Print("%u", data->*kField);
    }
}

// The time of day of a heart rate, where there is one.
template <auto kRate, auto kTimeMs>
void PutRateTime(const SummaryOutput& output) {
    const KxHolterData* data = output.test.HolterData();
    if (data == nullptr || data->*kRate == 0 ||
        !DateTime(output.test.acquisitionTime)
             .TimeAfter(data->*kTimeMs, output.buffer, output.size, output.request.locale)) {
        output.PutMissing();
    }
}

using Data = KxHolterData;

constexpr SummaryField kRateFields[] = {
    {kMeanRate, PutRate<&Data::meanHeartRate>},
    {kMinRate, PutRate<&Data::minHeartRate>},
    {kMinRateTime, PutRateTime<&Data::minHeartRate, &Data::minHeartRateMs>},
    {kMaxRate, PutRate<&Data::maxHeartRate>},
    {kMaxRateTime, PutRateTime<&Data::maxHeartRate, &Data::maxHeartRateMs>},
};

void PutPressure(const SummaryOutput& output, const KxPressureReading* reading) {
    if (reading == nullptr || reading->systolic == 0) {
        output.PutMissing();
    } else {
        output.Print("%u/%u", reading->systolic, reading->diastolic);
    }
}

const KxPressureReading* ReadingAtTime(const SummaryOutput& output) {
    const DateTime start = output.test.acquisitionTime;
    const KxPressureReading* last = nullptr;
    for (std::uint32_t i = 0; i < output.test.PressureCount(); ++i) {
        const KxPressureReading* reading = output.test.Pressure(static_cast<int>(i));
        if (reading != nullptr && DateTime(reading->time).MillisecondsSince(start) <= output.request.timeMs) {
            last = reading;
        }
    }
    return last;
}

constexpr SummaryField kPressureFields[] = {
    {kMeanPressure, [](const SummaryOutput& output) { PutPressure(output, output.test.Pressure(-1)); }},
    {kPressureAtTime, [](const SummaryOutput& output) { PutPressure(output, ReadingAtTime(output)); }},
    {kHeartRateAtTime,
     [](const SummaryOutput& output) {
         const KxPressureReading* reading = ReadingAtTime(output);
         if (reading == nullptr || reading->heartRate == 0) {
             output.PutMissing();
         } else {
             output.Print("%u", reading->heartRate);
         }
     }},
};

// The summary's groups take four codes each.
constexpr int kFirstGroupCode = 374;
constexpr int kCodesOfGroup = 4;
enum : int { kFirstValue, kSecondValue, kRange };  // the fourth is an empty text

bool IsWholeNumber(double value) {
    return std::fabs(value) < 2147483647.0;  // false for NaN
}

}  // namespace

bool RenderHolterRateField(const SummaryOutput& output) {
    return RenderField(kRateFields, output);
}

bool RenderPressureField(const SummaryOutput& output) {
    return RenderField(kPressureFields, output);
}

bool RenderHolterSummaryField(const SummaryOutput& output) {
    const int place = output.code - kFirstGroupCode;
    if (place < 0 || place >= KX_HOLTER_GROUPS * kCodesOfGroup) {
        return false;
    }
    const KxHolterSummary* summary = output.test.HolterSummary();
    const int item = place % kCodesOfGroup;
    if (item > kRange) {
        return true;
    }
    if (summary == nullptr) {
        output.PutMissing();
        return true;
    }
    const KxHolterGroup& group = summary->groups[place / kCodesOfGroup];
    if (!IsWholeNumber(group.first) || !IsWholeNumber(group.second)) {
        output.PutMissing();
        return true;
    }
    const long first = std::lround(group.first);
    const long second = std::lround(group.second);
    if (item == kRange) {
        output.Print("%ld - %ld", first, second);
    } else {
        output.Print("%ld", item == kFirstValue ? first : second);
    }
    return true;
}

}  // namespace kx
