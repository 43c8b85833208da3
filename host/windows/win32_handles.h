// Owners of the Win32 objects that the workstation holds.
#pragma once

#include <windows.h>

#include <memory>

namespace kxhost {

struct FontDeleter {
    using pointer = HFONT;
    void operator()(HFONT font) const { DeleteObject(font); }
};
struct BitmapDeleter {
    using pointer = HBITMAP;
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
struct PenDeleter {
    using pointer = HPEN;
    void operator()(HPEN pen) const { DeleteObject(pen); }
};
struct MemoryDcDeleter {
    using pointer = HDC;
    void operator()(HDC dc) const { DeleteDC(dc); }
};
struct ModuleDeleter {
    using pointer = HMODULE;
    void operator()(HMODULE module) const { FreeLibrary(module); }
};

using UniqueFont = std::unique_ptr<HFONT, FontDeleter>;
using UniquePen = std::unique_ptr<HPEN, PenDeleter>;
using UniqueBitmap = std::unique_ptr<HBITMAP, BitmapDeleter>;
using UniqueMemoryDc = std::unique_ptr<HDC, MemoryDcDeleter>;
using UniqueModule = std::unique_ptr<HMODULE, ModuleDeleter>;

// The device context of a window's client area, or with `whole` of the window with its frame.
class WindowDc {
  public:
    explicit WindowDc(HWND window, bool whole = false)
        : window_(window), dc_(whole ? GetWindowDC(window) : GetDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc() {
        if (dc_ != nullptr) {
            ReleaseDC(window_, dc_);
        }
    }
    HDC Get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

// Selects an object into a device context for as long as it lives.
class Selection {
  public:
    Selection(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() { SelectObject(dc_, previous_); }

  private:
    HDC dc_;
    HGDIOBJ previous_;
};

// The painting of one WM_PAINT.
class PaintScope {
  public:
    explicit PaintScope(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope() { EndPaint(window_, &paint_); }
    HDC Dc() const { return paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

}  // namespace kxhost
