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

}  // namespace
