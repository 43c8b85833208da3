#include "host/report/measurement_listing.h"

#include <array>
#include <string_view>

namespace kxhost {
namespace {

void AddLine(std::string& text, std::string_view name, int value) {
    text += name;
    text += '\t';
    text += std::to_string(value);
    text += '\n';
}

// One row per field; reading goes by member, so that nothing here knows an offset.
template <class Record>
struct Field {
    std::string_view name;
    int (*value)(const Record&);
};

#define KX_FIELD(name)                                               \
    {                                                                \
#name, [](const auto& record) -> int { return record.name; } \
    }

constexpr Field<KxMeasurementSet> kGlobalValues[] = {
    KX_FIELD(pDuration),   KX_FIELD(prInterval), KX_FIELD(qtInterval), KX_FIELD(qtc),     KX_FIELD(qtcBazett),
    KX_FIELD(qrsDuration), KX_FIELD(rrInterval), KX_FIELD(pAxis),      KX_FIELD(qrsAxis), KX_FIELD(tAxis),
};

// The global fiducial points are read from the first lead's block.
constexpr Field<KxLeadMeasurements> kFiducials[] = {
    KX_FIELD(pOn), KX_FIELD(pOff), KX_FIELD(qrsOn), KX_FIELD(qrsOff), KX_FIELD(tOff),
};

constexpr Field<KxLeadMeasurements> kLeadValues[] = {
    KX_FIELD(aP1),
    KX_FIELD(aP2),
    KX_FIELD(aQ),
    KX_FIELD(aR),
    KX_FIELD(aS),
    KX_FIELD(aR1),
    KX_FIELD(aS1),
    KX_FIELD(aT1),
    KX_FIELD(aT2),
    KX_FIELD(intrinsicoidDeflection),
    KX_FIELD(fieldValue251),
    KX_FIELD(fieldValue263),
    KX_FIELD(fieldValue275),
    KX_FIELD(pOnMarker),
    KX_FIELD(pPrimeOnMarker),
    KX_FIELD(pOffMarker),
    KX_FIELD(qOnMarker),
    KX_FIELD(rOnMarker),
    KX_FIELD(sOnMarker),
    KX_FIELD(rPrimeOnMarker),
    KX_FIELD(sPrimeOnMarker),
    KX_FIELD(qrsOffMarker),
    KX_FIELD(tOnMarker),
    KX_FIELD(tPrimeOnMarker),
    KX_FIELD(tOffMarker),
};

#undef KX_FIELD

constexpr std::array<const char*, KX_STANDARD_LEADS> kLeadNames{"I",  "II", "III", "aVR", "aVL", "aVF",
                                                                "V1", "V2", "V3",  "V4",  "V5",  "V6"};

void AddLead(std::string& text, std::string_view lead, const KxLeadMeasurements& block) {
    const std::string prefix = std::string(lead) + '.';
    for (const auto& field : kLeadValues)
        AddLine(text, prefix + std::string(field.name), field.value(block));
    for (int k = 0; k < KX_ST_LEVELS; ++k)
        AddLine(text, prefix + "stLevel" + std::to_string(k), block.stLevel[k]);
}

}  // namespace

const char* LeadName(unsigned leadCode) {
    return leadCode < kLeadNames.size() ? kLeadNames[leadCode] : "";
}

std::string ListMeasurements(std::span<const int> beatsMs, int rPeakMs, const KxMeasurementSet& set) {
    std::string text;
    for (const int beat : beatsMs)
        AddLine(text, "beat", beat);
    AddLine(text, "rPeak", rPeakMs);
    for (const auto& field : kGlobalValues)
        AddLine(text, field.name, field.value(set));
    for (const auto& field : kFiducials)
        AddLine(text, field.name, field.value(set.leads[0]));
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead)
        AddLead(text, kLeadNames[lead], set.leads[lead]);
    return text;
}

}  // namespace kxhost
