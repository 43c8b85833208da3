// How what the rules see and what the networks see are joined.
#pragma once

namespace kx::analysis {

// Where between the boundaries that the networks (0) and the rules (1) see the complex begins and ends when
// they are near to one another, and the quantile of the leads' T ends behind which the T wave of all leads
// ends. A lead's P wave ends so much of the way from the median of what the networks see to the lower
// quartile, and so much of the way to where the rules see it end in that lead.
struct Joining {
    double onsetByRules = 0.75;
    double offsetByRules = 0.25;
    double lateQuantile = 0.9;
    double earlyPOff = 0.4;
    double pOffByRules = 0.12;
};

}  // namespace kx::analysis
