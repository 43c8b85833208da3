#include "tests/windows/host/host_process.h"

#include <objbase.h>
#include <shlobj.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <thread>

#include "host/resource_ids.h"
#include "tests/rig/input.h"

namespace kx::test {
namespace {

constexpr DWORD kLongestRunMs = 60000;

std::wstring CommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments) {
    std::wstring line = L'"' + program + L'"';
    for (const std::wstring& argument : arguments) {
        line += L" \"" + argument + L'"';
    }
    return line;
}

// One end of a pipe that the child inherits, and the text that came through it.
class Pipe {
  public:
    Pipe() {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        CreatePipe(&read_, &write_, &inheritable, 0);
        SetHandleInformation(read_, HANDLE_FLAG_INHERIT, 0);
    }
    ~Pipe() {
        CloseWrite();
        CloseHandle(read_);
    }
    HANDLE WriteEnd() const { return write_; }
    void CloseWrite() {
        if (write_ != nullptr) {
            CloseHandle(write_);
        }
        write_ = nullptr;
    }
    std::string ReadAll() const {
        std::string text;
        char part[4096];
        DWORD count = 0;
        while (ReadFile(read_, part, sizeof part, &count, nullptr) && count > 0) {
            text.append(part, count);
        }
        return text;
    }

  private:
    HANDLE read_ = nullptr;
    HANDLE write_ = nullptr;
};

}  // namespace

std::wstring ProductFolder() {
    wchar_t name[MAX_PATH];
    GetModuleFileNameW(nullptr, name, MAX_PATH);
    return (std::filesystem::path(name).parent_path().parent_path() / L"bin").wstring();
}

HostResult RunHost(const std::vector<std::wstring>& arguments, const std::wstring& program, const std::function<bool()>& killNow) {
    SayThereIsNoWindowManager("kxhost.exe");
    const std::wstring file = program.empty() ? ProductFolder() + L"\\kxhost.exe" : program;
    Pipe output;
    Pipe error;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output.WriteEnd();
    start.hStdError = error.WriteEnd();
    PROCESS_INFORMATION process{};
    std::wstring line = CommandLine(file, arguments);
    HostResult result;
    result.exitCode = MAXDWORD;
    if (!CreateProcessW(file.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) {
        return result;
    }
    output.CloseWrite();
    error.CloseWrite();
    // A program that hangs closes its ends of the pipes only when it is ended.
    std::thread watch([&] {
        const ULONGLONG began = GetTickCount64();
        while (WaitForSingleObject(process.hProcess, killNow ? 0 : kLongestRunMs) == WAIT_TIMEOUT) {
            if ((killNow && killNow()) || GetTickCount64() - began >= kLongestRunMs) {
                TerminateProcess(process.hProcess, MAXDWORD);
            }
        }
    });
    std::thread errors([&] { result.error = error.ReadAll(); });
    result.output = output.ReadAll();
    errors.join();
    watch.join();
    GetExitCodeProcess(process.hProcess, &result.exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

namespace {

std::wstring ArchiveOfTheTests() { return ProductFolder() + L"\\..\\results\\archive.kxdb"; }

}  // namespace

OpenHost::OpenHost(const std::vector<std::wstring>& arguments) {
    SayThereIsNoWindowManager("kxhost.exe");
    const std::wstring file = ProductFolder() + L"\\kxhost.exe";
    // Alone it would open on the worklist, and on an archive of whoever runs the tests.
    SetEnvironmentVariableW(L"KX_ARCHIVE", ArchiveOfTheTests().c_str());
    std::wstring line = CommandLine(file, arguments.empty() ? std::vector<std::wstring>{L"--builtin"} : arguments);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (!CreateProcessW(file.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process_)) {
        return;
    }
    WaitUntil([&] { return (frame_ = FindTopLevel(L"KxWorkstation")) != nullptr && IsWindowVisible(frame_) && Pane() != nullptr; });
}

OpenHost::~OpenHost() {
    if (process_.hProcess == nullptr) {
        return;
    }
    if (frame_ != nullptr) {
        PostMessageW(frame_, WM_CLOSE, 0, 0);
    }
    // What was changed is asked about, and given up.
    bool ended = false;
    for (int i = 0; i < 100 && !ended; ++i) {
        ended = WaitForSingleObject(process_.hProcess, 50) != WAIT_TIMEOUT;
        if (const HWND question = ended ? nullptr : FindMessageBox(); question != nullptr) {
            PostMessageW(question, WM_COMMAND, IDYES, 0);
        }
    }
    if (!ended) {
        TerminateProcess(process_.hProcess, 1);
    }
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

HWND OpenHost::FindTopLevel(const wchar_t* className) const {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, className, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process_.dwProcessId) {
            return window;
        }
    }
    return nullptr;
}

HWND OpenHost::Pane() const { return GetWindow(GetDlgItem(frame_, IDC_PANE_HOST), GW_CHILD); }

std::wstring OpenHost::Title() const {
    wchar_t text[256] = {};
    GetWindowTextW(frame_, text, static_cast<int>(std::size(text)));
    return text;
}

HWND OpenHost::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(frame_, nullptr), &info);
    return info.hwndFocus;
}

void OpenHost::Strike(WORD key, bool control) const {
    std::vector<INPUT> inputs;
    const auto add = [&](WORD pressed, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = pressed;
        input.ki.dwFlags = flags;
        inputs.push_back(input);
    };
    if (control) {
        add(VK_CONTROL, 0);
    }
    add(key, 0);
    add(key, KEYEVENTF_KEYUP);
    if (control) {
        add(VK_CONTROL, KEYEVENTF_KEYUP);
    }
    SetForegroundWindow(frame_);
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

HWND OpenHost::WaitForMessageBox() const {
    HWND box = nullptr;
    WaitUntil([&] { return (box = FindMessageBox()) != nullptr && IsWindowVisible(box); });
    return box;
}

// The block of dropped names must lie in the receiver's own heap, since the receiver frees it: a thread there
// allocates it with CoTaskMemAlloc, which has a thread's signature and takes from the same heap as
// GlobalAlloc.
void OpenHost::Drop(const std::wstring& file) const {
    std::vector<std::byte> block(sizeof(DROPFILES) + (file.size() + 2) * sizeof(wchar_t));
    DROPFILES header{};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    std::memcpy(block.data(), &header, sizeof header);
    std::memcpy(block.data() + sizeof header, file.data(), file.size() * sizeof(wchar_t));

    const auto allocate =
        reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"ole32"), "CoTaskMemAlloc")));
    const HANDLE thread = CreateRemoteThread(process_.hProcess, nullptr, 0, allocate, reinterpret_cast<void*>(block.size()), 0, nullptr);
    WaitForSingleObject(thread, 10000);
    DWORD address = 0;
    GetExitCodeThread(thread, &address);
    CloseHandle(thread);
    WriteProcessMemory(process_.hProcess, reinterpret_cast<void*>(address), block.data(), block.size(), nullptr);
    PostMessageW(frame_, WM_DROPFILES, address, 0);
}

std::wstring TextsOf(HWND dialog) {
    std::wstring all;
    for (HWND child = nullptr; (child = FindWindowExW(dialog, child, L"Static", nullptr)) != nullptr;) {
        wchar_t text[1024] = {};
        SendMessageW(child, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
        all += text;
        all += L'\n';
    }
    return all;
}

}  // namespace kx::test
