// Memory that runs short on purpose, and memory whose freeing is watched.
#pragma once

#include <vector>

namespace kx::test {

// While it lives, allocations of arrays that ask for null on failure succeed `allocationsLeft` times and fail
// from then on.
class FailingMemory {
  public:
    explicit FailingMemory(int allocationsLeft);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
};

// The addresses that are freed between the two, in their order; at most 4096.
void WatchFreedMemory();
std::vector<void*> FreedWhileWatching();

}  // namespace kx::test
