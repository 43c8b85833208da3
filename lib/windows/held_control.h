// The one way in which a dialog holds its controls: each by a std::unique_ptr to its wrapper, filled by Hold.
//
// The wrappers go with the dialog's object, whether their controls are still there or not: an operation on a
// control that is gone does nothing. A CheckBox or ComboBox is made with kHeld, or else it would delete
// itself with its control.
#pragma once

#include <memory>
#include <utility>

namespace kx {

struct Held {};
inline constexpr Held kHeld{};

// What Hold throws; OnInitDialog reports it as every other failure to build the dialog.
struct MissingControl {};

// Makes a wrapper from its constructor's arguments. Throws when there is no memory, or no such control.
template <class Control, class... Arguments>
void Hold(std::unique_ptr<Control>& place, Arguments&&... arguments) {
    place = std::make_unique<Control>(std::forward<Arguments>(arguments)...);
    if (place->Handle() == nullptr) {
        throw MissingControl();
    }
}

}  // namespace kx
