// The dialog procedure, the dispatcher behind it and the handlers' defaults.
//
// A handler may destroy the window and with it the object, so nothing below touches the object once a handler
// has been called.
#include "lib/windows/device_context.h"
#include "lib/windows/dialog.h"
#include "lib/windows/dialog_procedure.h"
#include "lib/windows/handler_report.h"

namespace kx {
namespace {

bool SetResult(HWND window, LRESULT result) {
    SetWindowLongPtrA(window, DWLP_MSGRESULT, result);
    return true;
}

void Refuse(HWND window) {
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    EndDialog(window, 0);
}

bool Initialise(Dialog& dialog) {
    const HandlerReport report(dialog, dialog.Services());
    try {
        return dialog.OnInitDialog();
    } catch (...) {
        report.Exception();
        return false;
    }
}

INT_PTR Dispatch(Dialog& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const HandlerReport report(dialog, dialog.Services());
    try {
        return dialog.DialogProc(message, wParam, lParam);
    } catch (...) {
        report.Exception();
        return FALSE;
    }
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
    if (message == WM_INITDIALOG && lParam != 0) {
        Dialog& dialog = *reinterpret_cast<Dialog*>(lParam);
        dialog.AttachTo(window);
        if (!Initialise(dialog)) {
            Refuse(window);
        }
        return TRUE;
    }
    // Only dialogs are attached to the windows of this procedure.
    auto* const dialog = static_cast<Dialog*>(Window::FromHandle(window));
    return dialog == nullptr ? AnswerWithoutObject(window, message, lParam)
                             : Dispatch(*dialog, message, wParam, lParam);
}

void Dialog::AttachTo(HWND window) {
    SetHandle(window);
    Attach(this);
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

void Dialog::OnDestroy() {
    Attach(nullptr);
}

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
