// Exceptions of handlers stop at the procedure that the system calls, and are reported there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "lib/windows/dialog.h"
#include "lib/windows/handler_scope.h"
#include "lib/windows/window_class.h"
#include "tests/windows/framework/recording_window.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace kx::test {

class ThrowingDialog final : public Dialog {
  public:
    using Dialog::Dialog;
    ~ThrowingDialog() { Destroy(); }
    bool OnInitDialog() override {
        if (throwsAtInit) {
            throw std::runtime_error("init");
        }
        return true;
    }
    INT_PTR OnDialogCommand(WPARAM) override { throw 5; }
    bool throwsAtInit = false;
};

class ThrowingClass final : public WindowClass {
  public:
    using WindowClass::WindowClass;
    LRESULT CreateWindowObject(std::uint32_t, HWND) override { throw std::runtime_error("factory"); }
};

class ThrowingAtCreation final : public Window {
  public:
    LRESULT OnCreate(HWND window) override {
        Window::OnCreate(window);
        throw std::runtime_error("create");
    }
};

}  // namespace kx::test

namespace {

using namespace kx::test;
using kx::Window;
using kx::WindowClass;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

TEST(Exceptions, OfAWindowsHandlersAreReportedByItsClass) {
    LoggedServices services;
    WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, services);
    RecordingWindow window;
    ASSERT_TRUE(window.Create("KxFramework", "", ThisLibrary().instance.Handle(), &window, WS_POPUP, 0, 0, 0,
                              50, 50));
    ShowWindow(window.Handle(), SW_SHOWNA);
    PumpMessages();
    window.calls.clear();
    window.throws = true;
    const UINT messages[] = {WM_SIZE,       WM_TIMER,      WM_CLOSE,      WM_COMMAND,  WM_NOTIFY,
                             WM_NCHITTEST,  WM_SETCURSOR,  WM_KEYDOWN,    WM_MOVING,   WM_MOUSEMOVE,
                             WM_LBUTTONUP,  WM_VSCROLL,    WM_DRAWITEM,   WM_SETFOCUS, WM_WINDOWPOSCHANGED,
                             WM_GETDLGCODE, WM_ERASEBKGND, WM_MEASUREITEM};
    for (const UINT message : messages) {
        EXPECT_EQ(window.SendMsg(message, 0, 0), 0) << "message " << message;
        EXPECT_THAT(window.TakeCalls(), SizeIs(1)) << "message " << message;
        EXPECT_THAT(services.TakeLog(), ElementsAre("LOGEXCEPTION \"RecordingWindow\""))
            << "message " << message;
    }
    // The painting that failed is over: it does not come again.
    window.Invalidate();
    window.Update();
    EXPECT_THAT(services.TakeLog(), Each("LOGEXCEPTION \"RecordingWindow\""));
    window.calls.clear();
    window.Update();
    EXPECT_THAT(window.TakeCalls(), testing::IsEmpty());
    EXPECT_TRUE(window.Destroy());
}

TEST(Exceptions, AtCreationRefuseTheWindow) {
    LoggedServices services;
    ThrowingClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, services);
    HostFrame frame;
    Window control(&frame, 7);
    EXPECT_FALSE(
        control.CreateControl("KxFramework", "", ThisLibrary().instance.Handle(), WS_CHILD, 0, 0, 0, 10, 10));
    EXPECT_THAT(services.TakeLog(), ElementsAre("LOGEXCEPTION \"KxFramework\""));

    ThrowingAtCreation window;
    EXPECT_FALSE(window.Create("KxFramework", "", ThisLibrary().instance.Handle(), &window, WS_POPUP, 0, 0, 0,
                               10, 10));
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_THAT(services.TakeLog(), ElementsAre("LOGEXCEPTION \"ThrowingAtCreation\""));
}

TEST(Exceptions, OfADialogAreReportedThroughItsServices) {
    LoggedServices services;
    HostFrame frame;
    ThrowingDialog dialog(ThisLibrary(), &frame, nullptr, services);
    dialog.CreateModeless(IDD_PANE, &dialog);
    ASSERT_TRUE(dialog.IsValid());
    EXPECT_EQ(dialog.SendCommand(IDOK, 0), 0);
    EXPECT_THAT(services.TakeLog(), ElementsAre("LOGEXCEPTION \"ThrowingDialog\""));

    ThrowingDialog failing(ThisLibrary(), &frame, nullptr, services);
    failing.throwsAtInit = true;
    failing.CreateModeless(IDD_PANE, &failing);
    EXPECT_EQ(Window::FromHandle(failing.Handle()), nullptr);
    EXPECT_FALSE(IsWindowVisible(failing.Handle()));
    EXPECT_EQ(failing.RunModal(IDD_MODAL, &failing), 0);
    EXPECT_THAT(services.TakeLog(),
                ElementsAre("LOGEXCEPTION \"ThrowingDialog\"", "LOGEXCEPTION \"ThrowingDialog\""));
}

TEST(Exceptions, NameTheClassInEitherFormOfATypesName) {
    const struct {
        const char* type;
        const char* name;
    } rows[] = {
        {"N2kx10MarkerViewE", "MarkerView"},
        {"10MarkerView", "MarkerView"},
        {"N2kx12_GLOBAL__N_15PPaneE", "PPane"},
        {"class kx::MarkerView", "MarkerView"},
        {"MarkerView", "Window"},
        {"N99xE", "Window"},
        {"", "Window"},
    };
    for (const auto& row : rows) {
        char name[16];
        kx::ClassName(row.type, name, sizeof name);
        EXPECT_STREQ(name, row.name) << row.type;
    }
}

}  // namespace
