// The help: in the system's viewer of compiled help, else in the browser.
#pragma once

#include <windows.h>

namespace kxhost {

// page: the name of a page of DLGHELP.CHM without extension. False when neither that file with a viewer nor
// the same page in the folder help beside the program could be opened.
bool OpenHelpPage(HWND owner, const wchar_t* page);

}  // namespace kxhost
