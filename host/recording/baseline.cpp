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

}  // namespace kx::recording
