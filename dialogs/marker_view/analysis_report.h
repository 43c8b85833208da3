// analysis_report: what the marker view reports, and where from.
#pragma once

#include <cstdint>

namespace kx::analysis_report {

inline constexpr char kSource[] = "analysis";
inline constexpr std::uint32_t kNoObjectLine = 61;    // the object of a view
inline constexpr std::uint32_t kNoGridLine = 207;     // the grid
inline constexpr std::uint32_t kNoSurfaceLine = 226;  // the back buffer or its bitmap
inline constexpr std::uint32_t kNoSamplesLine = 258;  // of a beat whose size does not cover its leads
inline constexpr std::uint32_t kNoMarkerLine = 689;   // a marker: its label, or one too many

}  // namespace kx::analysis_report
