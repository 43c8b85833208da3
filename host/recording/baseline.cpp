#include "host/recording/baseline.h"

#include <algorithm>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kLevelSpan = ToSamples(20);

// Second derivatives at the knots, by the tridiagonal system of the natural spline.
std::vector<double> Curvatures(const std::vector<double>& x, const std::vector<double>& y) {
    const std::size_t n = x.size();
    std::vector<double> curvature(n), upper(n);
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const double left = x[i] - x[i - 1];
        const double right = x[i + 1] - x[i];
        const double bend = 6 * ((y[i + 1] - y[i]) / right - (y[i] - y[i - 1]) / left);
        const double pivot = 2 * (left + right) - left * upper[i - 1];
        upper[i] = right / pivot;
        curvature[i] = (bend - left * curvature[i - 1]) / pivot;
    }
    for (std::size_t i = n - 1; i-- > 1;) {
        curvature[i] -= upper[i] * curvature[i + 1];
    }
    return curvature;
}

}  // namespace

std::vector<double> NaturalSpline(const std::vector<double>& knots, const std::vector<double>& values,
                                  std::size_t count) {
    std::vector<double> spline(count);
    if (knots.empty()) {
        return spline;
    }
    const std::vector<double> curvature =
        knots.size() > 2 ? Curvatures(knots, values) : std::vector<double>(knots.size());
    std::size_t k = 0;  // the piece from knot k to k + 1
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = static_cast<double>(i);
        if (place <= knots.front() || place >= knots.back()) {
            spline[i] = place <= knots.front() ? values.front() : values.back();
            continue;
        }
        while (place > knots[k + 1]) {
            ++k;
        }
        const double width = knots[k + 1] - knots[k];
        const double a = (knots[k + 1] - place) / width;
        const double b = 1 - a;
        spline[i] = a * values[k] + b * values[k + 1] +
                    ((a * a * a - a) * curvature[k] + (b * b * b - b) * curvature[k + 1]) * width * width / 6;
    }
    return spline;
}

void RemoveBaseline(Recording& recording, const std::vector<std::ptrdiff_t>& places) {
    const auto count = static_cast<std::ptrdiff_t>(recording.SampleCount());
    std::vector<double> knots;
    for (const std::ptrdiff_t place : places) {
        if (place - kLevelSpan >= 0 && place <= count) {
            knots.push_back(static_cast<double>(place) - (static_cast<double>(kLevelSpan) + 1) / 2);
        }
    }
    if (knots.empty()) {
        return;
    }
    for (Trace& lead : recording.leads) {
        std::vector<double> levels;
        for (const std::ptrdiff_t place : places) {
            if (place - kLevelSpan < 0 || place > count) {
                continue;
            }
            double sum = 0;
            for (std::ptrdiff_t i = place - kLevelSpan; i < place; ++i) {
                sum += double{lead[static_cast<std::size_t>(i)]};
            }
            levels.push_back(sum / static_cast<double>(kLevelSpan));
        }
        const std::vector<double> baseline = NaturalSpline(knots, levels, lead.size());
        for (std::size_t i = 0; i < lead.size(); ++i) {
            lead[i] = static_cast<float>(double{lead[i]} - baseline[i]);
        }
    }
}

namespace {

constexpr std::ptrdiff_t kBeatBefore = ToSamples(400);
constexpr std::ptrdiff_t kBeatBehind = ToSamples(700);
constexpr std::size_t kSmoothing = static_cast<std::size_t>(ToSamples(300)) + 1;
constexpr std::size_t kFewestBeats = 3;

// The median over the dominant beats of each sample around them.
Trace MedianOfBeats(const Trace& lead, const std::vector<std::ptrdiff_t>& places,
                    const std::vector<bool>& dominant) {
    Trace median;
    std::vector<float> values;
    const auto count = static_cast<std::ptrdiff_t>(lead.size());
    for (std::ptrdiff_t offset = -kBeatBefore; offset < kBeatBehind; ++offset) {
        values.clear();
        for (std::size_t k = 0; k < places.size(); ++k) {
            const std::ptrdiff_t i = places[k] + offset;
            if (dominant[k] && i >= 0 && i < count) {
                values.push_back(lead[static_cast<std::size_t>(i)]);
            }
        }
        median.push_back(static_cast<float>(Median(values)));
    }
    return median;
}

// Fills the samples that are not known with straight lines between those that are.
void BridgeUnknown(Trace& trace, const std::vector<bool>& known) {
    std::size_t last = trace.size();  // none yet
    for (std::size_t i = 0; i < trace.size(); ++i) {
        if (!known[i]) {
            continue;
        }
        const float from = last == trace.size() ? trace[i] : trace[last];
        const std::size_t first = last == trace.size() ? 0 : last + 1;
        for (std::size_t k = first; k < i; ++k) {
            const float part =
                last == trace.size() ? 1.0f : static_cast<float>(k - last) / static_cast<float>(i - last);
            trace[k] = from + (trace[i] - from) * part;
        }
        last = i;
    }
    for (std::size_t k = last + 1; k < trace.size(); ++k) {
        trace[k] = trace[last];
    }
}

}  // namespace

void RemoveWander(Recording& recording, const std::vector<std::ptrdiff_t>& places,
                  const std::vector<bool>& dominant) {
    if (static_cast<std::size_t>(std::count(dominant.begin(), dominant.end(), true)) < kFewestBeats) {
        return;
    }
    const auto count = static_cast<std::ptrdiff_t>(recording.SampleCount());
    for (Trace& lead : recording.leads) {
        const Trace median = MedianOfBeats(lead, places, dominant);
        Trace rest(lead.size());
        std::vector<bool> known(lead.size());
        for (std::size_t k = 0; k < places.size(); ++k) {
            const std::ptrdiff_t before =
                k == 0 ? places[k] - kBeatBefore
                       : std::max(places[k] - kBeatBefore, (places[k - 1] + places[k]) / 2);
            const std::ptrdiff_t behind =
                k + 1 == places.size() ? places[k] + kBeatBehind
                                       : std::min(places[k] + kBeatBehind, places[k + 1] - kBeatBefore);
            for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, before);
                 dominant[k] && i < std::min(count, behind); ++i) {
                const auto here = static_cast<std::size_t>(i);
                rest[here] = lead[here] - median[static_cast<std::size_t>(i - places[k] + kBeatBefore)];
                known[here] = true;
            }
        }
        BridgeUnknown(rest, known);
        for (int pass = 0; pass < 3; ++pass) {
            rest = MovingMean(rest, kSmoothing);
        }
        for (std::size_t i = 0; i < lead.size(); ++i) {
            lead[i] -= rest[i];
        }
    }
}

}  // namespace kx::recording
