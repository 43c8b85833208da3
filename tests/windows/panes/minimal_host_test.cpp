// The example of the documents, run as a host's programmer would run it: beside the library, with a user.
#include <gtest/gtest.h>

#include <cstdlib>

#include "dialogs/resources/resource_ids.h"
#include "tests/rig/pane.h"

namespace kx::test {
namespace {

bool WaitUntil(const std::function<bool()>& done) { return PumpUntil(nullptr, done, 10000); }

// Of another program's control, whose text only a message gives.
std::string ControlText(HWND control) {
    char text[64] = {};
    SendMessageA(control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

TEST(MinimalHost, ShowsThePaneKeepsItAndEnds) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    // The current folder is searched for modules, as the program's own is.
    ASSERT_TRUE(CreateProcessA(Beside("..\\minimal_host.exe").c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                               Beside("..\\..\\bin").c_str(), &start, &process));
    HWND frame = nullptr;
    const auto findFrame = [&] {
        DWORD owner = 0;
        frame = nullptr;
        while (owner != process.dwProcessId && (frame = FindWindowExA(nullptr, frame, "MinimalHost", nullptr)) != nullptr) {
            GetWindowThreadProcessId(frame, &owner);
        }
        return frame != nullptr && IsWindowVisible(frame);
    };
    EXPECT_TRUE(WaitUntil(findFrame));
    const HWND pane = GetWindow(frame, GW_CHILD);
    EXPECT_TRUE(IsWindowVisible(pane));
    EXPECT_EQ(ControlText(GetDlgItem(pane, IDC_HYP_SOKOLOW_LYON)), "3600");

    // Enter and Esc are the dialog manager's OK and Cancel, which would end the pane. The mark that is posted behind them
    // shows when the program has taken them.
    const HWND box = GetDlgItem(pane, IDC_HYP_LONG_QRS);
    EXPECT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0), BST_CHECKED);
    for (const WPARAM key : {WPARAM{VK_ESCAPE}, WPARAM{VK_RETURN}}) {
        PostMessageA(box, WM_KEYDOWN, key, 1);
    }
    PostMessageA(box, BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_TRUE(WaitUntil([&] { return SendMessageA(box, BM_GETCHECK, 0, 0) == BST_UNCHECKED; }));
    EXPECT_TRUE(IsWindowVisible(pane));

    PostMessageA(frame, WM_CLOSE, 0, 0);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 10000), WAIT_OBJECT_0);
    DWORD exitCode = EXIT_FAILURE;
    GetExitCodeProcess(process.hProcess, &exitCode);
    EXPECT_EQ(exitCode, DWORD{EXIT_SUCCESS});
    TerminateProcess(process.hProcess, EXIT_FAILURE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

}  // namespace
}  // namespace kx::test
