#include "dialogs/table/measurement_list.h"

#include <cstring>
#include <string>

#include "dialogs/resources/picture_ids.h"
#include "dialogs/resources/resource_ids.h"
#include "lib/measurement_table.h"
#include "lib/windows/drawing_pause.h"

namespace kx {
namespace {

constexpr std::uint32_t kListId = 1;
constexpr RECT kFirstPlace{1, 1, 51, 51};  // until the pane has its size

constexpr std::uint32_t kLeadIcons[KX_STANDARD_LEADS] = {
    IDI_LEAD_I,  IDI_LEAD_II, IDI_LEAD_III, IDI_LEAD_AVR, IDI_LEAD_AVL, IDI_LEAD_AVF,
    IDI_LEAD_V1, IDI_LEAD_V2, IDI_LEAD_V3,  IDI_LEAD_V4,  IDI_LEAD_V5,  IDI_LEAD_V6};

class OpenedClipboard {
  public:
    explicit OpenedClipboard(HWND owner) : open_(OpenClipboard(owner) != FALSE) {}
    ~OpenedClipboard() {
        if (open_) {
            CloseClipboard();
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    explicit operator bool() const { return open_; }

  private:
    bool open_;
};

}  // namespace

MeasurementList::MeasurementList(const LibraryModule& library, Window* pane)
    : ListView(library, pane, kListId, ListForm::kReport, kFirstPlace) {
    const DrawingPause pause(*this);
    ShowGridLines();
    SetImages(KX_STANDARD_LEADS, kLeadIcons);
    SetColumnsFromResource(IDS_MEASUREMENT_COLUMNS);
}

void MeasurementList::Fill(KxMeasurementSet& set) {
    const DrawingPause pause(*this);
    set_ = &set;
    for (int lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        AppendRow(reinterpret_cast<LPARAM>(&set.leads[lead]), lead);
    }
    SelectRow(0);
}

const char* MeasurementList::CellText(LPARAM rowData, int column) {
    const auto* lead = reinterpret_cast<const KxLeadMeasurements*>(rowData);
    if (lead == nullptr || column < 1 || static_cast<std::size_t>(column) > kAmplitudeColumnCount) {
        return "";
    }
    return NumberText(lead->*kAmplitudeColumns[column - 1].value);
}

void MeasurementList::OnListKey(UINT virtualKey) {
    if (virtualKey == 'C' && GetKeyState(VK_CONTROL) < 0) {
        CopyToClipboard();
    }
}

bool MeasurementList::CopyToClipboard() const {
    if (set_ == nullptr) {
        return false;
    }
    const std::string text = MeasurementTableText(*set_, '\t');
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    void* const place = memory == nullptr ? nullptr : GlobalLock(memory);
    if (place != nullptr) {
        std::memcpy(place, text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        const OpenedClipboard clipboard(Handle());
        // The clipboard owns the memory once it has taken it.
        if (clipboard && EmptyClipboard() && SetClipboardData(CF_TEXT, memory) != nullptr) {
            return true;
        }
    }
    GlobalFree(memory);
    return false;
}

}  // namespace kx
