// What a marker view shows.
#include <gtest/gtest.h>

#include <algorithm>

#include "lib/windows/bitmap.h"
#include "tests/windows/marker_view/view_rig.h"

namespace kx::test {
namespace {

using Lines = std::vector<std::string>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRaw = RGB(255, 128, 255);
constexpr COLORREF kDerivative = RGB(0, 0, 128);
constexpr COLORREF kBaseline = RGB(0, 0, 255);
constexpr COLORREF kMajorLine = RGB(149, 240, 183);
constexpr COLORREF kPaper = RGB(253, 255, 255);

class MarkerViewPaint : public ViewRig {
  protected:
    int Count(COLORREF colour) const {
        // Bitmap bits are blue first.
        const COLORREF swapped = RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour));
        const auto picture = Picture();
        return static_cast<int>(std::count_if(picture.begin(), picture.end(),
                                              [&](COLORREF c) { return (c & 0xFFFFFF) == swapped; }));
    }
    // The first row from the top in which a column has the colour; -1: none.
    int TopOf(int column, COLORREF colour) const {
        for (int y = 0; y < Client().cy; ++y) {
            if (Pixel(column, y) == colour) {
                return y;
            }
        }
        return -1;
    }
    // Its dots leave gaps; the first columns hold nothing else of its colour.
    int BaselineRow() const {
        for (int x = 3; x < 20; ++x) {
            if (const int row = TopOf(x, kBaseline); row != -1) {
                return row;
            }
        }
        return -1;
    }
    int PixelsPerMv(int gain) const {
        const WindowContext screen(view_);
        return static_cast<int>(1000 * gain * screen.HeightPixels() / screen.HeightMm() / 1000);
    }
};

TEST_F(MarkerViewPaint, WithoutABeatThereIsOnlyPaper) {
    MakeView();
    UpdateWindow(view_);
    EXPECT_GT(Count(kPaper), kWidth * kHeight / 2);
    EXPECT_GT(Count(kMajorLine), kWidth);
    EXPECT_EQ(Count(kBlack), 0);
    EXPECT_EQ(Count(kBaseline), 0);
    EXPECT_EQ(reports_.Take(), Lines());
}

TEST_F(MarkerViewPaint, DrawsTheLeadAtItsScaleOverTheBaseline) {
    MakeView();
    Show({});
    const int peak = ColumnOfMs(600);
    const int baseline = kHeight / 2;
    // Lead II has a wave of 1.1 mV.
    EXPECT_NEAR(TopOf(peak, kBlack), baseline - PixelsPerMv(20) * 11 / 10, 1);
    EXPECT_NE(Count(kBaseline), 0);
    EXPECT_EQ(
        TopOf(2, kBaseline) == baseline || TopOf(3, kBaseline) == baseline || TopOf(5, kBaseline) == baseline,
        true);
    EXPECT_EQ(Count(kRaw), 0);
    EXPECT_EQ(Count(kDerivative), 0);
}

TEST_F(MarkerViewPaint, LeadAvrIsUpsideDown) {
    MakeView();
    Show({}, KX_LEAD_AVR);
    const int peak = ColumnOfMs(600);
    EXPECT_EQ(Pixel(peak, kHeight / 2 + PixelsPerMv(20) * 13 / 10), kBlack);
    EXPECT_GE(TopOf(peak, kBlack), kHeight / 2 - 1);
}

TEST_F(MarkerViewPaint, AMissingLeadLeavesTheBaseline) {
    MakeView();
    Show({}, 99);
    EXPECT_EQ(Count(kBlack), 0);
    EXPECT_NE(Count(kBaseline), 0);
    EXPECT_EQ(reports_.Take(), Lines());
}

TEST_F(MarkerViewPaint, FiltersShowTheRawLeadToo) {
    MakeView();
    Show({});
    Send(MV_SETHIGHCUT, 0, 16000);
    Send(MV_SETBANDPASS, 0, 1);
    EXPECT_GT(Count(kRaw), 20);
    EXPECT_GT(Count(kBlack), 20);
    Send(MV_SETBANDPASS, 0, 0);
    EXPECT_EQ(Count(kRaw), 0);
    Send(MV_SETMAINS, 0, 50);
    EXPECT_GT(Count(kRaw), 5);
    Send(MV_SHOWDERIVATIVE, 0, 1);
    EXPECT_GT(Count(kDerivative), 20);
    Send(MV_SHOWDERIVATIVE, 0, 2);
    EXPECT_EQ(Count(kDerivative), 0) << "only 1 is on";
}

TEST_F(MarkerViewPaint, AnEdgeIsTakenOnlyOnItsSideOfTheOther) {
    MakeView();
    Show({});
    Send(MV_SETBANDPASS, 0, 1);
    const struct {
        UINT message;
        LPARAM value;
        bool taken;
    } rows[] = {
        {MV_SETLOWCUT, 10, false},  // the high edge is 0
        {MV_SETHIGHCUT, 0, false},  // not above the low edge
        {MV_SETHIGHCUT, 16000, true}, {MV_SETLOWCUT, 16000, false}, {MV_SETLOWCUT, 630, true},
        {MV_SETHIGHCUT, 630, false},  {MV_SETHIGHCUT, 631, true},
    };
    for (const auto& row : rows) {
        // A setting that is taken has the beat drawn anew, as it is now.
        const auto before = Picture();
        for (std::uint32_t i = 0; i < kSamples; ++i) {
            beat_.Samples(KX_LEAD_II)[i] = static_cast<std::int16_t>(-beat_.Samples(KX_LEAD_II)[i]);
        }
        EXPECT_EQ(Send(row.message, 0, row.value), 1);
        EXPECT_EQ(Picture() != before, row.taken) << row.message << ' ' << row.value;
    }
}

TEST_F(MarkerViewPaint, MarkersStandOnTheirColumnsWithTheirLabels) {
    MakeView();
    Show({300, 0, 500, 700, 900});
    for (const int ms : {300, 500, 700, 900}) {
        EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(ms))) << ms;
    }
    // The label's picture, at the bottom edge and centred.
    Bitmap label(
        static_cast<HBITMAP>(library_.instance.LoadImageById(IDB_BADGE_T_OFF, IMAGE_BITMAP, 0, 0, 0)));
    ASSERT_EQ(label.Width(), 24);
    ASSERT_EQ(label.Height(), 20);
    MemoryContext memory;
    memory.SelectBitmap(label);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 24; ++x) {
            ASSERT_EQ(Pixel(ColumnOfMs(900) - 12 + x, kHeight - 20 + y), GetPixel(memory.Handle(), x, y))
                << x << ' ' << y;
        }
    }
    Send(MV_SHOWMARKERS, 0, 0);
    EXPECT_FALSE(MarkerStandsAt(ColumnOfMs(500)));
    Send(MV_SHOWMARKERS, 0, 1);
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(500)));
}

TEST_F(MarkerViewPaint, TheSameLeadMovesItsMarkersOverTheSamePicture) {
    MakeView();
    Show({300, 400, 500, 700, 900});
    // Were the beat drawn again, it would be this one.
    beat_.ClearSamples();
    const int peak = ColumnOfMs(600);
    const int top = TopOf(peak, kBlack);
    ASSERT_NE(top, -1);
    SetLead({320, 400, 500, 700, 1000});
    EXPECT_EQ(TopOf(peak, kBlack), top);
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(320)));
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(400)));
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(1000)));
    EXPECT_FALSE(MarkerStandsAt(ColumnOfMs(300)));
    EXPECT_FALSE(MarkerStandsAt(ColumnOfMs(900)));
    SetLead({320, 400, 500, 700, 1000}, KX_LEAD_V1);
    EXPECT_EQ(TopOf(peak, kBlack), -1) << "another lead is another picture";
}

TEST_F(MarkerViewPaint, ABeatReplacedInPlaceIsDrawnAnew) {
    MakeView();
    Show({300, 400, 500, 700, 900});
    beat_.sampleRate = kRate / 2;
    SetLead({300, 400, 500, 700, 900});
    const auto shown = Picture();
    Send(MV_SETSPEED, 0, 50);
    EXPECT_EQ(Picture(), shown);
}

// What is beneath a marker that has moved is what a picture drawn anew shows.
TEST_F(MarkerViewPaint, MovedMarkersLeaveNothingBehind) {
    MakeView();
    Show({300, 310, 500, 700, 900});
    for (const std::int32_t ms : {304, 340, 498, 502, 1150, 2, 600}) {
        SetLead({300, ms, 500, 700, 900});
    }
    Drag(ColumnOfMs(600), 20, ColumnOfMs(450));
    const auto moved = Picture();
    Send(MV_SETSPEED, 0, 50);
    EXPECT_EQ(Picture(), moved);
}

// A step of a drag draws its few pixels itself: over other markers, and out of the view.
TEST_F(MarkerViewPaint, EachStepOfADragShowsWhatARepaintShows) {
    MakeView();
    Show({300, 310, 500, 700, 900});
    Mouse(WM_LBUTTONDOWN, ColumnOfMs(500), 20);
    for (int x = ColumnOfMs(500); x > 1; x -= 3) {
        Mouse(WM_MOUSEMOVE, x, 20);
        const auto drawn = Picture();
        RedrawWindow(view_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        ASSERT_EQ(Picture(), drawn) << x;
    }
    Mouse(WM_LBUTTONUP, 2, 20, 0);
}

TEST_F(MarkerViewPaint, ScrollBarsFollowTheLayout) {
    MakeView();
    Show({});
    const auto bar = [&](int which) {
        SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
        GetScrollInfo(view_, which, &info);
        return info;
    };
    EXPECT_EQ(bar(SB_HORZ).nMax, 0);
    EXPECT_TRUE((GetWindowLongA(view_, GWL_STYLE) & WS_HSCROLL) != 0) << "it stays";
    Send(MV_SETHSCROLL, 0, 100);
    Send(MV_SETVOFFSET, 0, 2500);
    Send(MV_SETSPEED, 0, 500);
    const SCROLLINFO wide = bar(SB_HORZ);
    EXPECT_GT(wide.nMax, 1000);
    EXPECT_EQ(wide.nPos, wide.nMax - static_cast<int>(wide.nPage) + 1)
        << "also where the range of before was smaller";
    Send(MV_SETGAIN, 0, 200);
    const SCROLLINFO high = bar(SB_VERT);
    EXPECT_GT(high.nMax, 1000);
    EXPECT_NEAR(high.nPos, high.nMax / 2 - static_cast<int>(high.nPage) / 2, 2)
        << "a new gain goes back to the middle";
    const struct {
        UINT message;
        WORD code;
        int horizontalPercent;
    } rows[] = {
        {WM_HSCROLL, SB_LEFT, 0},       {WM_HSCROLL, SB_PAGERIGHT, 10}, {WM_HSCROLL, SB_LINERIGHT, 11},
        {WM_HSCROLL, SB_ENDSCROLL, 11}, {WM_HSCROLL, SB_RIGHT, 100},    {WM_HSCROLL, SB_LINERIGHT, 100},
    };
    for (const auto& row : rows) {
        Send(row.message, row.code);
        const SCROLLINFO info = bar(SB_HORZ);
        EXPECT_EQ(info.nPos, MulDiv(info.nMax - static_cast<int>(info.nPage) + 1, row.horizontalPercent, 100))
            << row.code;
    }
    Send(WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, wide.nMax / 4));
    EXPECT_NEAR(bar(SB_HORZ).nPos, MulDiv(wide.nMax - static_cast<int>(wide.nPage) + 1, 25, 100),
                wide.nMax / 100 + 1);
}

TEST_F(MarkerViewPaint, AnotherSizeIsAnotherPicture) {
    MakeView();
    Show({300, 0, 0, 0, 0});
    SetWindowPos(view_, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    UpdateWindow(view_);
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(300)));
    EXPECT_EQ(BaselineRow(), Client().cy / 2);
}

TEST_F(MarkerViewPaint, AMarkerThatCannotBeMadeIsReported) {
    MakeView(6);
    EXPECT_EQ(Send(MV_ADDMARKER, 0, IDB_BADGE_P_ON), 0) << "a seventh";
    const Lines seventh = reports_.Take();
    ASSERT_EQ(seventh.size(), 1u);
    EXPECT_EQ(seventh[0].rfind("memory analysis ", 0), 0u) << seventh[0];
}

TEST_F(MarkerViewPaint, ALabelThatDoesNotExistIsReported) {
    MakeView(0);
    for (const LPARAM id : {0, 1, 20519, -1}) {
        EXPECT_EQ(Send(MV_ADDMARKER, 0, id), 0) << id;
        EXPECT_EQ(reports_.Take().size(), 1u) << id;
    }
    EXPECT_EQ(Send(MV_ADDMARKER, 0, IDB_BADGE_P_ON), 1);
}

}  // namespace
}  // namespace kx::test
