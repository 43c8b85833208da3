// Typing completion in an edit: while the user writes, a popup proposes statements or names, which Enter, a
// click or the whole code of a statement puts in the place of what was typed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dialogs/interpretation/completion_popup.h"
#include "lib/reporter.h"
#include "lib/windows/control_watch.h"
#include "lib/windows/edit_box.h"

namespace kx {

// Serves one edit of a dialog, which tells it of the edit's changes and passes on its commands. It watches
// the edit's keys as well: with the popup open, the up and down keys move in its list, Enter chooses and Esc
// closes it; it closes by itself when the caret leaves the typed text, or the edit loses the focus or is out
// of sight. It stays below the word that it completes when the edit scrolls and when a window around it
// moves.
//
// Only typing starts a completion: a text that was pasted, taken back by Undo or inserted by the program is
// what it is meant to be. (Else the Undo of a typed code would complete the code again.)
//
// Whatever changes the edit's text may lead to the end of the dialog. This object, which belongs to it, is
// there until the handler has returned; what it then says to the edit and the popup is said to nobody.
class StatementCompletion final : private ControlWatcher {
  public:
    enum class Source { kStatements, kPhysicians };

    // All outlive the object. The dialog gets the popup's messages. A physician's name that is longer than
    // the edit holds is inserted as far as it does, so that the user sees what is kept of it.
    StatementCompletion(const DialogLibrary& library, Window& dialog, EditBox& edit, std::uint32_t testType,
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
    // Called with true when the popup opens and with false when it closes.
    void SetOpenListener(std::function<void(bool)> listener) { listener_ = std::move(listener); }

    // Puts a text in the place of the edit's selection, undoable as one step. One that would make the text
    // longer than the edit's limit is left out as a whole, with a beep: the edit would cut it, and half a
    // statement can say the contrary of the whole.
    void ReplaceSelection(const char* text);

  private:
    static LRESULT CALLBACK SurroundingsProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR id, DWORD_PTR completion) noexcept;

    void Begin(std::string_view textToCaret);
    void Continue(std::string_view textToCaret);
    // Puts a chosen text in the place of the typed one, together with the line break that the choice may
    // have put into the text.
    void Insert(std::string chosen, std::string_view lineBreak);
    // How much of a text the edit takes in the place of so many characters.
    std::size_t RoomInPlaceOf(std::size_t length) const;

    // Shows the popup below the caret.
    void Place();
    // Places it anew, or closes it, after its word has moved.
    void Follow();
    // Where the word begins, on the screen as far as the popup's place is concerned.
    POINT WordOnScreen() const;
    bool IsWordInSight() const;
    void ShowBelow(POINT word);
    void WatchSurroundings();
    void UnwatchSurroundings();

    // Of the edit.
    std::optional<LRESULT> OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                            LPARAM lParam) override;
    bool TakesKey(UINT message, WPARAM wParam);
    void AfterMessage(UINT message, WPARAM wParam);
    bool IsCaretInPrefix() const;
    void Tell();

    const DialogLibrary& library_;
    Window& dialog_;
    EditBox& edit_;
    std::uint32_t testType_;
    Source source_;
    Reporter& log_;
    ControlWatch watch_;
    std::unique_ptr<CompletionPopup> popup_;  // null until it is needed
    POINT word_{};                            // where the word of the popup began when that was placed
    POINT caretFromWord_{};                   // and the caret, from there
    std::vector<HWND> surroundings_;          // the windows around the edit, watched while the popup is shown
    std::function<void(bool)> listener_;
    bool told_ = false;
    bool enabled_ = true;
    int paused_ = 0;  // above 0: a change is not typing
};

}  // namespace kx
