// Base of the library's dialogs: child panes of the host, and modal dialogs.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/modules/library_module.h"
#include "lib/modules/system_services.h"
#include "lib/windows/window.h"

namespace kx {

// See dialog_procedure.h.
INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

// A dialog made from a template resource of the library, or from a small template built in memory. A modeless
// dialog lives as long as its window: its OnDestroy deletes what it owns, calls Dialog::OnDestroy and then
// deletes the object (the class is final). A modal one is owned by its caller.
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
    // 7. Detaches the object from the window.
    void OnDestroy() override;
    // 33, 34. 0 and false.
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;

    // ---- the dialog's own, slots 42 to 48

    // 42. Every message but WM_INITDIALOG: calls the handlers (see dialog_dispatch.cpp). The result of a
    // dialog procedure: FALSE means not handled.
    virtual INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam);
    // 43. WM_INITDIALOG: the window and its controls are there and the object is attached. False: the dialog
    // is detached and ended with 0. Default: true.
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

    // ---- creation; object receives the messages (the dialog itself, as a rule)
    // When the window was made and destroyed again meanwhile, this object may be gone on return.

    // A child pane from a template, visible and without border, whatever the template's style says: as large
    // as the template, at the template's place in the parent. Needs a parent. On failure the handle stays 0.
    // When OnInitDialog fails the window stays hidden, without an object, until its parent goes.
    void CreateModeless(std::uint32_t templateId, Dialog* object);
    // A child pane without items, 1000 by 100 dialog units.
    void CreateModelessPane(Dialog* object);
    // A sizable popup without items, 250 by 160 dialog units, owned by the parent. Whether it was created.
    bool CreateModelessPopup(Dialog* object);
    // Modal over the parent's window, or over none. The value given to EndDialog; 0 or -1 when there was no
    // window.
    INT_PTR RunModal(std::uint32_t templateId, Dialog* object);
    INT_PTR RunModalPopup(Dialog* object);
    // As RunModal, with its start and end in the suite's log under a caption from the library's strings.
    INT_PTR RunModalLogged(std::uint32_t templateId, Dialog* object, std::uint32_t captionId);

    // ---- operations

    // Ends a modal dialog with a result (a modeless one is only hidden).
    bool End(INT_PTR result);
    bool EndOK() { return End(1); }
    bool EndCancel() { return End(0); }
    // Context help for this dialog's template id; true when a help window opened.
    bool ShowHelp() const;
    // Sets the message's result; true, for a handler to return.
    bool SetMsgResult(LRESULT value) const;
    LRESULT SendItemMessage(int itemId, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    const LibraryModule* Library() const { return library_; }
    // The library's handle, 0 without a library.
    HINSTANCE Module() const { return library_ == nullptr ? nullptr : library_->instance.Handle(); }
    SystemServices* Services() const { return services_; }
    // Where reports go in any case.
    Reporter& Reports() const;
    const char* HelpFile() const { return helpFile_; }

  protected:
    ~Dialog() = default;

  private:
    // Makes the bond at WM_INITDIALOG.
    friend INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void AttachTo(HWND window);

    friend struct DialogLayout;  // holds the offsets, behind the fields of Window (dialog.cpp)

    const LibraryModule* library_;
    SystemServices* services_;
    const char* helpFile_;
};

}  // namespace kx
