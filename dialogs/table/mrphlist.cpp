#include "dialogs/table/mrphlist.h"

#include <algorithm>
#include <new>

#include "lib/dbclient/episode_record.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"

namespace kx {
namespace {

constexpr char kSource[] = "mrphlist";
constexpr std::uint32_t kNotFilledLine = 115;

constexpr COLORREF kPaneColor = RGB(20, 87, 40);
constexpr int kMargin = 7;  // pixels around the list
constexpr int kPaneWidth = 690;
constexpr int kPaneHeight = 238;

}  // namespace

TableDialog::TableDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         SystemServices* services)
    : Dialog(library, parent, nullptr, services),
      test_(test),
      episode_(test == nullptr ? nullptr : test->Episode(0)) {
    if (episode_ != nullptr) {
        CreateModelessPane(this);
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
    if (!FillList()) {
        list_.reset();
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
        list_.reset(new (std::nothrow) MeasurementList(*Library(), this));
        if (list_ == nullptr || list_->Handle() == nullptr) {
            return false;
        }
        list_->Fill(episode_->measurements);
        return true;
    } catch (...) {
        return false;
    }
}

bool TableDialog::OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) {
    return list_ != nullptr && list_->Notify(id, header, result);
}

void TableDialog::OnDestroy() {
    list_.reset();
    Dialog::OnDestroy();
    delete this;
}

}  // namespace kx
