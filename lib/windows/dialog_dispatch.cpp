// The dialog procedure, the dispatcher behind it, the order of ending and the handlers' defaults.
#include "lib/windows/device_context.h"
#include "lib/windows/dialog.h"
#include "lib/windows/dialog_procedure.h"
#include "lib/windows/handler_scope.h"

namespace kx {
namespace {

bool SetResult(HWND window, LRESULT result) {
    SetWindowLongPtrA(window, DWLP_MSGRESULT, result);
    return true;
}

bool Initialise(Dialog& dialog) {
    const HandlerScope scope(dialog, dialog.Services());
    try {
        return dialog.OnInitDialog();
    } catch (...) {
        scope.Exception();
        return false;
    }
}

// The control of whose notification the handler is running; null for any other message.
HWND NotifierOf(UINT message, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return reinterpret_cast<HWND>(lParam);
        case WM_NOTIFY:
            return lParam != 0 ? reinterpret_cast<const NMHDR*>(lParam)->hwndFrom : nullptr;
        default:
            return nullptr;
    }
}

// A control that is destroyed within its own notification may go on in memory that it has given back: not
// every system's edit asks whether it still lives. One that is notifying when its dialog ends lives, hidden
// and without a parent, until its notifications have returned.
class Notification {
  public:
    explicit Notification(HWND control) : control_(control), outer_(innermost_) { innermost_ = this; }
    ~Notification() {
        innermost_ = outer_;
        if (released_) {
            PostMessageA(control_, WM_CLOSE, 0, 0);
        }
    }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;

    static void ReleaseThoseOf(HWND dialog) {
        for (Notification* running = innermost_; running != nullptr; running = running->outer_) {
            if (running->control_ != nullptr && GetAncestor(running->control_, GA_PARENT) == dialog) {
                ShowWindow(running->control_, SW_HIDE);
                SetParent(running->control_, HWND_MESSAGE);
                running->Outermost().released_ = true;
            }
        }
    }

  private:
    // The first of the control's notifications that are running: the last to return.
    Notification& Outermost() {
        Notification* outermost = this;
        for (Notification* running = this; running != nullptr; running = running->outer_) {
            if (running->control_ == control_) {
                outermost = running;
            }
        }
        return *outermost;
    }

    static inline Notification* innermost_ = nullptr;
    HWND control_;
    Notification* outer_;
    bool released_ = false;
};

INT_PTR Dispatch(Dialog& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const HandlerScope scope(dialog, dialog.Services());
    const Notification notification(NotifierOf(message, lParam));
    try {
        return dialog.DialogProc(message, wParam, lParam);
    } catch (...) {
        scope.Exception();
        return FALSE;
    }
}

// The pane of a window that OnInitDialog has refused: not attached, but the window's to give up.
Dialog* RefusedBy(HWND window) {
    return reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, DWLP_USER));
}

INT_PTR AnswerWithoutObject(HWND window, UINT message, LPARAM lParam) {
    if (message == WM_MEASUREITEM && lParam != 0) {
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = kItemHeightBeforeInit;
        return SetResult(window, 1);
    }
    return FALSE;
}

}  // namespace

INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    // Only dialogs are attached to the windows of this procedure.
    auto* const dialog = static_cast<Dialog*>(Window::FromHandle(window));
    if (dialog != nullptr) {
        // Anybody can send the message that makes the bond; it is made once.
        return message == WM_INITDIALOG ? FALSE : Dispatch(*dialog, message, wParam, lParam);
    }
    Dialog* const refused = RefusedBy(window);
    if (message == WM_INITDIALOG && lParam != 0 && refused == nullptr) {
        Dialog& created = *reinterpret_cast<Dialog*>(lParam);
        const HandlerScope scope(created, created.Services());
        if (created.AttachTo(window) && !Initialise(created) && !created.HasEnded()) {
            created.Refuse(window);
        }
        return TRUE;
    }
    if (message == WM_DESTROY && refused != nullptr) {
        SetWindowLongPtrA(window, DWLP_USER, 0);
        refused->LetGo();
        return FALSE;
    }
    return AnswerWithoutObject(window, message, lParam);
}

// False: somebody destroyed the window before it came here.
bool Dialog::AttachTo(HWND window) {
    SetHandle(window);
    if (!Attach(this)) {
        SetHandle(nullptr);
        return false;
    }
    return true;
}

void Dialog::Refuse(HWND window) {
    Attach(nullptr);
    // A caller's own object may be gone before the window.
    if (dynamic_cast<Pane*>(this) != nullptr) {
        SetWindowLongPtrA(window, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
    }
    EndDialog(window, 0);
}

void Dialog::OnDestroy() {
    const HandlerScope scope(*this, Services());
    StopTimer();
    Attach(nullptr);
    // A modal one whose window stays, because somebody has sent the message, could not be ended any more.
    if ((GetWindowLongPtrA(Handle(), GWL_STYLE) & WS_CHILD) == 0) {
        End(0);
    }
    try {
        OnEnd();
    } catch (...) {
        scope.Exception();
    }
    Notification::ReleaseThoseOf(Handle());
    LetGo();
}

INT_PTR Dialog::DialogProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = Handle();
    switch (message) {
        case WM_COMMAND:
            return OnDialogCommand(wParam);
        case WM_NOTIFY: {
            LRESULT result = 0;
            return OnDialogNotify(wParam, reinterpret_cast<NMHDR*>(lParam), result) &&
                   SetResult(window, result);
        }
        case WM_DRAWITEM:
            return OnDrawItem(static_cast<UINT>(wParam), reinterpret_cast<DRAWITEMSTRUCT*>(lParam)) &&
                   SetResult(window, 1);
        case WM_ERASEBKGND: {
            DeviceContext context(reinterpret_cast<HDC>(wParam));
            return OnEraseBackground(context) && SetResult(window, 1);
        }
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(
                OnCtlColorStatic(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        case WM_DESTROY:
            OnDestroy();
            return FALSE;
        case WM_SIZE:
            OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
            return FALSE;
        case WM_HOTKEY:
            OnDialogHotKey(static_cast<int>(wParam), lParam);
            return FALSE;
        case WM_MEASUREITEM:
            OnMeasureItem(static_cast<UINT>(wParam), reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
            return FALSE;
        case WM_CLOSE:
            OnClose();
            return FALSE;
        case WM_HELP:
            // F1; a pane that has no help leaves it to its host.
            return OnDialogCommand(IDHELP);
        case WM_DEVICECHANGE:
            OnDeviceChange(static_cast<UINT>(wParam), lParam);
            return FALSE;
        default:
            return FALSE;
    }
}

bool Dialog::OnEraseBackground(DeviceContext&) {
    return false;
}

void Dialog::OnClose() {}

void Dialog::OnEnd() {}

void Dialog::LetGo() noexcept {}

LRESULT Dialog::OnMeasureItem(UINT, MEASUREITEMSTRUCT*) {
    return 0;
}

bool Dialog::OnDrawItem(UINT, DRAWITEMSTRUCT*) {
    return false;
}

bool Dialog::OnInitDialog() {
    return true;
}

INT_PTR Dialog::OnDialogCommand(WPARAM wParam) {
    switch (LOWORD(wParam)) {
        case IDOK:
            return OnOK();
        case IDCANCEL:
            return OnCancel();
        case IDHELP:
            return ShowHelp();
        default:
            return 0;
    }
}

void Dialog::OnDialogHotKey(int, LPARAM) {}

bool Dialog::OnDialogNotify(UINT_PTR, NMHDR*, LRESULT&) {
    return false;
}

bool Dialog::OnOK() {
    return EndOK();
}

bool Dialog::OnCancel() {
    return EndCancel();
}

}  // namespace kx
