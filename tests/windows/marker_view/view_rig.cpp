#include "tests/windows/marker_view/view_rig.h"

#include <algorithm>
#include <cmath>

#include "dialogs/marker_view/analysis.h"

namespace kx::test {

namespace {

constexpr char kOwnerClass[] = "KxMarkerViewOwner";
constexpr UINT kViewId = 31283;

class OwnerClass final : public WindowClass {
  public:
    explicit OwnerClass(const LibraryModule& library) : WindowClass(&library, kOwnerClass, 0, 0, nullptr) {}
};

// As the library's, with a reporter of the test's.
class ViewClass final : public WindowClass {
  public:
    ViewClass(const LibraryModule& library, Reporter& reports) : WindowClass(&library, "MarkerView", 0, 0, nullptr), reports_(&reports) {}
    LRESULT CreateWindowObject(std::uint32_t controlId, HWND window) override {
        return MarkerViewControl::MakeFor(window, controlId, *Library(), *reports_);
    }

  private:
    Reporter* reports_;
};

}  // namespace

LRESULT OwnerWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == MVN_READOUT) {
        readout = reinterpret_cast<const char*>(lParam);
        return 1;
    }
    if (message >= MVN_MARKERMOVED && message <= MVN_REDO) {
        posted.push_back({message, wParam, lParam});
        return 1;
    }
    return Window::WindowProc(message, wParam, lParam);
}

void FillBeat(EpisodeRecord& beat) {
    for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        std::int16_t* samples = beat.Samples(lead);
        for (std::uint32_t i = 0; samples != nullptr && i < beat.SamplesPerLead(); ++i) {
            const double t = static_cast<double>(i) / beat.SamplesPerLead();
            const double wave = std::exp(-std::pow((t - 0.5) / 0.02, 2));
            samples[i] = static_cast<std::int16_t>(wave * 1000 * (1 + lead * 0.1));
        }
    }
}

ViewRig::ViewRig()
    : library_(GetModuleHandleA(nullptr)),
      ownerClass_(std::make_unique<OwnerClass>(library_)),
      viewClass_(std::make_unique<ViewClass>(library_, reports_)),
      beat_(kTwelveLeadConfiguration, KX_STANDARD_LEADS, kSamples, kRate, 1000) {
    FillBeat(beat_);
    SetCursorPos(1000, 700);
}

ViewRig::~ViewRig() { owner_.Destroy(); }

void ViewRig::MakeView(int markers, int width, int height) {
    ASSERT_TRUE(owner_.Create(kOwnerClass, "", GetModuleHandleA(nullptr), &owner_, WS_POPUP, 0, 0, 0, width + 60, height + 60));
    // Without activation, which a screen without window manager takes its time for.
    ShowWindow(owner_.Handle(), SW_SHOWNA);
    view_ = CreateWindowExA(0, "MarkerView", "", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL, 10, 10,
                            width + GetSystemMetrics(SM_CXVSCROLL), height + GetSystemMetrics(SM_CYHSCROLL), owner_.Handle(),
                            reinterpret_cast<HMENU>(UINT_PTR{kViewId}), GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(view_, nullptr);
    ASSERT_EQ(Send(MV_ATTACHOWNER, 0, reinterpret_cast<LPARAM>(static_cast<Window*>(&owner_))),
              reinterpret_cast<LRESULT>(Window::FromHandle(view_)));
    const LPARAM labels[] = {IDB_BADGE_P_ON, IDB_BADGE_P_OFF, IDB_BADGE_QRS_ON, IDB_BADGE_QRS_OFF, IDB_BADGE_T_OFF, IDB_BADGE_OFF_LEAD};
    for (int i = 0; i < markers; ++i) {
        ASSERT_EQ(Send(MV_ADDMARKER, 0, labels[i]), 1);
    }
}

void ViewRig::SetLead(const std::vector<std::int32_t>& positionsMs, std::uint32_t lead) {
    std::int32_t positions[kMarkerSlots] = {};
    std::copy(positionsMs.begin(), positionsMs.end(), positions);
    EXPECT_EQ(Send(MV_SETLEAD, lead, reinterpret_cast<LPARAM>(positions)), 1);
}

void ViewRig::Show(const std::vector<std::int32_t>& positionsMs, std::uint32_t lead) {
    EXPECT_EQ(Send(MV_SETBEAT, 0, reinterpret_cast<LPARAM>(static_cast<KxEpisodeRecord*>(&beat_))), 1);
    SetLead(positionsMs, lead);
}

void ViewRig::PumpMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
}

std::vector<Notification> ViewRig::TakePosted() {
    PumpMessages();
    return std::exchange(owner_.posted, {});
}

void ViewRig::Drag(int fromX, int fromY, int toX) {
    Mouse(WM_LBUTTONDOWN, fromX, fromY);
    Mouse(WM_MOUSEMOVE, toX, fromY);
    Mouse(WM_LBUTTONUP, toX, fromY, 0);
}

LRESULT ViewRig::HitTest(int x, int y) const {
    POINT point = {x, y};
    ClientToScreen(view_, &point);
    return Send(WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
}

void ViewRig::Key(UINT virtualKey, int modifier) const {
    BYTE keys[256] = {};
    if (modifier != 0) {
        keys[modifier] = 0x80;
    }
    SetKeyboardState(keys);
    Send(WM_KEYDOWN, virtualKey, 1);
    keys[modifier] = 0;
    SetKeyboardState(keys);
}

COLORREF ViewRig::Pixel(int x, int y) const {
    const WindowContext context(view_);
    return GetPixel(context.Handle(), x, y);
}

bool ViewRig::MarkerStandsAt(int x) const {
    constexpr COLORREF kBlack = RGB(0, 0, 0);
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    const COLORREF expected[] = {kBlack, kWhite, CLR_INVALID, kWhite, kBlack};
    const int height = static_cast<int>(Client().cy);
    for (const int y : {0, height / 5, height / 2}) {
        for (int i = 0; i < 5; ++i) {
            if (expected[i] != CLR_INVALID && Pixel(x - 2 + i, y) != expected[i]) {
                return false;
            }
        }
    }
    return true;
}

std::vector<COLORREF> ViewRig::Picture() const {
    const SIZE client = Client();
    const WindowContext context(view_);
    std::vector<COLORREF> pixels;
    Bitmap bitmap;
    bitmap.CreateCompatible(context, client.cx, client.cy);
    {
        MemoryContext memory(context);
        memory.SelectBitmap(bitmap);
        memory.DeviceCopyFrom(0, 0, client.cx, client.cy, context, 0, 0);
    }
    pixels.resize(static_cast<std::size_t>(client.cx) * static_cast<std::size_t>(client.cy));
    bitmap.GetBits(pixels.data(), static_cast<LONG>(pixels.size() * sizeof pixels[0]));
    return pixels;
}

SIZE ViewRig::Client() const {
    RECT client = {};
    GetClientRect(view_, &client);
    return {client.right, client.bottom};
}

// As the view lays a beat out that is narrower than its client area (speed 50, no scrolling).
int ViewRig::ColumnOfMs(std::int32_t ms) const {
    const WindowContext screen(view_);
    const int scale = 50 * 1000 / static_cast<int>(beat_.SampleRate()) * screen.WidthPixels() / screen.WidthMm();
    const int origin = (Client().cx - MulDiv(static_cast<int>(beat_.SamplesPerLead()), scale, 1000)) / 2;
    return MulDiv(MulDiv(ms, static_cast<int>(beat_.SampleRate()), 1000), scale, 1000) + origin;
}

}  // namespace kx::test
