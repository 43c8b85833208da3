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

// The values of the whole beat, each with its name.
template <class Visit>
void EachValue(const MeasuredRecord& record, Visit visit) {
    visit("rPeak", record.rPeakMs);
    for (const auto& field : kGlobalValues) {
        visit(field.name, field.value(record.set));
    }
    for (const kx::FiducialMarker& marker : kx::kGlobalMarkers) {
        visit(marker.field, int{record.set.leads[0].*marker.ms});
    }
}

// Those of one lead.
template <class Visit>
void EachValueOf(const KxLeadMeasurements& block, Visit visit) {
    for (const kx::AmplitudeColumn& amplitude : kx::kAmplitudeColumns) {
        visit(amplitude.field, int{block.*amplitude.value});
    }
    for (const auto& field : kLeadValues) {
        visit(field.name, field.value(block));
    }
    for (const kx::FiducialMarker& marker : kx::kLeadMarkers) {
        visit(marker.field, int{block.*marker.ms});
    }
    for (int k = 0; k < KX_ST_LEVELS; ++k) {
        visit("stLevel" + std::to_string(k), int{block.stLevel[k]});
    }
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    return quoted + '"';
}

void AddMember(std::string& json, std::string_view name, int value) {
    json += (json.back() == '{' ? "" : ",") + Quoted(name) + ':' + std::to_string(value);
}

}  // namespace

std::string ListMeasurements(const MeasuredRecord& record, bool named) {
    std::string text = named ? "record\t" + record.name + '\n' : "";
    for (const int beat : record.beatsMs) {
        AddLine(text, "beat", beat);
    }
    EachValue(record, [&](std::string_view name, int value) { AddLine(text, name, value); });
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        const std::string prefix = std::string(kx::kLeadNames[lead]) + '.';
        EachValueOf(record.set.leads[lead], [&](std::string_view name, int value) {
            AddLine(text, prefix + std::string(name), value);
        });
    }
    return text;
}

std::string MeasurementsJson(const MeasuredRecord& record) {
    std::string json = "{\"record\":" + Quoted(record.name) + ",\"beats\":[";
    for (const int beat : record.beatsMs) {
        json += (json.back() == '[' ? "" : ",") + std::to_string(beat);
    }
    json += ']';
    EachValue(record, [&](std::string_view name, int value) { AddMember(json, name, value); });
    json += ",\"leads\":{";
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        json += (lead == 0 ? "" : ",") + Quoted(kx::kLeadNames[lead]) + ":{";
        EachValueOf(record.set.leads[lead],
                    [&](std::string_view name, int value) { AddMember(json, name, value); });
        json += '}';
    }
    return json + "}}";
}

}  // namespace kxhost
