#include "dialogs/interpretation/completion_popup.h"

#include <algorithm>

#include "dialogs/dialog_library.h"
#include "dialogs/interpretation/staff_names.h"
#include "dialogs/statements/interp_report.h"
#include "lib/windows/device_context.h"
#include "lib/windows/drawing_pause.h"
#include "lib/windows/held_control.h"

namespace kx {
namespace {

constexpr std::uint32_t kManyPhysiciansLine = 1049;
constexpr StaffListLines kPhysicianLines{1059, 1061};
constexpr std::uint32_t kTestTypeLine = 1071;
constexpr std::uint32_t kNoFolderLine = 1076;
constexpr std::uint32_t kNoReadLine = 1099;
constexpr std::uint32_t kNoWindowLine = 1112;

constexpr std::size_t kNameSize = 512;
constexpr int kRowHeight = 19;  // pixels at 96 dpi

}  // namespace

CompletionPopup::CompletionPopup(const DialogLibrary& library, Window* parent, std::uint32_t testType,
                                 bool fromPhysicians, Reporter& log)
    : Window(parent), library_(library), log_(log) {
    SetId(kControlId);
    if (fromPhysicians) {
        LoadPhysicians();
    } else {
        FindStatements(library.instance.Handle(), testType);
    }
}

CompletionPopup::~CompletionPopup() {
    Close();
}

// ---- what can be completed

void CompletionPopup::FindStatements(HMODULE module, std::uint32_t testType) {
    if (const char* const fileName = StatementFileName(testType, StatementUse::kLibrary)) {
        PathBesideLibrary(module, fileName, kNoFolderLine, log_, path_);
    } else {
        log_.LOGOEMERROR(kInterpSource, kTestTypeLine, "ptype invalid and !is_phys");
    }
}

void CompletionPopup::LoadStatements() {
    if (path_[0] == '\0') {
        return;
    }
    const FileStamp now = StampOf(path_);
    const bool reported = refused_ == now;
    // A file that somebody holds open is tried again; one that is not there need not be.
    if (read_ == now || (reported && now == FileStamp{})) {
        return;
    }
    Close();  // its rows hold addresses of entries
    matcher_ = {};
    StatementLibrary statements;
    if (ReadStatementFile(path_, statements, reported ? nullptr : &log_)) {
        matcher_.AddStatements(statements, &log_);
        read_ = now;
        refused_.reset();
        return;
    }
    if (!reported) {
        log_.LOGOEMERROR(kInterpSource, kNoReadLine, "no read");
    }
    read_.reset();
    refused_ = now;
}

void CompletionPopup::LoadPhysicians() {
    const StaffList<PhysicianRecord> physicians = ListPhysicians(kPhysicianLines, log_);
    if (physicians.reported > kStaffListCapacity) {
        log_.LOGOEMERROR(kInterpSource, kManyPhysiciansLine, "string limit 1024");
    }
    char name[kNameSize];
    for (std::uint32_t i = 0; i < physicians.count; ++i) {
        if (!IsNameless(physicians.records[i])) {
            matcher_.Add({name, DisplayName(physicians.records[i], name, sizeof name)}, {});
        }
    }
}

// ---- the window

bool CompletionPopup::Open() {
    if (IsOpen()) {
        return true;
    }
    const ActivationScope controls(library_.Controls());
    if (Create(kCompletionPopupClass, "", library_.instance.Handle(), this,
               WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, 0, 0, 0, 0)) {
        try {
            Hold(list_, library_, this);
            listWatch_.emplace(list_->Handle(), *this, static_cast<ControlWatcher&>(*this));
            return true;
        } catch (...) {
            Close();  // a window without its list would outlive the object: the next one takes its place
        }
    }
    log_.LOGMEMORYERROR(kInterpSource, kNoWindowLine);
    return false;
}

void CompletionPopup::Close() {
    Destroy();  // OnDestroy does the rest
}

void CompletionPopup::OnDestroy() {
    list_.reset();
    chosen_ = nullptr;
    Attach(nullptr);
    SetHandle(nullptr);
}

bool CompletionPopup::Start(std::size_t lineStart, std::string_view lineText) {
    LoadStatements();
    if (!matcher_.Start(lineStart, lineText) || !Open()) {
        Close();
        return false;
    }
    Refresh();
    return true;
}

bool CompletionPopup::Extend(std::size_t position, char character) {
    if (!IsOpen() || !matcher_.Extend(position, character)) {
        return false;
    }
    Refresh();
    return true;
}

void CompletionPopup::Refresh() {
    const auto matches = static_cast<int>(matcher_.MatchCount());
    // Its end lays the list out anew, which nothing asks for as long as the rows are as many.
    std::optional<DrawingPause> pause;
    if (matches != list_->ItemCount()) {
        pause.emplace(*list_);
    }
    list_->SetHighlight(matcher_.Prefix());
    list_->KeepRows(matches);
    for (int i = 0; i < matches; ++i) {
        list_->ShowEntry(i, matcher_.Match(static_cast<std::size_t>(i)));
    }
    Select(0);
    pause.reset();
    list_->Invalidate();
    if (matcher_.IsExactCode()) {
        Choose();
    }
}

void CompletionPopup::ShowAt(const RECT& area, HFONT font) {
    if (!IsOpen()) {
        return;
    }
    list_->SetFont(font, false);
    SetWindowPos(Handle(), HWND_TOP, static_cast<int>(area.left), static_cast<int>(area.top),
                 static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top),
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CompletionPopup::OnSize(UINT, int width, int height) {
    if (IsOpen()) {
        list_->MoveTo(0, 0, width, height);
    }
}

void CompletionPopup::MoveSelection(int rows) {
    if (IsOpen() && list_->ItemCount() > 0) {
        Select(std::clamp(list_->SelectedRow() + rows, 0, list_->ItemCount() - 1));
    }
}

void CompletionPopup::Select(int row) {
    chosen_ = nullptr;
    list_->ShowSelected(row);
}

const char* CompletionPopup::SelectedText() const {
    const CompletionEntry* const entry = IsOpen() ? list_->Entry(list_->SelectedRow()) : nullptr;
    return entry != nullptr ? entry->text : "";
}

void CompletionPopup::Choose() {
    chosen_ = list_->Entry(list_->SelectedRow());
    PostToParent(WM_COMMAND, MAKEWPARAM(kControlId, kChosen), reinterpret_cast<LPARAM>(Handle()));
}

LRESULT CompletionPopup::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_MOUSEACTIVATE ? MA_NOACTIVATE : Window::WindowProc(message, wParam, lParam);
}

LRESULT CompletionPopup::OnMeasureItem(UINT, MEASUREITEMSTRUCT* item) {
    const WindowContext screen(nullptr);
    item->itemHeight = static_cast<UINT>(MulDiv(kRowHeight, screen.PixelsPerInchY(), 96));
    return TRUE;
}

bool CompletionPopup::OnDrawItem(UINT id, DRAWITEMSTRUCT* item) {
    return IsOpen() && list_->DrawItem(id, item);
}

LRESULT CompletionPopup::OnNotify(WPARAM id, NMHDR* header) {
    LRESULT result = 0;
    if (IsOpen() && list_->Notify(id, header, result) && list_->WasClicked()) {
        Choose();
    }
    return result;
}

// A list view takes the focus on every click, and with it the activation from the host's window. Here a click
// only chooses.
std::optional<LRESULT> CompletionPopup::OnWatchedMessage(ControlWatch&, UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
            if (IsOpen()) {
                OnListButton(message, static_cast<short>(HIWORD(lParam)));
            }
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_MBUTTONDOWN:
            return 0;
        default:
            return std::nullopt;
    }
}

void CompletionPopup::OnListButton(UINT message, int y) {
    const int row = list_->RowAt(y);
    if (row < 0) {
        return;
    }
    if (message != WM_LBUTTONUP) {
        Select(row);
    } else if (row == list_->SelectedRow()) {
        Choose();
    }
}

}  // namespace kx
