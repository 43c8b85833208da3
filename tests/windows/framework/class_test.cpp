// Window classes: what is registered, the registry of at most 16, and objects for windows made by a class
// name.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lib/windows/dialog.h"
#include "lib/windows/window_class.h"
#include "tests/windows/framework/recording_window.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace {

namespace class_registry = kx::class_registry;
using kx::Window;
using kx::WindowClass;
using kx::test::HostFrame;
using kx::test::ThisLibrary;

HINSTANCE ThisModule() {
    return ThisLibrary().instance.Handle();
}

// Makes an object for a window that comes without one, unless told to refuse.
class FactoryClass final : public WindowClass {
  public:
    FactoryClass() : WindowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr) {}
    LRESULT CreateWindowObject(std::uint32_t controlId, HWND window) override {
        askedFor = controlId;
        if (refuses) {
            return WindowClass::CreateWindowObject(controlId, window);
        }
        made = std::make_unique<Window>(window, nullptr, controlId);
        return made->Attach(made.get()) ? 0 : -1;
    }
    bool refuses = false;
    std::uint32_t askedFor = 0;
    std::unique_ptr<Window> made;
};

TEST(WindowClass, RegistersItsClassWhileItLives) {
    WNDCLASSEXA found{};
    found.cbSize = sizeof found;
    {
        WindowClass windowClass(&ThisLibrary(), "KxFramework", 300, 0, nullptr);
        ASSERT_NE(GetClassInfoExA(ThisModule(), "KxFramework", &found), 0);
        EXPECT_EQ(found.style, 0x1008u);
        EXPECT_EQ(found.lpfnWndProc, kx::ClassWindowProc);
        EXPECT_EQ(found.cbClsExtra, 0);
        EXPECT_EQ(found.cbWndExtra, 0);
        EXPECT_EQ(found.hIcon, nullptr);
        EXPECT_EQ(found.hIconSm, nullptr);
        EXPECT_EQ(found.hCursor, LoadCursorA(nullptr, reinterpret_cast<const char*>(IDC_ARROW)));
        EXPECT_EQ(found.hbrBackground, nullptr);
        EXPECT_EQ(found.lpszMenuName, MAKEINTRESOURCEA(300));
        EXPECT_EQ(class_registry::Find("KxFramework"), &windowClass);
        EXPECT_EQ(class_registry::Find("kxframework"), nullptr) << "names are compared with their case";
    }
    EXPECT_EQ(class_registry::Find("KxFramework"), nullptr);
    EXPECT_EQ(GetClassInfoExA(ThisModule(), "KxFramework", &found), 0);
}

TEST(WindowClass, TheRegistryHoldsSixteen) {
    std::vector<std::string> names;
    for (int i = 1; i <= 17; ++i) {
        names.push_back("KxClass" + std::to_string(i));
    }
    std::vector<std::unique_ptr<WindowClass>> classes;
    for (const std::string& name : names) {
        classes.push_back(std::make_unique<WindowClass>(&ThisLibrary(), name.c_str(), 0, 0, nullptr));
    }
    EXPECT_EQ(class_registry::Count(), 16u);
    EXPECT_EQ(class_registry::Find("KxClass16"), classes[15].get());
    EXPECT_EQ(class_registry::Find("KxClass17"), nullptr);

    // The class exists, but nobody makes objects for it.
    HostFrame frame;
    Window orphan(&frame, 5);
    EXPECT_FALSE(orphan.CreateControl("KxClass17", "", ThisModule(), WS_CHILD, 0, 0, 0, 10, 10));
    Window owned;
    EXPECT_TRUE(owned.Create("KxClass17", "", ThisModule(), &owned, WS_POPUP, 0, 0, 0, 10, 10));
    owned.Destroy();

    // Removing one from the middle keeps the order of the others.
    classes.erase(classes.begin() + 4);
    EXPECT_EQ(class_registry::Count(), 15u);
    EXPECT_EQ(class_registry::Find("KxClass5"), nullptr);
    EXPECT_EQ(class_registry::Find("KxClass6"), classes[4].get());
    EXPECT_EQ(class_registry::Find("KxClass16"), classes[14].get());
    classes.clear();
    EXPECT_EQ(class_registry::Count(), 0u);
}

TEST(WindowClass, TheFirstOfANameStaysInTheRegistry) {
    WindowClass first(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
    // Another module may register the name as well.
    const kx::LibraryModule other(GetModuleHandleA("gdi32.dll"));
    {
        WindowClass second(&other, "KxFramework", 0, 0, nullptr);
        WNDCLASSEXA found{};
        found.cbSize = sizeof found;
        EXPECT_NE(GetClassInfoExA(other.instance.Handle(), "KxFramework", &found), 0);
        EXPECT_EQ(class_registry::Find("KxFramework"), &first);
    }
    EXPECT_EQ(class_registry::Find("KxFramework"), &first);
}

TEST(WindowClass, MakesTheObjectOfATemplatesControl) {
    FactoryClass factory;
    HostFrame frame;
    struct Pane final : kx::Dialog {
        using Dialog::Dialog;
    } pane(ThisLibrary(), &frame, nullptr, nullptr);
    pane.CreateModeless(IDD_CUSTOM, &pane);
    ASSERT_TRUE(pane.IsValid());
    EXPECT_EQ(factory.askedFor, std::uint32_t{IDC_CUSTOM});
    ASSERT_NE(factory.made, nullptr);
    EXPECT_EQ(Window::FromHandle(GetDlgItem(pane.Handle(), IDC_CUSTOM)), factory.made.get());
    pane.Destroy();
    EXPECT_FALSE(factory.made->IsValid());
}

TEST(WindowClass, ARefusedControlFailsItsCreation) {
    FactoryClass factory;
    factory.refuses = true;
    HostFrame frame;
    Window control(&frame, 7);
    EXPECT_FALSE(control.CreateControl("KxFramework", "", ThisModule(), WS_CHILD, 0, 0, 0, 10, 10));
    EXPECT_EQ(factory.askedFor, 7u);
    EXPECT_EQ(control.Handle(), nullptr);
}

TEST(WindowClass, ARefusedWindowLeavesItsObject) {
    WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
    class Refusing final : public Window {
      public:
        LRESULT OnCreate(HWND window) override {
            Window::OnCreate(window);
            return -1;
        }
        void OnDestroy() override { ++destroyed; }
        int destroyed = 0;
    } refusing;
    EXPECT_FALSE(refusing.Create("KxFramework", "", ThisModule(), &refusing, WS_POPUP, 0, 0, 0, 10, 10));
    EXPECT_EQ(refusing.Handle(), nullptr);
    EXPECT_EQ(refusing.destroyed, 0);
}

TEST(WindowClass, FramesHaveTheirStyles) {
    WindowClass windowClass(&ThisLibrary(), "KxFramework", 0, 0, nullptr);
    for (const bool framed : {true, false}) {
        Window window;
        const RECT area{40, 30, 340, 230};
        ASSERT_TRUE(window.CreateFrame("KxFramework", ThisModule(), &window, &area, framed));
        const auto style = static_cast<DWORD>(GetWindowLongA(window.Handle(), GWL_STYLE));
        const auto extended = static_cast<DWORD>(GetWindowLongA(window.Handle(), GWL_EXSTYLE));
        // The system adds WS_CLIPSIBLINGS to every top-level window and WS_EX_WINDOWEDGE to every frame.
        EXPECT_EQ(style & ~WS_CLIPSIBLINGS, framed ? 0x02CF0000u : 0x82000000u);
        EXPECT_EQ(extended & WS_EX_CONTROLPARENT, framed ? WS_EX_CONTROLPARENT : 0u);
        RECT place{};
        window.GetWindowRect(place);
        EXPECT_TRUE(EqualRect(&place, &area));
        EXPECT_EQ(Window::FromHandle(window.Handle()), &window);
        window.Destroy();
    }
    Window placed;
    EXPECT_TRUE(placed.CreateFrame("KxFramework", ThisModule(), &placed, nullptr, true));
    placed.Destroy();
}

}  // namespace
