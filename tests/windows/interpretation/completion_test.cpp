// Typing into the statement: what the completion proposes and inserts, and what it leaves alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Completion : public kx::test::InterpretationPane {
  protected:
    // The popup's window; null when there is none.
    static HWND Popup() { return FindWindowA("CompletionPopup", nullptr); }
    static HWND List() { return FindWindowExA(Popup(), nullptr, WC_LISTVIEWA, nullptr); }
    static bool IsProposing() { return Popup() != nullptr && IsWindowVisible(Popup()); }
    // The proposed texts; the rows carry their addresses.
    static std::vector<std::string> Proposed() {
        std::vector<std::string> texts;
        const auto rows = static_cast<int>(SendMessageA(List(), LVM_GETITEMCOUNT, 0, 0));
        for (int row = 0; row < rows; ++row) {
            LVITEMA item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            SendMessageA(List(), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
            texts.emplace_back(reinterpret_cast<const char*>(item.lParam));
        }
        return texts;
    }
    static int SelectedRow() {
        return static_cast<int>(
            SendMessageA(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    void ClickRow(int row) {
        RECT area{};
        area.left = LVIR_BOUNDS;
        SendMessageA(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
        const LPARAM point = MAKELPARAM(area.left + 20, (area.top + area.bottom) / 2);
        SendMessageA(List(), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageA(List(), WM_LBUTTONUP, 0, point);
        Pump();
    }
    void Select(int start, int end) { SendMessageA(Edit(), EM_SETSEL, static_cast<WPARAM>(start), end); }
    int Caret() {
        DWORD start = 0;
        SendMessageA(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        return static_cast<int>(start);
    }
};

TEST_F(Completion, ProposesAndKeepsTheFocus) {
    Open();
    Type("ri");
    ASSERT_TRUE(IsProposing());
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo sinusale.", "Ritmo giunzionale.", "Ritmo atriale."));
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_EQ(GetActiveWindow(), parent_.handle);
    EXPECT_EQ(Statement(), "ri");
    Type("tmo g");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo giunzionale."));
    Type("\r");
    EXPECT_FALSE(IsProposing());
    EXPECT_EQ(Statement(), "Ritmo giunzionale.");
    EXPECT_EQ(Caret(), 18);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Ritmo giunzionale.");
    EXPECT_THAT(Reports(), IsEmpty());
}

}  // namespace
