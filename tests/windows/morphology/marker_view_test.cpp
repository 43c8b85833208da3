// The marker view in its pane: what it shows, what it makes of mouse and keys; any size, any beat, any message in any order.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <random>

#include "dialogs/marker_view/marker_view_messages.h"
#include "tests/rig/library_memory.h"
#include "tests/windows/morphology/morph_pane.h"

namespace kx::test {
namespace {

// Pixels as a bitmap holds them, blue first.
constexpr std::uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF, kRaw = 0xFF80FF, kDerivative = 0x000080, kBaseline = 0x0000FF;

struct Picture {
    explicit Picture(HWND window) {
        RECT client{};
        GetClientRect(window, &client);
        width = client.right, height = client.bottom;
        pixels.resize(static_cast<std::size_t>(width * height));
        const HDC dc = GetDC(window);
        const HDC memory = CreateCompatibleDC(dc);
        const HBITMAP bitmap = CreateCompatibleBitmap(dc, width, height);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, dc, 0, 0, SRCCOPY);
        SelectObject(memory, before);
        BITMAPINFO format{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
        GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(), &format, DIB_RGB_COLORS);
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(window, dc);
        std::for_each(pixels.begin(), pixels.end(), [](std::uint32_t& pixel) { pixel &= 0xFFFFFF; });
    }
    std::uint32_t At(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    auto Count(std::uint32_t colour) const { return std::count(pixels.begin(), pixels.end(), colour); }
    // The first row from the top in which a column has the colour; -1: none.
    int TopOf(int column, std::uint32_t colour) const {
        int y = 0;
        while (y < height && At(column, y) != colour) {
            ++y;
        }
        return y < height ? y : -1;
    }
    // The lines of a marker: black, white, what is beneath, white, black.
    bool HasMarker(int x) const {
        const int y = height / 2 + 3;
        return At(x - 2, y) == kBlack && At(x - 1, y) == kWhite && At(x + 1, y) == kWhite && At(x + 2, y) == kBlack;
    }

    int width, height;
    std::vector<std::uint32_t> pixels;
};

// In the general pane, whose five markers stand at 150, 250, 350, 450 and 750 ms of a beat of 1000.
class MarkerView : public testing::Test {
  protected:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) { return SendMessageA(morph_.View(), message, wParam, lParam); }
    void SetBeat(KxEpisodeRecord* beat) { Send(MV_SETBEAT, 0, reinterpret_cast<LPARAM>(beat)); }
    void SetLead(const std::vector<std::int32_t>& positionsMs, std::uint32_t lead = KX_LEAD_II) {
        std::int32_t positions[kMarkerSlots] = {};
        std::copy(positionsMs.begin(), positionsMs.end(), positions);
        Send(MV_SETLEAD, lead, reinterpret_cast<LPARAM>(positions));
    }
    Picture Painted() {
        RedrawWindow(morph_.View(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return Picture(morph_.View());
    }
    void Key(UINT virtualKey, int modifier = 0) {
        BYTE keys[256] = {};
        keys[modifier] = static_cast<BYTE>(modifier != 0 ? 0x80 : 0);
        SetKeyboardState(keys);
        Send(WM_KEYDOWN, virtualKey, 1);
        keys[modifier] = 0;
        SetKeyboardState(keys);
    }
    // What the view has posted does not get to the pane.
    void PumpTheViewAlone() {
        MSG moved;
        while (PeekMessageA(&moved, morph_.pane, MVN_MARKERMOVED, MVN_STEPENDS, PM_REMOVE)) {
        }
        Pump();
    }
    std::string Readout() const { return morph_.pane.Text(59023); }
    void UseEverything() {
        for (const LPARAM speed : {25, 50, 1000}) {
            Send(MV_SETSPEED, 0, speed);
            for (int x = -10; x < 420; x += 37) {
                morph_.IsMarkerAt(x);
                for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}) {
                    morph_.Mouse(message, message == WM_LBUTTONDOWN ? x : x + 11);
                }
            }
            Key(VK_TAB);
            Key(VK_RIGHT);
            Key(VK_LEFT, VK_CONTROL);
            Send(WM_HSCROLL, SB_PAGERIGHT);
            Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000));
        }
        PumpTheViewAlone();
    }
    std::vector<std::string> ViewsReports() {
        std::vector<std::string> reports = morph_.suite.TakeReports();
        std::erase_if(reports, [](const std::string& report) { return report.find("\"analysis\"") == report.npos; });
        return reports;
    }

    MorphPane morph_{kGeneralPane};
};

TEST_F(MarkerView, DrawsALeadAtItsScaleAndAvrUpsideDown) {
    const HDC screen = GetDC(nullptr);
    // The R wave of both leads is 0.96 mV high.
    const int height = 20 * GetDeviceCaps(screen, VERTRES) * 96 / 100 / GetDeviceCaps(screen, VERTSIZE);
    ReleaseDC(nullptr, screen);
    Send(MV_SETGAIN, 0, 20);
    SetLead({});
    const int peak = morph_.ColumnOf(394);
    const Picture upright = Painted();
    const int baseline = upright.height / 2;
    EXPECT_NEAR(upright.TopOf(peak, kBlack), baseline - height, 2);
    EXPECT_GT(upright.Count(kBaseline), 0);
    EXPECT_EQ(upright.Count(kRaw) + upright.Count(kDerivative), 0);
    SetLead({}, KX_LEAD_AVR);
    EXPECT_NEAR(Painted().TopOf(peak, kBlack), baseline + height, 3);
}

TEST_F(MarkerView, FiltersShowTheRawLeadToo) {
    SetLead({});
    Send(MV_SETHIGHCUT, 0, 16000);
    Send(MV_SETBANDPASS, 0, 1);
    EXPECT_GT(Painted().Count(kRaw), 20);
    EXPECT_GT(Painted().Count(kBlack), 20);
    Send(MV_SETBANDPASS, 0, 0);
    EXPECT_EQ(Painted().Count(kRaw), 0);
    Send(MV_SETMAINS, 0, 50);
    EXPECT_GT(Painted().Count(kRaw), 5);
    Send(MV_SHOWDERIVATIVE, 0, 1);
    EXPECT_GT(Painted().Count(kDerivative), 20);
}

// By a host, in place: with as many samples at the same rate.
TEST_F(MarkerView, ReplacedSamplesAreDrawnAnew) {
    for (const bool byPainting : {false, true}) {
        std::int16_t* const samples = morph_.record->Episode(0)->Samples(KX_LEAD_II);
        samples[394] = 1200;
        SetLead({150, 250, 350, 450, 750});
        const int peak = morph_.ColumnOf(394);
        const int before = Painted().TopOf(peak, kBlack);
        std::fill_n(samples, 1000, std::int16_t{0});
        if (byPainting) {
            const RECT strip = {0, 0, 10, 10};
            InvalidateRect(morph_.View(), &strip, FALSE);
            Pump();
        } else {
            SetLead({150, 250, 350, 450, 750});
        }
        EXPECT_NE(Picture(morph_.View()).TopOf(peak, kBlack), before) << byPainting;
    }
}

// A step of a drag draws its few pixels itself: over other markers, and out of the view.
TEST_F(MarkerView, EachStepOfADragShowsWhatARepaintShows) {
    const int from = morph_.ColumnOf(350);
    EXPECT_TRUE(Painted().HasMarker(from));
    morph_.Mouse(WM_LBUTTONDOWN, from);
    morph_.Mouse(WM_MOUSEMOVE, from + 20);
    EXPECT_TRUE(Picture(morph_.View()).HasMarker(from + 20) && !Picture(morph_.View()).HasMarker(from));
    for (int x = from; x > 1; x -= 7) {
        morph_.Mouse(WM_MOUSEMOVE, x);
        const Picture drawn(morph_.View());
        ASSERT_EQ(Painted().pixels, drawn.pixels) << x;
    }
    morph_.Mouse(WM_LBUTTONUP, 2);
}

TEST_F(MarkerView, HoldsAMarkerThatIsThereUntilTheMouseIsLost) {
    morph_.Block().pOff = 0;
    morph_.SelectLead(KX_LEAD_V5);
    const Values before = morph_.Stored();
    const int column = morph_.ColumnOf(750);
    for (const auto& [x, held] : {std::pair{column + 2, true}, {column + 3, false}, {morph_.ColumnOf(0), false}}) {
        EXPECT_EQ(morph_.IsMarkerAt(x), held);
        morph_.Mouse(WM_LBUTTONDOWN, x);
        EXPECT_EQ(GetCapture() == morph_.View(), held);
        morph_.Mouse(WM_LBUTTONUP, x);
    }
    morph_.Mouse(WM_LBUTTONDOWN, column);
    SetCapture(morph_.host.Handle());
    morph_.Mouse(WM_MOUSEMOVE, column + 30);
    EXPECT_EQ(GetCapture(), morph_.host.Handle());
    ReleaseCapture();
    Send(MV_SHOWMARKERS, 0, 0);
    EXPECT_FALSE(morph_.IsMarkerAt(column));
    Pump();
    EXPECT_EQ(morph_.Stored(), before);
}

TEST(MarkerViewMemory, AStepOfADragAsksForNone) {
    LibraryMemory memory;
    MorphPane morph(kQrsPane);
    const int column = morph.ColumnOf(300);
    morph.Mouse(WM_LBUTTONDOWN, column);
    morph.Mouse(WM_MOUSEMOVE, column - 1);
    Pump();
    memory.Limit(0);
    for (int i = 0; i < 50; ++i) {
        morph.IsMarkerAt(column - i);
        morph.Mouse(WM_MOUSEMOVE, column - i);
        Pump();
    }
    EXPECT_FALSE(memory.RanOut());
    memory.Limit(-1);
    EXPECT_LT(morph.Stored()[0], 300);
}

// Tab goes from marker to marker, past those that are absent, and out behind the last; an arrow moves the one that it is at.
TEST_F(MarkerView, IsWorkedByTheKeyboardAlone) {
    morph_.Block().pOff = 0;
    morph_.SelectLead(KX_LEAD_V5);
    SetFocus(morph_.View());
    const auto wantsTab = [&](int modifier) {
        BYTE keys[256] = {};
        keys[VK_SHIFT] = static_cast<BYTE>(modifier == VK_SHIFT ? 0x80 : 0);
        SetKeyboardState(keys);
        const LRESULT code = Send(WM_GETDLGCODE);
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
        return (code & DLGC_WANTTAB) != 0;
    };
    EXPECT_FALSE(wantsTab(VK_SHIFT));
    Key(VK_TAB);
    Values expected = morph_.Stored();
    expected[0] = 0;  // a P wave without its end is none
    for (const std::size_t slot : {2u, 3u, 4u}) {
        for (const auto& [key, modifier, step] : {std::tuple{VK_LEFT, 0, -1}, {VK_RIGHT, VK_CONTROL, 10}, {VK_LEFT, VK_CONTROL, -10}}) {
            Key(static_cast<UINT>(key), modifier);
            Pump();
            expected[slot] += step;
            EXPECT_EQ(morph_.Stored(), expected) << slot;
            EXPECT_THAT(Readout(), testing::StartsWith(std::to_string(expected[slot]) + " ms\r\n"));
        }
        EXPECT_EQ(wantsTab(0), slot != 4) << "behind the last marker Tab is the dialog's";
        Key(VK_TAB);
    }
    EXPECT_TRUE(wantsTab(VK_SHIFT));
}

TEST_F(MarkerView, TheReadoutTellsWhatIsUnderThePointer) {
    for (std::int16_t i = 0; i < 1000; ++i) {
        morph_.record->Episode(0)->Samples(KX_LEAD_AVR)[i] = static_cast<std::int16_t>(i * 3);
    }
    SetLead({}, KX_LEAD_AVR);
    morph_.IsMarkerAt(morph_.ColumnOf(600));
    int ms = 0;
    int microvolts = 0;
    double slope = 0;
    ASSERT_EQ(std::sscanf(Readout().c_str(), "%d ms\r\n%d uV\r\n%lf uV/ms", &ms, &microvolts, &slope), 3) << Readout();
    EXPECT_NEAR(ms, 600, 6);
    EXPECT_EQ(microvolts, ms * 3) << "as it is, not upside down";
    EXPECT_EQ(slope, 3);
    Send(MV_SETLEAD, 99, 0);
    morph_.IsMarkerAt(morph_.ColumnOf(600));
    EXPECT_EQ(Readout(), "...") << "a missing lead";
}

TEST_F(MarkerView, AnySizeIsPainted) {
    for (const SIZE& size : {SIZE{0, 0}, {1, 1}, {18, 18}, {40, 3}, {3, 400}, {4000, 3000}, {400, 300}}) {
        SetWindowPos(morph_.View(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        UpdateWindow(morph_.View());
        size.cx < 1000 ? UseEverything() : void(Send(MV_SETGAIN, 0, 1000));
        EXPECT_THAT(ViewsReports(), testing::IsEmpty()) << size.cx << 'x' << size.cy;
    }
}

TEST_F(MarkerView, AnyBeatIsShown) {
    const struct {
        std::uint32_t samples, rate, resolution;
        std::int16_t value;
    } rows[] = {{1, 500, 1000, 100},
                {2, 500, 1000, 100},
                {5, 500, 1000, 100},
                {60000, 500, 1000, 5},
                {1200, 32000, 1000, 5},
                {600, 500, 1, -32768},
                {600, 500, 4000000000u, 32767},
                {600, 4000000000u, 1000, 1},
                {600, 500, 1000, -32768}};
    for (const auto& row : rows) {
        EpisodeRecord beat(kTwelveLeadConfiguration, KX_STANDARD_LEADS, row.samples, row.rate, row.resolution);
        ASSERT_NE(beat.Samples(KX_LEAD_II), nullptr) << row.samples;
        std::fill_n(beat.samples, KX_STANDARD_LEADS * row.samples, row.value);
        SetBeat(&beat);
        SetLead({1, 2, 500, 100000, -7});
        Send(MV_SHOWDERIVATIVE, 0, 1);
        Send(MV_SETHIGHCUT, 0, 100000);
        Send(MV_SETBANDPASS, 0, 1);
        Send(MV_SETMAINS, 0, 50);
        UseEverything();
        // What a host may do to its record meanwhile.
        beat.sampleRate = 0;
        beat.resolutionNv = 0;
        UseEverything();
        beat.storedLeads = 0;
        UseEverything();
        SetBeat(nullptr);
        EXPECT_THAT(ViewsReports(), testing::IsEmpty()) << row.samples << ' ' << row.rate;
    }
}

// The field of a record grows while it is shown: no sample behind the host's block is read.
TEST_F(MarkerView, SamplesPastTheBlockAreNotRead) {
    ForeignRecord host(*morph_.record);
    KxEpisodeRecord& beat = host.Episode();
    SetBeat(&beat);
    for (const std::uint32_t lead : {std::uint32_t{KX_LEAD_I}, std::uint32_t{KX_LEAD_V6}}) {
        beat.samplesPerLead = 1000;
        SetLead({300, 400, 500, 700, 900}, lead);
        beat.samplesPerLead = 2000;
        UseEverything();
        SetLead({300, 400, 500, 700, 900}, lead);
        Send(MV_SETBANDPASS, 0, 1);
        UseEverything();
    }
    EXPECT_THAT(ViewsReports(), testing::ElementsAre("LOGOEMERROR \"analysis\" 258 \"Samples past the block\""));
    SetBeat(nullptr);
}

TEST_F(MarkerView, AnyMessageMayComeAtAnyTime) {
    constexpr UINT kMessages[] = {
        MV_SETGAIN,        MV_SETSPEED,    MV_SETHSCROLL,    MV_SETVOFFSET, MV_SETHIGHCUT, MV_SETLOWCUT, MV_SHOWMARKERS,
        MV_SHOWDERIVATIVE, MV_SETBANDPASS, MV_SETMAINS,      MV_ADDMARKER,  WM_HSCROLL,    WM_VSCROLL,   WM_LBUTTONDOWN,
        WM_LBUTTONUP,      WM_MOUSEMOVE,   WM_LBUTTONDBLCLK, WM_KEYDOWN,    WM_SETFOCUS,   WM_KILLFOCUS, WM_CAPTURECHANGED,
        WM_NCHITTEST,      WM_GETDLGCODE,  WM_SETCURSOR,     MV_SETLEAD,    MV_SETBEAT,    WM_PAINT,
    };
    constexpr UINT kKeys[] = {VK_LEFT, VK_RIGHT, VK_TAB, VK_ESCAPE};
    constexpr std::int32_t kValues[] = {INT32_MIN, -70000, -1, 0, 1, 2, 50, 100, 500, 1000, 20522, 0x00280028, 0x00100150, INT32_MAX};
    std::mt19937 random(7);
    const auto below = [&random](std::size_t end) { return static_cast<std::int32_t>(random() % end); };
    const auto value = [&] { return kValues[random() % std::size(kValues)]; };
    KxEpisodeRecord* const beat = morph_.record->Episode(0);
    for (int i = 0; i < 2500; ++i) {
        const UINT message = kMessages[random() % std::size(kMessages)];
        auto wParam = static_cast<WPARAM>(below(4) == 0 ? value() : below(12));
        auto lParam = static_cast<LPARAM>(value());
        std::int32_t positions[kMarkerSlots];
        std::generate(std::begin(positions), std::end(positions), [&] { return below(3) == 0 ? value() : below(1300); });
        if (message == MV_SETLEAD) {
            lParam = below(5) == 0 ? 0 : reinterpret_cast<LPARAM>(positions);
        } else if (message == MV_SETBEAT) {
            lParam = below(4) == 0 ? 0 : reinterpret_cast<LPARAM>(beat);
        } else if (message == WM_KEYDOWN) {
            wParam = kKeys[random() % std::size(kKeys)];
        } else if (message == WM_LBUTTONDOWN || message == WM_MOUSEMOVE) {
            lParam = MAKELPARAM(below(320), below(140));
        }
        Send(message, wParam, lParam);
        if (i % 64 == 0) {
            PumpTheViewAlone();
        }
    }
    ReleaseCapture();
    SetBeat(beat);
    Send(MV_SETGAIN, 0, 20);
    Send(MV_SETSPEED, 0, 50);
    Send(MV_SHOWMARKERS, 0, 1);
    SetLead({300, 400, 500, 700, 900});
    EXPECT_TRUE(morph_.IsMarkerAtMs(300)) << "it works as before";
}

}  // namespace
}  // namespace kx::test
