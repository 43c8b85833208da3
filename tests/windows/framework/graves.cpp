#include "tests/windows/framework/graves.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>

namespace kx::test {
namespace {

constexpr unsigned char kFill = 0xDD;

// What was never watched stands behind the last one.
struct Body {
    const void* object = nullptr;
    std::size_t size = 0;
    int deletions = -1;
};
std::array<Body, 257> g_bodies;
std::size_t g_count = 0;

Body& Find(const void* object) {
    return *std::find_if(g_bodies.begin(), g_bodies.begin() + g_count, [object](const Body& body) { return body.object == object; });
}

void Free(void* memory) {
    Body& body = Find(memory);
    if (body.deletions < 0) {
        std::free(memory);
    } else if (++body.deletions == 1) {
        std::memset(memory, kFill, body.size);
    }
}

}  // namespace

void Watch(const void* object, std::size_t size) { g_bodies.at(g_count++) = {object, size, 0}; }

int Deletions(const void* watched) { return Find(watched).deletions; }

bool IsUntouched(const void* watched) {
    const auto* const bytes = static_cast<const unsigned char*>(watched);
    return std::all_of(bytes, bytes + Find(watched).size, [](unsigned char byte) { return byte == kFill; });
}

}  // namespace kx::test

// With the C library's memory, that `operator new` of the run-time takes too.
void operator delete(void* memory) noexcept { kx::test::Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { kx::test::Free(memory); }
