// The pane of the wave amplitudes as a host meets it: opened through the export, read through its list.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
// After gtest: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

#include "lib/dbclient/test_record.h"
#include "lib/measurement_table.h"
#include "tests/rig/gui_objects.h"
#include "tests/windows/dialogs/library_under_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kListId = 1;

std::unique_ptr<kx::TestRecord> NewRecord() {
    auto test = std::make_unique<kx::TestRecord>();
    test->AddEpisode(kx::kTwelveLeadConfiguration, 12, 600, 1000, 1000);
    return test;
}

class TablePane : public testing::Test {
  protected:
    TablePane() {
        library_->start();
        parent_.handle = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 900, 500, nullptr, nullptr,
                                         GetModuleHandleA(nullptr), nullptr);
        library_.TakeLog();
    }
    ~TablePane() override {
        DestroyWindow(static_cast<HWND>(parent_.handle));
        library_->stop();
    }

    HWND Open(KxTestRecord* test) {
        const std::uint32_t handle = library_->table(&parent_, test);
        EXPECT_NE(handle, 0u);
        pane_ = static_cast<HWND>(reinterpret_cast<const KxHostWindow*>(std::uintptr_t{handle})->handle);
        list_ = GetDlgItem(pane_, kListId);
        return pane_;
    }

    std::string Cell(int row, int column) const {
        char text[64] = {};
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list_, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }
    std::vector<std::string> Row(int row) const {
        std::vector<std::string> cells;
        for (int column = 0; column < 10; ++column) {
            cells.push_back(Cell(row, column));
        }
        return cells;
    }
    int Image(int row) const {
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageA(list_, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    }
    kx::test::LibraryUnderTest library_{kx::test::SystemModule::kCurrent};
    KxHostWindow parent_{};
    HWND pane_ = nullptr;
    HWND list_ = nullptr;
};

TEST_F(TablePane, ListsTheLeadsAsTheRecordHoldsThemNow) {
    auto test = NewRecord();
    KxLeadMeasurements& v3 = test->Episode(0)->measurements.leads[KX_LEAD_V3];
    Open(test.get());
    ASSERT_NE(list_, nullptr);
    ASSERT_EQ(SendMessageA(list_, LVM_GETITEMCOUNT, 0, 0), 12);
    for (int lead = 0; lead < 12; ++lead) {
        EXPECT_THAT(Row(lead), ElementsAre("", "0", "0", "0", "0", "0", "0", "0", "0", "0")) << lead;
        EXPECT_EQ(Image(lead), lead);
    }
    // What another pane writes is seen at the next drawing.
    v3.aP1 = 1, v3.aP2 = 2, v3.aQ = -3, v3.aR = 4, v3.aS = -1250, v3.aR1 = 6, v3.aS1 = -32768, v3.aT1 = 32767;
    v3.aT2 = -9;
    EXPECT_THAT(Row(KX_LEAD_V3), ElementsAre("", "1", "2", "-3", "4", "-1250", "6", "-32768", "32767", "-9"));
    EXPECT_THAT(library_.TakeLog(), IsEmpty());
}

TEST_F(TablePane, CopiesTheWholeTable) {
    auto test = NewRecord();
    test->Episode(0)->measurements.leads[KX_LEAD_AVR].aS = -77;
    Open(test.get());
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    keys[VK_CONTROL] |= 0x80;
    SetKeyboardState(keys);
    SendMessageA(list_, WM_KEYDOWN, 'C', 0);
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);

    std::string copied;
    ASSERT_TRUE(OpenClipboard(list_));
    if (const HANDLE memory = GetClipboardData(CF_TEXT)) {
        copied = static_cast<const char*>(GlobalLock(memory));
        GlobalUnlock(memory);
    }
    CloseClipboard();
    EXPECT_EQ(copied, kx::MeasurementTableText(test->Episode(0)->measurements, '\t'));
    EXPECT_NE(copied.find("\r\naVR\t0\t0\t0\t0\t-77\t0\t0\t0\t0\r\n"), std::string::npos) << copied;
    EXPECT_EQ(copied.find("Deriv\taP1 (uV)\taP2 (uV)\t"), 0u);
}

TEST_F(TablePane, IsNotOpenedWithoutAMedianBeat) {
    kx::TestRecord test;
    EXPECT_EQ(Open(&test), nullptr);
    EXPECT_THAT(library_.TakeLog(), IsEmpty());
    EXPECT_EQ(library_->table(&parent_, nullptr), 0u);
    EXPECT_THAT(library_.TakeLog(), ElementsAre("LOGOEMERROR \"mrphlist\" 162 \"no Wpar or tst\""));
}

TEST_F(TablePane, LeavesNothingBehind) {
    auto test = NewRecord();
    DestroyWindow(Open(test.get()));
    const kx::test::GuiObjects before = kx::test::CountGuiObjects();
    for (int i = 0; i < 50; ++i) {
        DestroyWindow(Open(test.get()));
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
}

}  // namespace
