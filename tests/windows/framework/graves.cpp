#include "tests/windows/framework/graves.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>

namespace kx::test {
namespace {

constexpr int kFill = 0xDD;

struct Body {
    const void* object;
    std::size_t size;
    int deletions;
};
std::array<Body, 256> g_bodies;
std::size_t g_count = 0;

Body* Find(const void* object) {
    Body* const end = g_bodies.data() + g_count;
    Body* const found = std::find_if(g_bodies.data(), end, [object](const Body& body) { return body.object == object; });
    return found == end ? nullptr : found;
}

void Free(void* memory) {
    Body* const body = Find(memory);
    if (body == nullptr) {
        std::free(memory);
    } else if (++body->deletions == 1) {
        std::memset(memory, kFill, body->size);
    }
}

}  // namespace

void Watch(const void* object, std::size_t size) { g_bodies.at(g_count++) = {object, size, 0}; }

int Deletions(const void* watched) {
    const Body* const body = Find(watched);
    return body == nullptr ? -1 : body->deletions;
}

bool IsUntouched(const void* watched) {
    const auto* const bytes = static_cast<const unsigned char*>(watched);
    return std::all_of(bytes, bytes + Find(watched)->size, [](unsigned char byte) { return byte == kFill; });
}

}  // namespace kx::test

void* operator new(std::size_t size) {
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { kx::test::Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { kx::test::Free(memory); }
