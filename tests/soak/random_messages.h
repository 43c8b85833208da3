// Whatever may come to a window of the library: from its user, from its host, from the system.
#pragma once

#include <windows.h>

#include <cstdint>
#include <random>
#include <vector>

namespace kx::test {

class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    // 0 to count - 1.
    unsigned Below(unsigned count) { return static_cast<unsigned>(engine_() % count); }
    bool OneIn(unsigned count) { return Below(count) == 0; }
    template <class T, std::size_t kCount>
    const T& Of(const T (&values)[kCount]) {
        return values[Below(kCount)];
    }
    // A small number, an edge of a range, or any.
    std::uint32_t Number();

  private:
    std::mt19937 engine_;
};

// A window and all below it.
std::vector<HWND> WindowsFrom(HWND window);

// Sends one message with parameters that are no addresses.
void SendAnything(Random& random, HWND window);
// A notification of a control of the dialog, or one that names a control and is none.
void SendNotification(Random& random, HWND dialog);
// Keys and characters where the focus is put; the mouse pressed, moved and let go over a window.
void UseKeyboard(Random& random, HWND window);
void UseMouse(Random& random, HWND window);

}  // namespace kx::test
