// The popup under the caret that lists what the user may be about to write.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "dialogs/interpretation/completion_list.h"
#include "dialogs/statements/statement_matcher.h"
#include "lib/windows/window.h"

namespace kx {

class DialogLibrary;

// Of its window class, which the library registers.
inline constexpr char kCompletionPopupClass[] = "CompletionPopup";

// The object holds what can be completed, read once; its window is there only while it proposes something. It
// never takes the focus or activates, so that typing goes on in the edit. Owned by whoever made it.
class CompletionPopup final : public Window {
  public:
    // What the parent gets (WM_COMMAND, posted) when an entry was chosen: by a click, or because the code of
    // the entry was typed to its end.
    static constexpr WORD kControlId = 103;
    static constexpr WORD kChosen = 100;

    // Reads the statements of the test type, or the names of the physicians (see completion_entries.h). All
    // outlive the object. parent: the dialog that is told; its top-level window owns the popup's.
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
    // The text of the selected entry; empty when there is none. Lives as long as the object.
    const char* ChosenText() const;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnSize(UINT sizeType, int width, int height) override;
    LRESULT OnNotify(WPARAM id, NMHDR* header) override;
    // The list asks for the height of its rows when it is made: the popup shows as many as can match.
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;
    void OnDestroy() override;

  private:
    static LRESULT CALLBACK ListProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR popup) noexcept;

    bool Open();
    void Refresh();
    void Choose() const;
    void OnListButton(UINT message, POINT point);

    const DialogLibrary& library_;
    Reporter& log_;
    StatementMatcher matcher_;
    std::unique_ptr<CompletionList> list_;  // null: there is no window
};

}  // namespace kx
