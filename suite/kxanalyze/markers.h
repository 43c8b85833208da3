// The markers of a beat as rows in the order of time, and how those placed by hand are joined with those
// found.
#pragma once

#include <array>
#include <cstdint>

#include "lib/fiducial_markers.h"
#include "suite/kxanalyze/boundaries.h"

namespace kx::analysis {

// The rows stand in the order of kGlobalMarkers and kLeadMarkers: index i is bit i of the manual flags.
using GlobalRow = std::array<Place, kGlobalMarkers.size()>;
using LeadRow = std::array<Place, kLeadMarkers.size()>;

GlobalRow ReadGlobalRow(const KxMeasurementSet& set);
LeadRow ReadLeadRow(const KxLeadMeasurements& lead);
// Writes the five points into all 15 lead blocks.
void WriteGlobalRow(const GlobalRow& row, KxMeasurementSet& set);
void WriteLeadRow(const LeadRow& row, KxLeadMeasurements& lead);

// `found` with the markers of `stored` whose flag is set in their place. The others give way: each is moved
// between the manual ones before and behind it, and those of a P or T wave of which a manual onset or offset
// says 0 become 0.
GlobalRow JoinGlobal(const GlobalRow& found, const GlobalRow& stored, std::uint32_t manual);
LeadRow JoinLead(const LeadRow& found, const LeadRow& stored, std::uint32_t manual);

// The boundaries found in a lead, brought inside the global points: a wave that these call absent is absent.
Interval Within(Interval found, Place on, Place off);

}  // namespace kx::analysis
