// How often the program has asked for memory by operator new.
#pragma once

namespace kx::test {

long AllocationCount();

}  // namespace kx::test
