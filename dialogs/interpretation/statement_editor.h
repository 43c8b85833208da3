// The modal editor of the interpretation statement or of the confirming physician (EDITINTERPRETATION).
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "dialogs/dialog_library.h"
#include "dialogs/interpretation/comment_library_tree.h"
#include "dialogs/interpretation/statement_completion.h"
#include "lib/dbclient/test_record.h"
#include "lib/windows/child_control.h"
#include "lib/windows/dialog.h"
#include "lib/windows/edit_box.h"

namespace kx {

// A window without a frame: its client area is the area that the host asked for, so the layout below holds to
// the pixel. Nothing is in the record before OK. The object is its caller's and is used for one run.
class StatementEditor final : public Dialog {
  public:
    enum class Mode { kStatement, kPhysician };

    // area: relative to the top-left corner of the parent's window, pixels; one too small for the buttons is
    // enlarged. All outlive the object.
    StatementEditor(const DialogLibrary& library, Window* parent, TestRecord* test, const KxRect& area,
                    Mode mode, SystemServices* services);

    // True: the user ended it with OK, and what was changed is in the record. False also when the parent's
    // window was destroyed.
    bool Run();

    INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnInitDialog() override;
    INT_PTR OnDialogCommand(WPARAM wParam) override;
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override;
    void OnTimer(UINT_PTR systemTime) override;
    bool OnOK() override;
    bool OnCancel() override;
    void OnEnd() override;
    const char* ReportName() const noexcept override { return "StatementEditor"; }

  private:
    static constexpr std::size_t kTextSize = sizeof(KxTestRecord::interpretationText);

    // Of the window while the panel is closed, pixels.
    int Width() const { return static_cast<int>(area_.right - area_.left); }
    int Height() const { return static_cast<int>(area_.bottom - area_.top); }

    void TakeArea();
    void MakeControls();
    void MakeButton(std::unique_ptr<ChildControl>& place, std::uint32_t id, const char* text, int y,
                    DWORD style);
    // Shows what the record holds, taken before the first message to a control; null, reported, when there is
    // no memory for it.
    std::unique_ptr<char[]> ReadContent() const;
    void ShowContent(const char* content);

    void TogglePanel();
    void OpenPanel();
    void ClosePanel();
    // Widens the window to the left by so many pixels and moves the buttons along with its right edge.
    void Widen(int pixels);
    void InsertLibraryEntry();

    // What the edit shows; null, reported with the line, when there is no memory for it.
    std::unique_ptr<char[]> ReadText(std::uint32_t line) const;
    // Each false when nothing was stored.
    bool StoreStatement();
    bool StorePhysician();

    const DialogLibrary& library_;
    TestRecord* test_;
    std::uint32_t testType_;
    HWND host_;  // the parent's window; the parent's object may be gone before the editor
    RECT area_;
    Mode mode_;

    std::unique_ptr<EditBox> edit_;
    std::unique_ptr<ChildControl> ok_;
    std::unique_ptr<ChildControl> cancel_;
    std::unique_ptr<ChildControl> panelButton_;  // null for the physician
    std::unique_ptr<CommentLibraryTree> panel_;  // null while it is closed
    std::unique_ptr<StatementCompletion> completion_;

    // What the edit says counts as typed once it is filled.
    bool filled_ = false;
    bool changed_ = false;
    int tick_ = 0;
};

}  // namespace kx
