#include "bench/evaluation/reference.h"

#include <algorithm>
#include <cmath>

namespace kx::evaluation {
namespace {

// A mark belongs to the beat whose alignment point is this near to the mark of its QRS complex, ms.
constexpr double kSameBeat = 120;

using LeadBeats = std::vector<MarkedBeat>;

const MarkedBeat* BeatAt(const LeadBeats& beats, double ms) {
    const MarkedBeat* nearest = nullptr;
    for (const MarkedBeat& beat : beats) {
        const double away = std::fabs(beat.qrs.peak - ms);
        if (away <= kSameBeat && (!nearest || away < std::fabs(nearest->qrs.peak - ms))) {
            nearest = &beat;
        }
    }
    return nearest;
}

Places PlacesOf(const MarkedBeat& beat) {
    Places places;
    if (beat.p) {
        places[kPOn] = beat.p->on;
        places[kPOff] = beat.p->off;
    }
    places[kQrsOn] = beat.qrs.on;
    places[kQrsOff] = beat.qrs.off;
    if (beat.t) {
        places[kTOn] = beat.t->on;
        places[kTOff] = beat.t->off;
    }
    return places;
}

bool IsOnset(std::size_t boundary) {
    return boundary == kPOn || boundary == kQrsOn || boundary == kTOn;
}

// The outermost but one; of a single lead its own.
std::optional<double> OutermostButOne(const BeatPlaces& places, std::size_t boundary) {
    std::vector<double> values;
    for (const Places& lead : places.leads) {
        if (lead[boundary]) {
            values.push_back(*lead[boundary]);
        }
    }
    std::sort(values.begin(), values.end());
    if (!IsOnset(boundary)) {
        std::reverse(values.begin(), values.end());
    }
    return values.empty() ? std::nullopt : std::optional(values[values.size() == 1 ? 0 : 1]);
}

double Median(std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

// The marks of one boundary over the beats.
struct Collected {
    std::array<std::vector<double>, kBoundaries> offsets;
    std::size_t beats = 0;

    void Add(const Places& places, double alignedMs) {
        ++beats;
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            if (places[i]) {
                offsets[i].push_back(*places[i] - alignedMs);
            }
        }
    }
    void Conclude(double alignmentMs, Places& places, std::array<bool, kBoundaries>& absent) {
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            absent[i] = beats > 0 && offsets[i].empty();
            if (beats > 0 && 2 * offsets[i].size() >= beats) {
                places[i] = alignmentMs + Median(offsets[i]);
            }
        }
    }
};

std::optional<double> Marked(std::uint16_t place) {
    return place == 0 ? std::nullopt : std::optional<double>(place);
}

}  // namespace

Reference MakeReference(std::span<const std::vector<MarkedBeat>> leads, const std::vector<int>& beatsMs,
                        double alignmentMs) {
    Reference reference;
    reference.absentGlobal.fill(true);
    for (std::size_t lead = 0; lead < leads.size(); ++lead) {
        Collected own;
        for (const int ms : beatsMs) {
            if (const MarkedBeat* beat = BeatAt(leads[lead], ms)) {
                own.Add(PlacesOf(*beat), ms);
            }
        }
        own.Conclude(alignmentMs, reference.places.leads[lead], reference.absent[lead]);
        for (std::size_t i = 0; i < kBoundaries && own.beats > 0; ++i) {
            reference.absentGlobal[i] = reference.absentGlobal[i] && reference.absent[lead][i];
        }
    }
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        reference.places.global[i] = i == kTOn ? std::nullopt : OutermostButOne(reference.places, i);
    }
    return reference;
}

BeatPlaces MeasuredPlaces(const KxMeasurementSet& set) {
    BeatPlaces places;
    const KxLeadMeasurements& first = set.leads[0];
    places.global = {Marked(first.pOn),    Marked(first.pOff), Marked(first.qrsOn),
                     Marked(first.qrsOff), std::nullopt,       Marked(first.tOff)};
    for (std::size_t code = 0; code < recording::kLeadCount; ++code) {
        const KxLeadMeasurements& lead = set.leads[code];
        std::optional<double> complex;
        for (const std::uint16_t component :
             {lead.qOnMarker, lead.rOnMarker, lead.sOnMarker, lead.rPrimeOnMarker, lead.sPrimeOnMarker}) {
            if (component != 0) {
                complex = component;
                break;
            }
        }
        places.leads[code] = {Marked(lead.pOnMarker),    Marked(lead.pOffMarker), complex,
                              Marked(lead.qrsOffMarker), Marked(lead.tOnMarker),  Marked(lead.tOffMarker)};
    }
    return places;
}

}  // namespace kx::evaluation
