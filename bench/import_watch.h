// Counts what a module asks of the system, by putting counting functions into its import table: the module is
// measured as it is shipped.
#pragma once

#include <windows.h>

namespace kx::bench {

// What the watched modules have called since the watch began.
struct SystemCalls {
    long allocations = 0;  // malloc, calloc, realloc (operator new calls malloc), HeapAlloc and its kin
    long files = 0;        // opened, found or read
};

// Watches modules for the rest of the program, from the next call on.
class ImportWatch {
  public:
    // Returns how many imports of the module are counted: 0 would be a watch that sees nothing. The calls
    // that one module makes into another are the other's own.
    static int Watch(HMODULE module);
    static SystemCalls& Calls();
};

}  // namespace kx::bench
