// That an exception can be thrown when there is no memory left.
#pragma once

namespace kx {

// The run-time keeps a reserve for exceptions that it finds no memory for. It guards the reserve by a lock
// that it makes when the reserve is first used, out of memory; when there is none, that is an exception, and
// so on until the stack ends. So the reserve is used once while there is memory. What the run-time keeps for
// each thread is made by it as well: to be called on the user-interface thread.
void PrepareExceptions() noexcept;

}  // namespace kx
