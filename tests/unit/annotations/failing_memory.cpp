#include "tests/unit/annotations/failing_memory.h"

#include <cstddef>
#include <new>

namespace {

constexpr int kPlenty = -1;
int left = kPlenty;

}  // namespace

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (left == 0) {
        return nullptr;
    }
    if (left > 0) {
        --left;
    }
    try {
        return operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace kx::test {

FailingMemory::FailingMemory(int allocationsLeft) {
    left = allocationsLeft;
}

FailingMemory::~FailingMemory() {
    left = kPlenty;
}

}  // namespace kx::test
