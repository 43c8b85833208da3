// Owners of GDI objects: the one way in which the library holds a handle that it has to give back.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace kx {

struct GdiObjectDeleter {
    void operator()(HGDIOBJ handle) const noexcept { DeleteObject(handle); }
};
struct MemoryDcDeleter {
    void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};
struct IconDeleter {
    void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};

// An object must no longer be selected in a device context when its owner deletes it.
using UniquePen = std::unique_ptr<std::remove_pointer_t<HPEN>, GdiObjectDeleter>;
using UniqueBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiObjectDeleter>;
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDeleter>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;
using UniqueRegion = std::unique_ptr<std::remove_pointer_t<HRGN>, GdiObjectDeleter>;
using UniqueMemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, MemoryDcDeleter>;
// For icons of one's own only: one that was loaded as shared belongs to the system.
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

// Selects an object into a device context for as long as it lives.
class GdiSelection {
  public:
    GdiSelection(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    ~GdiSelection() {
        if (previous_ != nullptr) {
            SelectObject(dc_, previous_);
        }
    }
    GdiSelection(const GdiSelection&) = delete;
    GdiSelection& operator=(const GdiSelection&) = delete;
    // Whether the object was selected.
    explicit operator bool() const { return previous_ != nullptr; }

  private:
    HDC dc_;
    HGDIOBJ previous_;
};

}  // namespace kx
