// A record's block, a dialog's fields over it and an engine that counts, for tests of the ordering rules.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

#include "dialogs/morphology/rules/marker_edit.h"

namespace kx::test {

using Values = std::vector<std::int32_t>;

// The engine keeps the record as it is, but for markers that a test makes it find anew.
class RuleRig final : public Redetection {
  public:
    // stored: the record's values in slot order; flags: its manual flags.
    RuleRig(const MarkerLayout& layout, const Values& stored, std::uint16_t flags = 0)
        : edit_{std::span(fields_).first(layout.markers.size()), MarkerStore(layout, block_), *this} {
        for (std::size_t slot = 0; slot < stored.size(); ++slot) {
            edit_.store.SetValue(slot, static_cast<std::uint16_t>(stored[slot]));
            fields_[slot].Bind(static_cast<std::uint32_t>(slot), nullptr);
            fields_[slot].SetAutomatic(stored[slot]);
        }
        edit_.store.SetManual(flags);
        block_.*layout.flags = static_cast<std::uint16_t>(block_.*layout.flags | kForeignFlags);
        flags_ = layout.flags;
    }

    void Redetect() override {
        ++calls;
        measured.push_back(Stored());
        if (!succeeds) {
            return;
        }
        for (std::size_t slot = 0; slot < edit_.fields.size(); ++slot) {
            if (!edit_.store.IsManual(slot)) {
                if (!found.empty()) {
                    edit_.store.SetValue(slot, static_cast<std::uint16_t>(found[slot]));
                }
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
        for (std::size_t slot = 0; slot < edit_.fields.size(); ++slot) {
            values.push_back(edit_.store.Value(slot));
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
    std::uint16_t Flags() const { return edit_.store.ManualFlags(); }
    // Bits of the flag word that belong to nobody or to another dialog.
    bool AreForeignFlagsKept() const { return (block_.*flags_ & kForeignFlags) == kForeignFlags; }
    MarkerEdit& Edit() { return edit_; }

    int calls = 0;
    bool succeeds = true;
    Values found;                  // what the engine finds for markers without flag; empty: what is there
    std::vector<Values> measured;  // what the record held at each call

  private:
    static constexpr std::uint16_t kForeignFlags = 0xF000;

    KxLeadMeasurements block_{};
    MarkerWord flags_ = nullptr;
    std::array<MarkerField, 6> fields_;
    MarkerEdit edit_;
};

// A reproducible sequence of numbers, the same on every platform.
class Numbers {
  public:
    explicit Numbers(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}
    // 0 to bound - 1.
    std::int32_t Below(std::int32_t bound) {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<std::int32_t>((state_ >> 8) % static_cast<std::uint32_t>(bound));
    }

  private:
    std::uint32_t state_;
};

}  // namespace kx::test
