// Every value of a measurement set that follows from the samples and the markers.
#pragma once

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/markers.h"

namespace kx::analysis {

// Intervals, durations and corrected QT from the global points; see delineator.h for the formulas.
void DeriveIntervals(const GlobalRow& points, KxMeasurementSet& set);

// The three axes. tOn: where the area of the T wave begins.
void DeriveAxes(const Beat& beat, const GlobalRow& points, Place tOn, KxMeasurementSet& set);

// Amplitudes, intrinsicoid deflection and ST levels of one lead; all 0 for a lead that is not present.
void DeriveLeadValues(const BeatLead& lead, const GlobalRow& points, const LeadRow& markers,
                      KxLeadMeasurements& values);

}  // namespace kx::analysis
