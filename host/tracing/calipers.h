// The calipers: two places of the tracing and what lies between them. Portable.
#pragma once

#include <optional>
#include <string>

#include "host/tracing/tracing_layout.h"

namespace kxhost {

class Calipers {
  public:
    bool AreOut() const { return out_; }
    // Puts the first point down; the second follows until it is released.
    void Begin(const TracingPoint& point);
    // Takes the leg that stands within `reachMs` of the time, if there is one.
    bool Take(double ms, double reachMs);
    void MoveTo(const TracingPoint& point);
    // The leg that was taken last, by time and level; times stay between 0 and `endMs`.
    void Nudge(double ms, double millivolts, double endMs);
    void TakeOther() { active_ = 1 - active_; }
    void PutAway() { out_ = false; }

    const TracingPoint& Leg(int index) const { return legs_[index]; }
    double Ms() const { return legs_[1].ms - legs_[0].ms; }
    double Millivolts() const { return legs_[1].millivolts - legs_[0].millivolts; }
    // None for legs at the same time.
    std::optional<double> BeatsPerMinute() const;
    // "812 ms   74 bpm   -0,32 mV", decimals with a comma.
    std::wstring Text() const;

  private:
    bool out_ = false;
    int active_ = 1;
    TracingPoint legs_[2];
};

}  // namespace kxhost
