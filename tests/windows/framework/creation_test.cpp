// How windows, dialogs and their objects come together and part: classes, creation, modal runs, subclassing, and what of an
// object the host shares.
#include <array>
#include <memory>
#include <stdexcept>

#include "lib/windows/child_control.h"
#include "lib/windows/list_view.h"
#include "lib/windows/tree_view.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

const HINSTANCE kModule = GetModuleHandleA(nullptr);

// Makes an object for a window that comes without one, unless told to throw; that of id 7 is refused.
class FactoryClass final : public WindowClass {
  public:
    explicit FactoryClass(SystemServices* services) : WindowClass(&ThisLibrary(), "KxFramework", 0, 0, services) {}
    LRESULT CreateWindowObject(std::uint32_t controlId, HWND window) override {
        if (throws) {
            throw std::runtime_error("factory");
        }
        if (controlId == 7) {
            return WindowClass::CreateWindowObject(controlId, window);
        }
        made = std::make_unique<Window>(window, nullptr, controlId);
        return made->Attach(made.get()) ? 0 : -1;
    }
    bool throws = false;
    std::unique_ptr<Window> made;
};

class Creation : public FrameworkTest {};

TEST_F(Creation, OfATemplatesControlIsItsClasssOrRefused) {
    FactoryClass factory(&services_);
    {
        RecordingDialog pane(ThisLibrary(), &frame_, nullptr, nullptr);
        pane.CreateModeless(IDD_CUSTOM, &pane);
        ASSERT_NE(factory.made, nullptr);
        EXPECT_EQ(factory.made->Id(), std::uint32_t{IDC_CUSTOM});
        EXPECT_EQ(Window::FromHandle(GetDlgItem(pane.Handle(), IDC_CUSTOM)), factory.made.get());
    }
    EXPECT_FALSE(factory.made->IsValid());
    Reports();
    for (const bool throws : {false, true}) {
        factory.throws = throws;
        Window control(&frame_, 7);
        EXPECT_FALSE(control.CreateControl("KxFramework", "", kModule, WS_CHILD, 0, 0, 0, 10, 10));
        EXPECT_EQ(control.Handle(), nullptr);
        EXPECT_EQ(Reports().size(), throws ? 1u : 0u);
    }
}

class ThrowingAtCreation final : public Window {
  public:
    LRESULT OnCreate(HWND window) override {
        Window::OnCreate(window);
        throw std::runtime_error("create");
    }
};

TEST_F(Creation, ThatThrowsIsUndoneAndTheBondEndsWithTheObject) {
    const FactoryClass factory(&services_);
    ThrowingAtCreation throwing;
    EXPECT_FALSE(throwing.Create("KxFramework", "", kModule, &throwing, WS_POPUP, 0, 0, 0, 10, 10));
    EXPECT_EQ(throwing.Handle(), nullptr);
    EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"KxFramework\""));
    HWND handle = nullptr;
    {
        Window window(&frame_);
        ASSERT_TRUE(window.Create("KxFramework", "", kModule, &window, WS_CHILD, 0, 0, 0, 10, 10));
        handle = window.Handle();
    }
    EXPECT_TRUE(IsWindow(handle));
    EXPECT_EQ(Window::FromHandle(handle), nullptr);
    SendMessageA(handle, WM_SIZE, 0, 0);
}

LRESULT CALLBACK PassingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Window::FromHandle(window)->CallReplacedProc(message, wParam, lParam);
}

TEST_F(Creation, OfASubclassIsUndone) {
    const auto procedure = [this] { return GetWindowLongPtrA(frame_.Handle(), GWLP_WNDPROC); };
    const LONG_PTR own = procedure();
    {
        Window window(frame_.Handle(), nullptr, 0);
        EXPECT_TRUE(window.Subclass(&window, PassingProc));
        EXPECT_FALSE(window.Subclass(&window, PassingProc)) << "a second time it would call itself";
        EXPECT_EQ(window.GetTextLength(), 5);
        EXPECT_TRUE(window.Unsubclass() && procedure() == own && Window::FromHandle(frame_.Handle()) == nullptr);
        EXPECT_FALSE(window.Unsubclass());
        EXPECT_TRUE(window.Subclass(&window, PassingProc));
    }
    EXPECT_EQ(procedure(), own) << "the destructor undoes it too";
}

class Dialogs : public FrameworkTest {};

// The parent may be a host's object, of another compiler: only its second word is used.
TEST_F(Dialogs, WithoutModeAreBorderlessVisibleEnabledChildren) {
    std::uint32_t hostObject[4] = {1, 0, 0xDEAD0001, 0xDEAD0002};
    hostObject[1] = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(frame_.Handle()));
    const auto before = std::to_array(hostObject);
    RecordingDialog dialog(ThisLibrary(), reinterpret_cast<Window*>(hostObject), nullptr, nullptr);
    bool attachedAtInit = false;
    dialog.onInit = [&] { return attachedAtInit = Window::FromHandle(dialog.Handle()) == &dialog, true; };
    dialog.CreateModeless(IDD_PANE, &dialog);
    EXPECT_TRUE(attachedAtInit);
    EXPECT_EQ(GetParent(dialog.Handle()), frame_.Handle());
    EXPECT_EQ(GetWindowLongA(dialog.Handle(), GWL_STYLE), 0x5200044C);
    // As large as the template and where the template says: its caption has not moved it out of the parent.
    RECT units{0, 0, 200, 100};
    MapDialogRect(dialog.Handle(), &units);
    RECT client{};
    dialog.GetClientRect(client);
    MapWindowPoints(dialog.Handle(), frame_.Handle(), reinterpret_cast<POINT*>(&client), 2);
    EXPECT_TRUE(EqualRect(&client, &units)) << client.left << ' ' << client.top << ' ' << client.right << ' ' << client.bottom;
    EXPECT_EQ(SendDlgItemMessageA(dialog.Handle(), IDC_LIST, LB_GETITEMHEIGHT, 0, 0), 150)
        << "an owner-drawn list asks before the dialog has its object";
    EXPECT_TRUE(dialog.CenterHorizontally() && dialog.PostToParent(WM_NULL, 0, 0));
    EXPECT_EQ(std::to_array(hostObject), before);
}

TEST_F(Dialogs, ThatThrowAtTheirStartAreReportedAndLeftWithoutObject) {
    RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, &services_);
    dialog.onInit = []() -> bool { throw std::runtime_error("init"); };
    dialog.CreateModeless(IDD_PANE, &dialog);
    EXPECT_EQ(Window::FromHandle(dialog.Handle()), nullptr);
    EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
    EXPECT_EQ(dialog.RunModal(IDD_MODAL, &dialog), 0);
    EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"RecordingDialog\"", "LOGEXCEPTION \"RecordingDialog\""));
}

// ---- what the host and the library share of a window object; window.cpp holds the places of its fields

// One handler too many, or a destructor among them, would move the last of each class.
TEST(Layout, HandlersStandInTheirSlots) {
    const int lasts[] = {Slot(&Window::WindowProc), Slot(&Window::IsCommandChecked),      Slot(&Dialog::DialogProc),
                         Slot(&Dialog::OnCancel),   Slot(&ChildControl::OnChildNotify),   Slot(&ListView::CellText),
                         Slot(&ListView::DrawRow),  Slot(&TreeView::OnSelectionChanging), Slot(&TreeView::OnTreeKeyDown)};
    EXPECT_THAT(lasts, ElementsAre(0, 41, 42, 48, 42, 42, 47, 42, 51));
    // One slot for the destructor, in this compiler's tables two.
    EXPECT_EQ(Slot(&WindowClass::CreateWindowObject), 2);
}

}  // namespace
}  // namespace kx::test
