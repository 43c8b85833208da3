// The workstation as another program: started, listened to, and driven by the messages a user causes.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kx::test {

struct HostResult {
    DWORD exitCode = 0;
    std::string output;
    std::string error;
};

// The folder of the product's binaries.
std::wstring ProductFolder();

// Runs kxhost.exe to its end (a minute at most) with both handles redirected. program: in place of the
// product's own. killNow: asked all the time while it runs; true ends it on the spot.
HostResult RunHost(const std::vector<std::wstring>& arguments, const std::wstring& program = {}, const std::function<bool()>& killNow = {});

std::vector<std::string> Lines(const std::string& text);

// The workstation with its window open; ended with the object.
class OpenHost {
  public:
    explicit OpenHost(const std::vector<std::wstring>& arguments);
    OpenHost(const OpenHost&) = delete;
    OpenHost& operator=(const OpenHost&) = delete;
    ~OpenHost();

    // The workstation's window, null when it did not come.
    HWND Frame() const { return frame_; }
    // The pane in the middle, null when there is none.
    HWND Pane() const;
    std::wstring Title() const;
    // The window of the program that has the keyboard, null when none has.
    HWND Focus() const;
    // Strikes a key as the keyboard does, for whatever has the focus, with Ctrl held down or not.
    void Strike(WORD key, bool control = false) const;
    // A dialog of the program other than the workstation, waited for; null when none comes.
    HWND WaitForMessageBox() const;
    bool HasMessageBox() const { return FindMessageBox() != nullptr; }
    // Posts what the shell posts when a file is dropped on the window.
    void Drop(const std::wstring& file) const;

  private:
    HWND FindTopLevel(const wchar_t* className) const;
    HWND FindMessageBox() const { return FindTopLevel(L"#32770"); }

    PROCESS_INFORMATION process_{};
    HWND frame_ = nullptr;
};

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

// The text of every static control of a dialog.
std::wstring TextsOf(HWND dialog);

}  // namespace kx::test
