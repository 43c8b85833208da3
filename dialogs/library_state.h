// The counted use of the library by its host.
#pragma once

#include <windows.h>

#include <cstdint>

namespace kx {

class DialogLibrary;

// Module-wide, one per loaded library, on the host's user-interface thread only. It has no destructor on
// purpose: a library that is unloaded without its final Stop deletes nothing, because by then its siblings
// may be gone.
class LibraryState {
  public:
    // Process attach: the module's handle is known, nothing is started.
    void Attach(HMODULE module);
    // Counts one more start; the count reaching 1 creates the library object. Ignored before Attach. When the
    // creation fails the count stands and there is no object.
    void Start() noexcept;
    // Counts one start less; the count leaving 1 deletes the library object. A Stop without a Start brings
    // the count to -1, so that the next Start brings it to 0 and creates nothing.
    void Stop() noexcept;

    // Null before the first Start and after the last Stop.
    DialogLibrary* Library() const { return library_; }

  private:
    HMODULE module_ = nullptr;
    std::int32_t startCount_ = 0;
    DialogLibrary* library_ = nullptr;  // owned from the Start that created it to the Stop that deletes it
};

}  // namespace kx
