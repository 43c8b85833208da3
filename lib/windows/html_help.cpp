#include "lib/windows/html_help.h"

#include <cstdio>
#include <cstring>

namespace kx {
namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND caller, const char* file, UINT command, DWORD_PTR data);

// Only from the system's own folder, and never freed: a help window that is open runs the viewer's code.
HtmlHelpFunction FindHtmlHelp() {
    constexpr const char* kViewer = "\\hhctrl.ocx";
    char path[MAX_PATH];
    const UINT length = GetSystemDirectoryA(path, sizeof path);
    if (length == 0 || length + std::strlen(kViewer) >= sizeof path) {
        return nullptr;
    }
    std::snprintf(path + length, sizeof path - length, "%s", kViewer);
    const HMODULE viewer = LoadLibraryA(path);
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
