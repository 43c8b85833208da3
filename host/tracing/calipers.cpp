#include "host/tracing/calipers.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace kxhost {

void Calipers::Begin(const TracingPoint& point) {
    out_ = true;
    active_ = 1;
    legs_[0] = legs_[1] = point;
}

bool Calipers::Take(double ms, double reachMs) {
    if (!out_) {
        return false;
    }
    const int nearer = std::abs(legs_[0].ms - ms) < std::abs(legs_[1].ms - ms) ? 0 : 1;
    if (std::abs(legs_[nearer].ms - ms) > reachMs) {
        return false;
    }
    active_ = nearer;
    return true;
}

// The level is read in the lead of the first leg: one voltage, not one of each of two leads.
void Calipers::MoveTo(const TracingPoint& point) {
    TracingPoint& leg = legs_[active_];
    leg.ms = point.ms;
    if (point.lead == leg.lead) {
        leg.millivolts = point.millivolts;
    }
}

void Calipers::Nudge(double ms, double millivolts, double endMs) {
    TracingPoint& leg = legs_[active_];
    leg.ms = std::clamp(leg.ms + ms, 0.0, endMs);
    leg.millivolts += millivolts;
}

std::optional<double> Calipers::BeatsPerMinute() const {
    constexpr double kMsPerMinute = 60'000;
    const double ms = std::abs(Ms());
    return ms < 1 ? std::nullopt : std::optional(kMsPerMinute / ms);
}

std::wstring Calipers::Text() const {
    wchar_t text[96];
    const auto rate = BeatsPerMinute();
    if (rate) {
        std::swprintf(text, std::size(text), L"%.0f ms   %.0f bpm   %+.2f mV", std::abs(Ms()), *rate,
                      Millivolts());
    } else {
        std::swprintf(text, std::size(text), L"0 ms   %+.2f mV", Millivolts());
    }
    std::wstring result = text;
    std::replace(result.begin(), result.end(), L'.', L',');
    return result;
}

}  // namespace kxhost
