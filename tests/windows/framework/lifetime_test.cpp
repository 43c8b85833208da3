// Objects that go while their window handles a message, windows that outlive their object, and what is left
// behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "lib/windows/device_context.h"
#include "lib/windows/dialog.h"
#include "lib/windows/menu.h"
#include "lib/windows/window_class.h"
#include "tests/rig/gui_objects.h"
#include "tests/windows/framework/recording_window.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Dialog;
using kx::Window;
using kx::WindowClass;
using kx::test::HostFrame;
using kx::test::PumpMessages;
using kx::test::RecordingWindow;
using kx::test::ThisLibrary;

// Deleted objects keep their memory, filled with a pattern, so that whoever still uses one crashes on its
// table or leaves a trace in it.
class Grave {
  public:
    static constexpr unsigned char kFill = 0xDD;

    static void Bury(void* memory, std::size_t size) {
        std::memset(memory, kFill, size);
        graves_.push_back({static_cast<unsigned char*>(memory), size});
    }
    static std::size_t Count() { return graves_.size(); }
    // Whether nothing was written into any of them.
    static bool AreUntouched() {
        return std::all_of(graves_.begin(), graves_.end(), [](const Body& body) {
            return std::all_of(body.memory, body.memory + body.size,
                               [](unsigned char byte) { return byte == kFill; });
        });
    }

  private:
    struct Body {
        unsigned char* memory;
        std::size_t size;
    };
    static inline std::vector<Body> graves_;
};

template <class Base>
class Buried : public Base {
  public:
    using Base::Base;
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* memory, std::size_t size) { Grave::Bury(memory, size); }
};

// Every handler destroys the parent, and with it this window and object.
class DyingWindow final : public Buried<Window> {
  public:
    using Buried::Buried;
    // Creation sends messages of its own.
    bool armed = false;
    bool Die() {
        if (armed) {
            DestroyWindow(ParentHandle());
        }
        return false;
    }
    void OnDestroy() override { delete this; }

    void OnPaint(kx::PaintContext&) override { Die(); }
    bool OnEraseBackground(kx::DeviceContext&) override { return Die(); }
    void OnInitMenuPopup(kx::Menu&) override { Die(); }
    void OnSize(UINT, int, int) override { Die(); }
    void OnClose() override { Die(); }
    LRESULT OnNotify(WPARAM, NMHDR*) override { return Die(); }
    LRESULT OnControlCommand(WPARAM, LPARAM) override { return Die(); }
    bool OnKeyDown(UINT, LPARAM) override { return Die(); }
    bool OnKeyUp(UINT, LPARAM) override { return Die(); }
    void OnSetFocus() override { Die(); }
    void OnKillFocus() override { Die(); }
    void OnTimer(UINT_PTR) override { Die(); }
    LRESULT OnQueryNewPalette() override { return Die(); }
    void OnPaletteChanged(HWND) override { Die(); }
    void OnHScroll(int, int) override { Die(); }
    void OnLButtonDown(UINT, int, int) override { Die(); }
    void OnMouseMove(int, int, bool) override { Die(); }
    bool OnSetCursor(HWND, UINT) override { return Die(); }
    LRESULT OnNcHitTest(LRESULT, int, int) override { return Die(); }
    bool OnWindowPosChanged(WINDOWPOS*) override { return Die(); }
    void OnMoving(RECT*) override { Die(); }
    LRESULT OnMeasureItem(UINT, MEASUREITEMSTRUCT*) override { return Die(); }
    bool OnDrawItem(UINT, DRAWITEMSTRUCT*) override { return Die(); }
    HBRUSH OnCtlColorStatic(HDC, HWND) override {
        Die();
        return nullptr;
    }
    void OnExitSizeMove() override { Die(); }
    bool OnGetDlgCode(LRESULT&) override { return Die(); }
    void OnDeviceChange(UINT, LPARAM) override { Die(); }
};

TEST(Lifetime, AWindowsObjectMayGoInAnyHandler) {
    WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
    const UINT messages[] = {WM_ERASEBKGND,     WM_INITMENUPOPUP,  WM_SIZE,         WM_CLOSE,
                             WM_NOTIFY,         WM_COMMAND,        WM_KEYDOWN,      WM_KEYUP,
                             WM_SETFOCUS,       WM_KILLFOCUS,      WM_TIMER,        WM_QUERYNEWPALETTE,
                             WM_PALETTECHANGED, WM_HSCROLL,        WM_LBUTTONDOWN,  WM_MOUSEMOVE,
                             WM_SETCURSOR,      WM_NCHITTEST,      WM_MOVING,       WM_MEASUREITEM,
                             WM_DRAWITEM,       WM_CTLCOLORSTATIC, WM_EXITSIZEMOVE, WM_GETDLGCODE,
                             WM_DEVICECHANGE,   WM_PAINT,          WM_DESTROY};
    for (const UINT message : messages) {
        const std::size_t before = Grave::Count();
        HostFrame frame;
        auto* const window = new DyingWindow(&frame);
        ASSERT_TRUE(window->Create("KxFramework", "", ThisLibrary().instance.Handle(), window, WS_CHILD, 0, 0,
                                   0, 0, 0))
            << "message " << message;
        window->armed = true;
        const HWND handle = window->Handle();
        SendMessageA(handle, message, 0, 0);
        EXPECT_EQ(Grave::Count(), before + 1) << "message " << message;
        EXPECT_TRUE(Grave::AreUntouched()) << "message " << message;
    }
}

class DyingDialog final : public Buried<Dialog> {
  public:
    using Buried::Buried;
    bool armed = false;
    bool Die() {
        if (armed) {
            DestroyWindow(ParentHandle());
        }
        return armed;
    }
    void OnDestroy() override {
        Dialog::OnDestroy();
        delete this;
    }
    INT_PTR OnDialogCommand(WPARAM) override { return Die(); }
    bool OnDialogNotify(UINT_PTR, NMHDR*, LRESULT&) override { return Die(); }
    bool OnDrawItem(UINT, DRAWITEMSTRUCT*) override { return Die(); }
    void OnSize(UINT, int, int) override { Die(); }
    void OnDialogHotKey(int, LPARAM) override { Die(); }
    bool OnEraseBackground(kx::DeviceContext&) override { return Die(); }
    HBRUSH OnCtlColorStatic(HDC, HWND) override {
        Die();
        return nullptr;
    }
    LRESULT OnMeasureItem(UINT, MEASUREITEMSTRUCT*) override { return Die(); }
    void OnClose() override { Die(); }
    void OnDeviceChange(UINT, LPARAM) override { Die(); }
};

TEST(Lifetime, ADialogMayGoInAnyHandler) {
    const UINT messages[] = {WM_COMMAND,    WM_NOTIFY,         WM_DRAWITEM,    WM_SIZE,  WM_HOTKEY,
                             WM_ERASEBKGND, WM_CTLCOLORSTATIC, WM_MEASUREITEM, WM_CLOSE, WM_DEVICECHANGE};
    for (const UINT message : messages) {
        const std::size_t before = Grave::Count();
        HostFrame frame;
        auto* const dialog = new DyingDialog(ThisLibrary(), &frame, nullptr, nullptr);
        dialog->CreateModeless(IDD_PLAIN_CHILD, dialog);
        ASSERT_TRUE(dialog->IsValid());
        dialog->armed = true;
        SendMessageA(dialog->Handle(), message, 0, 0);
        EXPECT_EQ(Grave::Count(), before + 1) << "message " << message;
        EXPECT_TRUE(Grave::AreUntouched()) << "message " << message;
    }
}

TEST(Lifetime, AWindowThatOutlivesItsObjectIsDetached) {
    WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
    HostFrame frame;
    HWND handle = nullptr;
    {
        Window window(&frame);
        ASSERT_TRUE(window.Create("KxFramework", "", ThisLibrary().instance.Handle(), &window, WS_CHILD, 0, 0,
                                  0, 10, 10));
        handle = window.Handle();
    }
    EXPECT_TRUE(IsWindow(handle));
    EXPECT_EQ(Window::FromHandle(handle), nullptr);
    SendMessageA(handle, WM_SIZE, 0, 0);
}

LRESULT CALLBACK CountingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* const object = Window::FromHandle(window);
    object->OnTimer(message);
    return object->CallReplacedProc(message, wParam, lParam);
}

class SubclassingWindow final : public Window {
  public:
    using Window::Window;
    void OnTimer(UINT_PTR message) override { sizes += message == WM_GETTEXTLENGTH; }
    int sizes = 0;
};

TEST(Lifetime, SubclassingIsUndone) {
    HostFrame frame;
    const auto own = GetWindowLongPtrA(frame.Handle(), GWLP_WNDPROC);
    {
        SubclassingWindow window(frame.Handle(), nullptr, 0);
        ASSERT_TRUE(window.Subclass(&window, CountingProc));
        EXPECT_FALSE(window.Subclass(&window, CountingProc)) << "a second time it would call itself";
        EXPECT_EQ(window.GetTextLength(), 5);
        EXPECT_EQ(window.sizes, 1);
        EXPECT_TRUE(window.Unsubclass());
        EXPECT_FALSE(window.Unsubclass());
        EXPECT_EQ(GetWindowLongPtrA(frame.Handle(), GWLP_WNDPROC), own);
        EXPECT_EQ(Window::FromHandle(frame.Handle()), nullptr);
        ASSERT_TRUE(window.Subclass(&window, CountingProc));
    }
    EXPECT_EQ(GetWindowLongPtrA(frame.Handle(), GWLP_WNDPROC), own) << "the destructor undoes it too";
    Window nothing;
    EXPECT_FALSE(nothing.Subclass(&nothing, CountingProc));
    EXPECT_EQ(nothing.ReplacedProc(), nullptr);
    EXPECT_FALSE(nothing.Attach(&nothing));
}

TEST(Lifetime, NothingIsLeftBehind) {
    const auto openAndClose = [] {
        WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
        HostFrame frame;
        RecordingWindow window(&frame);
        window.Create("KxFramework", "", ThisLibrary().instance.Handle(), &window, WS_CHILD | WS_VISIBLE, 0,
                      0, 0, 99, 99);
        for (const std::uint32_t id : {IDD_PANE, IDD_PLAIN_CHILD}) {
            auto* const dialog = new DyingDialog(ThisLibrary(), &frame, nullptr, nullptr);
            dialog->CreateModeless(id, dialog);
            dialog->StartTimer(1000);
        }
        PumpMessages();
    };
    openAndClose();
    const kx::test::GuiObjects before = kx::test::CountGuiObjects();
    for (int i = 0; i < 30; ++i) {
        openAndClose();
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 20);
    EXPECT_LE(after.user, before.user + 20);
}

}  // namespace
