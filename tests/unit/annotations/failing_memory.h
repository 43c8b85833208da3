// Memory that runs short on purpose.
#pragma once

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

}  // namespace kx::test
