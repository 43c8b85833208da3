#include "tests/unit/watched_memory.h"

#include <array>
#include <cstdlib>
#include <new>

#ifdef __SANITIZE_ADDRESS__
// Of <sanitizer/allocator_interface.h>, which the compiler's packages do not all bring.
extern "C" int __sanitizer_install_malloc_and_free_hooks(  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c)
    void (*allocated)(const volatile void*, std::size_t), void (*freed)(const volatile void*));
#endif

namespace {

std::array<void*, 4096> freed;
std::size_t freedCount = 0;
bool watching = false;

void Freed(const volatile void* address) {
    if (watching && address != nullptr && freedCount < freed.size()) {
        freed[freedCount++] = const_cast<void*>(address);
    }
}

}  // namespace

// The sanitizer keeps its own operators, which tell delete from delete[], and calls back instead.
#ifndef __SANITIZE_ADDRESS__
void operator delete(void* address) noexcept {
    Freed(address);
    std::free(address);
}
void operator delete(void* address, std::size_t) noexcept { operator delete(address); }
#endif

namespace kx::test {

void WatchFreedMemory() {
#ifdef __SANITIZE_ADDRESS__
    static const int installed = __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t) {}, Freed);
    static_cast<void>(installed);
#endif
    freedCount = 0;
    watching = true;
}

std::vector<void*> FreedWhileWatching() {
    watching = false;
    return std::vector<void*>(freed.begin(), freed.begin() + static_cast<std::ptrdiff_t>(freedCount));
}

}  // namespace kx::test
