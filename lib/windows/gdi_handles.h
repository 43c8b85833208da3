// Owners of GDI objects: the one way in which the library holds a handle that it has to give back.
#pragma once

#include <windows.h>

#include <memory>

namespace kx {

template <typename Handle>
struct GdiObjectDeleter {
    using pointer = Handle;
    void operator()(Handle handle) const noexcept { DeleteObject(handle); }
};
struct MemoryDcDeleter {
    using pointer = HDC;
    void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};
struct IconDeleter {
    using pointer = HICON;
    void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};

// An object must no longer be selected in a device context when its owner deletes it.
using UniquePen = std::unique_ptr<HPEN, GdiObjectDeleter<HPEN>>;
using UniqueBrush = std::unique_ptr<HBRUSH, GdiObjectDeleter<HBRUSH>>;
using UniqueFont = std::unique_ptr<HFONT, GdiObjectDeleter<HFONT>>;
using UniqueBitmap = std::unique_ptr<HBITMAP, GdiObjectDeleter<HBITMAP>>;
using UniqueRegion = std::unique_ptr<HRGN, GdiObjectDeleter<HRGN>>;
using UniqueMemoryDc = std::unique_ptr<HDC, MemoryDcDeleter>;
// For icons of one's own only: one that was loaded as shared belongs to the system.
using UniqueIcon = std::unique_ptr<HICON, IconDeleter>;

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
