// What a marker view draws and tells, as bare calls of the system: no object of the library.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "bench/marker_view_window.h"
#include "lib/windows/gdi_handles.h"

namespace kx::bench {

class BarePicture {
  public:
    // For the view's own picture: the points of its traces and the places of its markers are computed here,
    // once.
    explicit BarePicture(MarkerViewWindow& window);
    ~BarePicture();
    BarePicture(const BarePicture&) = delete;
    BarePicture& operator=(const BarePicture&) = delete;

    // The grid and the traces into a new bitmap.
    void Rebuild();
    // The picture and all markers onto the window.
    void Show() const;
    // The same as the window manager has a window painted: the view's place in it is a window of its own for
    // the time.
    void Repaint() const;
    // Marker `slot` from its column to another one: what stood there comes back, the marker is drawn, and a
    // message is posted to the view's owner.
    void Step(std::size_t slot, int column);
    // The marker that is drawn with the frame of the focus; none to begin with.
    void SetFocus(std::size_t slot) { focused_ = slot; }
    // Whether bitmap and window are the same pixel by pixel.
    bool IsShown() const;

    int ColumnOf(std::size_t slot) const { return markers_[slot].column; }

  private:
    struct Trace {
        HPEN pen;
        std::vector<POINT> points;
    };
    struct Marker {
        HDC label;
        HBITMAP bitmap;
        HGDIOBJ before;
        int width;
        int height;
        int column;
    };

    void AddTraces(MarkerViewWindow& window);
    void AddMarkers(MarkerViewWindow& window);
    void DrawGrid() const;
    void Draw(HDC dc) const;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void DrawMarker(HDC dc, const Marker& marker, bool focus) const;

    HWND view_;
    HWND bare_;  // of the same size in the same owner
    HDC memory_;
    HBITMAP picture_ = nullptr;
    HGDIOBJ before_ = nullptr;
    HBRUSH paper_, major_, frame_;
    int perInch_;
    std::vector<Trace> traces_;
    std::vector<Marker> markers_;
    std::size_t focused_ = SIZE_MAX;
};

}  // namespace kx::bench
