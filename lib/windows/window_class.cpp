#include "lib/windows/window_class.h"

#include <cstring>

#include "lib/windows/handler_scope.h"
#include "lib/windows/window.h"

namespace kx {
namespace {

struct RegistryEntry {
    WindowClass* windowClass;
    const char* name;
};

RegistryEntry g_entries[class_registry::kCapacity];
std::size_t g_count = 0;

const char* ResourceName(std::uint32_t id) {
    return id == 0 ? nullptr : MAKEINTRESOURCEA(static_cast<WORD>(id));
}

// A class that the module has registered before is still there while a window of it is, of an earlier use
// that ended in the middle of making it: it serves as well.
bool IsRegistered(const WNDCLASSEXA& wanted) {
    WNDCLASSEXA found{};
    found.cbSize = sizeof found;
    return GetClassInfoExA(wanted.hInstance, wanted.lpszClassName, &found) != FALSE &&
           found.lpfnWndProc == wanted.lpfnWndProc;
}

}  // namespace

WindowClass::WindowClass(const LibraryModule* library, const char* name, std::uint32_t menuId,
                         std::uint32_t iconId, SystemServices* services)
    : library_(library), services_(services), name_(name) {
    static_assert(sizeof(WNDCLASSEXA) == 48);
    WNDCLASSEXA description{};
    description.cbSize = sizeof description;
    description.style = CS_BYTEALIGNCLIENT | CS_DBLCLKS;
    description.lpfnWndProc = ClassWindowProc;
    description.hInstance = library->instance.Handle();
    description.hIcon = iconId == 0 ? nullptr : library->instance.LoadIconById(iconId);
    description.hCursor = LoadCursorA(nullptr, reinterpret_cast<const char*>(IDC_ARROW));
    description.lpszMenuName = ResourceName(menuId);
    description.lpszClassName = name;
    if (RegisterClassExA(&description) != 0 || IsRegistered(description)) {
        class_registry::Add(this, name);
    }
}

WindowClass::~WindowClass() {
    class_registry::Remove(this, name_);
    UnregisterClassA(name_, library_->instance.Handle());
}

LRESULT WindowClass::CreateWindowObject(std::uint32_t, HWND) {
    return -1;
}

Reporter& WindowClass::Reports() const {
    static SilentReporter silent;
    if (services_ == nullptr) {
        return silent;
    }
    return *services_;
}

namespace class_registry {

bool Add(WindowClass* windowClass, const char* name) {
    if (Find(name) != nullptr || g_count == kCapacity) {
        return false;
    }
    g_entries[g_count] = {windowClass, name};
    ++g_count;
    return true;
}

void Remove(const WindowClass* windowClass, const char* name) {
    for (std::size_t i = 0; i < g_count; ++i) {
        if (g_entries[i].windowClass == windowClass && std::strcmp(g_entries[i].name, name) == 0) {
            --g_count;
            for (; i < g_count; ++i) {
                g_entries[i] = g_entries[i + 1];
            }
            return;
        }
    }
}

WindowClass* Find(const char* name) {
    for (std::size_t i = 0; i < g_count; ++i) {
        if (std::strcmp(g_entries[i].name, name) == 0) {
            return g_entries[i].windowClass;
        }
    }
    return nullptr;
}

std::size_t Count() {
    return g_count;
}

Reporter* AnyReporter() {
    for (std::size_t i = 0; i < g_count; ++i) {
        if (g_entries[i].windowClass->Services() != nullptr) {
            return g_entries[i].windowClass->Services();
        }
    }
    return nullptr;
}

}  // namespace class_registry

namespace {

// The class that a window was created by: the name as it was given, else as the class was registered. The two
// differ when the window was created by the class's atom, and when a resource compiler has put a template's
// name in capitals, which the window manager accepts.
WindowClass* CreatingClass(HWND window, const CREATESTRUCTA& creation) {
    if (reinterpret_cast<UINT_PTR>(creation.lpszClass) > 0xFFFF) {
        if (WindowClass* const found = class_registry::Find(creation.lpszClass)) {
            return found;
        }
    }
    char registered[256 + 1];
    registered[GetClassNameA(window, registered, sizeof registered)] = '\0';
    return class_registry::Find(registered);
}

// A window that a template created by the name of its class: the class makes the object.
LRESULT CreateByName(HWND window, const CREATESTRUCTA& creation) {
    WindowClass* const windowClass = CreatingClass(window, creation);
    if (windowClass == nullptr) {
        return -1;
    }
    try {
        return windowClass->CreateWindowObject(
            static_cast<std::uint32_t>(reinterpret_cast<UINT_PTR>(creation.hMenu)), window);
    } catch (...) {
        windowClass->Reports().LOGEXCEPTION(windowClass->Name());
        return -1;
    }
}

LRESULT CallHandler(Window& object, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const HandlerScope scope(object);
    try {
        return message == WM_CREATE ? object.OnCreate(window) : object.WindowProc(message, wParam, lParam);
    } catch (...) {
        scope.Exception();
        return message == WM_CREATE ? -1 : 0;
    }
}

}  // namespace

LRESULT CALLBACK ClassWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_CREATE) {
        const auto& creation = *reinterpret_cast<const CREATESTRUCTA*>(lParam);
        auto* const object = static_cast<Window*>(creation.lpCreateParams);
        if (object == nullptr) {
            return CreateByName(window, creation);
        }
        const LRESULT result = CallHandler(*object, window, message, wParam, lParam);
        if (result == -1 && Window::FromHandle(window) == object) {
            // The creator still has the object, and a window that is refused must not call it any more.
            object->Attach(nullptr);
            object->handle_ = nullptr;
        }
        return result;
    }
    Window* const object = Window::FromHandle(window);
    return object == nullptr ? DefWindowProcA(window, message, wParam, lParam)
                             : CallHandler(*object, window, message, wParam, lParam);
}

}  // namespace kx
