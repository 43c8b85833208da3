#include "host/report/measurement_listing.h"

#include <string_view>

#include "lib/fiducial_markers.h"
#include "lib/measurement_table.h"

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

constexpr Field<KxLeadMeasurements> kLeadValues[] = {
    KX_FIELD(intrinsicoidDeflection),
    KX_FIELD(fieldValue251),
    KX_FIELD(fieldValue263),
    KX_FIELD(fieldValue275),
};

#undef KX_FIELD

void AddLead(std::string& text, std::string_view lead, const KxLeadMeasurements& block) {
    const std::string prefix = std::string(lead) + '.';
    for (const kx::AmplitudeColumn& amplitude : kx::kAmplitudeColumns)
        AddLine(text, prefix + amplitude.field, block.*amplitude.value);
    for (const auto& field : kLeadValues)
        AddLine(text, prefix + std::string(field.name), field.value(block));
    for (const kx::FiducialMarker& marker : kx::kLeadMarkers)
        AddLine(text, prefix + marker.field, block.*marker.ms);
    for (int k = 0; k < KX_ST_LEVELS; ++k)
        AddLine(text, prefix + "stLevel" + std::to_string(k), block.stLevel[k]);
}

}  // namespace

std::string ListMeasurements(std::span<const int> beatsMs, int rPeakMs, const KxMeasurementSet& set) {
    std::string text;
    for (const int beat : beatsMs)
        AddLine(text, "beat", beat);
    AddLine(text, "rPeak", rPeakMs);
    for (const auto& field : kGlobalValues)
        AddLine(text, field.name, field.value(set));
    for (const kx::FiducialMarker& marker : kx::kGlobalMarkers)
        AddLine(text, marker.field, set.leads[0].*marker.ms);
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead)
        AddLead(text, kx::kLeadNames[lead], set.leads[lead]);
    return text;
}

}  // namespace kxhost
