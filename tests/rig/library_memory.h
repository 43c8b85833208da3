// The memory of the library under test: how much it holds, when it runs out, and who touches what is gone.
//
// The copy of the DLL that the rig has loaded (pane.h) asks its C run-time for memory through this.
#pragma once

#include <cstddef>

namespace kx::test {

// One at a time; blocks that were there before stay as they are.
class LibraryMemory {
  public:
    enum class Kind {
        kCounted,  // as fast as ever
        // Each new block stands alone before a page that is not there and its pages go away with it, for
        // good: an access behind its end or after its end is an access violation.
        kFenced,
    };

    explicit LibraryMemory(Kind kind = Kind::kCounted);
    ~LibraryMemory();
    LibraryMemory(const LibraryMemory&) = delete;
    LibraryMemory& operator=(const LibraryMemory&) = delete;

    // After so many further allocations there is no memory; -1: there is.
    void Limit(int allocations);
    // Whether an allocation was refused since the last Limit.
    bool RanOut() const;
    // Blocks that the library got since this object was made and still has.
    int Held() const;
};

}  // namespace kx::test
