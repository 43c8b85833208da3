#include "lib/windows/handler_scope.h"

#include <algorithm>
#include <iterator>

#include "lib/windows/dialog.h"
#include "lib/windows/window.h"
#include "lib/windows/window_class.h"

namespace kx {
namespace {

// Everything here belongs to the user-interface thread.
HandlerScope* g_innermost = nullptr;

struct Retired {
    Window* object;
    void (*destroy)(Window& object);
};
// As many as can wait at a time: a handler within a handler, each of an object that ends. One more than that
// stays in memory.
Retired g_retired[64];
std::size_t g_retiredCount = 0;

// An object's destructor may retire others.
void DeleteRetired() {
    for (std::size_t i = 0; i < g_retiredCount;) {
        const Retired retired = g_retired[i];
        if (IsHandling(*retired.object)) {
            ++i;
            continue;
        }
        g_retired[i] = g_retired[--g_retiredCount];
        retired.destroy(*retired.object);
        i = 0;
    }
}

}  // namespace

HandlerScope::HandlerScope(Window& object, Reporter* reporter) noexcept
    : object_(&object), parent_(object.Parent()), reporter_(reporter), outer_(g_innermost) {
    g_innermost = this;
}

HandlerScope::~HandlerScope() {
    g_innermost = outer_;
    if (g_retiredCount > 0) {
        DeleteRetired();
    }
}

void HandlerScope::Exception() const noexcept {
    char name[64] = "Window";
    const HWND window = object_->Handle();
    const auto* const dialog = dynamic_cast<const Dialog*>(object_);
    if (dialog == nullptr) {
        GetClassNameA(window, name, sizeof name);
    }
    // The object's reporter may have gone with the library.
    Reporter* const reporter =
        reporter_ != nullptr && !IsRetired(*object_) ? reporter_ : class_registry::AnyReporter();
    if (reporter != nullptr) {
        reporter->LOGEXCEPTION(dialog != nullptr ? dialog->ReportName() : name);
    }
}

bool IsHandling(const Window& object) noexcept {
    for (const HandlerScope* scope = g_innermost; scope != nullptr; scope = scope->outer_) {
        if (scope->object_ == &object || scope->parent_ == &object) {
            return true;
        }
    }
    return false;
}

void RetireWindow(Window& object, void (*destroy)(Window& object)) noexcept {
    object.StopTimer();
    if (object.Handle() != nullptr && Window::FromHandle(object.Handle()) == &object) {
        object.Attach(nullptr);
    }
    if (!IsHandling(object)) {
        destroy(object);
    } else if (!IsRetired(object) && g_retiredCount < std::size(g_retired)) {
        g_retired[g_retiredCount++] = {&object, destroy};
    }
}

bool IsRetired(const Window& object) noexcept {
    return std::any_of(g_retired, g_retired + g_retiredCount,
                       [&object](const Retired& retired) { return retired.object == &object; });
}

}  // namespace kx
