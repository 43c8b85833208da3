// The ways a dialog's window is made, and modal runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "lib/windows/dialog.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Dialog;
using kx::Window;
using kx::test::HostFrame;
using kx::test::LoggedServices;
using kx::test::ThisLibrary;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD kPaneStyle = 0x5200044C;

// What is done in WM_INITDIALOG, and what was seen there.
class TestDialog final : public Dialog {
  public:
    using Dialog::Dialog;
    ~TestDialog() { Destroy(); }

    bool OnInitDialog() override {
        handleAtInit = Handle();
        attachedAtInit = FromHandle(Handle()) == this;
        for (const WPARAM command : postedCommands) {
            PostCommand(command, 0);
        }
        return initResult;
    }

    bool initResult = true;
    std::vector<WPARAM> postedCommands;
    HWND handleAtInit = nullptr;
    bool attachedAtInit = false;
};

DWORD StyleOf(const Window& window) {
    return static_cast<DWORD>(GetWindowLongA(window.Handle(), GWL_STYLE));
}

DWORD ExtendedStyleOf(const Window& window) {
    return static_cast<DWORD>(GetWindowLongA(window.Handle(), GWL_EXSTYLE));
}

TEST(ModelessDialog, IsABorderlessVisibleEnabledChild) {
    HostFrame frame;
    TestDialog dialog(ThisLibrary(), &frame, nullptr, nullptr);
    dialog.CreateModeless(IDD_PANE, &dialog);
    ASSERT_TRUE(dialog.IsValid());
    EXPECT_EQ(dialog.handleAtInit, dialog.Handle());
    EXPECT_TRUE(dialog.attachedAtInit);
    EXPECT_EQ(dialog.Id(), std::uint32_t{IDD_PANE});
    EXPECT_EQ(GetParent(dialog.Handle()), frame.Handle());
    EXPECT_EQ(StyleOf(dialog), kPaneStyle);
    EXPECT_EQ(ExtendedStyleOf(dialog), 0x10000u);
    EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
    EXPECT_TRUE(IsWindowEnabled(dialog.Handle()));
    RECT window{};
    RECT client{};
    dialog.GetWindowRect(window);
    dialog.GetClientRect(client);
    EXPECT_EQ(client.bottom, window.bottom - window.top) << "no caption is left of the template's";
    EXPECT_EQ(client.right, window.right - window.left);
    // As large as the template and where the template says: its caption has not moved it out of the parent.
    RECT units{0, 0, 200, 100};
    MapDialogRect(dialog.Handle(), &units);
    EXPECT_EQ(client.right, units.right);
    EXPECT_EQ(client.bottom, units.bottom);
    POINT corner{};
    MapWindowPoints(dialog.Handle(), frame.Handle(), &corner, 1);
    EXPECT_EQ(corner.x, 0);
    EXPECT_EQ(corner.y, 0);
    EXPECT_EQ(SendDlgItemMessageA(dialog.Handle(), IDC_LIST, LB_GETITEMHEIGHT, 0, 0), 150)
        << "an owner-drawn list asks before the dialog has its object";
}

TEST(ModelessDialog, NeedsAParentAndATemplate) {
    HostFrame frame;
    Window nowhere;
    const struct {
        const char* name;
        const kx::LibraryModule* owner;
        Window* parent;
        std::uint32_t id;
    } rows[] = {
        {"no parent", &ThisLibrary(), nullptr, IDD_PANE},
        {"parent without a window", &ThisLibrary(), &nowhere, IDD_PANE},
        {"no library", nullptr, &frame, IDD_PANE},
        {"no such template", &ThisLibrary(), &frame, 999},
    };
    for (const auto& row : rows) {
        TestDialog dialog(row.owner, row.parent, nullptr, nullptr);
        dialog.CreateModeless(row.id, &dialog);
        EXPECT_EQ(dialog.Handle(), nullptr) << row.name;
        EXPECT_EQ(dialog.handleAtInit, nullptr) << row.name;
    }
}

TEST(ModalDialog, ReturnsWhatEndsIt) {
    HostFrame frame;
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
        for (Window* parent : {static_cast<Window*>(&frame), static_cast<Window*>(nullptr)}) {
            TestDialog dialog(ThisLibrary(), parent, nullptr, nullptr);
            dialog.postedCommands = {MAKEWPARAM(1234, 0), row.command};
            dialog.initResult = row.init;
            EXPECT_EQ(dialog.RunModal(IDD_MODAL, &dialog), row.result) << row.name;
            EXPECT_EQ(dialog.Id(), std::uint32_t{IDD_MODAL});
            EXPECT_EQ(dialog.Handle(), nullptr) << row.name;
        }
    }
    EXPECT_TRUE(IsWindowEnabled(frame.Handle()));
}

TEST(ModalDialog, LoggedRunIsBracketedInTheLog) {
    LoggedServices services;
    HostFrame frame;
    TestDialog dialog(ThisLibrary(), &frame, nullptr, services);
    dialog.postedCommands = {IDOK};
    EXPECT_EQ(dialog.RunModalLogged(IDD_MODAL, &dialog, IDS_CAPTION), 1);
    EXPECT_THAT(services.TakeLog(), ElementsAre("LOGSERVICESTART \"Modifica l'interpretazione\"",
                                                "LOGSERVICESTOP \"Modifica l'interpretazione\""));
    EXPECT_EQ(dialog.RunModalLogged(IDD_MODAL, &dialog, 999), 1);
    EXPECT_THAT(services.TakeLog(), ElementsAre("LOGSERVICESTART \"\"", "LOGSERVICESTOP \"\""));

    TestDialog unlogged(ThisLibrary(), &frame, nullptr, nullptr);
    unlogged.postedCommands = {IDOK};
    EXPECT_EQ(unlogged.RunModalLogged(IDD_MODAL, &unlogged, IDS_CAPTION), 1);
}

}  // namespace
