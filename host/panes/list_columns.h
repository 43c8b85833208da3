// Columns of the workstation's report lists.
#pragma once

#include <windows.h>

namespace kxhost {

// width in pixels.
void AddColumn(HWND list, int column, const wchar_t* title, int width);

// Gives the column what the others leave of the list's width, and no less than `least` pixels. To be called
// when the list's size or its number of rows has changed, since a scroll bar takes its room from the rows.
void FillWithColumn(HWND list, int column, int least);

}  // namespace kxhost
