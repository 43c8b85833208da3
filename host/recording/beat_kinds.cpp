#include "host/recording/beat_kinds.h"

#include <algorithm>

#include "lib/beat_labels.h"

namespace kx::recording {

namespace {

constexpr int kAbruptPercent = 85;  // of the intervals on both sides
constexpr int kEarlyPercent = 80;   // of the median interval, or of one neighbour
constexpr double kAnotherShape = 0.75;
constexpr int kBroadMs = 100;
// The first interval has none before it: the others must then be steady.
constexpr int kSteadyPercent = 125;

bool IsShorter(int interval, int percent, int than) {
    return 100 * interval <= percent * than;
}

// The intervals of a recording, interval i before beat i.
class Intervals {
  public:
    explicit Intervals(const std::vector<BeatSigns>& beats) {
        for (std::size_t i = 1; i < beats.size(); ++i) {
            values_.push_back(beats[i].ms - beats[i - 1].ms);
        }
        if (!values_.empty()) {
            std::vector<int> sorted = values_;
            const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
            std::nth_element(sorted.begin(), middle, sorted.end());
            median_ = *middle;
        }
    }

    bool HasBefore(std::size_t beat) const { return beat > 0; }
    bool HasBehind(std::size_t beat) const { return beat < values_.size(); }
    int Before(std::size_t beat) const { return values_[beat - 1]; }
    int Behind(std::size_t beat) const { return values_[beat]; }

    bool IsEarly(std::size_t beat) const {
        return HasBefore(beat) && IsShorter(Before(beat), kEarlyPercent, median_);
    }

    // Early against the beats beside it, as an extrasystole in an otherwise slowly changing rhythm.
    bool IsAbrupt(std::size_t beat) const {
        if (!HasBefore(beat)) {
            return false;
        }
        if (!HasBehind(beat)) {
            return IsEarly(beat);
        }
        const bool returns = IsShorter(Before(beat), kAbruptPercent, Behind(beat));
        return beat == 1 ? returns && IsEarly(beat) && AreSteadyFrom(2)
                         : returns && IsShorter(Before(beat), kAbruptPercent, Before(beat - 1));
    }

    bool IsBeforePause(std::size_t beat) const {
        if (!HasBefore(beat) || (!HasBehind(beat) && beat == 1)) {
            return false;
        }
        const int neighbour = HasBehind(beat) ? Behind(beat) : Before(beat - 1);
        return IsShorter(Before(beat), kEarlyPercent, neighbour);
    }

  private:
    bool AreSteadyFrom(std::size_t first) const {
        if (first + 1 >= values_.size()) {
            return false;
        }
        const auto [least, largest] =
            std::minmax_element(values_.begin() + static_cast<std::ptrdiff_t>(first), values_.end());
        return 100 * *largest <= kSteadyPercent * *least;
    }

    std::vector<int> values_;
    int median_ = 0;
};

std::uint8_t KindOf(const BeatSigns& beat, std::size_t i, const Intervals& intervals, bool atriaLead) {
    if (beat.paced) {
        return kLabelPaced;
    }
    if (beat.dominant) {
        return atriaLead && intervals.IsAbrupt(i) ? kLabelSupraventricularEctopic : kLabelNormalBeat;
    }
    if (!beat.whole || !(intervals.IsEarly(i) || intervals.IsBeforePause(i))) {
        return kLabelUnclassifiedBeat;
    }
    if (beat.likeness < kAnotherShape && beat.widthMs >= kBroadMs) {
        return kLabelVentricularEctopic;
    }
    return atriaLead && beat.widthMs < kBroadMs && intervals.IsAbrupt(i) ? kLabelAberratedAtrial
                                                                         : kLabelUnclassifiedBeat;
}

}  // namespace

std::vector<std::uint8_t> KindsOfBeats(const std::vector<BeatSigns>& beats, bool atriaLead) {
    const Intervals intervals(beats);
    std::vector<std::uint8_t> kinds;
    for (std::size_t i = 0; i < beats.size(); ++i) {
        kinds.push_back(KindOf(beats[i], i, intervals, atriaLead));
    }
    return kinds;
}

}  // namespace kx::recording
