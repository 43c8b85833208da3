// The marker changes of one pane, to be taken back and done again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "dialogs/morphology/marker_store.h"

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

// One step for each change; the moves of one drag are one step. The oldest steps fall out of the list.
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
