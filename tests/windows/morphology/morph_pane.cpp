#include "tests/windows/morphology/morph_pane.h"

#include <cstring>

namespace kx::test {
namespace {

// The first number from `low` to `high` that the condition holds for, when it holds for all behind that one; `high` when
// it holds for none before.
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

// Writes what the engine finds for the markers whose flag is clear.
void Find(std::span<const FiducialMarker> markers, std::uint16_t flags, KxLeadMeasurements& block, const KxLeadMeasurements& found) {
    for (const FiducialMarker& marker : markers) {
        if ((flags & marker.flag) == 0) {
            block.*marker.ms = found.*marker.ms;
        }
    }
}

}  // namespace

const MorphKind kGeneralPane{"General", true,   kGlobalMarkers, {31311, 31315, 31318, 31316, 31319}, {31243, 31244, 31245, 31246, 31247},
                             31308,     {33242}};
const MorphKind kQrsPane{"Qrs",
                         false,
                         LeadMarkersOf(Wave::kQrs),
                         {31248, 31249, 31252, 31253, 31255, 31316},
                         {31250, 31251, 31304, 31305, 31306, 31246},
                         31310,
                         {33248, 33247, 33246, 33244}};
const MorphKind kPPane{"P", false, LeadMarkersOf(Wave::kP), {31294, 31273, 31315}, {31295, 31276, 31244}, 31308, {33243, 33242}};
const MorphKind kTPane{"T", false, LeadMarkersOf(Wave::kT), {31269, 31270, 31319}, {31271, 31272, 31247}, 31307, {33289, 33249}};
const std::array<const MorphKind*, 4> kMorphPanes = {&kGeneralPane, &kQrsPane, &kPPane, &kTPane};

MorphPane::MorphPane(const MorphKind& paneKind, std::unique_ptr<TestRecord> test, Sibling engine)
    : kind(paneKind), record(std::move(test)), pane([&]() -> Pane {
          suite.Lay("kxanalyze.dll", engine);
          suite.On("UPDATEDETECTION", [this](auto) { return Measure(); });
          return Pane(KindOf(kind.name), host, *record);
      }()) {
    if (pane.Window() != nullptr) {
        SetWindowPos(pane, nullptr, 0, 0, 1000, 640, SWP_NOZORDER);
        pane.Choose(31240, 100);  // the whole beat in the view
        Pump();
    }
    suite.TakeReports();
}

std::uint32_t MorphPane::Measure() {
    measured = Set();
    if (refuses) {
        return 0;
    }
    KxMeasurementSet& set = Set();
    const auto figure = static_cast<std::uint16_t>(10000 + Calls());
    set.pDuration = set.prInterval = set.qrsDuration = set.qtInterval = set.qtc = set.qtcBazett = set.rrInterval = figure;
    for (int lead = 0; automatic != nullptr && lead < KX_MEASURED_LEADS; ++lead) {
        Find(kGlobalMarkers, set.leads[0].globalManualFlags, set.leads[lead], automatic->leads[lead]);
        Find(kLeadMarkers, set.leads[lead].markerFlags, set.leads[lead], automatic->leads[lead]);
    }
    return 1;
}

bool MorphPane::IsAsBefore(const KxMeasurementSet& before) { return std::memcmp(&before, &Set(), sizeof before) == 0; }

Values MorphPane::Stored(int lead) {
    Values values;
    for (const FiducialMarker& marker : kind.markers) {
        values.push_back(Block(lead).*marker.ms);
    }
    return values;
}

std::uint16_t& MorphPane::FlagWord(int lead) { return kind.isGlobal ? Block().globalManualFlags : Block(lead).markerFlags; }

Values MorphPane::Shown() const {
    Values values;
    for (const UINT edit : kind.edits) {
        values.push_back(Number(edit));
    }
    return values;
}

std::int32_t MorphPane::Chosen(UINT combo) const {
    const HWND box = pane.Item(combo);
    return static_cast<std::int32_t>(SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(SendMessageA(box, CB_GETCURSEL, 0, 0)), 0));
}

int MorphPane::Row() const {
    RECT client{};
    GetClientRect(View(), &client);
    return client.bottom / 2;
}

bool MorphPane::IsMarkerAt(int column) {
    POINT point{column, Row()};
    ClientToScreen(View(), &point);
    return SendMessageA(View(), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTCLIENT;
}

int MorphPane::MsAt(int column) {
    IsMarkerAt(column);
    const std::string readout = pane.Text(59023);
    return readout.rfind("...", 0) == 0 ? -1 : std::atoi(readout.c_str());
}

int MorphPane::ColumnOf(int ms) {
    RECT client{};
    GetClientRect(View(), &client);
    const int width = static_cast<int>(client.right);
    const int behind = Bisect(1, width - 2, [&](int column) { return MsAt(column) >= ms || (MsAt(column) < 0 && column > width / 2); });
    const int before = behind > 1 ? MsAt(behind - 1) : -1;
    const int here = MsAt(behind);
    return before >= 0 && (here < 0 || ms - before < here - ms) ? behind - 1 : behind;
}

int MorphPane::Drag(int from, int to, int steps) {
    const int start = ColumnOf(from);
    const int end = ColumnOf(to);
    const int left = MsAt(end);
    if (!IsMarkerAt(start)) {
        return -1;
    }
    const auto post = [this](UINT message, WPARAM keys, int column) { PostMessageA(View(), message, keys, MAKELPARAM(column, Row())); };
    post(WM_LBUTTONDOWN, MK_LBUTTON, start);
    for (int step = 1; step <= steps; ++step) {
        post(WM_MOUSEMOVE, MK_LBUTTON, start + (end - start) * step / steps);
    }
    post(WM_LBUTTONUP, 0, end);
    Pump();
    return left;
}

}  // namespace kx::test
