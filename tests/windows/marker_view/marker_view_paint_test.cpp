// What a marker view shows.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/windows/marker_view/view_rig.h"

namespace kx::test {
namespace {

using Lines = std::vector<std::string>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRaw = RGB(255, 128, 255);
constexpr COLORREF kDerivative = RGB(0, 0, 128);
constexpr COLORREF kBaseline = RGB(0, 0, 255);

class MarkerViewPaint : public ViewRig {
  protected:
    int Count(COLORREF colour) const {
        // Bitmap bits are blue first.
        const COLORREF swapped = RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour));
        const auto picture = Picture();
        return static_cast<int>(std::count_if(picture.begin(), picture.end(), [&](COLORREF c) { return (c & 0xFFFFFF) == swapped; }));
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
    int PixelsPerMv(int gain) const {
        const WindowContext screen(view_);
        return static_cast<int>(1000 * gain * screen.HeightPixels() / screen.HeightMm() / 1000);
    }
};

TEST_F(MarkerViewPaint, DrawsTheLeadAtItsScaleOverTheBaseline) {
    MakeView();
    Show({});
    const int peak = ColumnOfMs(600);
    const int baseline = kHeight / 2;
    // Lead II has a wave of 1.1 mV.
    EXPECT_NEAR(TopOf(peak, kBlack), baseline - PixelsPerMv(20) * 11 / 10, 1);
    EXPECT_NE(Count(kBaseline), 0);
    EXPECT_EQ(TopOf(2, kBaseline) == baseline || TopOf(3, kBaseline) == baseline || TopOf(5, kBaseline) == baseline, true);
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

TEST_F(MarkerViewPaint, MarkersStandOnTheirColumnsWithTheirLabels) {
    MakeView();
    Show({300, 0, 500, 700, 900});
    for (const int ms : {300, 500, 700, 900}) {
        EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(ms))) << ms;
    }
    Send(MV_SHOWMARKERS, 0, 0);
    EXPECT_FALSE(MarkerStandsAt(ColumnOfMs(500)));
    Send(MV_SHOWMARKERS, 0, 1);
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(500)));
}

TEST_F(MarkerViewPaint, TheSameLeadMovesItsMarkersOverTheSamePicture) {
    MakeView();
    Show({300, 400, 500, 700, 900});
    // Were more than the markers painted, it would be gone.
    {
        const WindowContext context(view_);
        SetPixel(context.Handle(), 3, 3, kRaw);
    }
    SetLead({320, 400, 500, 700, 1000});
    EXPECT_EQ(Pixel(3, 3), kRaw);
    for (const std::int32_t ms : {300, 320, 400, 900, 1000}) {
        EXPECT_EQ(MarkerStandsAt(ColumnOfMs(ms)), ms != 300 && ms != 900) << ms;
    }
    SetLead({320, 400, 500, 700, 1000}, KX_LEAD_V1);
    EXPECT_NE(Pixel(3, 3), kRaw) << "another lead is another picture";
}

// By a host, in place: with as many samples at the same rate.
TEST_F(MarkerViewPaint, ReplacedSamplesAreDrawnAnew) {
    for (const bool byPainting : {false, true}) {
        FillBeat(beat_);
        MakeView();
        Show({300, 400, 500, 700, 900});
        const int peak = ColumnOfMs(600);
        const int before = TopOf(peak, kBlack);
        ASSERT_NE(before, -1);
        std::fill_n(beat_.Samples(KX_LEAD_II), kSamples, std::int16_t{0});
        if (byPainting) {
            const RECT strip = {0, 0, 10, 10};
            InvalidateRect(view_, &strip, FALSE);
            PumpMessages();
        } else {
            SetLead({300, 400, 500, 700, 900});
        }
        EXPECT_NE(TopOf(peak, kBlack), before) << byPainting;
        owner_.Destroy();
    }
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

TEST_F(MarkerViewPaint, AMarkerThatCannotBeMadeIsReported) {
    MakeView(6);
    EXPECT_EQ(Send(MV_ADDMARKER, 0, IDB_BADGE_P_ON), 0) << "a seventh";
    const Lines seventh = reports_.Take();
    ASSERT_EQ(seventh.size(), 1u);
    EXPECT_EQ(seventh[0].rfind("memory analysis ", 0), 0u) << seventh[0];
}

}  // namespace
}  // namespace kx::test
