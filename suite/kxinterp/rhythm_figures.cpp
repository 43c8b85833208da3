#include "suite/kxinterp/rhythm_figures.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "lib/beat_labels.h"

namespace kx::interp {

namespace {

// Conducted and escape beats make the rhythm.
std::optional<BeatKind> KindOf(std::uint8_t label) {
    switch (label) {
        case kLabelNormalBeat:
        case kLabelLeftBundleBranchBlock:
        case kLabelRightBundleBranchBlock:
        case kLabelVentricularEscape:
        case kLabelJunctionalEscape:
            return BeatKind::kNormal;
        case kLabelAberratedAtrial:
        case kLabelJunctionalEctopic:
        case kLabelAtrialEctopic:
        case kLabelSupraventricularEctopic:
            return BeatKind::kSupraventricular;
        case kLabelVentricularEctopic:
        case kLabelFusion:
            return BeatKind::kVentricular;
        case kLabelPaced:
            return BeatKind::kPaced;
        case kLabelUnclassifiedBeat:
            return BeatKind::kUnknown;
        default:
            return std::nullopt;
    }
}

bool IsConducted(BeatKind kind) {
    return kind == BeatKind::kNormal || kind == BeatKind::kSupraventricular;
}

std::uint32_t MeanOf(const std::vector<std::uint32_t>& values) {
    std::uint64_t sum = 0;
    for (const std::uint32_t value : values) {
        sum += value;
    }
    return values.empty() ? 0 : static_cast<std::uint32_t>(sum / values.size());
}

void CountKinds(const std::vector<AnnotatedBeat>& beats, BeatFigures& figures) {
    for (std::size_t i = 0; i < beats.size(); ++i) {
        const BeatKind kind = beats[i].kind;
        const bool ventricular = kind == BeatKind::kVentricular;
        figures.beats += kind != BeatKind::kUnknown;
        figures.paced += kind == BeatKind::kPaced;
        figures.ventricular += ventricular;
        figures.supraventricular += kind == BeatKind::kSupraventricular;
        figures.ventricularPairs += ventricular && i >= 1 && beats[i - 1].kind == BeatKind::kVentricular;
        figures.bigeminalSteps += ventricular && i >= 2 && beats[i - 2].kind == BeatKind::kVentricular &&
                                  IsConducted(beats[i - 1].kind);
    }
}

}  // namespace

Annotated ReadAnnotations(const KxAnnotationStore* store) {
    Annotated annotated;
    const std::uint32_t count =
        store != nullptr && store->entries != nullptr ? std::min(store->count, store->capacity) : 0;
    std::uint32_t last = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const KxAnnotation& entry = store->entries[i];
        if (entry.timeMs < last) {
            continue;
        }
        last = entry.timeMs;
        if (const auto kind = KindOf(entry.label)) {
            annotated.beats.push_back({entry.timeMs, *kind});
        } else if (entry.label == kLabelPWave) {
            annotated.waves.push_back(entry.timeMs);
        } else if (entry.label == kLabelPacingImpulse) {
            annotated.impulses.push_back(entry.timeMs);
        } else if (entry.label == kLabelRhythm) {
            annotated.watched = true;
            annotated.slowOnsetMs = std::max<std::uint32_t>(annotated.slowOnsetMs, entry.heartRate);
        }
    }
    return annotated;
}

BeatFigures BeatFiguresOf(const std::vector<AnnotatedBeat>& beats) {
    BeatFigures figures;
    CountKinds(beats, figures);
    std::vector<std::uint32_t> known;
    std::vector<std::uint32_t> normal;
    double squares = 0;
    std::uint32_t differences = 0;
    std::uint32_t before = 0;  // the interval before, when that was a normal one
    for (std::size_t i = 1; i < beats.size(); ++i) {
        const AnnotatedBeat& from = beats[i - 1];
        const AnnotatedBeat& to = beats[i];
        const std::uint32_t ms = to.ms - from.ms;
        if (from.kind != BeatKind::kUnknown && to.kind != BeatKind::kUnknown && ms > 0) {
            known.push_back(ms);
        }
        const bool isNormal = from.kind == BeatKind::kNormal && to.kind == BeatKind::kNormal && ms > 0;
        if (isNormal) {
            normal.push_back(ms);
            if (before != 0) {
                const double difference = static_cast<double>(ms) - before;
                squares += difference * difference;
                ++differences;
            }
        }
        before = isNormal ? ms : 0;
    }
    figures.spanMs = beats.empty() ? 0 : beats.back().ms - beats.front().ms;
    figures.meanIntervalMs = MeanOf(known);
    figures.normalIntervals = static_cast<std::uint32_t>(normal.size());
    figures.meanNormalMs = MeanOf(normal);
    if (!normal.empty()) {
        const auto [shortest, longest] = std::minmax_element(normal.begin(), normal.end());
        figures.shortestMs = *shortest;
        figures.longestMs = *longest;
    }
    if (differences > 0) {
        figures.successiveDifferenceMs =
            static_cast<std::uint32_t>(std::lround(std::sqrt(squares / differences)));
    }
    return figures;
}

}  // namespace kx::interp
