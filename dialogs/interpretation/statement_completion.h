// Typing completion in an edit: while the user writes, a popup proposes statements or names, which Enter, a
// click or the whole code of a statement puts in the place of what was typed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "dialogs/interpretation/completion_popup.h"
#include "lib/reporter.h"
#include "lib/windows/edit_box.h"

namespace kx {

// Serves one edit of a dialog, which tells it of the edit's changes and passes on its commands. It watches
// the edit's keys as well: with the popup open, the up and down keys move in its list, Enter chooses and Esc
// closes it; it closes by itself when the caret leaves the typed text or the edit loses the focus.
//
// Only typing starts a completion: a text that was pasted, taken back by Undo or inserted by the program is
// what it is meant to be. (Else the Undo of a typed code would complete the code again.)
//
// Whatever changes the edit's text may lead to the end of the dialog and of this object, so nothing here
// touches the object afterwards without having looked whether it is still there.
class StatementCompletion {
  public:
    enum class Source { kStatements, kPhysicians };

    // All outlive the object. The dialog gets the popup's messages; the entries are read when the first one
    // is needed.
    StatementCompletion(const DialogLibrary& library, Window* dialog, EditBox& edit, std::uint32_t testType,
                        Source source, Reporter& log);
    ~StatementCompletion();
    StatementCompletion(const StatementCompletion&) = delete;
    StatementCompletion& operator=(const StatementCompletion&) = delete;

    // The edit's EN_CHANGE.
    void OnTextChanged();
    // For the dialog's OnDialogCommand: true when it was the popup's choice, which is then inserted.
    bool OnDialogCommand(WPARAM wParam);

    bool IsOpen() const { return popup_ != nullptr && popup_->IsOpen(); }
    void Close();
    // While disabled nothing is proposed.
    void SetEnabled(bool enabled);
    // Reads the entries anew when they are next needed, because their file has changed.
    void Reload();
    // Called with true when the popup opens and with false when it closes.
    void SetOpenListener(std::function<void(bool)> listener) { listener_ = std::move(listener); }

    // Puts a text in the place of the edit's selection, undoable as one step. One that would make the text
    // longer than the edit's limit is left out as a whole, with a beep: the edit would cut it, and half a
    // statement can say the contrary of the whole.
    void ReplaceSelection(const char* text);

  private:
    static LRESULT CALLBACK EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR completion) noexcept;

    void Begin(std::string_view textToCaret);
    void Continue(std::string_view textToCaret);
    void Place();
    // Puts the chosen text in the place of the typed one, together with the line break that the choice may
    // have put into the text.
    void InsertChosen(std::string_view lineBreak);
    // A message of the edit, and what it means here.
    LRESULT Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool TakesKey(UINT message, WPARAM wParam);
    void AfterMessage(UINT message, WPARAM wParam);
    bool IsCaretInPrefix() const;
    void Tell();

    const DialogLibrary& library_;
    Window* dialog_;
    EditBox& edit_;
    std::uint32_t testType_;
    Source source_;
    Reporter& log_;
    std::unique_ptr<CompletionPopup> popup_;  // null until it is needed
    std::function<void(bool)> listener_;
    bool told_ = false;
    bool enabled_ = true;
    int paused_ = 0;  // above 0: a change is not typing
};

}  // namespace kx
