// A recording made of formulas, for trying things without a file and for tests that know the truth.
#pragma once

#include <cstdint>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

struct SyntheticOptions {
    double sampleRate = 500;
    double seconds = 10;
    double beatsPerMinute = 66;
    double rrVariationMs = 20;      // peak of a slow (respiratory) and a random variation of the RR interval
    double wanderMicrovolts = 120;  // peak, 0.23 Hz, in the limb and chest leads with different phases
    double noiseMicrovolts = 6;     // standard deviation of white noise in each electrode's signal
    double mainsMicrovolts = 8;     // peak, 50 Hz
    std::uint32_t seed = 20260214;
};

// A healthy adult: ten seconds, sinus rhythm. The heart is a dipole: each wave is a vector that swings as a
// Gaussian in time (P. E. McSharry, G. D. Clifford, L. Tarassenko, L. A. Smith, "A dynamical model for
// generating synthetic electrocardiogram signals", IEEE Trans. Biomed. Eng. 50, 289-294, 2003; widths after
// its table 1), projected on the leads by the inverse Dower matrix (G. E. Dower, H. B. Machado, J. A.
// Osborne, "On deriving the electrocardiogram from vectorcardiographic leads", Clin. Cardiol. 3, 87-95,
// 1980). Disturbances are added to I, II and V1 to V6; III, aVR, aVL and aVF follow by Einthoven and
// Goldberger in every sample. The same options give the same samples on every machine.
Recording MakeSyntheticRecording(const SyntheticOptions& options = {});

// Times of the R waves of that recording, ms.
std::vector<double> SyntheticBeatTimes(const SyntheticOptions& options = {});

// One beat of it alone, free of disturbances: microvolts of a lead at a time from the R wave, ms.
double SyntheticBeatValue(const SyntheticOptions& options, std::size_t lead, double msFromR);

}  // namespace kx::recording
