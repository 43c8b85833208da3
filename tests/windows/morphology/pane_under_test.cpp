#include "tests/windows/morphology/pane_under_test.h"

#include <cmath>
#include <cstdlib>

namespace kx::test {
namespace {

using Lead = KxLeadMeasurements;

std::string ProgramFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text = path;
    return text.substr(0, text.find_last_of('\\'));
}

// Lays the kxanalyze.dll that the library will find beside the program.
void Lay(Engine engine) {
    const std::string folder = ProgramFolder();
    const std::string laid = folder + "\\kxanalyze.dll";
    DeleteFileA(laid.c_str());
    if (engine != Engine::kMissing) {
        const char* from = engine == Engine::kSpy ? "\\kxanalyze_spy.dll" : "\\..\\..\\bin\\kxanalyze.dll";
        EXPECT_TRUE(CopyFileA((folder + from).c_str(), laid.c_str(), FALSE));
    }
}

template <class Function>
void Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// A raised cosine from `on` to `off` (ms), `microvolts` in its middle.
struct Deflection {
    double on;
    double off;
    double microvolts;
};
constexpr Deflection kWaves[] = {{150, 250, 150}, {350, 374, -150}, {374, 414, 1200}, {414, 450, -300}, {560, 750, 350}};

double Height(const Deflection& wave, double ms) {
    constexpr double kTurn = 6.283185307179586;
    return ms < wave.on || ms > wave.off ? 0 : wave.microvolts / 2 * (1 - std::cos(kTurn * (ms - wave.on) / (wave.off - wave.on)));
}

// One for the program: to load and start it takes longer than a test.
LibraryUnderTest& Library() {
    static LibraryUnderTest library(SystemModule::kCurrent);
    static const bool started = [] {
        library->start();
        return true;
    }();
    EXPECT_TRUE(started);
    return library;
}

// The first number from `low` to `high` that the condition holds for, when it holds for all behind that one;
// `high` when it holds for none before.
template <class Condition>
int Bisect(int low, int high, Condition&& condition) {
    while (low < high) {
        const int middle = (low + high) / 2;
        if (condition(middle)) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return low;
}

constexpr int kHostWidth = 1000;
constexpr int kHostHeight = 640;

// One for the program: without a window manager the system waits seconds for a top-level window to go.
HWND HostWindow() {
    static const HWND window = CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, kHostWidth,
                                               kHostHeight, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    return window;
}

}  // namespace

const PaneKind kGeneralPane{"General",
                            "genmorph",
                            20540,
                            &Exports::generalMorph,
                            true,
                            {{"Pon", 31311, 31243, &Lead::pOn, 1},
                             {"Poff", 31315, 31244, &Lead::pOff, 2},
                             {"QRSon", 31318, 31245, &Lead::qrsOn, 4},
                             {"QRSoff", 31316, 31246, &Lead::qrsOff, 8},
                             {"Toff", 31319, 31247, &Lead::tOff, 16}},
                            31308};
const PaneKind kQrsPane{"Qrs",
                        "qrsmrph",
                        20544,
                        &Exports::qrsMorph,
                        false,
                        {{"Qon", 31248, 31250, &Lead::qOnMarker, 0x008},
                         {"Ron", 31249, 31251, &Lead::rOnMarker, 0x010},
                         {"Son", 31252, 31304, &Lead::sOnMarker, 0x020},
                         {"R'on", 31253, 31305, &Lead::rPrimeOnMarker, 0x040},
                         {"S'on", 31255, 31306, &Lead::sPrimeOnMarker, 0x080},
                         {"QRSoff", 31316, 31246, &Lead::qrsOffMarker, 0x100}},
                        31310};
const PaneKind kPPane{"P",
                      "pmorph",
                      20547,
                      &Exports::pMorph,
                      false,
                      {{"Pon", 31294, 31295, &Lead::pOnMarker, 0x001},
                       {"P'on", 31273, 31276, &Lead::pPrimeOnMarker, 0x002},
                       {"Poff", 31315, 31244, &Lead::pOffMarker, 0x004}},
                      31308};
const PaneKind kTPane{"T",
                      "tmorph",
                      20546,
                      &Exports::tMorph,
                      false,
                      {{"Ton", 31269, 31271, &Lead::tOnMarker, 0x200},
                       {"T'on", 31270, 31272, &Lead::tPrimeOnMarker, 0x400},
                       {"Toff", 31319, 31247, &Lead::tOffMarker, 0x800}},
                      31307};
const std::vector<const PaneKind*> kAllPanes = {&kGeneralPane, &kQrsPane, &kPPane, &kTPane};

std::unique_ptr<TestRecord> NewRecord() {
    auto test = std::make_unique<TestRecord>();
    EpisodeRecord* episode = test->AddEpisode(kTwelveLeadConfiguration, 12, 1000, 1000, 1000);
    for (std::uint32_t i = 0; i < 12 * 1000; ++i) {
        double microvolts = 0;
        for (const Deflection& wave : kWaves) {
            microvolts += Height(wave, i % 1000);
        }
        episode->samples[i] = static_cast<std::int16_t>(microvolts * (i / 1000 % 2 == 0 ? 1.0 : 0.8));
    }
    KxMeasurementSet& set = episode->measurements;
    set.measured = 1;
    set.pDuration = 110;
    set.prInterval = 160;
    set.qrsDuration = 98;
    set.qtInterval = 390;
    set.qtc = 411;
    set.qtcBazett = 423;
    set.rrInterval = 801;
    set.qrsAxis = -35;
    for (int i = 0; i < KX_MEASURED_LEADS; ++i) {
        Lead& lead = set.leads[i];
        const auto shift = static_cast<std::uint16_t>(i == KX_LEAD_V6 ? 0 : 10 + i);  // per lead
        const auto amplitude = static_cast<std::int16_t>(100 * i);
        const auto at = [shift](int ms) { return static_cast<std::uint16_t>(ms + shift); };
        lead.pOn = 150;
        lead.pOff = 250;
        lead.qrsOn = 350;
        lead.qrsOff = 450;
        lead.tOff = 750;
        lead.pOnMarker = at(200);
        lead.pPrimeOnMarker = at(260);
        lead.pOffMarker = at(330);
        lead.qOnMarker = at(300);
        lead.rOnMarker = at(340);
        lead.sOnMarker = at(380);
        lead.rPrimeOnMarker = at(420);
        lead.sPrimeOnMarker = at(460);
        lead.qrsOffMarker = at(520);
        lead.tOnMarker = at(500);
        lead.tPrimeOnMarker = at(560);
        lead.tOffMarker = at(630);
        lead.aP1 = static_cast<std::int16_t>(amplitude + 1);
        lead.aP2 = static_cast<std::int16_t>(-amplitude - 2);
        lead.aQ = static_cast<std::int16_t>(-amplitude - 3);
        lead.aR = static_cast<std::int16_t>(amplitude + 4);
        lead.aS = static_cast<std::int16_t>(-amplitude - 5);
        lead.aR1 = static_cast<std::int16_t>(amplitude + 6);
        lead.aS1 = static_cast<std::int16_t>(-amplitude - 7);
        lead.aT1 = static_cast<std::int16_t>(amplitude + 8);
        lead.aT2 = static_cast<std::int16_t>(-amplitude - 9);
    }
    return test;
}

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

PaneUnderTest::PaneUnderTest(const PaneKind& kind, Engine engine, std::unique_ptr<TestRecord> record)
    : library_(kx::test::Library()), record_(std::move(record)), kind_(kind) {
    Lay(engine);
    host_.handle = HostWindow();
    library_.TakeLog();
    handle_ = ((*library_).*kind.open)(&host_, record_.get());
    if (handle_ != 0) {
        pane_ = static_cast<HWND>(reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle_))->handle);
    }
    if (engine == Engine::kSpy) {
        engine_ = LoadLibraryA("kxanalyze.dll");
        Find(engine_, "SPY_CALLS", spy_.calls);
        Find(engine_, "SPY_INPUT", spy_.input);
        Find(engine_, "SPY_FAIL", spy_.fail);
        Find(engine_, "SPY_AUTOMATIC", spy_.automatic);
    }
    if (pane_ != nullptr) {
        SetWindowPos(pane_, nullptr, 0, 0, kHostWidth, kHostHeight, SWP_NOZORDER);
        Choose(31240, 100);  // the whole beat in the view
        Pump();
    }
}

PaneUnderTest::~PaneUnderTest() {
    DestroyWindow(pane_);
    if (engine_ != nullptr) {
        FreeLibrary(engine_);
    }
    Pump();
}

KxLeadMeasurements& PaneUnderTest::Block(int lead) { return Set().leads[kind_.isGlobal ? 0 : lead]; }

std::vector<int> PaneUnderTest::Stored(int lead) {
    std::vector<int> values;
    for (const MarkerUnderTest& marker : kind_.markers) {
        values.push_back(Block(lead).*marker.value);
    }
    return values;
}

std::uint16_t PaneUnderTest::Flags(int lead) { return kind_.isGlobal ? Block().globalManualFlags : Block(lead).markerFlags; }

std::vector<int> PaneUnderTest::Shown() const {
    std::vector<int> values;
    for (const MarkerUnderTest& marker : kind_.markers) {
        values.push_back(Number(marker.edit));
    }
    return values;
}

int PaneUnderTest::Number(UINT edit) const { return std::atoi(ItemText(pane_, edit).c_str()); }

bool PaneUnderTest::IsManualShown(std::size_t slot) const { return IsItemChecked(pane_, kind_.markers[slot].manualBox); }

void PaneUnderTest::Choose(UINT combo, LPARAM code) {
    const HWND box = Item(pane_, combo);
    const auto count = static_cast<int>(SendMessageA(box, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        if (SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(i), 0) == code) {
            SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(i), 0);
            SendMessageA(pane_, WM_COMMAND, MAKEWPARAM(combo, CBN_SELENDOK), reinterpret_cast<LPARAM>(box));
            return;
        }
    }
    ADD_FAILURE() << "combo " << combo << " has no code " << code;
}

void PaneUnderTest::LayEngine(Engine engine) { Lay(engine); }

void PaneUnderTest::Click(UINT button) {
    SendMessageA(Item(pane_, button), BM_CLICK, 0, 0);
    Pump();
}

void PaneUnderTest::PressControl(HWND focused, int letter) {
    SetFocus(focused);
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    SendMessageA(focused, WM_KEYDOWN, static_cast<WPARAM>(letter), 1);
    SendMessageA(focused, WM_CHAR, static_cast<WPARAM>(letter - '@'), 1);
    SendMessageA(focused, WM_KEYUP, static_cast<WPARAM>(letter), 1);
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
    Pump();
}

int PaneUnderTest::Row() const {
    RECT client{};
    GetClientRect(View(), &client);
    return client.bottom / 2;
}

bool PaneUnderTest::IsMarkerAt(int column) {
    POINT point{column, Row()};
    ClientToScreen(View(), &point);
    return SendMessageA(View(), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTCLIENT;
}

int PaneUnderTest::MsAt(int column) {
    IsMarkerAt(column);
    const std::string readout = ItemText(pane_, 59023);
    return readout.rfind("...", 0) == 0 ? -1 : std::atoi(readout.c_str());
}

int PaneUnderTest::ColumnOf(int ms) {
    RECT client{};
    GetClientRect(View(), &client);
    // The times grow with the columns. Beside the beat, which has the view's middle, there are none.
    const int last = static_cast<int>(client.right) - 2;
    const int middle = last / 2;
    const int first = Bisect(1, middle, [this](int column) { return MsAt(column) >= 0; });
    const int end = Bisect(middle, last, [this](int column) { return MsAt(column) < 0; });
    const int next = Bisect(first, end, [this, ms](int column) {
        const int at = MsAt(column);
        return at < 0 || at >= ms;
    });
    if (next > first && (MsAt(next) < 0 || ms - MsAt(next - 1) < MsAt(next) - ms)) {
        return next - 1;
    }
    return next;
}

int PaneUnderTest::Drag(int from, int to, int steps) {
    const int start = ColumnOf(from);
    const int end = ColumnOf(to);
    const int row = Row();
    const int left = MsAt(end);
    if (!IsMarkerAt(start)) {
        return -1;
    }
    PostMessageA(View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start, row));
    for (int step = 1; step <= steps; ++step) {
        PostMessageA(View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(start + (end - start) * step / steps, row));
    }
    PostMessageA(View(), WM_LBUTTONUP, 0, MAKELPARAM(end, row));
    Pump();
    return left;
}

}  // namespace kx::test
