// A morphology pane in the rig's host, with an engine that counts, driven by mouse, keys and commands, and read through
// its controls.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "lib/fiducial_markers.h"
#include "tests/rig/pane.h"

namespace kx::test {

struct MorphKind {
    const char* name;
    bool isGlobal;
    std::span<const FiducialMarker> markers;
    std::vector<UINT> edits;        // of the markers, in slot order
    std::vector<UINT> manualBoxes;  // likewise
    UINT figure;                    // one edit that every re-measurement changes
    std::vector<UINT> waveBoxes;    // in an order in which each can be checked
};

extern const MorphKind kGeneralPane, kQrsPane, kPPane, kTPane;
extern const std::array<const MorphKind*, 4> kMorphPanes;

inline std::ostream& operator<<(std::ostream& out, const MorphKind& kind) { return out << kind.name; }

using Values = std::vector<int>;

class MorphPane {
  public:
    explicit MorphPane(const MorphKind& kind, std::unique_ptr<TestRecord> record = NewRecord(), Sibling engine = Sibling::kSpying);

    KxMeasurementSet& Set() { return record->Episode(0)->measurements; }
    // The block that the pane edits while `lead` is selected, its markers and their flags.
    KxLeadMeasurements& Block(int lead = KX_LEAD_V6) { return Set().leads[kind.isGlobal ? 0 : lead]; }
    Values Stored(int lead = KX_LEAD_V6);
    std::uint16_t& FlagWord(int lead = KX_LEAD_V6);
    // What the marker edits show, in slot order.
    Values Shown() const;
    int Number(UINT edit) const { return std::atoi(pane.Text(edit).c_str()); }
    bool IsManualShown(std::size_t slot) const { return pane.IsChecked(kind.manualBoxes[slot]); }
    bool CanReset() const { return IsWindowEnabled(pane.Item(31264)) != FALSE; }
    std::int32_t Chosen(UINT combo) const;
    void SelectLead(int code) { pane.Choose(31254, code); }
    // The view's notification, as a message alone.
    void Notify(UINT slot, int ms) { SendMessageA(pane, 1345 + slot, static_cast<WPARAM>(ms), KX_LEAD_V6); }
    // As the view asks for it after Ctrl+Z and Ctrl+Y.
    void Undo() { SendMessageA(pane, 1451, 0, 0); }
    void Redo() { SendMessageA(pane, 1452, 0, 0); }
    int Calls() const { return suite.Calls("UPDATEDETECTION"); }
    // Whether the figures are those of the last call of the engine.
    bool ShowsLastCall() const { return Number(kind.figure) == 10000 + Calls(); }
    // Whether nothing in the measurement set has changed since `before`.
    bool IsAsBefore(const KxMeasurementSet& before);

    // ---- the view, by its own answers: the readout tells the time of every column
    HWND View() const { return pane.Item(31283); }
    // The column that stands for `ms`, or the nearest one that can be seen; and back, -1 beside the beat.
    int ColumnOf(int ms);
    int MsAt(int column);
    // Whether a marker can be taken at the column, or where it stands for `ms`.
    bool IsMarkerAt(int column);
    bool IsMarkerAtMs(int ms) { return IsMarkerAt(ColumnOf(ms)); }
    // A line of the view where no label stands.
    int Row() const;
    void Mouse(UINT message, int column) { SendMessageA(View(), message, MK_LBUTTON, MAKELPARAM(column, Row())); }
    // Takes the marker that stands at `from` ms and leaves it at `to` ms, by posted messages over `steps` moves. Returns
    // the time at which it was left; -1 when there is no marker at `from`.
    int Drag(int from, int to, int steps = 3);

    const MorphKind& kind;
    std::unique_ptr<TestRecord> record;
    SpyingSuite suite;
    LibraryUse library;
    HostWindow host;
    bool refuses = false;                         // the engine: answers 0 and changes nothing
    KxMeasurementSet measured{};                  // what the last call found
    std::unique_ptr<KxMeasurementSet> automatic;  // what it finds for markers without flag; null: it leaves them
    Pane pane;

  private:
    std::uint32_t Measure();
};

}  // namespace kx::test
