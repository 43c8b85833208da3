// The fiducial markers of a measurement set: where each stands, which bit says that a reviewer placed it,
// what it is called and which wave it belongs to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "include/kxdialogs.h"

namespace kx {

enum class Wave : std::uint8_t { kP, kQrs, kT };

using MarkerWord = std::uint16_t KxLeadMeasurements::*;

struct FiducialMarker {
    MarkerWord ms;       // from the start of the median beat, 0 = absent
    std::uint16_t flag;  // its bit of the manual flags
    const char* name;    // as the dialogs show it
    const char* field;   // as the record names it
    Wave wave;
};

// Index i of a table is bit i of its manual flags, and the order is that of the beat.
enum GlobalMarker : std::size_t { kGlobalPOn, kGlobalPOff, kGlobalQrsOn, kGlobalQrsOff, kGlobalTOff };
enum LeadMarker : std::size_t {
    kLeadPOn,
    kLeadPPrimeOn,
    kLeadPOff,
    kLeadQOn,
    kLeadROn,
    kLeadSOn,
    kLeadRPrimeOn,
    kLeadSPrimeOn,
    kLeadQrsOff,
    kLeadTOn,
    kLeadTPrimeOn,
    kLeadTOff
};

// The points of the whole beat: read from block 0, whose globalManualFlags are theirs.
inline constexpr std::array kGlobalMarkers = {
    FiducialMarker{&KxLeadMeasurements::pOn, KX_MANUAL_P_ON, "Pon", "pOn", Wave::kP},
    FiducialMarker{&KxLeadMeasurements::pOff, KX_MANUAL_P_OFF, "Poff", "pOff", Wave::kP},
    FiducialMarker{&KxLeadMeasurements::qrsOn, KX_MANUAL_QRS_ON, "QRSon", "qrsOn", Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::qrsOff, KX_MANUAL_QRS_OFF, "QRSoff", "qrsOff", Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::tOff, KX_MANUAL_T_OFF, "Toff", "tOff", Wave::kT},
};

// The points of one lead, whose markerFlags are theirs.
inline constexpr std::array kLeadMarkers = {
    FiducialMarker{&KxLeadMeasurements::pOnMarker, KX_MANUAL_LEAD_P_ON, "Pon", "pOnMarker", Wave::kP},
    FiducialMarker{&KxLeadMeasurements::pPrimeOnMarker, KX_MANUAL_LEAD_P_PRIME_ON, "P'on", "pPrimeOnMarker",
                   Wave::kP},
    FiducialMarker{&KxLeadMeasurements::pOffMarker, KX_MANUAL_LEAD_P_OFF, "Poff", "pOffMarker", Wave::kP},
    FiducialMarker{&KxLeadMeasurements::qOnMarker, KX_MANUAL_LEAD_Q_ON, "Qon", "qOnMarker", Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::rOnMarker, KX_MANUAL_LEAD_R_ON, "Ron", "rOnMarker", Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::sOnMarker, KX_MANUAL_LEAD_S_ON, "Son", "sOnMarker", Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::rPrimeOnMarker, KX_MANUAL_LEAD_R_PRIME_ON, "R'on", "rPrimeOnMarker",
                   Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::sPrimeOnMarker, KX_MANUAL_LEAD_S_PRIME_ON, "S'on", "sPrimeOnMarker",
                   Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF, "QRSoff", "qrsOffMarker",
                   Wave::kQrs},
    FiducialMarker{&KxLeadMeasurements::tOnMarker, KX_MANUAL_LEAD_T_ON, "Ton", "tOnMarker", Wave::kT},
    FiducialMarker{&KxLeadMeasurements::tPrimeOnMarker, KX_MANUAL_LEAD_T_PRIME_ON, "T'on", "tPrimeOnMarker",
                   Wave::kT},
    FiducialMarker{&KxLeadMeasurements::tOffMarker, KX_MANUAL_LEAD_T_OFF, "Toff", "tOffMarker", Wave::kT},
};
static_assert(kGlobalMarkers[kGlobalTOff].flag == 1u << kGlobalTOff &&
              kGlobalMarkers.size() == kGlobalTOff + 1);
static_assert(kLeadMarkers[kLeadTOff].flag == 1u << kLeadTOff && kLeadMarkers.size() == kLeadTOff + 1);

// A lead's markers of one wave, which stand side by side.
constexpr std::span<const FiducialMarker> LeadMarkersOf(Wave wave) {
    const std::span<const FiducialMarker> all = kLeadMarkers;
    switch (wave) {
        case Wave::kP:
            return all.subspan(kLeadPOn, kLeadQOn - kLeadPOn);
        case Wave::kQrs:
            return all.subspan(kLeadQOn, kLeadTOn - kLeadQOn);
        default:
            return all.subspan(kLeadTOn);
    }
}

}  // namespace kx
