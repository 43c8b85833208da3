#include "suite/kxinterp/rhythm_figures.h"

#include <algorithm>
#include <cmath>

#include "lib/beat_labels.h"

namespace kx::interp {

namespace {

enum class Beat { kNone, kNormal, kSupraventricular, kVentricular, kPaced };

// Conducted and escape beats make the rhythm; a beat of unknown kind belongs to it, too.
Beat KindOf(std::uint8_t label) {
    switch (label) {
        case kLabelNormalBeat:
        case kLabelLeftBundleBranchBlock:
        case kLabelRightBundleBranchBlock:
        case kLabelVentricularEscape:
        case kLabelJunctionalEscape:
        case kLabelUnclassifiedBeat:
            return Beat::kNormal;
        case kLabelAberratedAtrial:
        case kLabelJunctionalEctopic:
        case kLabelAtrialEctopic:
        case kLabelSupraventricularEctopic:
            return Beat::kSupraventricular;
        case kLabelVentricularEctopic:
        case kLabelFusion:
            return Beat::kVentricular;
        case kLabelPaced:
            return Beat::kPaced;
        default:
            return Beat::kNone;
    }
}

// Walks over the beats and keeps the three last ones in sight.
class Counter {
  public:
    void Add(Beat kind, std::uint32_t time) {
        ++figures_.beats;
        figures_.paced += kind == Beat::kPaced;
        figures_.ventricular += kind == Beat::kVentricular;
        figures_.supraventricular += kind == Beat::kSupraventricular;
        figures_.ventricularPairs += kind == Beat::kVentricular && last_ == Beat::kVentricular;
        figures_.bigeminalSteps +=
            kind == Beat::kVentricular && beforeLast_ == Beat::kVentricular && IsConducted(last_);
        if (last_ == Beat::kNone) {
            firstTime_ = time;
        } else if (time > lastTime_) {
            AddInterval(time - lastTime_, kind == Beat::kNormal && last_ == Beat::kNormal);
            figures_.spanMs = time - firstTime_;
        }
        beforeLast_ = last_;
        last_ = kind;
        lastTime_ = time;
    }

    RhythmFigures Take() {
        if (intervals_ > 0) {
            figures_.meanIntervalMs = static_cast<std::uint32_t>(intervalSum_ / intervals_);
        }
        if (figures_.normalIntervals > 0) {
            figures_.meanNormalMs = static_cast<std::uint32_t>(normalSum_ / figures_.normalIntervals);
        }
        if (differences_ > 0) {
            figures_.successiveDifferenceMs =
                static_cast<std::uint32_t>(std::lround(std::sqrt(squareSum_ / differences_)));
        }
        return figures_;
    }

  private:
    static bool IsConducted(Beat kind) { return kind == Beat::kNormal || kind == Beat::kSupraventricular; }

    void AddInterval(std::uint32_t ms, bool normal) {
        ++intervals_;
        intervalSum_ += ms;
        if (normal) {
            figures_.shortestMs = figures_.normalIntervals == 0 ? ms : std::min(figures_.shortestMs, ms);
            figures_.longestMs = std::max(figures_.longestMs, ms);
            ++figures_.normalIntervals;
            normalSum_ += ms;
            if (lastNormalMs_ != 0) {
                const double difference = static_cast<double>(ms) - lastNormalMs_;
                squareSum_ += difference * difference;
                ++differences_;
            }
        }
        lastNormalMs_ = normal ? ms : 0;
    }

    RhythmFigures figures_;
    Beat last_ = Beat::kNone;
    Beat beforeLast_ = Beat::kNone;
    std::uint32_t firstTime_ = 0;
    std::uint32_t lastTime_ = 0;
    std::uint32_t lastNormalMs_ = 0;  // 0: the interval before was not a normal one
    std::uint32_t intervals_ = 0;
    std::uint32_t differences_ = 0;
    std::uint64_t intervalSum_ = 0;
    std::uint64_t normalSum_ = 0;
    double squareSum_ = 0;
};

}  // namespace

RhythmFigures FiguresOf(const KxAnnotationStore* store) {
    Counter counter;
    if (store != nullptr && store->entries != nullptr) {
        const std::uint32_t count = std::min(store->count, store->capacity);
        for (std::uint32_t i = 0; i < count; ++i) {
            const Beat kind = KindOf(store->entries[i].label);
            if (kind != Beat::kNone) {
                counter.Add(kind, store->entries[i].timeMs);
            }
        }
    }
    return counter.Take();
}

}  // namespace kx::interp
