// Keeps the controls of a pane in their places while it grows.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kx {

// How much of the pane's growth each edge of a control takes part in, in percent of its growth in width
// (left, right) and in height (top, bottom). 0: the edge stays.
struct GrowthRow {
    std::uint32_t control;
    int left;
    int top;
    int right;
    int bottom;
};

// Controls that no row names stay where they are.
class PaneLayout {
  public:
    // Takes the places of a dialog's controls as they are now for its smallest size.
    PaneLayout(HWND dialog, const GrowthRow* rows, std::size_t count);
    // Places the controls for a client area; one smaller than the first cuts them off.
    void Place(int width, int height) const;

  private:
    struct Item {
        HWND control;
        const GrowthRow* growth;
        RECT area;
    };

    SIZE smallest_{};
    std::vector<Item> items_;
};

}  // namespace kx
