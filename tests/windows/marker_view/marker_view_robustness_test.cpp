// Any size, any beat, any message in any order.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "tests/windows/marker_view/view_rig.h"

namespace kx::test {
namespace {

class MarkerViewRobustness : public ViewRig {
  protected:
    void UseEverything() {
        for (const LPARAM speed : {25, 50, 1000}) {
            Send(MV_SETSPEED, 0, speed);
            for (int x = -10; x < Client().cx + 20; x += 37) {
                HitTest(x, 5);
                Drag(x, 5, x + 11);
            }
            Key(VK_TAB);
            Key(VK_RIGHT);
            Key(VK_LEFT, VK_CONTROL);
            Send(WM_HSCROLL, SB_PAGERIGHT);
            Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000));
        }
        PumpMessages();
    }
};

TEST_F(MarkerViewRobustness, AnySizeIsPainted) {
    MakeView();
    Show({300, 400, 500, 700, 900});
    const SIZE sizes[] = {{0, 0}, {1, 1}, {18, 18}, {40, 3}, {3, 400}, {4000, 3000}, {400, 300}};
    for (const SIZE& size : sizes) {
        SetWindowPos(view_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        UpdateWindow(view_);
        if (size.cx < 1000) {
            UseEverything();
        } else {
            Send(MV_SETGAIN, 0, 1000);
        }
        EXPECT_TRUE(reports_.Take().empty()) << size.cx << 'x' << size.cy;
    }
}

TEST_F(MarkerViewRobustness, AnyBeatIsShown) {
    MakeView();
    const struct {
        std::uint32_t samples, rate, resolution;
        std::int16_t value;
    } rows[] = {
        {1, 500, 1000, 100},         {2, 500, 1000, 100},      {3, 500, 1000, 100},
        {4, 500, 1000, 100},         {5, 500, 1000, 100},      {60000, 500, 1000, 5},
        {1200, 32000, 1000, 5},      {600, 500, 1, -32768},    {600, 500, 4000000000u, 32767},
        {600, 4000000000u, 1000, 1}, {600, 500, 1000, -32768},
    };
    for (const auto& row : rows) {
        EpisodeRecord beat(kTwelveLeadConfiguration, KX_STANDARD_LEADS, row.samples, row.rate, row.resolution);
        ASSERT_NE(beat.Samples(KX_LEAD_II), nullptr) << row.samples;
        for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            std::fill_n(beat.Samples(lead), row.samples, row.value);
        }
        Send(MV_SETBEAT, 0, reinterpret_cast<LPARAM>(static_cast<KxEpisodeRecord*>(&beat)));
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
        Send(MV_SETBEAT, 0, 0);
        EXPECT_TRUE(reports_.Take().empty()) << row.samples << ' ' << row.rate;
    }
}

// The field of a record grows while it is shown: no sample behind the host's block is read.
TEST_F(MarkerViewRobustness, SamplesPastTheBlockAreNotRead) {
    constexpr std::size_t kPage = 0x1000;
    const std::size_t bytes = sizeof(std::int16_t) * KX_STANDARD_LEADS * kSamples;
    const std::size_t pages = (bytes + kPage - 1) / kPage * kPage;
    auto* const memory = static_cast<std::uint8_t*>(VirtualAlloc(nullptr, pages + kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    DWORD before = 0;
    ASSERT_TRUE(VirtualProtect(memory + pages, kPage, PAGE_NOACCESS, &before));
    MakeView();
    KxEpisodeRecord host = beat_;
    host.samples = reinterpret_cast<std::int16_t*>(memory + pages - bytes);
    std::copy_n(beat_.samples, KX_STANDARD_LEADS * kSamples, host.samples);
    Send(MV_SETBEAT, 0, reinterpret_cast<LPARAM>(&host));
    for (const std::uint32_t lead : {std::uint32_t{KX_LEAD_I}, std::uint32_t{KX_LEAD_V6}}) {
        host.samplesPerLead = kSamples;
        SetLead({300, 400, 500, 700, 900}, lead);
        host.samplesPerLead = 2 * kSamples;
        UseEverything();
        SetLead({300, 400, 500, 700, 900}, lead);
        Send(MV_SETBANDPASS, 0, 1);
        UseEverything();
    }
    EXPECT_EQ(reports_.Take(), std::vector<std::string>{"oem analysis 258 Samples past the block"});
    Send(MV_SETBEAT);
    VirtualFree(memory, 0, MEM_RELEASE);
}

TEST_F(MarkerViewRobustness, AnyMessageMayComeAtAnyTime) {
    constexpr UINT kMessages[] = {
        MV_SETGAIN,        MV_SETSPEED,    MV_SETHSCROLL,    MV_SETVOFFSET, MV_SETHIGHCUT, MV_SETLOWCUT, MV_SHOWMARKERS,
        MV_SHOWDERIVATIVE, MV_SETBANDPASS, MV_SETMAINS,      MV_ADDMARKER,  WM_HSCROLL,    WM_VSCROLL,   WM_LBUTTONDOWN,
        WM_LBUTTONUP,      WM_MOUSEMOVE,   WM_LBUTTONDBLCLK, WM_KEYDOWN,    WM_SETFOCUS,   WM_KILLFOCUS, WM_CAPTURECHANGED,
        WM_NCHITTEST,      WM_GETDLGCODE,  WM_SETCURSOR,     MV_SETLEAD,    MV_SETBEAT,    WM_PAINT,
    };
    constexpr std::int32_t kValues[] = {INT32_MIN, -70000, -1, 0, 1, 2, 50, 100, 500, 1000, 20522, 0x00280028, 0x00100150, INT32_MAX};
    std::mt19937 random(7);
    MakeView(3, 300, 120);
    for (int i = 0; i < 2500; ++i) {
        const UINT message = kMessages[random() % std::size(kMessages)];
        auto wParam =
            static_cast<WPARAM>(random() % 4 == 0 ? kValues[random() % std::size(kValues)] : static_cast<std::int32_t>(random() % 12));
        auto lParam = static_cast<LPARAM>(kValues[random() % std::size(kValues)]);
        std::int32_t positions[kx::kMarkerSlots];
        for (std::int32_t& position : positions) {
            position = random() % 3 == 0 ? kValues[random() % std::size(kValues)] : static_cast<std::int32_t>(random() % 1300);
        }
        if (message == MV_SETLEAD) {
            lParam = random() % 5 == 0 ? 0 : reinterpret_cast<LPARAM>(positions);
        } else if (message == MV_SETBEAT) {
            lParam = random() % 4 == 0 ? 0 : reinterpret_cast<LPARAM>(static_cast<KxEpisodeRecord*>(&beat_));
        } else if (message == WM_KEYDOWN) {
            constexpr UINT kKeys[] = {VK_LEFT, VK_RIGHT, VK_TAB, VK_ESCAPE};
            wParam = kKeys[random() % std::size(kKeys)];
        } else if (message == WM_LBUTTONDOWN || message == WM_MOUSEMOVE) {
            lParam = MAKELPARAM(random() % 320, random() % 140);
        }
        Send(message, wParam, lParam);
        if (i % 64 == 0) {
            PumpMessages();
        }
    }
    ReleaseCapture();
    Send(MV_SETGAIN, 0, 20);
    Send(MV_SETSPEED, 0, 50);
    Send(MV_SHOWMARKERS, 0, 1);
    Show({300, 400, 500, 700, 900});
    EXPECT_TRUE(MarkerStandsAt(ColumnOfMs(300))) << "it works as before";
}

TEST_F(MarkerViewRobustness, AnOwnerThatIsGoneIsNotCalled) {
    MakeView();
    Show({300, 400, 500, 700, 900});
    {
        OwnerWindow gone;
        ASSERT_TRUE(gone.Create("KxMarkerViewOwner", "", GetModuleHandleA(nullptr), &gone, WS_POPUP, 0, 0, 0, 10, 10));
        Send(MV_ATTACHOWNER, 0, reinterpret_cast<LPARAM>(static_cast<Window*>(&gone)));
        gone.Destroy();
    }
    UseEverything();
    EXPECT_EQ(TakePosted().size(), 0u);
}

}  // namespace
}  // namespace kx::test
