#include "host/recording/electrodes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr double kOpposite = -0.4;  // correlation of two leads' QRS complexes
constexpr double kAxisOfI = 0;
constexpr double kAxisOfII = 60;
constexpr double kAxisOfAvf = 90;

// Of the QRS complexes in two leads, each against its level at the onset.
double Correlation(const std::vector<std::int16_t>& a, const std::vector<std::int16_t>& b, std::size_t on,
                   std::size_t off) {
    double products = 0, squaresA = 0, squaresB = 0;
    for (std::size_t i = on; i < std::min({off, a.size(), b.size()}); ++i) {
        const double x = a[i] - a[on], y = b[i] - b[on];
        products += x * y;
        squaresA += x * x;
        squaresB += y * y;
    }
    const double scale = std::sqrt(squaresA * squaresB);
    return scale > 0 ? products / scale : 0;
}

bool HasPOfExchangedLeftElectrodes(const KxMeasurementSet& set) {
    const KxLeadMeasurements &i = set.leads[kLeadI], &ii = set.leads[kLeadII], &iii = set.leads[kLeadIII];
    return i.aP1 > 0 && i.aP1 >= ii.aP1 && iii.aP1 < 0 && iii.aP2 > 0;
}

}  // namespace

const char* FindExchangedElectrodes(const MedianBeat& beat, const KxMeasurementSet& set) {
    if (set.measured == 0 || set.pDuration == 0) {
        return nullptr;
    }
    const auto on = static_cast<std::size_t>(ToSamples(set.leads[0].qrsOn)),
               off = static_cast<std::size_t>(ToSamples(set.leads[0].qrsOff));
    const auto p = [&](double axis) { return std::cos((set.pAxis - axis) * std::numbers::pi / 180); };
    const auto isOpposite = [&](std::size_t lead) {
        return Correlation(beat.leads[lead], beat.leads[kLeadV1 + 5], on, off) < kOpposite;
    };
    // aVF is as it was when the arms are exchanged, and aVR in the other case.
    if (p(kAxisOfAvf) >= 0 && p(kAxisOfI) < 0 && isOpposite(kLeadI)) {
        return "the electrodes of the right and the left arm seem to be exchanged";
    }
    if (p(kAxisOfAvf) < 0 && p(kAxisOfII) < 0 && isOpposite(kLeadII)) {
        return "the electrodes of the right arm and the left leg seem to be exchanged";
    }
    if (HasPOfExchangedLeftElectrodes(set)) {
        return "the electrodes of the left arm and the left leg seem to be exchanged";
    }
    return nullptr;
}

}  // namespace kx::recording
