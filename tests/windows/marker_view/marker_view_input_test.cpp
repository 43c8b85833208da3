// What a marker view makes of mouse and keys.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "tests/windows/marker_view/allocation_count.h"
#include "tests/windows/marker_view/view_rig.h"

namespace kx::test {
namespace {

using Posted = std::vector<Notification>;

constexpr std::size_t kReadoutRoom = 256;

class MarkerViewInput : public ViewRig {
  protected:
    // A view with five markers; the third, QRS onset, at 500 ms.
    void Open() {
        MakeView();
        Show({300, 400, 500, 700, 900});
    }
    Posted Moved(UINT slot, WPARAM ms) const { return {{MVN_MARKERMOVED + slot, ms, KX_LEAD_II}}; }
    // The owner is told the time that the readout says of the pointer's column.
    void ExpectMoved(const Posted& posted, UINT slot) const {
        EXPECT_EQ(posted, Moved(slot, static_cast<WPARAM>(std::atoi(owner_.readout.c_str()))));
    }
};

TEST_F(MarkerViewInput, ADragTellsTheOwnerTheNewPosition) {
    Open();
    const int from = ColumnOfMs(500);
    const int to = from + 30;
    Mouse(WM_LBUTTONDOWN, from + 1, 50);
    EXPECT_EQ(GetCapture(), view_);
    EXPECT_EQ(GetFocus(), view_);
    EXPECT_EQ(TakePosted(), Posted()) << "a press moves nothing";
    Mouse(WM_MOUSEMOVE, to, 70);
    EXPECT_TRUE(MarkerStandsAt(to));
    EXPECT_FALSE(MarkerStandsAt(from));
    ExpectMoved(TakePosted(), 2);
    Mouse(WM_LBUTTONUP, to, 70, 0);
    EXPECT_NE(GetCapture(), view_);
    Mouse(WM_MOUSEMOVE, to + 20, 70, 0);
    EXPECT_EQ(TakePosted(), Posted());
    EXPECT_TRUE(MarkerStandsAt(to));
}

TEST_F(MarkerViewInput, TheCursorSaysWhereAMarkerIsHeld) {
    Open();
    for (const auto& [x, hit] : {std::pair{ColumnOfMs(900) + 2, HTCLIENT}, {ColumnOfMs(900) + 3, HTNOWHERE}}) {
        EXPECT_EQ(HitTest(x, 10), hit);
        Mouse(WM_LBUTTONDOWN, x, 10);
        EXPECT_EQ(GetCapture() == view_, hit == HTCLIENT);
        Mouse(WM_LBUTTONUP, x, 10, 0);
        Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(view_), MAKELPARAM(hit, WM_MOUSEMOVE));
        EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, hit == HTCLIENT ? IDC_SIZEWE : IDC_CROSS));
    }
}

TEST_F(MarkerViewInput, AnAbsentOrHiddenMarkerIsNotHeld) {
    MakeView();
    Show({0, 400, 500, 700, 900});
    EXPECT_EQ(HitTest(ColumnOfMs(0), 10), HTNOWHERE);
    Send(MV_SHOWMARKERS, 0, 0);
    EXPECT_EQ(HitTest(ColumnOfMs(500), 10), HTNOWHERE);
    Drag(ColumnOfMs(500), 10, ColumnOfMs(600));
    EXPECT_EQ(TakePosted(), Posted());
}

TEST_F(MarkerViewInput, LosingTheMouseEndsTheDrag) {
    Open();
    Mouse(WM_LBUTTONDOWN, ColumnOfMs(500), 10);
    SetCapture(owner_.Handle());
    Mouse(WM_MOUSEMOVE, ColumnOfMs(600), 10);
    EXPECT_EQ(TakePosted(), Posted());
    EXPECT_EQ(GetCapture(), owner_.Handle());
    ReleaseCapture();
    EXPECT_EQ(HitTest(3, 3), HTNOWHERE);
}

TEST_F(MarkerViewInput, AStepOfADragAllocatesNothing) {
    Open();
    const int column = ColumnOfMs(500);
    Mouse(WM_LBUTTONDOWN, column, 10);
    Mouse(WM_MOUSEMOVE, column + 10, 10);
    std::int32_t positions[] = {300, 400, 500, 700, 900};
    owner_.readout.reserve(kReadoutRoom);
    const long before = AllocationCount();
    for (int i = 0; i < 50; ++i) {
        HitTest(column + i, 10);
        Mouse(WM_MOUSEMOVE, column + i, 10);
        positions[2] = 500 + 2 * i;
        Send(MV_SETLEAD, KX_LEAD_II, reinterpret_cast<LPARAM>(positions));
    }
    EXPECT_EQ(AllocationCount(), before);
    Mouse(WM_LBUTTONUP, column, 10, 0);
}

TEST_F(MarkerViewInput, KeysMoveTheMarkerUsedLast) {
    Open();
    Mouse(WM_LBUTTONDOWN, ColumnOfMs(700), 10);
    Mouse(WM_LBUTTONUP, ColumnOfMs(700), 10, 0);
    const struct {
        UINT key;
        int modifier;
        WPARAM ms;
    } rows[] = {
        {VK_RIGHT, 0, 702}, {VK_RIGHT, 0, 704}, {VK_LEFT, 0, 702}, {VK_RIGHT, VK_CONTROL, 712}, {VK_LEFT, VK_CONTROL, 702},
    };
    for (const auto& row : rows) {
        Key(row.key, row.modifier);
        EXPECT_EQ(TakePosted(), Moved(3, row.ms)) << row.ms;
        EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(static_cast<int>(row.ms)))) << row.ms;
        EXPECT_EQ(owner_.readout.rfind(std::to_string(row.ms) + " ms\r\n", 0), 0u) << owner_.readout;
    }
}

TEST_F(MarkerViewInput, TabGoesFromMarkerToMarkerAndOutBehindTheLast) {
    MakeView();
    Show({300, 0, 500, 700, 900});
    ::SetFocus(view_);
    const auto current = [&] {
        Key(VK_RIGHT);
        const Posted posted = TakePosted();
        return posted.size() == 1 ? static_cast<int>(posted[0].message - MVN_MARKERMOVED) : -1;
    };
    const auto wantsTab = [&](int modifier) {
        BYTE keys[256] = {};
        keys[VK_SHIFT] = static_cast<BYTE>(modifier == VK_SHIFT ? 0x80 : 0);
        SetKeyboardState(keys);
        const LRESULT code = Send(WM_GETDLGCODE);
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
        EXPECT_NE(code & DLGC_WANTARROWS, 0);
        return (code & DLGC_WANTTAB) != 0;
    };
    EXPECT_EQ(current(), 0);
    EXPECT_FALSE(wantsTab(VK_SHIFT));
    for (const int slot : {2, 3, 4}) {
        EXPECT_TRUE(wantsTab(0));
        Key(VK_TAB);
        EXPECT_EQ(current(), slot) << "the second marker is absent";
    }
    EXPECT_FALSE(wantsTab(0)) << "behind the last marker Tab is the dialog's";
    EXPECT_TRUE(wantsTab(VK_SHIFT));
    Key(VK_TAB, VK_SHIFT);
    EXPECT_EQ(current(), 3);
}

TEST_F(MarkerViewInput, TheReadoutTellsWhatIsUnderThePointer) {
    MakeView();
    for (std::uint32_t i = 0; i < kSamples; ++i) {
        beat_.Samples(KX_LEAD_AVR)[i] = static_cast<std::int16_t>(i * 3);
    }
    Show({}, KX_LEAD_AVR);
    HitTest(ColumnOfMs(600), 10);
    int ms = 0;
    int microvolts = 0;
    double slope = 0;
    ASSERT_EQ(std::sscanf(owner_.readout.c_str(), "%d ms\r\n%d uV\r\n%lf uV/ms", &ms, &microvolts, &slope), 3) << owner_.readout;
    EXPECT_NEAR(ms, 600, 6);
    EXPECT_EQ(microvolts, ms / 2 * 3) << "as it is, not upside down";
    EXPECT_EQ(slope, 1.5);
    HitTest(0, 10);
    EXPECT_EQ(owner_.readout, "...");
    Send(MV_SETLEAD, 99, 0);
    HitTest(kWidth / 2, 10);
    EXPECT_EQ(owner_.readout, "...") << "a missing lead";
}

}  // namespace
}  // namespace kx::test
