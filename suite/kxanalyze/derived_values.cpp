#include "suite/kxanalyze/derived_values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "suite/kxanalyze/components.h"

namespace kx::analysis {
namespace {

std::int16_t ToWord(double microvolts) {
    return static_cast<std::int16_t>(std::lround(std::clamp(microvolts, -32768.0, 32767.0)));
}

std::uint16_t ToTime(double ms) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(ms, 0.0, 65535.0)));
}

// Between two points that may be absent.
std::uint16_t Between(Place from, Place to) {
    return from == 0 || to == 0 ? std::uint16_t{0} : ToTime(static_cast<double>(to) - from);
}

// Net area of a wave above the line between the two levels, microvolt milliseconds.
double Area(const Trace& level, Place from, Place to, double first, double last) {
    double area = 0;
    const Place end = std::min(to, static_cast<Place>(level.size()));
    for (Place i = std::max(from, 0); i < end; ++i) {
        const double part = static_cast<double>(i - from) / std::max(to - from, 1);
        area += level[static_cast<std::size_t>(i)] - (first + (last - first) * part);
    }
    return area;
}

// Height and depth of a complex together, microvolts.
double NetDeflection(const Trace& level, double base, Place from, Place to) {
    return Extremum(level, base, from, to, 1) + Extremum(level, base, from, to, -1);
}

// aVF is an augmented lead: its vector is shorter than that of lead I by this factor.
std::int16_t AxisDegrees(double netI, double netAvf) {
    if (netI == 0 && netAvf == 0) {
        return 0;
    }
    const double radians = std::atan2(netAvf * 2 / std::numbers::sqrt3, netI);
    const long degrees = std::lround(radians * 180 / std::numbers::pi);
    return static_cast<std::int16_t>(degrees == -180 ? 180 : degrees);
}

// Amplitude of the component that begins at `on` and ends where the next present one begins.
double ComponentAmplitude(const Trace& level, double base, const LeadRow& markers, std::size_t component,
                          std::size_t last, int sign) {
    const Place on = markers[component];
    if (on == 0) {
        return 0;
    }
    for (std::size_t next = component + 1; next <= last; ++next) {
        if (markers[next] != 0) {
            return Extremum(level, base, on, markers[next], sign);
        }
    }
    return 0;
}

}  // namespace

void DeriveIntervals(const GlobalRow& points, KxMeasurementSet& set) {
    set.pDuration = Between(points[kGlobalPOn], points[kGlobalPOff]);
    set.prInterval =
        points[kGlobalPOff] == 0 ? std::uint16_t{0} : Between(points[kGlobalPOn], points[kGlobalQrsOn]);
    set.qrsDuration = Between(points[kGlobalQrsOn], points[kGlobalQrsOff]);
    set.qtInterval = Between(points[kGlobalQrsOn], points[kGlobalTOff]);
    const double rrSeconds = set.rrInterval / 1000.0;
    set.qtc = rrSeconds == 0 ? std::uint16_t{0} : ToTime(set.qtInterval / std::cbrt(rrSeconds));
    set.qtcBazett = rrSeconds == 0 ? std::uint16_t{0} : ToTime(set.qtInterval / std::sqrt(rrSeconds));
}

void DeriveAxes(const Beat& beat, const GlobalRow& points, Place tOn, KxMeasurementSet& set) {
    set.pAxis = set.qrsAxis = set.tAxis = 0;
    const BeatLead& leadI = beat.leads[KX_LEAD_I];
    const BeatLead& leadAvf = beat.leads[KX_LEAD_AVF];
    if (!leadI.present || !leadAvf.present) {
        return;
    }
    const auto base = [&](const BeatLead& lead) {
        return IsoelectricLevel(lead, points[kGlobalQrsOn], points[kGlobalPOff]);
    };
    if (points[kGlobalQrsOn] != 0 && points[kGlobalQrsOff] != 0) {
        const auto net = [&](const BeatLead& lead) {
            return NetDeflection(lead.level, base(lead), points[kGlobalQrsOn], points[kGlobalQrsOff]);
        };
        set.qrsAxis = AxisDegrees(net(leadI), net(leadAvf));
    }
    if (points[kGlobalTOff] != 0) {
        const auto area = [&](const BeatLead& lead) {
            return Area(lead.level, std::max(tOn, points[kGlobalQrsOff]), points[kGlobalTOff], base(lead),
                        base(lead));
        };
        set.tAxis = AxisDegrees(area(leadI), area(leadAvf));
    }
    if (points[kGlobalPOn] != 0 && points[kGlobalPOff] != 0) {
        const auto area = [&](const BeatLead& lead) {
            return Area(lead.level, points[kGlobalPOn], points[kGlobalPOff],
                        LevelBeforeP(lead, points[kGlobalPOn]),
                        IsoelectricLevel(lead, points[kGlobalQrsOn], points[kGlobalPOff]));
        };
        set.pAxis = AxisDegrees(area(leadI), area(leadAvf));
    }
}

void DeriveLeadValues(const BeatLead& lead, const GlobalRow& points, const LeadRow& markers,
                      KxLeadMeasurements& values) {
    values.aP1 = values.aP2 = values.aQ = values.aR = values.aS = values.aR1 = values.aS1 = 0;
    values.aT1 = values.aT2 = 0;
    values.intrinsicoidDeflection = 0;
    std::fill(std::begin(values.stLevel), std::end(values.stLevel), std::int16_t{0});
    if (!lead.present) {
        return;
    }
    const Trace& level = lead.level;
    const double base = IsoelectricLevel(lead, points[kGlobalQrsOn], points[kGlobalPOff]);
    const auto qrs = [&](LeadMarker component, int sign) {
        return ToWord(ComponentAmplitude(level, base, markers, component, kLeadQrsOff, sign));
    };
    values.aQ = qrs(kLeadQOn, -1);
    values.aR = qrs(kLeadROn, 1);
    values.aS = qrs(kLeadSOn, -1);
    values.aR1 = qrs(kLeadRPrimeOn, 1);
    values.aS1 = qrs(kLeadSPrimeOn, -1);
    if (markers[kLeadPOff] != 0) {
        const double before = LevelBeforeP(lead, markers[kLeadPOn]);
        values.aP1 = ToWord(ComponentAmplitude(lead.fine, before, markers, kLeadPOn, kLeadPOff, 0));
        values.aP2 = ToWord(ComponentAmplitude(lead.fine, before, markers, kLeadPPrimeOn, kLeadPOff, 0));
    }
    values.aT1 = ToWord(ComponentAmplitude(lead.fine, base, markers, kLeadTOn, kLeadTOff, 0));
    values.aT2 = ToWord(ComponentAmplitude(lead.fine, base, markers, kLeadTPrimeOn, kLeadTOff, 0));

    const bool second = markers[kLeadRPrimeOn] != 0;
    const Place rOn = second ? markers[kLeadRPrimeOn] : markers[kLeadROn];
    const Place fallOn = second ? markers[kLeadSPrimeOn] : markers[kLeadSOn];
    const Place rEnd = fallOn != 0 ? fallOn : markers[kLeadQrsOff];
    const Place peak = rOn == 0 ? 0 : ExtremumPlace(level, base, rOn, rEnd, 1);
    values.intrinsicoidDeflection = Between(points[kGlobalQrsOn], peak);

    for (std::size_t k = 0; k < std::size(values.stLevel); ++k) {
        const Place place = std::clamp(points[kGlobalQrsOff] + 10 * static_cast<Place>(k), 0,
                                       static_cast<Place>(level.size()) - 1);
        values.stLevel[k] = ToWord(lead.fine[static_cast<std::size_t>(place)] - base);
    }
}

}  // namespace kx::analysis
