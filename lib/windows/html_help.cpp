#include "lib/windows/html_help.h"

namespace kx {
namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND caller, const char* file, UINT command, DWORD_PTR data);

// Never freed: a help window that is open runs the viewer's code.
HtmlHelpFunction FindHtmlHelp() {
    const HMODULE viewer = LoadLibraryExA("hhctrl.ocx", nullptr, 0);
    return viewer == nullptr ? nullptr
                             : reinterpret_cast<HtmlHelpFunction>(
                                   reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpA")));
}

}  // namespace

HWND OpenHtmlHelp(HWND caller, const char* helpFile, UINT command, DWORD_PTR data) {
    static const HtmlHelpFunction htmlHelp = FindHtmlHelp();
    return htmlHelp == nullptr ? nullptr : htmlHelp(caller, helpFile, command, data);
}

}  // namespace kx
