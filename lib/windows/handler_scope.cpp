#include "lib/windows/handler_scope.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

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

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

HandlerScope::HandlerScope(Window& object, Reporter* reporter) noexcept
    : object_(&object),
      parent_(object.Parent()),
      type_(&typeid(object)),
      reporter_(reporter),
      outer_(g_innermost) {
    g_innermost = this;
}

HandlerScope::~HandlerScope() {
    g_innermost = outer_;
    if (g_retiredCount > 0) {
        DeleteRetired();
    }
}

void HandlerScope::Exception() const noexcept {
    char name[64];
    ClassName(type_->name(), name, sizeof name);
    // The object's reporter may have gone with the library.
    Reporter* const reporter =
        reporter_ != nullptr && !IsRetired(*object_) ? reporter_ : class_registry::AnyReporter();
    if (reporter != nullptr) {
        reporter->LOGEXCEPTION(name);
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

// Two forms are read: "class kx::MarkerView", and the mangled one, where each name stands behind its length:
// "N2kx10MarkerViewE", "10MarkerView".
void ClassName(const char* typeName, char* buffer, std::size_t size) noexcept {
    const char* last = "Window";
    std::size_t length = std::strlen(last);
    if (std::strchr(typeName, ' ') != nullptr || std::strchr(typeName, ':') != nullptr) {
        const char* const end = typeName + std::strlen(typeName);
        const char* start = end;
        while (start != typeName && start[-1] != ':' && start[-1] != ' ') {
            --start;
        }
        last = start;
        length = static_cast<std::size_t>(end - start);
    } else {
        const char* at = typeName;
        while (*at != '\0') {
            if (!IsDigit(*at)) {
                ++at;
                continue;
            }
            std::size_t count = 0;
            for (; IsDigit(*at); ++at) {
                count = count * 10 + static_cast<std::size_t>(*at - '0');
            }
            if (count == 0 || count > std::strlen(at)) {
                break;
            }
            last = at;
            length = count;
            at += count;
        }
    }
    std::snprintf(buffer, size, "%.*s", static_cast<int>(length), last);
}

}  // namespace kx
