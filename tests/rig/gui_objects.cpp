#include "tests/rig/gui_objects.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kx::test {
namespace {

// More than what can ever stand empty in the table: then the highest slot counts the objects in use, however they lie.
constexpr std::size_t kBatch = 1024;

// The highest place in the handle table that a batch of new objects gets.
template <class Make, class Destroy>
unsigned long HighestSlot(Make make, Destroy destroy) {
    std::array<decltype(make()), kBatch> batch;
    unsigned long highest = 0;
    for (auto& handle : batch) {
        handle = make();
        highest = std::max(highest, static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(handle) & 0xFFFF));
    }
    std::for_each(batch.rbegin(), batch.rend(), destroy);
    return highest;
}

}  // namespace

GuiObjects CountGuiObjects() {
    return {HighestSlot([] { return CreateSolidBrush(0); }, DeleteObject), HighestSlot(CreateMenu, DestroyMenu)};
}

}  // namespace kx::test
