// How what the rules see and what the networks see are joined.
#pragma once

namespace kx::analysis {

// Where between the boundaries that the networks (0) and the rules (1) see the complex begins and ends when
// they are near to one another, and the quantile of the leads' T ends behind which the T wave of all leads
// ends.
struct Joining {
    double onsetByRules = 0.75;
    double offsetByRules = 0.25;
    double lateQuantile = 0.9;
};

}  // namespace kx::analysis
