// The middle of the workstation: the window in which the tabs' panes are opened.
#pragma once

#include <memory>
#include <string>

#include "host/clients/library_client.h"
#include "host/frame/host_window.h"
#include "host/panes/report_pane.h"
#include "host/panes/tracing_pane.h"
#include "host/windows/ui_metrics.h"
#include "host/worklist/worklist_pane.h"

namespace kxhost {

// Holds one pane at a time, as large as the middle, or scrolled when the pane needs more room than there is.
// What a pane tells its parent after a change (WM_USER, 1024, 1024) goes on to this window's own parent.
class PaneHost final : public HostWindow {
  public:
    // actions: what a worklist asks for; a host without one shows no worklist.
    PaneHost(HWND parent, const LibraryClient& library, const UiMetrics& metrics,
             const ArchiveClient* archive = nullptr, WorklistActions* actions = nullptr);
    ~PaneHost() override;

    // Closes the pane there is and opens this one on the record as it is now: the library's, or the
    // workstation's own. When the library makes none, the reason stands in the middle instead, and false is
    // returned.
    bool Open(PaneKind kind, kx::TestRecord& test);
    // The worklist, which needs no test.
    bool OpenWorklist();
    void Close();

    // A text in the middle, where no pane is.
    void ShowMessage(std::wstring text);

    HWND Pane() const { return pane_; }
    // Gives the keyboard to the pane: to its marker view or paper, where it has one, so that the keys act at
    // once, else to its first control. Nothing happens without a pane.
    void FocusPane() const;
    // Strikes Ctrl and a letter for the pane, as if on the keyboard: the undo is the pane's own.
    void StrikeControl(char letter) const;
    // Whether the pane may have something to undo or do again. How many steps a pane of the library has it
    // keeps to itself: one with markers always may.
    bool MayUndo() const;
    bool MayRedo() const;
    // Where the tracing that is shown begins, ms of the recording; 0 when another pane is shown.
    double TracingStartMs() const;
    // The size that the pane had by itself when it was opened; 0, 0 without a pane.
    SIZE NaturalSize() const { return natural_; }

    // A keyboard message for the pane, before it is dispatched. True: it has been dealt with.
    // Mnemonics and arrows are the pane's; Tab walks through the whole workstation. Enter and Esc would reach
    // the pane's dialog as OK and Cancel, which end a dialog: only a button takes Enter, and Esc goes to the
    // control.
    bool TranslateForPane(MSG& message);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Where the pane takes its keys: the control that has the keyboard, else the marker view.
    HWND KeyTarget() const;
    HWND MakePane(PaneKind kind, kx::TestRecord& test);
    bool Show(HWND pane);
    void OnPaint();
    void OnScroll(int bar, int request);
    void Place();
    void SetBar(int bar, int content, int room, int& position);

    const LibraryClient& library_;
    const UiMetrics& metrics_;
    const ArchiveClient* archive_;
    WorklistActions* actions_;
    KxHostWindow shared_{};  // what the library is given as its parent
    HWND pane_ = nullptr;
    std::unique_ptr<HostWindow> own_;  // when the pane is the workstation's
    SIZE natural_{};
    SIZE
        least_{};  // what is scrolled when there is less room; a pane of the workstation lays itself out anew
    POINT scrolled_{};
    bool placing_ = false;  // showing a bar changes the window's size, which would place the pane again
    std::wstring message_;
};

}  // namespace kxhost
