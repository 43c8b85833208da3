#include "host/recording/beat_labels.h"

#include <algorithm>

#include "lib/beat_labels.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

constexpr int kEarlyTenths = 8;  // of the median interval
constexpr int kIrregularPart =
    4;  // one early beat of the dominant shape in so many, and the rhythm has no early beats

int IntervalBefore(const MedianBeat& beat, std::size_t i) {
    return beat.beatsMs[i] - beat.beatsMs[i - 1];
}

bool IsEarly(const MedianBeat& beat, std::size_t i) {
    return i > 0 && 10 * IntervalBefore(beat, i) < kEarlyTenths * beat.rrMs;
}

// In bigeminy the median interval may be the early beats' own: then the pause behind tells, and for the last
// beat, which has none, the pause before its predecessor.
bool IsShorterThanItsNeighbour(const MedianBeat& beat, std::size_t i) {
    const bool last = i + 1 == beat.beatsMs.size();
    if (i == 0 || (last && i == 1)) {
        return false;
    }
    const int neighbour = last ? IntervalBefore(beat, i - 1) : IntervalBefore(beat, i + 1);
    return 10 * IntervalBefore(beat, i) < kEarlyTenths * neighbour;
}

bool IsIrregular(const MedianBeat& beat) {
    int members = 0;
    int early = 0;
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        members += beat.dominant[i];
        early += beat.dominant[i] && IsEarly(beat, i);
    }
    return early * kIrregularPart > members;
}

std::uint8_t LabelOf(const MedianBeat& beat, std::size_t i, bool irregular) {
    if (beat.dominant[i]) {
        return IsEarly(beat, i) && !irregular ? kLabelSupraventricularEctopic : kLabelNormalBeat;
    }
    return IsEarly(beat, i) || IsShorterThanItsNeighbour(beat, i) ? kLabelVentricularEctopic
                                                                  : kLabelUnclassifiedBeat;
}

}  // namespace

bool FillAnnotations(TestRecord& test, const MedianBeat& beat) {
    const auto count = static_cast<std::uint32_t>(beat.beatsMs.size());
    AnnotationStore* store = test.CreateAnnotations(count, true);
    if (store == nullptr) {
        return false;
    }
    const bool irregular = IsIrregular(beat);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (!store->Append(LabelOf(beat, i, irregular),
                           static_cast<std::uint32_t>(std::max(beat.beatsMs[i], 0)))) {
            return false;
        }
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        store->UpdateHeartRate(i);
        if (beat.kept[i]) {
            store->SetSubLabel(i, kSubLabelInMedian);
        }
    }
    store->ClearModified();
    return true;
}

}  // namespace kx::recording
