// marker_history: the marker changes of one pane, to be taken back and done again, and what the pane has last
// seen in the record, by which it knows the changes of others.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "dialogs/morphology/rules/marker_store.h"

namespace kx {

// All of a dialog's markers in one lead block as the record held them: values and manual flags.
struct MarkerSnapshot {
    std::int32_t lead = 0;
    std::uint16_t flags = 0;
    std::array<std::uint16_t, 6> values{};

    static MarkerSnapshot Take(std::int32_t lead, const MarkerStore& store);
    // Writes the values and the dialog's flags back; other bits of the flags stay.
    void Restore(MarkerStore& store) const;
    bool operator==(const MarkerSnapshot&) const = default;
};

// A dialog's markers in every lead block, as the record held them when the dialog last read or wrote them. A
// record that holds something else has been changed by another pane or by the host.
class SeenMarkers {
  public:
    // isGlobal: the markers stand in block 0 alone.
    void Take(const MarkerLayout& layout, KxMeasurementSet& set, bool isGlobal);
    const MarkerSnapshot& Of(std::int32_t lead) const { return leads_[static_cast<std::size_t>(lead)]; }
    bool operator==(const SeenMarkers&) const = default;

  private:
    std::array<MarkerSnapshot, KX_MEASURED_LEADS> leads_{};
};

// One step for each change; the moves of one drag are one step. The oldest steps fall out of the list. A step
// writes whole snapshots: whoever changed the record since makes the history void, and it is to be cleared.
class MarkerHistory {
  public:
    static constexpr std::size_t kCapacity = 128;

    MarkerHistory();

    // A change has been made to what `before` holds. source: what made it (a marker's notification, a
    // control); a further change by the same source in the same lead belongs to the same step until EndStep.
    // Takes no memory.
    void Record(const MarkerSnapshot& before, std::uint32_t source);
    // What follows is a step of its own.
    void EndStep() { open_ = false; }
    bool IsEmpty() const { return done_.empty() && undone_.empty(); }
    void Clear();

    // The lead of the step that Undo or Redo would take; none when there is no such step.
    std::optional<std::int32_t> UndoLead() const;
    std::optional<std::int32_t> RedoLead() const;
    // What to restore. now: the state of that lead, to come back to. There must be such a step.
    MarkerSnapshot Undo(const MarkerSnapshot& now);
    MarkerSnapshot Redo(const MarkerSnapshot& now);

  private:
    std::vector<MarkerSnapshot> done_;
    std::vector<MarkerSnapshot> undone_;
    bool open_ = false;
    std::uint32_t source_ = 0;
};

}  // namespace kx
