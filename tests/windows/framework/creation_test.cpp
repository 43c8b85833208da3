// How windows, dialogs and their objects come together and part: classes, creation, modal runs, subclassing, and what of an
// object the host shares.
#include <memory>
#include <stdexcept>

#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

const HINSTANCE kModule = GetModuleHandleA(nullptr);

// Makes an object for a window that comes without one, unless told to refuse.
class FactoryClass final : public WindowClass {
  public:
    explicit FactoryClass(SystemServices* services) : WindowClass(&ThisLibrary(), "KxFramework", 0, 0, services) {}
    LRESULT CreateWindowObject(std::uint32_t controlId, HWND window) override {
        askedFor = controlId;
        if (throws) {
            throw std::runtime_error("factory");
        }
        if (refuses) {
            return WindowClass::CreateWindowObject(controlId, window);
        }
        made = std::make_unique<Window>(window, nullptr, controlId);
        return made->Attach(made.get()) ? 0 : -1;
    }
    bool refuses = false;
    bool throws = false;
    std::uint32_t askedFor = 0;
    std::unique_ptr<Window> made;
};

class Classes : public FrameworkTest {};

TEST_F(Classes, AreRegisteredWhileTheyLive) {
    WNDCLASSEXA found{};
    found.cbSize = sizeof found;
    {
        const WindowClass windowClass(&ThisLibrary(), "KxFramework", 300, 0, nullptr);
        ASSERT_NE(GetClassInfoExA(kModule, "KxFramework", &found), 0);
        EXPECT_EQ(found.style, 0x1008u);
        EXPECT_EQ(found.cbClsExtra + found.cbWndExtra, 0);
        EXPECT_EQ(found.hIcon, nullptr);
        EXPECT_EQ(found.hCursor, LoadCursorA(nullptr, reinterpret_cast<const char*>(IDC_ARROW)));
        EXPECT_EQ(found.hbrBackground, nullptr);
        EXPECT_EQ(found.lpszMenuName, MAKEINTRESOURCEA(300));
        EXPECT_EQ(class_registry::Find("KxFramework"), &windowClass);
        EXPECT_EQ(class_registry::Find("kxframework"), nullptr) << "names are compared with their case";
    }
    EXPECT_EQ(class_registry::Find("KxFramework"), nullptr);
    EXPECT_EQ(GetClassInfoExA(kModule, "KxFramework", &found), 0);
}

TEST_F(Classes, AreSixteenAtMost) {
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
    // The class exists, but nobody makes objects for it.
    EXPECT_EQ(class_registry::Find("KxClass17"), nullptr);
    Window orphan(&frame_, 5);
    EXPECT_FALSE(orphan.CreateControl("KxClass17", "", kModule, WS_CHILD, 0, 0, 0, 10, 10));
    Window owned;
    EXPECT_TRUE(owned.Create("KxClass17", "", kModule, &owned, WS_POPUP, 0, 0, 0, 10, 10));
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

TEST_F(Classes, MakeTheObjectOfATemplatesControlOrRefuseIt) {
    FactoryClass factory(&services_);
    {
        RecordingDialog pane(ThisLibrary(), &frame_, nullptr, nullptr);
        pane.CreateModeless(IDD_CUSTOM, &pane);
        ASSERT_TRUE(pane.IsValid());
        EXPECT_EQ(factory.askedFor, std::uint32_t{IDC_CUSTOM});
        ASSERT_NE(factory.made, nullptr);
        EXPECT_EQ(Window::FromHandle(GetDlgItem(pane.Handle(), IDC_CUSTOM)), factory.made.get());
    }
    EXPECT_FALSE(factory.made->IsValid());
    Reports();
    for (const bool throws : {false, true}) {
        factory.refuses = true;
        factory.throws = throws;
        Window control(&frame_, 7);
        EXPECT_FALSE(control.CreateControl("KxFramework", "", kModule, WS_CHILD, 0, 0, 0, 10, 10));
        EXPECT_EQ(factory.askedFor, 7u);
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

class Bonds : public FrameworkTest {
  protected:
    FactoryClass class_{&services_};
};

TEST_F(Bonds, OfAWindowWhoseCreationThrowsAreUndone) {
    ThrowingAtCreation window;
    EXPECT_FALSE(window.Create("KxFramework", "", kModule, &window, WS_POPUP, 0, 0, 0, 10, 10));
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"KxFramework\""));
}

TEST_F(Bonds, EndWithTheObject) {
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

int g_lengthsAsked = 0;
LRESULT CALLBACK CountingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    g_lengthsAsked += message == WM_GETTEXTLENGTH;
    return Window::FromHandle(window)->CallReplacedProc(message, wParam, lParam);
}

TEST_F(Bonds, OfASubclassedWindowAreUndone) {
    const auto procedure = [this] { return GetWindowLongPtrA(frame_.Handle(), GWLP_WNDPROC); };
    const LONG_PTR own = procedure();
    {
        Window window(frame_.Handle(), nullptr, 0);
        ASSERT_TRUE(window.Subclass(&window, CountingProc));
        EXPECT_FALSE(window.Subclass(&window, CountingProc)) << "a second time it would call itself";
        EXPECT_EQ(window.GetTextLength(), 5);
        EXPECT_EQ(g_lengthsAsked, 1);
        EXPECT_TRUE(window.Unsubclass());
        EXPECT_FALSE(window.Unsubclass());
        EXPECT_EQ(procedure(), own);
        EXPECT_EQ(Window::FromHandle(frame_.Handle()), nullptr);
        ASSERT_TRUE(window.Subclass(&window, CountingProc));
    }
    EXPECT_EQ(procedure(), own) << "the destructor undoes it too";
    Window nothing;
    EXPECT_FALSE(nothing.Subclass(&nothing, CountingProc));
    EXPECT_EQ(nothing.ReplacedProc(), nullptr);
    EXPECT_FALSE(nothing.Attach(&nothing));
}

class Dialogs : public FrameworkTest {};

TEST_F(Dialogs, WithoutModeAreBorderlessVisibleEnabledChildren) {
    RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, nullptr);
    bool attachedAtInit = false;
    dialog.onInit = [&] { return attachedAtInit = Window::FromHandle(dialog.Handle()) == &dialog, true; };
    dialog.CreateModeless(IDD_PANE, &dialog);
    ASSERT_TRUE(dialog.IsValid());
    EXPECT_TRUE(attachedAtInit);
    EXPECT_EQ(dialog.Id(), std::uint32_t{IDD_PANE});
    EXPECT_EQ(GetParent(dialog.Handle()), frame_.Handle());
    EXPECT_EQ(GetWindowLongA(dialog.Handle(), GWL_STYLE), 0x5200044C);
    EXPECT_EQ(GetWindowLongA(dialog.Handle(), GWL_EXSTYLE), 0x10000);
    EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
    // As large as the template and where the template says: its caption has not moved it out of the parent.
    RECT units{0, 0, 200, 100};
    MapDialogRect(dialog.Handle(), &units);
    RECT window{};
    RECT client{};
    dialog.GetWindowRect(window);
    dialog.GetClientRect(client);
    MapWindowPoints(nullptr, frame_.Handle(), reinterpret_cast<POINT*>(&window), 2);
    for (const RECT& area : {window, client}) {
        EXPECT_TRUE(EqualRect(&area, &units)) << area.left << ' ' << area.top << ' ' << area.right << ' ' << area.bottom;
    }
    EXPECT_EQ(SendDlgItemMessageA(dialog.Handle(), IDC_LIST, LB_GETITEMHEIGHT, 0, 0), 150)
        << "an owner-drawn list asks before the dialog has its object";
}

TEST_F(Dialogs, NeedAParentAndATemplate) {
    Window nowhere;
    const struct {
        const char* name;
        const LibraryModule* owner;
        Window* parent;
        std::uint32_t id;
    } rows[] = {
        {"no parent", &ThisLibrary(), nullptr, IDD_PANE},
        {"parent without a window", &ThisLibrary(), &nowhere, IDD_PANE},
        {"no library", nullptr, &frame_, IDD_PANE},
        {"no such template", &ThisLibrary(), &frame_, 999},
    };
    for (const auto& row : rows) {
        RecordingDialog dialog(row.owner, row.parent, nullptr, nullptr);
        dialog.onInit = [&row] { return ADD_FAILURE() << row.name, true; };
        dialog.CreateModeless(row.id, &dialog);
        EXPECT_EQ(dialog.Handle(), nullptr) << row.name;
    }
}

TEST_F(Dialogs, ThatThrowAtTheirStartAreReportedAndLeftWithoutObject) {
    RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, &services_);
    dialog.onInit = []() -> bool { throw std::runtime_error("init"); };
    dialog.CreateModeless(IDD_PANE, &dialog);
    EXPECT_EQ(Window::FromHandle(dialog.Handle()), nullptr);
    EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
    EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"RecordingDialog\""));
    EXPECT_EQ(dialog.RunModal(IDD_MODAL, &dialog), 0);
    EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"RecordingDialog\""));
}

// Runs a dialog whose user gives these commands at once.
INT_PTR RunWith(RecordingDialog& dialog, std::vector<WPARAM> commands, bool init, const std::function<INT_PTR()>& run) {
    dialog.passesCommands = true;
    dialog.onInit = [&dialog, commands, init] {
        for (const WPARAM command : commands) {
            dialog.PostCommand(command, 0);
        }
        return init;
    };
    return run();
}

TEST_F(Dialogs, WithModeReturnWhatEndsThem) {
    const struct {
        const char* name;
        WPARAM command;
        bool init;
        INT_PTR result;
    } rows[] = {
        {"OK", MAKEWPARAM(IDOK, BN_CLICKED), true, 1},
        {"OK with any high word", MAKEWPARAM(IDOK, 0x1234), true, 1},
        {"cancel", MAKEWPARAM(IDCANCEL, 0), true, 0},
        {"failed initialisation", MAKEWPARAM(IDOK, 0), false, 0},
    };
    for (const auto& row : rows) {
        for (Window* parent : {static_cast<Window*>(&frame_), static_cast<Window*>(nullptr)}) {
            RecordingDialog dialog(ThisLibrary(), parent, nullptr, nullptr);
            const auto run = [&dialog] { return dialog.RunModal(IDD_MODAL, &dialog); };
            EXPECT_EQ(RunWith(dialog, {MAKEWPARAM(1234, 0), row.command}, row.init, run), row.result) << row.name;
            EXPECT_EQ(dialog.Id(), std::uint32_t{IDD_MODAL});
            EXPECT_EQ(dialog.Handle(), nullptr) << row.name;
        }
    }
    EXPECT_TRUE(IsWindowEnabled(frame_.Handle()));
}

TEST_F(Dialogs, RunLoggedAreBracketedInTheLog) {
    const struct {
        SystemServices* services;
        std::uint32_t caption;
        std::vector<std::string> log;
    } rows[] = {
        {&services_, IDS_CAPTION, {"LOGSERVICESTART \"Modifica l'interpretazione\"", "LOGSERVICESTOP \"Modifica l'interpretazione\""}},
        {&services_, 999, {"LOGSERVICESTART \"\"", "LOGSERVICESTOP \"\""}},
        {nullptr, IDS_CAPTION, {}},
    };
    for (const auto& row : rows) {
        RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, row.services);
        Reports();
        const auto run = [&] { return dialog.RunModalLogged(IDD_MODAL, &dialog, row.caption); };
        EXPECT_EQ(RunWith(dialog, {IDOK}, true, run), 1);
        EXPECT_EQ(Reports(), row.log);
    }
}

// ---- what the host and the library share of a window object; window.cpp holds the places of its fields

TEST(Layout, HandlersStandInTheirSlots) {
    using W = Window;
    using D = Dialog;
    // In the order of the slots; a line for each would be fifty.
    // clang-format off
    const int slots[] = {
        Slot(&W::WindowProc), Slot(&W::OnPaint), Slot(&W::OnEraseBackground), Slot(&W::OnInitMenuPopup), Slot(&W::OnSize),
        Slot(&W::OnCreate), Slot(&W::OnClose), Slot(&W::OnDestroy), Slot(&W::OnNotify), Slot(&W::OnCommand), Slot(&W::OnMenuCommand),
        Slot(&W::OnControlCommand), Slot(&W::OnKeyDown), Slot(&W::OnKeyUp), Slot(&W::OnSetFocus), Slot(&W::OnKillFocus),
        Slot(&W::OnTimer), Slot(&W::OnQueryNewPalette), Slot(&W::OnPaletteChanged), Slot(&W::OnHScroll), Slot(&W::OnVScroll),
        Slot(&W::OnLButtonDown), Slot(&W::OnLButtonUp), Slot(&W::OnLButtonDblClk), Slot(&W::OnRButtonDown), Slot(&W::OnRButtonUp),
        Slot(&W::OnRButtonDblClk), Slot(&W::OnMouseMove), Slot(&W::OnSetCursor), Slot(&W::OnNcHitTest), Slot(&W::OnWindowPosChanged),
        Slot(&W::OnMoving), Slot(&W::OnSizing), Slot(&W::OnMeasureItem), Slot(&W::OnDrawItem), Slot(&W::OnCtlColorStatic),
        Slot(&W::OnExitSizeMove), Slot(&W::OnGetDlgCode), Slot(&W::OnDeviceChange), Slot(&W::GetToolTipText), Slot(&W::IsCommandEnabled),
        Slot(&W::IsCommandChecked), Slot(&D::DialogProc), Slot(&D::OnInitDialog), Slot(&D::OnDialogCommand), Slot(&D::OnDialogHotKey),
        Slot(&D::OnDialogNotify), Slot(&D::OnOK), Slot(&D::OnCancel),
    };
    // clang-format on
    for (int slot = 0; slot < 49; ++slot) {
        EXPECT_EQ(slots[slot], slot);
    }
    static_assert(sizeof slots == 49 * sizeof(int));
    // One slot for the destructor, in this compiler's tables two.
    EXPECT_EQ(Slot(&WindowClass::CreateWindowObject), 2);
}

class Layouts : public FrameworkTest {};

// The host's object may be of another compiler: only its second word is used.
TEST_F(Layouts, OfAHostsObjectAreUsedForItsHandleOnly) {
    std::uint32_t hostObject[6] = {1, 0, 0xDEAD0001, 0xDEAD0002, 0xDEAD0003, 0xDEAD0004};
    hostObject[1] = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(frame_.Handle()));
    std::uint32_t before[6];
    std::memcpy(before, hostObject, sizeof before);
    {
        RecordingDialog pane(ThisLibrary(), reinterpret_cast<Window*>(hostObject), nullptr, nullptr);
        pane.CreateModeless(IDD_PANE, &pane);
        ASSERT_TRUE(pane.IsValid());
        EXPECT_EQ(GetParent(pane.Handle()), frame_.Handle());
        EXPECT_TRUE(pane.CenterHorizontally());
        EXPECT_TRUE(pane.PostToParent(WM_NULL, 0, 0));
    }
    EXPECT_EQ(std::memcmp(before, hostObject, sizeof before), 0);
}

}  // namespace
}  // namespace kx::test
