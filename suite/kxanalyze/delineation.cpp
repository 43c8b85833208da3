#include "suite/kxanalyze/delineation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "suite/kxanalyze/curve.h"
#include "suite/kxanalyze/network_input.h"
#include "suite/kxanalyze/waves_by_rules.h"

namespace kx::analysis {
namespace {

// How far from the rules the network is believed, ms.
constexpr int kBelievedQrs = 40;
constexpr int kBelievedP = 60;
constexpr int kBelievedT = 80;
// How much likelier recordings with P waves are to show one wave before every beat than those without, as a
// logarithm: by the rule of succession 2.0 to 2.8 in any four of the folds.
constexpr double kOddsOfLead = 2;
// From such a PR interval on, of a wave that is clear to the rules, the networks are shown one of this
// length: ms, and how long before the complex the segment is cut.
constexpr int kLongPr = 260;
constexpr int kUsualPr = 180;
constexpr int kCutBeforeQrs = 20;
// The leads' ends follow one that was moved so far.
constexpr double kLeadShare = 0.5;
// The T wave of all leads ends so much later than the late quantile of the leads' ends, ms, which is steadier
// than the network's own point of all leads.
constexpr double kTOffLag = 4;
// Of two T ends far from one another the one is taken that is nearer to a QT interval of 400 ms at one second
// (L. S. Fridericia, Acta Med. Scand. 53, 469-486, 1920).
constexpr double kQtAtOneSecond = 400;
constexpr int kAssumedRr = 900;
// What moves the leads' P ends is at most so far away from them, ms, and so much later they are then.
constexpr double kFarthestPOff = 40;
constexpr double kPOffLag = 2;
// A lead's point so far from those of the other leads is theirs, ms.
constexpr std::array<double, kLeadPoints> kApart = {90, 90, 60, 60, 120, 60};
// A wave that begins or ends so near to the end of the block is not wholly in it, ms.
constexpr int kEdge = 6;
// The shortest waves and the least distances between them, ms.
constexpr int kShortestP = 20;
constexpr int kShortestQrs = 20;
constexpr int kShortestT = 40;
constexpr int kBetween = 2;

// The points of the network, as it gives them.
enum LeadPoint : std::size_t { kPOnPoint, kPOffPoint, kQrsOnPoint, kQrsOffPoint, kTOnPoint, kTOffPoint };

// The place of a point, which is ms from the centre of the complex.
Place PlaceOf(const Beat& beat, double ms) {
    return std::clamp(Rounded(beat.centre + ms), 1, beat.length - 1);
}

// An end of the complex: between what the two see when they agree, else what the rules see.
Place JoinQrsPoint(Place network, Place rules, double byRules) {
    return std::abs(network - rules) > kBelievedQrs ? rules : Rounded(network + byRules * (rules - network));
}

Place JoinTOff(const Beat& beat, Place qrsOn, Place network, Place rules) {
    if (std::abs(network - rules) <= kBelievedT) {
        return network;
    }
    const double expected = qrsOn + kQtAtOneSecond * std::cbrt((beat.rr > 0 ? beat.rr : kAssumedRr) / 1000.0);
    return std::fabs(network - expected) <= std::fabs(rules - expected) ? network : rules;
}

Place JoinPPoint(Place network, Place rules) {
    return rules != 0 && std::abs(network - rules) > kBelievedP ? rules : network;
}

// One point of the leads that are present, ms from the centre of the complex.
LeadValues SettledPoints(const Beat& beat, const NetworkPoints& output, LeadPoint point) {
    LeadValues own;
    std::size_t count = 0;
    for (const BeatLead& lead : beat.leads) {
        if (lead.present) {
            own.Add(output.leads[count++][point]);
        }
    }
    const double middle = Median(beat, own);
    LeadValues settled;
    for (const double value : std::span<const double>(own)) {
        settled.Add(std::fabs(value - middle) > kApart[point] ? middle : value);
    }
    return settled;
}

// Puts them in their places. shift: by how much the point of all leads was moved from where the network saw
// it.
template <Place Interval::*kEnd>
void TakeLeads(const Beat& beat, const NetworkPoints& output, LeadPoint point, double shift,
               WaveBoundaries& wave) {
    const LeadValues values = SettledPoints(beat, output, point);
    auto value = std::span<const double>(values).begin();
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            wave.leads[code].*kEnd = PlaceOf(beat, shift + *value++);
        }
    }
}

WaveBoundaries JoinQrs(const Beat& beat, const QrsByRules& rules, const NetworkPoints& output,
                       const Joining& joining) {
    WaveBoundaries qrs;
    const Place on = PlaceOf(beat, output.global[kQrsOnPoint]),
                off = PlaceOf(beat, output.global[kQrsOffPoint]);
    qrs.global.on = rules.paced ? rules.all.on : JoinQrsPoint(on, rules.all.on, joining.onsetByRules);
    qrs.global.off = JoinQrsPoint(off, rules.all.off, joining.offsetByRules);
    qrs.global.off = std::max(qrs.global.off, std::min(qrs.global.on + kShortestQrs, beat.length - 1));
    TakeLeads<&Interval::on>(beat, output, kQrsOnPoint, kLeadShare * (qrs.global.on - on), qrs);
    TakeLeads<&Interval::off>(beat, output, kQrsOffPoint, kLeadShare * (qrs.global.off - off), qrs);
    return qrs;
}

WaveBoundaries JoinT(const Beat& beat, Place rules, const WaveBoundaries& qrs, const NetworkPoints& output,
                     double lateQuantile) {
    WaveBoundaries t;
    if (rules == 0) {
        return t;
    }
    const double late = Quantile(beat, SettledPoints(beat, output, kTOffPoint), lateQuantile);
    const Place off = PlaceOf(beat, late + kTOffLag);
    t.global.off = JoinTOff(beat, qrs.global.on, off, rules);
    if (t.global.off >= beat.length - kEdge || t.global.off < qrs.global.off + kShortestT) {
        return {};
    }
    TakeLeads<&Interval::on>(beat, output, kTOnPoint, 0, t);
    TakeLeads<&Interval::off>(beat, output, kTOffPoint, t.global.off - off, t);
    t.global.on = t.global.off;
    for (const Interval& lead : t.leads) {
        if (lead.Present()) {
            t.global.on = std::clamp(lead.on, qrs.global.off, t.global.on);
        }
    }
    return t;
}

// For all to say: what the networks take for the odds of a wave, how clear one is to the rules, and what is
// known of the recording.
bool HasP(const Beat& beat, const PByRules& rules, const NetworkPoints& output) {
    if (beat.atria == AtrialLead::kNone) {
        return false;
    }
    const double known = beat.atria == AtrialLead::kEveryBeat ? kOddsOfLead : 0;
    return output.pWave + std::log(rules.clearness) + known > 0;
}

// The leads' distributions have long late tails, and their own slopes tell ends that the networks' mean of
// all leads hides.
void MoveLeadPOffs(const Beat& beat, const NetworkPoints& output, Place qrsOn, const Joining& joining,
                   WaveBoundaries& p) {
    const auto away = [](double place, Place from) {
        return std::clamp(place - from, -kFarthestPOff, kFarthestPOff);
    };
    std::size_t count = 0;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        const BeatLead& lead = beat.leads[code];
        if (lead.present) {
            Interval& wave = p.leads[code];
            const double early = away(beat.centre + output.earlyPOff[count++], wave.off),
                         rules = away(FindLeadPOff(beat, lead, wave.on, qrsOn), wave.off);
            wave.off = std::clamp(
                Rounded(wave.off + joining.earlyPOff * early + joining.pOffByRules * rules + kPOffLag), 1,
                beat.length - 1);
        }
    }
}

WaveBoundaries JoinP(const Beat& beat, const PByRules& rules, const WaveBoundaries& qrs,
                     const NetworkPoints& output, const Joining& joining) {
    WaveBoundaries p;
    if (!HasP(beat, rules, output)) {
        return p;
    }
    const Place on = PlaceOf(beat, output.global[kPOnPoint]), off = PlaceOf(beat, output.global[kPOffPoint]);
    p.global = {JoinPPoint(on, rules.all.on), JoinPPoint(off, rules.all.off)};
    p.global.off = std::min(p.global.off, qrs.global.on - kBetween);
    if (p.global.on <= kEdge || p.global.off < p.global.on + kShortestP) {
        return {};
    }
    TakeLeads<&Interval::on>(beat, output, kPOnPoint, p.global.on - on, p);
    TakeLeads<&Interval::off>(beat, output, kPOffPoint, 0, p);
    MoveLeadPOffs(beat, output, qrs.global.on, joining, p);
    return p;
}

ShortenedSegment SegmentOf(const QrsByRules& qrs, const PByRules& p) {
    const int pr = p.all.Present() && p.clearness > 1 ? qrs.all.on - p.all.on : 0;
    return pr > kLongPr ? ShortenedSegment{qrs.all.on - kCutBeforeQrs, pr - kUsualPr} : ShortenedSegment{};
}

// Where the P wave was before it was shown so much later.
void PutPBack(int ms, NetworkPoints& points) {
    points.global[kPOnPoint] -= ms;
    points.global[kPOffPoint] -= ms;
    for (auto& lead : points.leads) {
        lead[kPOnPoint] -= ms;
        lead[kPOffPoint] -= ms;
    }
    for (double& off : points.earlyPOff) {
        off -= ms;
    }
}

}  // namespace

Delineation::Delineation(const TrainedNetworks& weights, const Joining& joining) : joining_(joining) {
    for (const NetworkWeights* network : weights) {
        networks_.emplace_back(*network);
    }
}

void Delineation::Run(const Beat& beat, ShortenedSegment segment) {
    for (Network& network : networks_) {
        network.Begin();
    }
    std::size_t count = 0;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            FillInput(beat, beat.leads[code], segment, input_);
            for (Network& network : networks_) {
                network.AddLead(input_, code);
            }
            ++count;
        }
    }
    output_.Clear(count);
    for (Network& network : networks_) {
        network.Conclude(output_);
    }
    points_.Take(output_, networks_.size());
    PutPBack(segment.ms, points_);
}

Waves Delineation::Of(const Beat& beat) {
    Waves waves;
    const QrsByRules qrs = FindQrs(beat);
    if (!qrs.all.Present()) {
        return waves;
    }
    const Place tOff = FindTOff(beat, qrs.all);
    const PByRules p = FindP(beat, qrs.all, tOff);
    Run(beat, SegmentOf(qrs, p));
    waves.qrs = JoinQrs(beat, qrs, points_, joining_);
    waves.t = JoinT(beat, tOff, waves.qrs, points_, joining_.lateQuantile);
    waves.p = JoinP(beat, p, waves.qrs, points_, joining_);
    return waves;
}

}  // namespace kx::analysis
