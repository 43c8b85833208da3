// What every call of a handler has around it: the object lives until the handler has returned, and an
// exception that the handler lets out is reported.
#pragma once

#include <windows.h>

#include "lib/reporter.h"

namespace kx {

class Window;

// A window procedure, a dialog procedure and a timer callback each have one beside their catch-all. Whatever
// a handler calls (the host, another module, a modal dialog, a control) may end the object's window; an
// object that ends is deleted through Retire, which waits for its running handlers. So a handler may always
// read its own object, and asks Dialog::HasEnded after such a call before it goes on with what is not its
// own.
class HandlerScope {
  public:
    // reporter: the object's own; null: that of the library's window classes.
    explicit HandlerScope(Window& object, Reporter* reporter = nullptr) noexcept;
    // Deletes the retired objects that were waiting for this handler.
    ~HandlerScope();
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

    // LOGEXCEPTION with the name that a dialog gives itself, of any other object with its window's class. To
    // be called while the exception is handled: the object is still there.
    void Exception() const noexcept;

  private:
    friend bool IsHandling(const Window& object) noexcept;

    const Window* object_;
    const Window* parent_;  // compared only: it may be the host's object
    Reporter* reporter_;
    HandlerScope* outer_;
};

// Whether a handler of the object, or of a control or popup that has it as its parent, is running.
bool IsHandling(const Window& object) noexcept;

// The object's end: it gets no message any more and is deleted, at once or when its last running handler has
// returned. Nobody else may delete it then.
void RetireWindow(Window& object, void (*destroy)(Window& object)) noexcept;
// Whether the object was retired and waits for its handlers.
bool IsRetired(const Window& object) noexcept;

template <class Object>
void Retire(Object& object) noexcept {
    RetireWindow(object, [](Window& retired) { delete static_cast<Object*>(&retired); });
}

}  // namespace kx
