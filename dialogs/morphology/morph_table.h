// morph_table: what makes one of the four morphology dialogs: its controls, its markers, its settings and its
// rules.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "dialogs/morphology/rules/marker_edit.h"
#include "lib/dbclient/measurement_set.h"

namespace kx {

inline constexpr std::size_t kMeasurementRows = 8;
inline constexpr std::size_t kMostMarkers = 6;
inline constexpr std::size_t kMostWaveBoxes = 5;

// One read-only edit. lead: the lead selected.
struct MeasurementRow {
    UINT edit;
    std::int32_t (*value)(const MeasurementSet& set, int lead);
};

// A getter of the set, of a lead or not, as a row's value. 16-bit words are all that it gives, so that a
// signed number shows the unsigned ones as well.
template <auto kGetter>
std::int32_t Read(const MeasurementSet& set, [[maybe_unused]] int lead) {
    if constexpr (std::is_invocable_v<decltype(kGetter), const MeasurementSet&, int>) {
        return static_cast<std::int32_t>((set.*kGetter)(lead));
    } else {
        return static_cast<std::int32_t>((set.*kGetter)());
    }
}

// One marker, in the order of the slots; where the record holds it is said by the layout.
struct MarkerRow {
    WORD label;  // bitmap resource
    UINT edit;
    UINT manualBox;
};

// One box that says that a wave is absent: checked exactly when this marker's stored value is 0.
struct WaveBoxRow {
    UINT box;
    std::size_t marker;
};

// Where the dialog reports what failed: its source, and the lines of its steps.
struct MorphReports {
    const char* source;
    std::uint32_t noEpisodeLine;
    std::uint32_t initialisationLine;
    std::uint32_t redetectionLine;
};

struct MorphTable {
    UINT templateId;
    MorphReports reports;

    std::int32_t gain;                // mm per mV
    std::int32_t speed;               // mm per s
    std::int32_t highEdge;            // thousandths of a Hz
    std::int32_t horizontalPosition;  // percent
    bool hidesDerivative;             // says so to the view, which starts without it in any case

    std::span<const MeasurementRow, kMeasurementRows> measurements;
    std::span<const MarkerRow> markers;
    std::span<const WaveBoxRow> waveBoxes;

    const MarkerLayout& layout;
    // The markers hold for all leads and stand in block 0; else they are those of the lead selected.
    bool isGlobal;

    // Some field may differ from the record. firstBox: the first wave box is checked.
    void (*applyMarkers)(MarkerEdit& edit, bool firstBox);
    // Wave box `box` was clicked and is now checked (the wave is absent) or clear. False: the box is to be
    // put back.
    bool (*applyWaveBox)(MarkerEdit& edit, std::size_t box, bool absent);
};

}  // namespace kx
