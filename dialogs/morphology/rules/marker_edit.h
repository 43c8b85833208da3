// marker_edit: what a dialog's rules work on: the fields that the reviewer sees, the record, and the analysis
// engine.
#pragma once

#include <cstddef>
#include <span>

#include "dialogs/morphology/rules/marker_field.h"
#include "dialogs/morphology/rules/marker_store.h"

namespace kx {

// Measures the beat again with the markers that are stored now. When it succeeds, every field whose manual
// flag is clear holds its new stored value afterwards; when it fails, the fields are as they were.
class Redetection {
  public:
    virtual void Redetect() = 0;

  protected:
    Redetection() = default;
    Redetection(const Redetection&) = default;
    Redetection& operator=(const Redetection&) = default;
    ~Redetection() = default;
};

// fields: in slot order, one for each marker of the store.
struct MarkerEdit {
    std::span<MarkerField> fields;
    MarkerStore store;
    Redetection& redetection;

    std::int32_t Current(std::size_t slot) const { return fields[slot].Current(); }
    void Set(std::size_t slot, std::int32_t ms) { fields[slot].SetCurrent(ms); }
    bool IsChanged(std::size_t slot) const { return fields[slot].Current() != store.Value(slot); }
    // Writes a field's value and sets that marker's own flag.
    void Store(std::size_t slot) {
        store.Write(slot, fields[slot]);
        store.SetManual(store.Flag(slot));
    }
};

}  // namespace kx
