// A label whose number is coloured by the band that it falls into.
#pragma once

#include <windows.h>

#include <cstdint>

#include "dialogs/hypertrophy/value_range.h"
#include "lib/windows/static_label.h"

namespace kx {

// Owned by whoever made it; its end is the end of its control.
class RangeColorLabel final : public StaticLabel {
  public:
    // Adopts item `id` of a dialog; the range is copied.
    RangeColorLabel(Window* dialog, std::uint32_t id, const ValueRange& range);

    // Shows the value as a decimal number in the colour of its band.
    void SetValue(std::int32_t value);

  private:
    ValueRange range_;
};

}  // namespace kx
