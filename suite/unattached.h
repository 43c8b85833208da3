// Exports of a module that has nothing behind it yet: each takes the arguments that its callers pass and
// answers 0.
#pragma once

#include <cstdint>

// KX_UNATTACHED_n(NAME): an export of n 32-bit arguments.
#define KX_UNATTACHED(name, parameters)                  \
    extern "C" std::uint32_t __stdcall name parameters { \
        return 0;                                        \
    }
#define KX_UNATTACHED_0(name) KX_UNATTACHED(name, ())
#define KX_UNATTACHED_1(name) KX_UNATTACHED(name, (std::uint32_t))
#define KX_UNATTACHED_2(name) KX_UNATTACHED(name, (std::uint32_t, std::uint32_t))
#define KX_UNATTACHED_3(name) KX_UNATTACHED(name, (std::uint32_t, std::uint32_t, std::uint32_t))
#define KX_UNATTACHED_4(name) \
    KX_UNATTACHED(name, (std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t))
#define KX_UNATTACHED_5(name) \
    KX_UNATTACHED(name, (std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t))
#define KX_UNATTACHED_6(name) \
    KX_UNATTACHED(            \
        name, (std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t))
