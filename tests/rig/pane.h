// kxdialogs.dll as a host uses it: the library started, a window of the host's, a pane in it.
//
//     SpyingSuite suite;
//     LibraryUse library;                                  // LIBSTART ... LIBSTOP
//     HostWindow host;                                     // in the one frame of the program
//     auto record = NewRecord();
//     Pane pane(KindOf("Qrs"), host, *record);             // destroyed with the object, unless it is gone
//     pane.Click(31264);
//     EXPECT_TRUE(pane.IsAlive());
//
// The library is a copy of the DLL beside the test program, loaded once, so that the statement files beside
// it are the test's own. The program's frame is made once, shown without activation and never destroyed,
// because Wine waits two seconds for the end of a top-level window where there is no window manager.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "include/kxdialogs.h"
#include "tests/rig/input.h"
#include "tests/rig/records.h"
#include "tests/rig/suite.h"

namespace kx::test {

// The ten exports, looked up by their undecorated names.
struct Exports {
    decltype(&::LIBSTART) start;
    decltype(&::LIBSTOP) stop;
    decltype(&::TABLEDIALOG) table;
    decltype(&::GENERALMORPHDIALOG) generalMorph;
    decltype(&::PMORPHDIALOG) pMorph;
    decltype(&::QRSMORPHDIALOG) qrsMorph;
    decltype(&::TMORPHDIALOG) tMorph;
    decltype(&::HYPERTROPHYDIALOG) hypertrophy;
    decltype(&::INTERPRETATIONDIALOG) interpretation;
    decltype(&::EDITINTERPRETATION) editInterpretation;
};

// The library's own copy of the program, not started.
HMODULE LibraryModuleHandle();
const Exports& LibraryExports();

// One use of the library, with two sections of statements in "resting.htm" beside it; the files that were
// laid go with it.
class LibraryUse {
  public:
    LibraryUse();
    ~LibraryUse();
    LibraryUse(const LibraryUse&) = delete;
    LibraryUse& operator=(const LibraryUse&) = delete;

    const Exports* operator->() const { return &LibraryExports(); }
    HMODULE Module() const { return LibraryModuleHandle(); }

    // A file beside the library: a statement file, the script of the stress report.
    void LayFile(const std::string& name, const std::string& content);

  private:
    std::vector<std::string> files_;
};

// A window of the host's, a child of another one or of the program's frame, and the host's object for it,
// which is unreadable from the window's WM_DESTROY on, as the objects of hosts are.
class HostWindow {
  public:
    explicit HostWindow(HWND parent = nullptr, int width = 1000, int height = 640);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Handle() const { return window_; }
    KxHostWindow* Object() const { return object_; }
    void Destroy();

    // WM_USER with 1024, 1024: how often, and what is called then.
    int notices = 0;
    std::function<void()> onNotice;

    static HWND Frame();

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    KxHostWindow* object_;  // alone in its page
};

struct PaneKind {
    const char* name;
    const char* className;  // in reports of an exception
    const char* source;     // of its other reports
    WORD templateId;        // 0: none
    // hostOptions: for the interpretation.
    std::uint32_t (*open)(KxHostWindow* parent, KxTestRecord* test, void* hostOptions);
};

// "Table", "Hypertrophy", "General", "Qrs", "P", "T", "Interpretation".
const std::vector<PaneKind>& PaneKinds();
const PaneKind& KindOf(const std::string& name);
// One of the four morphology panes, which are one frame, and the others.
std::vector<PaneKind> KindsOfFrames();
bool IsMorphology(const PaneKind& kind);
inline std::ostream& operator<<(std::ostream& out, const PaneKind& kind) { return out << kind.name; }

class Pane {
  public:
    // hostOptions null: the rig's, which ask for the automatic interpretation.
    Pane(const PaneKind& kind, HostWindow& host, KxTestRecord& record, void* hostOptions = nullptr);
    ~Pane();
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    // What the export returned, and the window behind it: null when there was none.
    std::uint32_t Handle() const { return handle_; }
    HWND Window() const { return window_; }
    operator HWND() const { return window_; }
    bool IsAlive() const { return IsWindow(window_) != FALSE; }
    // Whether the window leads to the library's object.
    bool IsAttached() const { return IsAlive() && GetWindowLongPtrA(window_, GWLP_USERDATA) != 0; }
    void Destroy();

    HWND Item(std::uint32_t id) const { return GetDlgItem(window_, static_cast<int>(id)); }
    std::string Text(std::uint32_t id) const;
    bool IsChecked(std::uint32_t id) const;
    // BM_CLICK, and what it posts.
    void Click(std::uint32_t id) const;
    // Chooses the item of a combo box, with the notifications of its list.
    void Choose(std::uint32_t combo, std::int32_t code) const;
    // Characters into a control (of a combo box: its edit field), one WM_CHAR each.
    void Type(std::uint32_t id, std::string_view text) const;
    void Notify(std::uint32_t id, UINT code) const;

  private:
    std::uint32_t handle_;
    HWND window_;
};

// The window behind a handle that an export has returned.
HWND WindowOf(std::uint32_t handle);
// Windows-1252, whole.
std::string TextOf(HWND window);

}  // namespace kx::test
