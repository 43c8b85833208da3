// Pictures of windows while they are driven, for people to look at.
#pragma once

#include <windows.h>

#include <string>

namespace kx::test {

// Lets the window paint and writes what it shows to build/shots/NAME.png. False when that was not possible.
bool Shoot(HWND window, const std::string& name);

}  // namespace kx::test
