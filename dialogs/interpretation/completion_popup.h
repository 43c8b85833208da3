// The popup under the caret that lists what the user may be about to write.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "dialogs/interpretation/completion_list.h"
#include "dialogs/statements/statement_files.h"
#include "dialogs/statements/statement_matcher.h"
#include "lib/windows/control_watch.h"
#include "lib/windows/window.h"

namespace kx {

class DialogLibrary;

// The object holds what can be completed; its window, of the library's class kCompletionPopupClass, is there
// only while it proposes something. It never takes the focus or activates, so that typing goes on in the
// edit. Owned by whoever made it.
//
// Statements are read from the file of the test type beside the module when a completion starts, unless the
// file is as it was when it was read last: somebody else may have saved it. What cannot be read, or is too
// much, is reported once and left out. The names of the physicians are read once.
class CompletionPopup final : public Window, private ControlWatcher {
  public:
    // What the parent gets (WM_COMMAND, posted) when an entry was chosen: by a click, or because the code of
    // the entry was typed to its end. Which entry it was, Chosen() says as long as nothing has changed since:
    // what is typed before the message is handled takes the choice back.
    static constexpr WORD kControlId = 103;
    static constexpr WORD kChosen = 100;

    // All outlive the object. parent: the dialog that is told; its top-level window owns the popup's.
    CompletionPopup(const DialogLibrary& library, Window* parent, std::uint32_t testType, bool fromPhysicians,
                    Reporter& log);
    ~CompletionPopup();

    // Looks for what is being typed in a line from its start (a position in the edit's text) to the caret
    // (see StatementMatcher::Start) and lists what matches in a window that is not yet shown. False: nothing
    // matches, and there is no window.
    bool Start(std::size_t lineStart, std::string_view lineText);
    // Takes the character that now stands at a position of the edit's text and lists what matches then.
    // False: nothing does any more.
    bool Extend(std::size_t position, char character);
    // Area on the screen. The font stays the caller's and outlives the window.
    void ShowAt(const RECT& area, HFONT font);
    // Ends the window; the entries stay.
    void Close();
    bool IsOpen() const { return list_ != nullptr; }

    // The part of the edit's text that is being completed.
    std::string_view Prefix() const { return matcher_.Prefix(); }
    std::size_t PrefixStart() const { return matcher_.PrefixStart(); }
    // Whether an entry was chosen by its code: the message to the parent is on its way.
    bool IsExactCode() const { return matcher_.IsExactCode(); }

    // Moves the selection by so many rows, to the first or last one at most.
    void MoveSelection(int rows);
    // The text of the selected entry; empty when there is none. As the next, until the next Start.
    const char* SelectedText() const;
    // The text of the entry that the parent is told of; empty when it is told of none.
    const char* ChosenText() const { return chosen_ != nullptr ? chosen_->text : ""; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnSize(UINT sizeType, int width, int height) override;
    LRESULT OnNotify(WPARAM id, NMHDR* header) override;
    // The list asks for the height of its rows when it is made: the popup shows as many as can match.
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;
    void OnDestroy() override;

  private:
    // Of the list.
    std::optional<LRESULT> OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                            LPARAM lParam) override;

    void FindStatements(HMODULE module, std::uint32_t testType);
    void LoadStatements();
    void LoadPhysicians();

    bool Open();
    void Refresh();
    void Select(int row);
    void Choose();
    void OnListButton(UINT message, int y);

    const DialogLibrary& library_;
    Reporter& log_;
    StatementMatcher matcher_;
    char path_[kPathSize] = {};             // of the statement file; empty: there is none
    std::optional<FileStamp> read_;         // of the file as it was read
    std::optional<FileStamp> refused_;      // of the file as it could not be read, which was reported
    std::unique_ptr<CompletionList> list_;  // null: there is no window
    std::optional<ControlWatch> listWatch_;
    const CompletionEntry* chosen_ = nullptr;
};

}  // namespace kx
