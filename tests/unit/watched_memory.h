// Memory whose freeing is watched.
#pragma once

#include <vector>

namespace kx::test {

// The addresses that are freed between the two, in their order; at most 4096.
void WatchFreedMemory();
std::vector<void*> FreedWhileWatching();

}  // namespace kx::test
