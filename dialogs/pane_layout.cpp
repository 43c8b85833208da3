#include "dialogs/pane_layout.h"

#include <algorithm>

namespace kx {
namespace {

constexpr int kWhole = 100;  // percent

}  // namespace

PaneLayout::PaneLayout(HWND dialog, const GrowthRow* rows, std::size_t count) {
    RECT client{};
    GetClientRect(dialog, &client);
    smallest_ = {client.right, client.bottom};
    items_.reserve(count);
    for (const GrowthRow* row = rows; row != rows + count; ++row) {
        const HWND control = GetDlgItem(dialog, static_cast<int>(row->control));
        RECT area{};
        if (control != nullptr && GetWindowRect(control, &area) != FALSE) {
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
            items_.push_back({control, row, area});
        }
    }
}

void PaneLayout::Place(int width, int height) const {
    const int wider = std::max(width - static_cast<int>(smallest_.cx), 0);
    const int higher = std::max(height - static_cast<int>(smallest_.cy), 0);
    const auto moved = [](LONG edge, int growth, int percent) {
        return static_cast<int>(edge) + MulDiv(growth, percent, kWhole);
    };
    HDWP moves = BeginDeferWindowPos(static_cast<int>(items_.size()));
    for (const Item& item : items_) {
        const int left = moved(item.area.left, wider, item.growth->left);
        const int top = moved(item.area.top, higher, item.growth->top);
        const int right = moved(item.area.right, wider, item.growth->right);
        const int bottom = moved(item.area.bottom, higher, item.growth->bottom);
        if (moves != nullptr) {
            moves = DeferWindowPos(moves, item.control, nullptr, left, top, right - left, bottom - top,
                                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        }
    }
    if (moves != nullptr) {
        EndDeferWindowPos(moves);
    }
}

}  // namespace kx
