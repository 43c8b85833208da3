#include "dialogs/table/mrphlist.h"

#include <algorithm>

#include "lib/dbclient/episode_record.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/held_control.h"

namespace kx {
namespace {

constexpr char kSource[] = "mrphlist";
constexpr std::uint32_t kNoWindowLine = 78;
constexpr std::uint32_t kNotFilledLine = 115;

constexpr COLORREF kPaneColor = RGB(20, 87, 40);
constexpr int kMargin = 7;  // pixels around the list
constexpr int kPaneWidth = 690;
constexpr int kPaneHeight = 238;

}  // namespace

TableDialog::TableDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         SystemServices* services)
    : Pane(library, parent, nullptr, services),
      test_(test),
      episode_(test == nullptr ? nullptr : test->Episode(0)) {}

void TableDialog::Open() {
    if (episode_ == nullptr) {
        return;
    }
    CreateModelessPane(this);
    if (Handle() == nullptr) {
        Reports().LOGMEMORYERROR(kSource, kNoWindowLine);
    }
}

bool TableDialog::OnEraseBackground(DeviceContext& context) {
    RECT area{};
    const UniqueBrush brush(CreateSolidBrush(kPaneColor));
    return brush != nullptr && GetClientRect(area) && context.FillRect(area, brush.get()) != 0;
}

void TableDialog::OnSize(UINT, int width, int height) {
    if (list_ != nullptr) {
        list_->MoveTo(kMargin, kMargin, std::max(width - 2 * kMargin, 0), std::max(height - 2 * kMargin, 0));
    }
}

bool TableDialog::OnInitDialog() {
    const bool filled = FillList();
    if (HasEnded()) {
        return false;
    }
    if (!filled) {
        Reports().LOGMEMORYERROR(kSource, kNotFilledLine);
        return false;
    }
    Resize(kPaneWidth, kPaneHeight);
    Show();
    return true;
}

bool TableDialog::FillList() {
    if (Library() == nullptr || test_ == nullptr || episode_ == nullptr) {
        return false;
    }
    try {
        Hold(list_, *Library(), this);
        if (!HasEnded()) {
            list_->Fill(episode_->measurements);
        }
        return true;
    } catch (...) {
        return false;
    }
}

bool TableDialog::OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) {
    return list_ != nullptr && list_->Notify(id, header, result);
}

}  // namespace kx
