#include "suite/kxanalyze/slope_walk.h"

#include <algorithm>
#include <cmath>

namespace kx::analysis {

Place Steepest(const Trace& slope, Place from, Place to) {
    const Place last = static_cast<Place>(slope.size()) - 1;
    Place steepest = std::clamp(from, 0, last);
    for (Place i = steepest; i <= std::min(to, last); ++i) {
        if (std::fabs(slope[static_cast<std::size_t>(i)]) >
            std::fabs(slope[static_cast<std::size_t>(steepest)])) {
            steepest = i;
        }
    }
    return steepest;
}

Place WalkOut(const Trace& slope, Place from, int direction, const WalkRule& rule) {
    const auto end = static_cast<Place>(slope.size());
    Place last = from;
    for (Place i = from; i >= 0 && i < end && (i - from) * direction <= rule.reach; i += direction) {
        if (std::fabs(slope[static_cast<std::size_t>(i)]) > rule.threshold) {
            last = i;
        } else if ((i - last) * direction >= rule.quiet) {
            break;
        }
    }
    return last;
}

Place Towards(double agreed, Place own, double weight) {
    return static_cast<Place>(std::lround(agreed + weight * (own - agreed)));
}

}  // namespace kx::analysis
