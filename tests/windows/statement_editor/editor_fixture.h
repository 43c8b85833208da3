// The statement editor over a host's window, opened through the library's export.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

#include "tests/rig/input.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace kx::test {

inline constexpr std::uint32_t kStatementMode = 0;
inline constexpr std::uint32_t kPhysicianMode = 1;

inline constexpr std::uint32_t kEditId = 100;
inline constexpr std::uint32_t kPanelButtonId = 101;
inline constexpr std::uint32_t kPanelId = 500;

class StatementEditorTest : public InterpretationPane {
  protected:
    StatementEditorTest();

    // Opens the editor at area_ and runs the script in it; the export's result.
    std::uint32_t Run(std::uint32_t mode, const std::function<void(HWND)>& script);

    // In the parent's window, whose corner is not the screen's.
    KxRect area_{40, 30, 440, 190};
    POINT corner_{380, 70};
};

std::string EditText(HWND editor);
// A child's place in the editor's client area, and a window's on the screen.
RECT PlaceOf(HWND editor, HWND child);
RECT ScreenPlaceOf(HWND window);
// The completion's popup is there and to be seen.
bool IsProposing();

}  // namespace kx::test

// For messages of failed comparisons.
inline bool operator==(const RECT& left, const RECT& right) {
    return EqualRect(&left, &right) != FALSE;
}
inline std::ostream& operator<<(std::ostream& stream, const RECT& area) {
    return stream << area.left << ", " << area.top << ", " << area.right << ", " << area.bottom;
}
