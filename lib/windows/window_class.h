// Window classes of the library: their registration and the procedure that all of them share.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "lib/modules/library_module.h"
#include "lib/modules/system_services.h"

namespace kx {

// A window class, registered while the object lives. A window of the class belongs to an object: either the
// one that creates it (Window::Create with the object as creation parameter), or one that CreateWindowObject
// makes for a window that a dialog template creates by the class name.
class WindowClass {
  public:
    // Registers `name` for the library's module: byte-aligned client area, double clicks, arrow cursor, no
    // background brush. menuId and iconId: resources of the module, 0 for none. A failed registration is not
    // reported: creating a window of the class fails then. name is kept, not copied. services may be null;
    // library may not.
    WindowClass(const LibraryModule* library, const char* name, std::uint32_t menuId, std::uint32_t iconId,
                SystemServices* services);

    // The virtual operations: the destructor, then the factory.

    // Unregisters the class. Its windows must be gone.
    virtual ~WindowClass();
    // WM_CREATE of a window without an object. controlId: the window's id in its dialog. Makes an object,
    // attached to the window, and returns 0; or -1, which makes the creation fail: the default.
    virtual LRESULT CreateWindowObject(std::uint32_t controlId, HWND window);

    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;

    const LibraryModule* Library() const { return library_; }
    SystemServices* Services() const { return services_; }
    // Where reports go in any case.
    Reporter& Reports() const;
    const char* Name() const { return name_; }

  private:
    const LibraryModule* library_;
    SystemServices* services_;
    const char* name_;
};

// The registered classes of the process by name; names are compared with their case.
namespace class_registry {

inline constexpr std::size_t kCapacity = 16;

// Adds a pair; nothing when the name is there already or the table is full. Returns whether it was added.
bool Add(WindowClass* windowClass, const char* name);
// Removes the entry whose name and object both match; the later ones move down one place.
void Remove(const WindowClass* windowClass, const char* name);
// Null when there is none.
WindowClass* Find(const char* name);
std::size_t Count();
// The system services of the first entry that has any; null when there is none.
Reporter* AnyReporter();

}  // namespace class_registry

// The window procedure of every class of WindowClass: brings the window and its object together at WM_CREATE
// and calls the object's WindowProc afterwards. No exception leaves it: one that a handler throws is reported
// with LOGEXCEPTION and the name of the handler's class, and the message counts as handled with 0 (WM_CREATE:
// the creation fails).
LRESULT CALLBACK ClassWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

}  // namespace kx
