#include "tests/rig/input.h"

#include <string>

namespace kx::test {
namespace {

constexpr UINT kPollMs = 10;
constexpr int kMostMessages = 100000;

// Runs this program once more in the place of this process.
void StartAnew() {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION again{};
    std::string commandLine = GetCommandLineA();
    if (CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &again)) {
        DWORD exitCode = 1;
        WaitForSingleObject(again.hProcess, INFINITE);
        GetExitCodeProcess(again.hProcess, &exitCode);
        ExitProcess(exitCode);
    }
}

bool DoWithoutWindowManager() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program = path;
    if (SayThereIsNoWindowManager(program.substr(program.rfind('\\') + 1))) {
        StartAnew();
    }
    return true;
}

[[maybe_unused]] const bool g_withoutWindowManager = DoWithoutWindowManager();

struct Driven {
    const std::function<void(HWND)>* script;
    HWND dialog;
};

// One at a time: dialogs are modal.
Driven g_driven{};

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    char name[16] = {};
    GetClassNameA(window, name, sizeof name);
    if (lstrcmpA(name, "#32770") != 0 || !IsWindowVisible(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK RunScript(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr || g_driven.script == nullptr) {
        return;
    }
    KillTimer(nullptr, timer);
    const std::function<void(HWND)>* const script = g_driven.script;
    g_driven = {nullptr, dialog};
    Pump(dialog);
    (*script)(dialog);
    // One that was ended is hidden already and keeps its result.
    if (IsWindowVisible(dialog)) {
        EndDialog(dialog, -2);
    }
    PostMessageA(dialog, WM_NULL, 0, 0);
}

}  // namespace

bool SayThereIsNoWindowManager(const std::string& program) {
    const std::string key = "Software\\Wine\\AppDefaults\\" + program + "\\X11 Driver";
    HKEY opened = nullptr;
    DWORD found = 0;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, &found) != ERROR_SUCCESS) {
        return false;
    }
    const BYTE no[] = "N";
    RegSetValueExA(opened, "Managed", 0, REG_SZ, no, sizeof no);
    RegCloseKey(opened);
    return found == REG_CREATED_NEW_KEY;
}

bool DriveModal(const std::function<void()>& open, const std::function<void(HWND)>& script) {
    g_driven = {&script, nullptr};
    const UINT_PTR timer = SetTimer(nullptr, 0, kPollMs, RunScript);
    open();
    KillTimer(nullptr, timer);
    const bool came = g_driven.dialog != nullptr;
    g_driven = {};
    return came;
}

bool Pump(HWND dialog) {
    MSG message;
    for (int left = kMostMessages; left > 0; --left) {
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            return true;
        }
        if (dialog == nullptr || !IsDialogMessageA(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return false;
}

bool PumpUntil(HWND dialog, const std::function<bool()>& done, DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (!done() && GetTickCount() - start < milliseconds) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kPollMs, QS_ALLINPUT);
        Pump(dialog);
    }
    return done();
}

void PressKey(HWND dialog, UINT virtualKey) {
    const HWND focus = GetFocus();
    PostMessageA(focus, WM_KEYDOWN, virtualKey, 1);
    Pump(dialog);
    PostMessageA(focus, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
    Pump(dialog);
}

void TypeText(HWND dialog, std::string_view text) {
    for (const char character : text) {
        PostMessageA(GetFocus(), WM_CHAR, static_cast<unsigned char>(character), 1);
        Pump(dialog);
    }
}

void ClickOn(HWND dialog, HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageA(window, WM_LBUTTONUP, 0, middle);
    Pump(dialog);
}

}  // namespace kx::test
