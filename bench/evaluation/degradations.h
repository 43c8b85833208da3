// Ways in which a recording can be worse than it should be; the first leaves it as it is.
#pragma once

#include <vector>

#include "host/recording/recording.h"

namespace kx::evaluation {

struct Degradation {
    const char* name;
    // Returns how many ms were cut off the start.
    int (*apply)(recording::Recording&);
};

extern const std::vector<Degradation> kDegradations;

}  // namespace kx::evaluation
