#include "lib/measurement_text.h"

#include <cstdio>
#include <cstdlib>

#include "lib/hypertrophy_score.h"
#include "lib/measurement_values.h"
#include "lib/text_field.h"

namespace kx {

namespace {

constexpr std::size_t kTextSize = 64;

// What a field is written from.
struct Request {
    const KxMeasurementSet& set;
    int lead{};
    AmplitudeUnit unit{};
    std::int32_t stTimeMs{};

    const KxLeadMeasurements& Lead() const { return set.leads[lead]; }
};

using Writer = void (*)(const Request& request, char (&text)[kTextSize]);

constexpr char kNumber[] = "%d";
constexpr char kMilliseconds[] = "%d ms";
constexpr char kDegrees[] = "%d \xBA";  // the degree sign of Windows-1252

template <const char* kFormat, auto kField>
void WriteGlobal(const Request& request, char (&text)[kTextSize]) {
    std::snprintf(text, kTextSize, kFormat, int{request.set.*kField});
}

template <auto kField>
void WriteLead(const Request& request, char (&text)[kTextSize]) {
    std::snprintf(text, kTextSize, kNumber, int{request.Lead().*kField});
}

void WriteHeartRate(const Request& request, char (&text)[kTextSize]) {
    std::snprintf(text, kTextSize, kNumber, HeartRateOf(request.set));
}

template <auto kField>
void WriteScore(const Request& request, char (&text)[kTextSize]) {
    std::snprintf(text, kTextSize, kNumber,
                  int{ScoreHypertrophy(request.set, AtriumAmplitude::kReported).*kField});
}

void WriteQt(const Request& request, char (&text)[kTextSize]) {
    std::snprintf(text, kTextSize, "%d ms / %d", request.set.qtInterval, request.set.qtc);
}

void WriteNothing(const Request&, char (&text)[kTextSize]) {
    text[0] = '\0';
}

void WriteStLevel(const Request& request, char (&text)[kTextSize]) {
    const std::int32_t level = StLevelOf(request.Lead(), request.stTimeMs);
    const char* sign = level < 0 ? "-" : "";
    const std::int32_t size = std::abs(level);
    switch (request.unit) {
        case AmplitudeUnit::kMillimetres:
            std::snprintf(text, kTextSize, "%s%d.%d", sign, size / 100, size / 10 % 10);
            break;
        case AmplitudeUnit::kMillivolts:
            std::snprintf(text, kTextSize, "%s%01d.%02d", sign, size / 1000, size % 1000 / 10);
            break;
        default:
            std::snprintf(text, kTextSize, "%s%d", sign, size);
            break;
    }
}

// Millivolts per second to two decimals, from microvolts per second.
void WriteStSlope(const Request& request, char (&text)[kTextSize]) {
    if (request.stTimeMs < 1) {
        text[0] = '\0';
        return;
    }
    const std::int32_t slope = StSlopeOf(request.Lead(), request.stTimeMs);
    const std::int32_t hundredths = (std::abs(slope) + 5) / 10;
    std::snprintf(text, kTextSize, "%s%01d.%02d", slope < 0 ? "-" : "", hundredths / 100, hundredths % 100);
}

// A field, or one for each lead from I on.
struct Field {
    int code;
    int codes;  // one for each lead, or one for the whole beat
    Writer write;
};

using Set = KxMeasurementSet;
using Lead = KxLeadMeasurements;

constexpr Field kFields[] = {
    {20, 1, WriteGlobal<kMilliseconds, &Set::prInterval>},
    {21, 1, WriteGlobal<kMilliseconds, &Set::qrsDuration>},
    {22, 1, WriteQt},
    {34, 1, WriteHeartRate},
    // The ST levels alone have codes for the three further leads of a set too; 63 is a field of the patient.
    {48, KX_MEASURED_LEADS, WriteStLevel},
    {105, 1, WriteGlobal<kDegrees, &Set::pAxis>},
    {106, 1, WriteGlobal<kDegrees, &Set::qrsAxis>},
    {107, 1, WriteGlobal<kDegrees, &Set::tAxis>},
    {135, 1, WriteGlobal<kMilliseconds, &Set::pDuration>},
    {136, 1, WriteGlobal<kMilliseconds, &Set::qtInterval>},
    {137, 1, WriteGlobal<kNumber, &Set::qtc>},
    {138, 1, WriteGlobal<kNumber, &Set::qtcBazett>},
    {139, 1, WriteGlobal<kMilliseconds, &Set::rrInterval>},
    {143, KX_STANDARD_LEADS, WriteLead<&Lead::aP1>},
    {155, KX_STANDARD_LEADS, WriteLead<&Lead::aP2>},
    {167, KX_STANDARD_LEADS, WriteLead<&Lead::aR>},
    {179, KX_STANDARD_LEADS, WriteLead<&Lead::aR1>},
    {191, KX_STANDARD_LEADS, WriteLead<&Lead::aQ>},
    {215, KX_STANDARD_LEADS, WriteLead<&Lead::aT1>},
    {227, KX_STANDARD_LEADS, WriteLead<&Lead::aT2>},
    {239, KX_STANDARD_LEADS, WriteLead<&Lead::aS>},
    {251, KX_STANDARD_LEADS, WriteLead<&Lead::fieldValue251>},
    {263, KX_STANDARD_LEADS, WriteLead<&Lead::fieldValue263>},
    {275, KX_STANDARD_LEADS, WriteLead<&Lead::fieldValue275>},
    {335, KX_STANDARD_LEADS, WriteStSlope},
    {347, KX_STANDARD_LEADS, WriteLead<&Lead::intrinsicoidDeflection>},
    {368, 1, WriteNothing},
    {371, 1, WriteScore<&HypertrophyScore::sokolowLyon>},
    {372, 1, WriteScore<&HypertrophyScore::cornell>},
    {373, 1, WriteScore<&HypertrophyScore::totalPoints>},
};

// The rhythm fields, with what stands for a value that is not measured. How the second one of the last field
// is shown then was never laid down; it is shown like the first.
struct RhythmField {
    int code;
    Writer write;
    const char* notMeasured;
};

constexpr RhythmField kRhythmFields[] = {
    {17, WriteGlobal<kMilliseconds, &Set::prInterval>, "... ms"},
    {18, WriteGlobal<kMilliseconds, &Set::qrsDuration>, "... ms"},
    {19, WriteQt, "... ms / ..."},
};

}  // namespace

bool MeasurementFieldText(const KxMeasurementSet& set, int code, char* buffer, std::size_t size,
                          AmplitudeUnit amplitudeUnit, std::int32_t stTimeMs) {
    for (const Field& field : kFields) {
        if (code < field.code || code >= field.code + field.codes) {
            continue;
        }
        char text[kTextSize] = "..";
        if (set.measured != 0) {
            field.write({set, code - field.code, amplitudeUnit, stTimeMs}, text);
        }
        CopyText(text, buffer, size);
        return true;
    }
    return false;
}

bool RhythmFieldText(const KxMeasurementSet& set, int code, char* buffer, std::size_t size) {
    for (const RhythmField& field : kRhythmFields) {
        if (field.code == code) {
            char text[kTextSize];
            field.write({set}, text);
            CopyText(set.measured != 0 ? text : field.notMeasured, buffer, size);
            return true;
        }
    }
    return false;
}

}  // namespace kx
