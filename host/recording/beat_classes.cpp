#include "host/recording/beat_classes.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr double kSameShape = 0.9;
constexpr std::size_t kMostClasses = 12;  // beats of further shapes belong to none
constexpr std::ptrdiff_t kHalfWindow = ToSamples(100);
constexpr std::ptrdiff_t kLargestLag = ToSamples(40);
constexpr std::ptrdiff_t kStride = 2;  // compared at 250 samples a second, which holds a QRS complex
constexpr std::size_t kPointsPerLead = static_cast<std::size_t>(2 * kHalfWindow / kStride) + 1;

using Shape = std::vector<float>;  // all leads one after another, each about its own mean

float At(const Trace& lead, std::ptrdiff_t place) {
    const auto last = static_cast<std::ptrdiff_t>(lead.size()) - 1;
    return lead[static_cast<std::size_t>(std::clamp(place, std::ptrdiff_t{0}, last))];
}

void CutShape(const std::vector<Trace>& leads, std::ptrdiff_t place, Shape& shape) {
    shape.clear();
    for (const Trace& lead : leads) {
        double sum = 0;
        for (std::ptrdiff_t k = -kHalfWindow; k <= kHalfWindow; k += kStride) {
            sum += double{At(lead, place + k)};
        }
        const auto mean = static_cast<float>(sum / static_cast<double>(kPointsPerLead));
        for (std::ptrdiff_t k = -kHalfWindow; k <= kHalfWindow; k += kStride) {
            shape.push_back(At(lead, place + k) - mean);
        }
    }
}

double Product(const Shape& a, const Shape& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += double{a[i]} * double{b[i]};
    }
    return sum;
}

struct Match {
    double correlation = -1;
    std::ptrdiff_t place = 0;
};

// The best place of a beat near its own for a shape. An empty shape (no signal at all) matches nothing.
Match BestMatch(const std::vector<Trace>& leads, std::ptrdiff_t beat, const Shape& shape) {
    const double power = Product(shape, shape);
    Match best{-1, beat};
    Shape cut;
    for (std::ptrdiff_t lag = -kLargestLag; lag <= kLargestLag; ++lag) {
        CutShape(leads, beat + lag, cut);
        const double scale = std::sqrt(power * Product(cut, cut));
        const double correlation = scale > 0 ? Product(shape, cut) / scale : -1;
        if (correlation > best.correlation) {
            best = {correlation, beat + lag};
        }
    }
    return best;
}

struct Class {
    Shape sum;  // of its members: correlation asks for no mean
    std::vector<std::size_t> members;
    double lead = 0;  // median interval before its members, samples
};

void Join(Class& group, std::size_t beat, const Shape& shape) {
    group.sum.resize(shape.size());
    for (std::size_t i = 0; i < shape.size(); ++i) {
        group.sum[i] += shape[i];
    }
    group.members.push_back(beat);
}

// The largest class. Of classes that are smaller by one beat at most, as in bigeminy, the one whose beats
// come latest after their predecessors.
const Class& DominantClass(std::vector<Class>& classes, const std::vector<std::ptrdiff_t>& beats) {
    std::size_t most = 0;
    for (Class& group : classes) {
        most = std::max(most, group.members.size());
        std::vector<float> intervals;
        for (const std::size_t beat : group.members) {
            if (beat > 0) {
                intervals.push_back(static_cast<float>(beats[beat] - beats[beat - 1]));
            }
        }
        group.lead = Median(intervals);
    }
    const Class* best = &classes.front();
    bool found = false;
    for (const Class& group : classes) {
        const bool candidate = group.members.size() == most || (most > 2 && group.members.size() + 1 == most);
        if (candidate && (!found || group.lead > best->lead)) {
            best = &group;
            found = true;
        }
    }
    return *best;
}

}  // namespace

BeatClasses ClassifyBeats(const Recording& recording, const std::vector<std::ptrdiff_t>& beats) {
    constexpr std::size_t kSmoothing = 5;
    // A wandering baseline would make each beat a shape of its own.
    constexpr auto kLocalMean = static_cast<std::size_t>(ToSamples(400)) + 1;
    std::vector<Trace> leads;
    for (const Trace& lead : recording.leads) {
        const Trace level = MovingMean(lead, kLocalMean);
        Trace& smooth = leads.emplace_back(MovingMean(lead, kSmoothing));
        std::transform(smooth.begin(), smooth.end(), level.begin(), smooth.begin(), std::minus<>());
    }

    BeatClasses result;
    result.dominant.resize(beats.size());
    result.aligned = beats;
    if (beats.empty()) {
        return result;
    }
    std::vector<Class> classes;
    Shape shape;
    for (std::size_t i = 0; i < beats.size(); ++i) {
        Match best;
        Class* home = nullptr;
        for (Class& group : classes) {
            const Match match = BestMatch(leads, beats[i], group.sum);
            if (match.correlation > best.correlation) {
                best = match;
                home = &group;
            }
        }
        if (home == nullptr || best.correlation < kSameShape) {
            if (classes.size() == kMostClasses) {
                continue;
            }
            home = &classes.emplace_back();
            best.place = beats[i];
        }
        result.aligned[i] = best.place;
        CutShape(leads, best.place, shape);
        Join(*home, i, shape);
    }
    const Class& dominant = DominantClass(classes, beats);
    // Once more against the finished shape: the first beats were aligned with a few only.
    for (const std::size_t beat : dominant.members) {
        result.dominant[beat] = true;
        result.aligned[beat] = BestMatch(leads, beats[beat], dominant.sum).place;
    }
    return result;
}

}  // namespace kx::recording
