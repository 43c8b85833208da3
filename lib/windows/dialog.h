// Base of the library's dialogs: child panes of the host, and modal dialogs.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "lib/modules/library_module.h"
#include "lib/modules/system_services.h"
#include "lib/windows/window.h"

namespace kx {

// See dialog_procedure.h.
INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

// A dialog made from a template resource of the library, or from a small template built in memory. A modal
// one is owned by its caller, a modeless one by its window (Pane).
//
// The order of ending is written once, in OnDestroy, for all of them: the dialog stops receiving, then it
// saves, then it lets go of what it holds. Whatever a handler calls may have ended the dialog when it
// returns; its object is still there until the handler has returned (see handler_scope.h), its window and
// controls are not, and the record is the host's to free: the handler asks HasEnded before it goes on.
//
// No exception leaves the dialog procedure: one that a handler throws is reported with LOGEXCEPTION and the
// name of the dialog's class, and the message counts as not handled (WM_INITDIALOG: as if OnInitDialog had
// returned false).
class Dialog : public Window {
  public:
    // Creates no window. library: whose resources hold templates and strings; may be null, then no window can
    // be made from a resource. parent: the host's or the library's own window object; only its handle is
    // used. helpFile: an HTML Help file or null; kept, not copied. services: for reports, may be null. All
    // outlive the object.
    Dialog(const LibraryModule* library, Window* parent, const char* helpFile,
           SystemServices* services) noexcept;
    Dialog(const LibraryModule& library, Window* parent, const char* helpFile,
           SystemServices* services) noexcept
        : Dialog(&library, parent, helpFile, services) {}

    // ---- handlers of Window with other defaults

    // 2. False: the system erases.
    bool OnEraseBackground(DeviceContext& context) override;
    // 6. Nothing: a pane is not the user's to close.
    void OnClose() override;
    // 7. The order of ending: detaches the object from the window, so that no handler runs any more; OnEnd;
    // LetGo.
    void OnDestroy() override;
    // 33, 34. 0 and false.
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;

    // ---- the dialog's own, slots 42 to 48

    // 42. Every message but WM_INITDIALOG: calls the handlers (see dialog_dispatch.cpp). The result of a
    // dialog procedure: FALSE means not handled.
    virtual INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam);
    // 43. WM_INITDIALOG, once: the window and its controls are there and the object is attached. False: the
    // dialog is detached and ended with 0; OnEnd is not called then. Default: true.
    virtual bool OnInitDialog();
    // 44. WM_COMMAND. Default by the low word: IDOK calls OnOK, IDCANCEL OnCancel, IDHELP ShowHelp; else 0,
    // not handled.
    virtual INT_PTR OnDialogCommand(WPARAM wParam);
    // 45. WM_HOTKEY; see Window::RegisterHotKey. Default: nothing.
    virtual void OnDialogHotKey(int id, LPARAM lParam);
    // 46. WM_NOTIFY. True: result is the message's result. Default: false.
    virtual bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result);
    // 47, 48. Default: end the dialog with 1 and with 0. The result is whether that was possible.
    virtual bool OnOK();
    virtual bool OnCancel();
    // The window goes: what its controls still hold is to be saved. They are there, and no message comes any
    // more, also none that this causes. Default: nothing.
    virtual void OnEnd();

    // ---- creation; object receives the messages (the dialog itself, as a rule)

    // A child pane from a template, visible and without border, whatever the template's style says: as large
    // as the template, at the template's place in the parent. Needs a parent. On failure the handle stays 0.
    // When OnInitDialog fails the window stays hidden, without an object, until it is destroyed.
    void CreateModeless(std::uint32_t templateId, Dialog* object);
    // A child pane without items, 1000 by 100 dialog units.
    void CreateModelessPane(Dialog* object);
    // Modal over the parent's window, or over none. The value given to EndDialog; 0 or -1 when there was no
    // window.
    INT_PTR RunModal(std::uint32_t templateId, Dialog* object);
    INT_PTR RunModalPopup(Dialog* object);

    // Ends every dialog of the library on this thread that is still open, each as if its window were
    // destroyed. Those whose handlers are running know no library and no services afterwards.
    static void EndAll(const LibraryModule& library);

    // ---- operations

    // Whether the window has gone, or begun to go, or does not lead to this object for another reason.
    bool HasEnded() const { return FromHandle(Handle()) != this; }
    // Ends a modal dialog with a result (a modeless one is only hidden).
    bool End(INT_PTR result);
    bool EndOK() { return End(1); }
    bool EndCancel() { return End(0); }
    // Context help for this dialog's template id; true when a help window opened.
    bool ShowHelp() const;

    const LibraryModule* Library() const { return library_; }
    // The library's handle, 0 without a library.
    HINSTANCE Module() const { return library_ == nullptr ? nullptr : library_->instance.Handle(); }
    SystemServices* Services() const { return services_; }
    // Where reports go in any case.
    Reporter& Reports() const;
    const char* HelpFile() const { return helpFile_; }

    // ---- what the suite's other programs do, and no pane of this library

    // A sizable popup without items, 250 by 160 dialog units, owned by the parent. Whether it was created.
    bool CreateModelessPopup(Dialog* object);
    // As RunModal, with its start and end in the suite's log under a caption from the library's strings.
    INT_PTR RunModalLogged(std::uint32_t templateId, Dialog* object, std::uint32_t captionId);
    // Sets the message's result; true, for a handler to return.
    bool SetMsgResult(LRESULT value) const;
    LRESULT SendItemMessage(int itemId, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    // Behind the slots that the suite knows.
    virtual ~Dialog() = default;
    // The class's name, a constant: the context of a report of an exception.
    virtual const char* ReportName() const noexcept = 0;

  protected:
    // The last act of the ending: gives up the object, and with it all that it holds. Default: nothing, the
    // caller of a modal dialog does.
    virtual void LetGo() noexcept;

  private:
    // Makes the bond at WM_INITDIALOG.
    friend INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool AttachTo(HWND window);
    void Refuse(HWND window);

    friend struct DialogLayout;  // holds the offsets, behind the fields of Window (dialog.cpp)

    const LibraryModule* library_;
    SystemServices* services_;
    const char* helpFile_;
};

// A modeless dialog, made with new: its window owns it from Open on, and it is deleted when the window goes.
class Pane : public Dialog {
  public:
    using Dialog::Dialog;

    // Creates the window in the parent's; one that cannot be created, or has nothing to show, is reported and
    // leaves the handle 0. Called once, by OpenPane.
    virtual void Open() = 0;

  protected:
    void LetGo() noexcept final;
};

// Opens a pane. The result belongs to its window; null: it has ended meanwhile and is deleted. A pane without
// a window stays the caller's, in `pane`, which is empty otherwise.
Pane* OpenPane(std::unique_ptr<Pane>& pane);

}  // namespace kx
