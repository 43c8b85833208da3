#include "dialogs/hypertrophy/range_color_label.h"

namespace kx {

// A label and its seven range words.
static_assert(sizeof(RangeColorLabel) == sizeof(StaticLabel) + 7 * sizeof(std::uint32_t));

RangeColorLabel::RangeColorLabel(Window* dialog, std::uint32_t id, const ValueRange& range)
    : StaticLabel(dialog, id), range_(range) {}

void RangeColorLabel::SetValue(std::int32_t value) {
    SetTextColor(range_.ColorOf(value));
    SetNumber(value);
}

}  // namespace kx
