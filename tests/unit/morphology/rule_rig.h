// A record's block, a dialog's fields over it and an engine that counts, for tests of the ordering rules.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "dialogs/morphology/rules/marker_edit.h"

namespace kx::test {

using Values = std::vector<std::int32_t>;

// The engine keeps the record as it is, but for markers that a test makes it find anew.
class RuleRig final : public Redetection {
  public:
    // stored: the record's values in slot order; flags: its manual flags.
    RuleRig(const MarkerLayout& layout, const Values& stored, std::uint16_t flags = 0)
        : layout_(layout), edit_{std::span(fields_).first(layout.markers.size()), MarkerStore(layout, block_), *this} {
        for (std::size_t slot = 0; slot < stored.size(); ++slot) {
            edit_.store.SetValue(slot, static_cast<std::uint16_t>(stored[slot]));
            fields_[slot].Bind(static_cast<std::uint32_t>(slot), nullptr);
            fields_[slot].SetAutomatic(stored[slot]);
        }
        block_.*layout.flags = static_cast<std::uint16_t>(kForeignFlags | flags);
    }

    void Redetect() override {
        measured.push_back(Stored());
        for (std::size_t slot = 0; succeeds && slot < edit_.fields.size(); ++slot) {
            if (!edit_.store.IsManual(slot)) {
                edit_.store.SetValue(slot, static_cast<std::uint16_t>(found.empty() ? Stored()[slot] : found[slot]));
                edit_.fields[slot].SetAutomatic(edit_.store.Value(slot));
            }
        }
    }

    // As the view's notification does it.
    void Drag(std::size_t slot, std::int32_t ms) {
        fields_[slot].OnMarkerMoved(kFirstMarkerNotification + static_cast<std::uint32_t>(slot), ms);
    }
    Values Stored() const {
        Values values;
        for (const FiducialMarker& marker : layout_.markers) {
            values.push_back(block_.*marker.ms);
        }
        return values;
    }
    Values Shown() const {
        Values values;
        for (const MarkerField& field : edit_.fields) {
            values.push_back(field.Current());
        }
        return values;
    }
    // 0xFFFF: bits of the flag word that belong to nobody were changed.
    std::uint16_t Flags() const {
        const std::uint16_t flags = block_.*layout_.flags;
        return (flags & kForeignFlags) == kForeignFlags ? static_cast<std::uint16_t>(flags & ~kForeignFlags) : std::uint16_t{0xFFFF};
    }
    std::size_t Calls() const { return measured.size(); }
    MarkerEdit& Edit() { return edit_; }

    bool succeeds = true;
    Values found;                  // what the engine finds for markers without flag; empty: what is there
    std::vector<Values> measured;  // what the record held at each call

  private:
    static constexpr std::uint16_t kForeignFlags = 0xF000;

    const MarkerLayout& layout_;
    KxLeadMeasurements block_{};
    std::array<MarkerField, 6> fields_;
    MarkerEdit edit_;
};

}  // namespace kx::test
