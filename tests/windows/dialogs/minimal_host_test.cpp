// The example of the documents, run as a host's programmer would run it: beside the library, with a user.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>

#include "dialogs/resources/resource_ids.h"

namespace {

// Asks again and again until the condition holds; false when it does not within some seconds.
template <class Condition>
bool WaitUntil(Condition condition) {
    constexpr int kTries = 500;
    for (int i = 0; i < kTries; ++i) {
        if (condition()) {
            return true;
        }
        Sleep(20);
    }
    return false;
}

// Of another program's control, whose text only a message gives.
std::string ControlText(HWND control) {
    char text[64] = {};
    SendMessageA(control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

class MinimalHost : public testing::Test {
  protected:
    void SetUp() override {
        char path[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, path, MAX_PATH);
        const std::string self = path;
        const std::string folder = self.substr(0, self.find_last_of('\\'));
        // The current folder is searched for modules, as the program's own is.
        const std::string library = folder + "\\..\\..\\bin";
        const std::string program = folder + "\\minimal_host.exe";
        STARTUPINFOA start{};
        start.cb = sizeof start;
        ASSERT_TRUE(CreateProcessA(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                   library.c_str(), &start, &process_));
        ASSERT_TRUE(WaitUntil([&] { return (frame_ = FindFrame()) != nullptr && IsWindowVisible(frame_); }));
        pane_ = GetWindow(frame_, GW_CHILD);
        ASSERT_NE(pane_, nullptr);
    }

    void TearDown() override {
        if (process_.hProcess == nullptr) {
            return;
        }
        TerminateProcess(process_.hProcess, EXIT_FAILURE);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }

    HWND FindFrame() const {
        for (HWND window = nullptr;
             (window = FindWindowExA(nullptr, window, "MinimalHost", nullptr)) != nullptr;) {
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner == process_.dwProcessId) {
                return window;
            }
        }
        return nullptr;
    }

    PROCESS_INFORMATION process_{};
    HWND frame_ = nullptr;
    HWND pane_ = nullptr;
};

TEST_F(MinimalHost, ShowsThePaneKeepsItAndEnds) {
    EXPECT_TRUE(IsWindowVisible(pane_));
    EXPECT_EQ(ControlText(GetDlgItem(pane_, IDC_HYP_SOKOLOW_LYON)), "3600");

    // Enter and Esc are the dialog manager's OK and Cancel, which would end the pane. The mark that is
    // posted behind them shows when the program has taken them.
    const HWND box = GetDlgItem(pane_, IDC_HYP_LONG_QRS);
    ASSERT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0), BST_CHECKED);
    for (const WPARAM key : {WPARAM{VK_ESCAPE}, WPARAM{VK_RETURN}}) {
        PostMessageA(box, WM_KEYDOWN, key, 1);
    }
    PostMessageA(box, BM_SETCHECK, BST_UNCHECKED, 0);
    ASSERT_TRUE(WaitUntil([&] { return SendMessageA(box, BM_GETCHECK, 0, 0) == BST_UNCHECKED; }));
    EXPECT_TRUE(IsWindowVisible(pane_));

    PostMessageA(frame_, WM_CLOSE, 0, 0);
    ASSERT_EQ(WaitForSingleObject(process_.hProcess, 10000), WAIT_OBJECT_0);
    DWORD exitCode = EXIT_FAILURE;
    GetExitCodeProcess(process_.hProcess, &exitCode);
    EXPECT_EQ(exitCode, DWORD{EXIT_SUCCESS});
}

}  // namespace
