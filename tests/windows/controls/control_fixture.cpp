#include "tests/windows/controls/control_fixture.h"

#include <cstdlib>
#include <new>

namespace {

struct Watched {
    const void* object;
    int deletions;
};
Watched g_watched[64];
std::size_t g_watchedCount = 0;

void CountDeletion(const void* memory) {
    for (std::size_t i = 0; i < g_watchedCount; ++i) {
        g_watched[i].deletions += g_watched[i].object == memory ? 1 : 0;
    }
}

}  // namespace

void* operator new(std::size_t size) {
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    CountDeletion(memory);
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    CountDeletion(memory);
    std::free(memory);
}

namespace kx::test {

void WatchDeletion(const void* object) {
    ASSERT_LT(g_watchedCount, std::size(g_watched));
    g_watched[g_watchedCount++] = {object, 0};
}

int Deletions(const void* object) {
    for (std::size_t i = g_watchedCount; i-- > 0;) {
        if (g_watched[i].object == object) {
            return g_watched[i].deletions;
        }
    }
    return -1;
}

ControlTest::ControlTest()
    : parent_(CreateWindowExA(0, "STATIC", "", WS_POPUP, 10, 10, 600, 400, nullptr, nullptr,
                              GetModuleHandleA(nullptr), nullptr),
              nullptr, 0) {}

ControlTest::~ControlTest() {
    g_watchedCount = 0;
    DestroyParent();
}

HWND ControlTest::NewItem(const char* className, DWORD style, std::uint32_t id, const char* text) {
    return CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE | style, 5, 5, 100, 100,
                           parent_.Handle(), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                           GetModuleHandleA(nullptr), nullptr);
}

void ControlTest::DestroyParent() {
    if (parent_.IsValid()) {
        parent_.Destroy();
    }
}

}  // namespace kx::test
