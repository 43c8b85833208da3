// Dialogs: creation, modal runs and operations.
#include "lib/windows/dialog.h"

#include <cstddef>
#include <optional>

#include "lib/windows/dialog_procedure.h"
#include "lib/windows/dialog_template.h"
#include "lib/windows/handler_scope.h"
#include "lib/windows/html_help.h"

namespace kx {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct DialogLayout {
    static_assert(sizeof(Dialog) == 36);
    static_assert(offsetof(Dialog, library_) == 24);
    static_assert(offsetof(Dialog, services_) == 28);
    static_assert(offsetof(Dialog, helpFile_) == 32);
};
#pragma GCC diagnostic pop

namespace {

// A report of this file: its source and line in the suite's log.
constexpr const char* kSource = "..\\..\\lib\\windows\\dialog";
constexpr std::uint32_t kNoLibraryLine = 204;

constexpr std::uint32_t kInMemoryId = 1;
constexpr std::size_t kCaptionSize = 256;
constexpr char kDialogClass[] = "#32770";

// 0x5200044C: a pane has no border and no caption, and it is shown and enabled.
constexpr DWORD kPaneStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | DS_CONTROL | DS_SETFONT | DS_FIXEDSYS | DS_3DLOOK;
constexpr DWORD kPaneExtendedStyle = WS_EX_CONTROLPARENT;
// 0x120F004C.
constexpr DWORD kPopupStyle = WS_VISIBLE | WS_CLIPCHILDREN | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX |
                              WS_MAXIMIZEBOX | DS_SETFONT | DS_FIXEDSYS | DS_3DLOOK;
static_assert(kPaneStyle == 0x5200044C && kPopupStyle == 0x120F004C);

// Dialog units.
constexpr InMemoryTemplate kPaneTemplate = MakeTemplate(kPaneStyle, kPaneExtendedStyle, 1000, 100);
constexpr InMemoryTemplate kPopupTemplate = MakeTemplate(kPopupStyle, 0, 250, 160);

const char* TemplateName(std::uint32_t id) {
    return MAKEINTRESOURCEA(LOWORD(id));
}

LPARAM Parameter(Dialog* object) {
    return reinterpret_cast<LPARAM>(object);
}

}  // namespace

Dialog::Dialog(const LibraryModule* library, Window* parent, const char* helpFile,
               SystemServices* services) noexcept
    : Window(parent), library_(library), services_(services), helpFile_(helpFile) {}

void Dialog::CreateModeless(std::uint32_t templateId, Dialog* object) {
    const HWND parent = ParentHandle();
    if (parent == nullptr || Module() == nullptr) {
        return;
    }
    SetId(templateId);
    const HWND created =
        CreateDialogParamA(Module(), TemplateName(templateId), parent, DialogProcedure, Parameter(object));
    // A window that its OnInitDialog has refused stays as hidden as EndDialog has left it, and one that was
    // destroyed meanwhile leaves nothing to be done.
    if (created == nullptr || FromHandle(created) == nullptr) {
        return;
    }
    SetHandle(created);
    // What goes with the template's caption and border is their room: the client area stays as large as it is
    // and where it is, or else the top of a pane that its host does not move would lie outside the host. The
    // pane counts as hidden meanwhile, so that nothing is drawn on the way.
    RECT framed{};
    RECT area{};
    GetWindowRect(framed);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&framed), 2);
    GetClientRect(area);
    MapWindowPoints(created, parent, reinterpret_cast<POINT*>(&area), 2);
    SetStyles(kPaneStyle & ~WS_VISIBLE, kPaneExtendedStyle);
    SetWindowPos(created, nullptr, static_cast<int>(area.left), static_cast<int>(area.top),
                 static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top),
                 SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
    SetStyles(kPaneStyle, kPaneExtendedStyle);
    // The frame may have been drawn already, and where it was is the parent's again.
    RedrawWindow(parent, &framed, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void Dialog::CreateModelessPane(Dialog* object) {
    const HWND parent = ParentHandle();
    if (parent == nullptr) {
        return;
    }
    SetId(kInMemoryId);
    const HWND created = CreateDialogIndirectParamA(Module(), kPaneTemplate.Header(), parent, DialogProcedure,
                                                    Parameter(object));
    if (created != nullptr && FromHandle(created) != nullptr) {
        SetHandle(created);
    }
}

bool Dialog::CreateModelessPopup(Dialog* object) {
    SetId(kInMemoryId);
    const HWND created = CreateDialogIndirectParamA(Module(), kPopupTemplate.Header(), ParentHandle(),
                                                    DialogProcedure, Parameter(object));
    if (created == nullptr) {
        return false;
    }
    SetHandle(created);
    return true;
}

INT_PTR Dialog::RunModal(std::uint32_t templateId, Dialog* object) {
    if (Module() == nullptr) {
        return 0;
    }
    SetId(templateId);
    const INT_PTR result = DialogBoxParamA(Module(), TemplateName(templateId), ParentHandle(),
                                           DialogProcedure, Parameter(object));
    SetHandle(nullptr);
    return result;
}

INT_PTR Dialog::RunModalPopup(Dialog* object) {
    SetId(kInMemoryId);
    const INT_PTR result = DialogBoxIndirectParamA(Module(), kPopupTemplate.Header(), ParentHandle(),
                                                   DialogProcedure, Parameter(object));
    SetHandle(nullptr);
    return result;
}

INT_PTR Dialog::RunModalLogged(std::uint32_t templateId, Dialog* object, std::uint32_t captionId) {
    if (library_ == nullptr) {
        Reports().LOGMEMORYERROR(kSource, kNoLibraryLine);
        return 0;
    }
    char caption[kCaptionSize];
    library_->instance.LoadText(captionId, caption, sizeof caption);
    if (services_ != nullptr) {
        services_->LOGSERVICESTART(caption);
    }
    const INT_PTR result = RunModal(templateId, object);
    if (services_ != nullptr) {
        services_->LOGSERVICESTOP(caption);
    }
    return result;
}

bool Dialog::End(INT_PTR result) {
    EndMenu();  // whose own message loop would hold up the dialog's
    return EndDialog(Handle(), result) != FALSE;
}

namespace {

struct OpenDialog {
    HINSTANCE module;
    HWND window;  // null: none was found yet
};

BOOL CALLBACK FindInWindow(HWND window, LPARAM found) {
    auto& open = *reinterpret_cast<OpenDialog*>(found);
    char name[16] = {};
    if (reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE)) == open.module &&
        GetClassNameA(window, name, sizeof name) != 0 && lstrcmpA(name, kDialogClass) == 0) {
        open.window = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK FindInThreadWindow(HWND window, LPARAM found) {
    if (FindInWindow(window, found) != FALSE) {
        EnumChildWindows(window, FindInWindow, found);
    }
    return reinterpret_cast<OpenDialog*>(found)->window == nullptr;
}

}  // namespace

void Dialog::EndAll(const LibraryModule& library) {
    for (;;) {
        OpenDialog open{library.instance.Handle(), nullptr};
        EnumThreadWindows(GetCurrentThreadId(), FindInThreadWindow, reinterpret_cast<LPARAM>(&open));
        if (open.window == nullptr) {
            return;
        }
        auto* const dialog = static_cast<Dialog*>(FromHandle(open.window));
        std::optional<HandlerScope> scope;
        if (dialog != nullptr) {
            scope.emplace(*dialog, dialog->services_);
        }
        if ((GetWindowLongPtrA(open.window, GWL_STYLE) & WS_CHILD) == 0) {
            EndDialog(open.window, 0);  // gives the owner its input back
        }
        if (DestroyWindow(open.window) == FALSE) {
            return;
        }
        if (dialog != nullptr) {
            dialog->library_ = nullptr;
            dialog->services_ = nullptr;
        }
    }
}

bool Dialog::ShowHelp() const {
    return OpenHtmlHelp(Handle(), helpFile_, kHelpContext, Id()) != nullptr;
}

bool Dialog::SetMsgResult(LRESULT value) const {
    SetWindowLongPtrA(Handle(), DWLP_MSGRESULT, value);
    return true;
}

LRESULT Dialog::SendItemMessage(int itemId, UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendDlgItemMessageA(Handle(), itemId, message, wParam, lParam);
}

void Pane::LetGo() noexcept {
    Retire<Pane>(*this);
}

Pane* OpenPane(std::unique_ptr<Pane>& pane) {
    Pane* const object = pane.get();
    const HandlerScope scope(*object, object->Services());
    try {
        object->Open();
    } catch (...) {
        if (IsRetired(*object)) {
            pane.release();
        }
        throw;
    }
    if (object->Handle() != nullptr || IsRetired(*object)) {
        pane.release();
    }
    return IsRetired(*object) ? nullptr : object;
}

Reporter& Dialog::Reports() const {
    static SilentReporter silent;
    if (services_ == nullptr) {
        return silent;
    }
    return *services_;
}

}  // namespace kx
