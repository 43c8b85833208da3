// How an exception that a handler lets out is reported at the procedure that called it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <typeinfo>

#include "lib/reporter.h"

namespace kx {

class Window;

// Made before a handler is called, because afterwards the object may be gone; costs two reads. Every window
// procedure, dialog procedure and timer callback of the library has one beside its catch-all.
class HandlerReport {
  public:
    // reporter: the object's own; null: that of the library's window classes.
    explicit HandlerReport(const Window& object, Reporter* reporter = nullptr) noexcept;

    // LOGEXCEPTION with the name of the object's class.
    void Exception() const noexcept;

  private:
    const std::type_info* type_;
    Reporter* reporter_;
};

// The last name in a type's name as the compiler gives it ("kx::MarkerView" gives "MarkerView"), cut at size
// - 1 characters; "Window" when it cannot be told.
void ClassName(const char* typeName, char* buffer, std::size_t size) noexcept;

}  // namespace kx
