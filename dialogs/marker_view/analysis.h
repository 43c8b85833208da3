// analysis: the marker view, one lead of a median beat on millimetre paper, with markers to be dragged.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/marker_view/trace/filtered_lead.h"
#include "dialogs/marker_view/trace/signal_filters.h"
#include "dialogs/marker_view/trace/view_geometry.h"
#include "lib/dbclient/episode_record.h"
#include "lib/modules/library_module.h"
#include "lib/pltgrid.h"
#include "lib/reporter.h"
#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"
#include "lib/windows/window.h"

namespace kx {

// The label of a marker, kept ready to be copied.
class ViewMarker {
  public:
    // Loads bitmap resource `id` of the module.
    ViewMarker(const ModuleInstance& module, std::uint32_t id);

    bool IsMade() const { return label_ && context_.Handle() != nullptr; }
    const LabelSize& Size() const { return size_; }
    const DeviceContext& Label() const { return context_; }

  private:
    Bitmap label_;
    MemoryContext context_;  // with the label selected
    LabelSize size_;
};

// The line of every marker of a view, kept ready to be copied: to fill a column of pixels costs the system
// several times as much.
class MarkerLine {
  public:
    // Makes it for views so many pixels high; one that has this height is kept. False: there is no memory.
    bool Make(const DeviceContext& like, std::int32_t height);
    // Left and right of the column, which shows what is beneath.
    void Draw(DeviceContext& target, std::int32_t column) const;

  private:
    Bitmap bitmap_;
    std::unique_ptr<MemoryContext> context_;  // with the bitmap selected
    std::int32_t height_ = 0;
};

// Belongs to its window, which a dialog template creates by the class "MarkerView", and deletes itself with
// it. Driven by the messages of marker_view_messages.h in any order; it reads the beat and never changes it.
// The owner keeps the beat alive while it is set.
//
// Grid and traces are drawn once after a change of the settings, into the back buffer. A repaint copies from
// it and draws the markers, so that a drag allocates nothing, filters nothing and reads no file.
//
// With the focus, which a press on a marker gives: Left and Right move the marker used last by one sample,
// with Ctrl by 10 ms; Tab and Shift+Tab go to the next and the previous marker, and beyond the last one to
// the next control; Ctrl+Z and Ctrl+Y tell the owner. While a marker is dragged no key does anything.
class MarkerViewControl final : public Window {
  public:
    // Makes the view of a window that is being created and attaches it: 0; or -1, reported, when there is no
    // memory. The library's module holds the labels; it and the reporter outlive the view.
    static LRESULT MakeFor(HWND window, std::uint32_t id, const LibraryModule& library, Reporter& reports);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint(PaintContext& context) override;
    void OnSize(UINT sizeType, int width, int height) override;
    void OnDestroy() override;
    bool OnKeyDown(UINT virtualKey, LPARAM keyData) override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnHScroll(int code, int position) override;
    void OnVScroll(int code, int position) override;
    void OnLButtonDown(UINT keys, int x, int y) override;
    void OnLButtonUp(UINT keys, int x, int y) override;
    void OnLButtonDblClk(UINT keys, int x, int y) override;
    void OnMouseMove(int x, int y, bool leftButtonDown) override;
    bool OnSetCursor(HWND window, UINT hitTest) override;
    LRESULT OnNcHitTest(LRESULT defaultResult, int x, int y) override;
    bool OnGetDlgCode(LRESULT& code) override;

  private:
    static constexpr std::size_t kNoMarker = kMarkerSlots;

    MarkerViewControl(HWND window, std::uint32_t id, const LibraryModule& library, Reporter& reports);
    ~MarkerViewControl() = default;  // the window's end is the object's

    // Messages (analysis.cpp).
    bool TakeSetting(UINT message, std::int32_t value);
    LRESULT SetBeat(const KxEpisodeRecord* beat);
    LRESULT SetLead(std::uint32_t lead, const std::int32_t* positionsMs);
    LRESULT AddMarker(std::uint32_t bitmapId);
    LRESULT AttachOwner(const Window* owner);
    void DiscardBackBuffer();
    void Rebuild();
    BeatMeasure Measure() const;
    std::uint32_t SumOfSamples() const;
    bool ShowsTheBeat() const;
    const ViewGeometry& Geometry();

    // Painting (analysis_paint.cpp, analysis_traces.cpp).
    bool RebuildBackBuffer(const DeviceContext& target);
    bool RenderGrid(const DeviceContext& target);
    void DrawTraces(DeviceContext& target);
    void DrawBeat(DeviceContext& target);
    void ReportMissingSamples();
    template <typename Height>
    void DrawTrace(DeviceContext& target, COLORREF colour, Height&& height);
    void ShowScrollBars();
    void PaintArea(DeviceContext& target, const RECT& area);
    bool CopyPicture(DeviceContext& target, const RECT& area);
    void DrawMarkers(DeviceContext& target, const RECT& area, std::size_t except);
    void DrawMarker(DeviceContext& target, std::size_t slot) const;
    bool StandsIn(std::size_t slot, const RECT& area) const;
    void ShowMoved(std::size_t slot, std::int32_t before);
    void InvalidateMarker(std::size_t slot, std::int32_t position);
    void HoldPointerOnMarker();

    // Mouse and keys (analysis_input.cpp).
    bool IsPresent(std::size_t slot) const;
    std::size_t MarkerAt(int x, int y);
    void MoveMarker(std::size_t slot, std::int32_t sample);
    void BeginStep(bool byMouse);
    void EndStep();
    void EndDrag();
    void EndKeyStep();
    bool OnArrow(UINT virtualKey, bool ctrl, bool repeated);
    void StepMarker(std::int32_t samples);
    std::size_t NeighbourOf(std::size_t slot, bool forward) const;
    void SelectMarker(std::size_t slot);
    void ShowSample(std::int32_t sample);
    void SendReadout(std::int32_t sample);
    void UpdateReadout(int x);

    const LibraryModule* library_;
    Reporter* reports_;
    // The owner's window and not its object: while a dialog goes, its object may be gone before its controls.
    HWND owner_ = nullptr;
    const EpisodeRecord* beat_ = nullptr;
    bool missingSamplesReported_ = false;  // of this beat

    std::unique_ptr<PlotGrid> grid_;
    std::unique_ptr<MemoryContext> surface_;  // the back buffer, with the grid's bitmap selected
    MarkerLine markerLine_;
    bool backBufferValid_ = false;
    // Asked once for a size of the view: asking the system costs as much as half the picture.
    std::optional<DeviceMeasure> device_;
    ViewGeometry geometry_;
    BeatMeasure measure_;         // that the geometry is made for
    std::uint32_t drawnSum_ = 0;  // of the samples in the back buffer
    bool geometryValid_ = false;
    std::optional<ScrollBarState> horizontalShown_;  // what the bars were last set to
    std::optional<ScrollBarState> verticalShown_;
    std::vector<POINT> points_;  // of the trace being drawn; kept for the next one

    ViewSettings settings_;
    SignalSettings signal_;
    std::uint32_t lead_ = KX_LEAD_II;
    bool inverted_ = false;
    bool derivativeShown_ = false;
    bool markersShown_ = true;
    std::unique_ptr<DerivativeTrace> derivative_;  // of the trace painted last

    std::size_t markerCount_ = 0;
    std::array<std::unique_ptr<ViewMarker>, kMarkerSlots> markers_;
    std::array<std::int32_t, kMarkerSlots> positions_ = {};  // samples; 0 = absent
    std::int32_t markerRate_ = 0;  // the beat's sampling rate when the positions were last set
    std::size_t dragged_ = kNoMarker;
    bool keyStep_ = false;             // an arrow key is down and has begun a change
    std::size_t current_ = kNoMarker;  // the marker used last
    bool focused_ = false;

    HCURSOR sizeCursor_;
    HCURSOR crossCursor_;
    char readout_[kReadoutSize] = {};
};

}  // namespace kx
