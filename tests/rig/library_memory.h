// The memory of the library under test: how much it holds, when it runs out, and who touches what is gone.
//
// The copy of the DLL that the rig has loaded (pane.h) asks its C run-time for memory through this.
#pragma once

#include <cstddef>

namespace kx::test {

// One at a time; blocks that were there before stay as they are. Each new block stands alone before a page that is not
// there and its pages go away with it: an access behind its end, or after its end until the next Rewind, is an access
// violation.
class LibraryMemory {
  public:
    LibraryMemory();
    ~LibraryMemory();
    LibraryMemory(const LibraryMemory&) = delete;
    LibraryMemory& operator=(const LibraryMemory&) = delete;

    // After so many further allocations there is no memory; -1: there is.
    void Limit(int allocations);
    // Whether an allocation was refused since the last Limit.
    bool RanOut() const;
    // The addresses of the blocks since the last Rewind may be used again, when all of these have been
    // freed: there is room for half a gigabyte of them.
    void Rewind();
    // Blocks that the library got since this object was made and still has.
    int Held() const;
};

}  // namespace kx::test
