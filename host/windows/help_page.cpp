#include "host/windows/help_page.h"

#include <shellapi.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "host/windows/program_folder.h"
#include "host/windows/win32_handles.h"

namespace kxhost {
namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);

// The viewer's own place is made for a larger screen than some are.
void FitOnScreen(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT place;
    if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor) ||
        !GetWindowRect(window, &place)) {
        return;
    }
    const RECT& work = monitor.rcWork;
    const LONG width = std::min(place.right - place.left, work.right - work.left);
    const LONG height = std::min(place.bottom - place.top, work.bottom - work.top);
    const LONG x = std::clamp(place.left, work.left, work.right - width);
    const LONG y = std::clamp(place.top, work.top, work.bottom - height);
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

bool OpenInViewer(HWND owner, const std::filesystem::path& file, const wchar_t* page) {
    constexpr UINT kDisplayTopic = 0;
    // Kept: the viewer's window lives on.
    static const UniqueModule viewer(LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    if (!viewer || !std::filesystem::exists(file)) {
        return false;
    }
    const auto htmlHelp = reinterpret_cast<HtmlHelpFunction>(
        reinterpret_cast<void*>(GetProcAddress(viewer.get(), "HtmlHelpW")));
    const std::wstring topic = file.wstring() + L"::/" + page + L".html";
    const HWND window = htmlHelp != nullptr ? htmlHelp(owner, topic.c_str(), kDisplayTopic, 0) : nullptr;
    if (window != nullptr) {
        FitOnScreen(window);
    }
    return window != nullptr;
}

bool OpenInBrowser(HWND owner, const std::filesystem::path& file) {
    constexpr INT_PTR kLargestError = 32;
    return std::filesystem::exists(file) &&
           reinterpret_cast<INT_PTR>(
               ShellExecuteW(owner, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) > kLargestError;
}

}  // namespace

bool OpenHelpPage(HWND owner, const wchar_t* page) {
    const std::filesystem::path folder = ProgramFolder();
    return OpenInViewer(owner, folder / L"DLGHELP.CHM", page) ||
           OpenInBrowser(owner, folder / L"help" / (std::wstring(page) + L".html"));
}

}  // namespace kxhost
