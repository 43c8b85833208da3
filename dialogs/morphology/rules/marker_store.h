// marker_store: the markers of one dialog as the record holds them: a word for each value, a bit for each
// manual flag.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "dialogs/morphology/rules/marker_field.h"
#include "include/kxdialogs.h"
#include "lib/fiducial_markers.h"

namespace kx {

// A dialog's markers in slot order, and the word with their manual flags.
struct MarkerLayout {
    std::span<const FiducialMarker> markers;
    MarkerWord flags;
};

// A layout on one lead block (block 0 for the global markers). Other bits of the flags are never changed.
class MarkerStore {
  public:
    // Both outlive the object.
    MarkerStore(const MarkerLayout& layout, KxLeadMeasurements& block) : layout_(&layout), block_(&block) {}

    std::size_t Count() const { return layout_->markers.size(); }
    std::int32_t Value(std::size_t slot) const { return block_->*layout_->markers[slot].ms; }
    bool IsManual(std::size_t slot) const {
        return (block_->*layout_->flags & layout_->markers[slot].flag) != 0;
    }
    // The dialog's flags that are set.
    std::uint16_t ManualFlags() const {
        return static_cast<std::uint16_t>(block_->*layout_->flags & AllFlags());
    }

    // Stores a field's value. A rule may have pushed it before the start of the beat or past the largest
    // word: then field and record both take the limit, so that they never hold different values and no
    // negative time becomes a huge one.
    void Write(std::size_t slot, MarkerField& field) {
        const std::int32_t ms = std::clamp(field.Current(), std::int32_t{0}, kLatestMarker);
        if (ms != field.Current()) {
            field.SetCurrent(ms);
        }
        SetValue(slot, static_cast<std::uint16_t>(ms));
    }
    void SetValue(std::size_t slot, std::uint16_t ms) { block_->*layout_->markers[slot].ms = ms; }

    // The flags of `mask`, of which only the dialog's own are changed.
    void SetManual(std::uint16_t mask) {
        block_->*layout_->flags = static_cast<std::uint16_t>(block_->*layout_->flags | (mask & AllFlags()));
    }
    void ClearManual(std::uint16_t mask) {
        block_->*layout_->flags = static_cast<std::uint16_t>(block_->*layout_->flags & ~(mask & AllFlags()));
    }
    std::uint16_t AllFlags() const {
        std::uint16_t flags = 0;
        for (const FiducialMarker& marker : layout_->markers) {
            flags = static_cast<std::uint16_t>(flags | marker.flag);
        }
        return flags;
    }
    std::uint16_t Flag(std::size_t slot) const { return layout_->markers[slot].flag; }

  private:
    const MarkerLayout* layout_;
    KxLeadMeasurements* block_;
};

}  // namespace kx
