// Typed access to an edit control.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/modules/module_instance.h"
#include "lib/windows/window.h"

namespace kx {

// The selected characters, from start up to end exclusive, in 8-bit characters from the text's beginning.
struct TextSelection {
    int start;
    int end;
};

// Owned by whoever made it; its end is the end of its control.
class EditBox final : public Window {
  public:
    // Adopts item `id` of a dialog.
    EditBox(Window* dialog, std::uint32_t id);
    // Creates a multi-line edit in pixels of the parent's client area.
    EditBox(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
            int height);
    ~EditBox();

    // As SetText and SetNumber, but an edit that has the text already is left alone: it would be drawn anew.
    // A null text is an empty one.
    void ShowText(const char* text);
    void ShowNumber(std::int32_t value);

    // start 0, end -1: everything.
    void SetSelection(int start, int end);
    TextSelection GetSelection() const;
    // The upper left corner of a character in client pixels; (-1, -1) behind the last one.
    POINT PositionOfChar(int index) const;

    // Whether the wParam of a WM_COMMAND says this of this edit.
    bool IsKillFocus(WPARAM wParam) const;
    bool IsChange(WPARAM wParam) const;

    // ---- what the suite's other programs do, and no pane of this library

    // Inserts a text at the end, undoable, and leaves the caret behind it.
    void Append(const char* text);
    void Deselect();
    bool SetReadOnly(bool readOnly);

    // The format of the selection. Only rich edits have formats: a plain edit does nothing and gives false.
    bool SetBold();
    // Sends an empty format, which names no attribute to change.
    bool SetPlain();
    bool SetUnderline();
    bool SetColor(COLORREF color);

    // As IsChange.
    bool IsSetFocus(WPARAM wParam) const;
    bool IsUpdate(WPARAM wParam) const;
};

}  // namespace kx
