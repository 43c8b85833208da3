#include "dialogs/exception_reserve.h"

#include <cstddef>
#include <initializer_list>

namespace {

bool g_refusesNext = false;

}  // namespace

// The linker turns every call of malloc into one of the first, and every one of __real_malloc into malloc
// (dialogs/CMakeLists.txt).
extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size);

void* __wrap_malloc(std::size_t size) {
    if (g_refusesNext) {
        g_refusesNext = false;
        return nullptr;
    }
    return __real_malloc(size);
}

namespace kx {

void PrepareExceptions() noexcept {
    // Two: the first makes what the thread needs, whatever that asks for, so that what is refused then is the
    // memory of the exception itself.
    for (const bool refuses : {false, true}) {
        g_refusesNext = refuses;
        try {
            throw 0;
        } catch (int) {
        }
    }
    g_refusesNext = false;
}

}  // namespace kx
