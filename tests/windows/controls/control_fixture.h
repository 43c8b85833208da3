// A window to hold controls, and a count of which objects were deleted how often.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "lib/modules/library_module.h"
#include "lib/windows/window.h"

namespace kx::test {

// From the call on, deletions of this address are counted (at most 64 addresses in a program).
void WatchDeletion(const void* object);
// How often the watched address was deleted since.
int Deletions(const void* object);

// The slot of a virtual operation in its class's table.
template <class Operation>
std::size_t SlotOf(Operation operation) {
    // A pointer to a virtual member holds the offset of its entry, plus 1.
    std::uintptr_t entry;
    static_assert(sizeof operation >= sizeof entry);
    std::memcpy(&entry, &operation, sizeof entry);
    return (entry - 1) / sizeof(void*);
}

inline std::string TextOf(HWND window) {
    char text[2048] = {};
    GetWindowTextA(window, text, sizeof text);
    return text;
}
class ControlTest : public testing::Test {
  protected:
    ControlTest();
    ~ControlTest() override;

    // A child of the parent window as a dialog template would make it.
    HWND NewItem(const char* className, DWORD style, std::uint32_t id, const char* text = "");
    // Destroys the parent window and with it its controls.
    void DestroyParent();

    LibraryModule library_{GetModuleHandleA(nullptr)};
    const ModuleInstance& module_ = library_.instance;
    Window parent_;
};

// The parameters of WM_COMMAND that say that control `id` sent notification `code`.
constexpr WPARAM Command(std::uint32_t id, unsigned code) {
    return (static_cast<WPARAM>(code) << 16) | (id & 0xFFFF);
}

}  // namespace kx::test
