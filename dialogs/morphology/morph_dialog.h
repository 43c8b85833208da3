// morph_dialog: the frame of the four morphology dialogs, one median beat in a marker view, the measurements
// that follow from its markers, and the markers themselves, moved by hand.
//
// A moved marker travels: the view posts MVN_MARKERMOVED; the field takes the value; the dialog's rules limit
// it, store it in the record and make it manual; the analysis engine measures the beat again; everything
// shown is read from the record again. Notifications are posted and handled one after another, so none is
// handled within another.
//
// What is in force (the lead shown, gain, speed) is what the dialog has last told the view. A combo box that
// shows something else is one whose choice is going on, or was cancelled.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <optional>

#include "dialogs/morphology/morph_table.h"
#include "dialogs/morphology/pane_keys.h"
#include "dialogs/morphology/rules/marker_history.h"
#include "dialogs/pane_layout.h"
#include "lib/dbclient/test_record.h"
#include "lib/modules/analysis_engine.h"
#include "lib/windows/check_box.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/dialog.h"
#include "lib/windows/edit_box.h"

namespace kx {

class DialogLibrary;

// A marker's edit and its "man." box.
class MarkerControls final : public MarkerDisplay {
  public:
    // Throws when one of the controls is missing.
    void Hold(Window* dialog, const MarkerRow& row);
    void Show(std::int32_t ms, bool manual) override;
    const Window& Edit() const { return *edit_; }

  private:
    std::unique_ptr<EditBox> edit_;
    std::unique_ptr<CheckBox> manual_;
};

// Thrown out of what a handler does when something that it has called has ended the pane.
struct PaneEnded {};

// Works on the first median beat of the record, in place; nothing is saved. A derived class is final and says
// nothing but its table.
class MorphDialog : public Pane, private Redetection {
  public:
    // All outlive the object.
    MorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services,
                const MorphTable& table);

    // A record without median beat gets no window.
    void Open() override;
    INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnInitDialog() override;
    INT_PTR OnDialogCommand(WPARAM wParam) override;
    void OnSize(UINT sizeType, int width, int height) override;
    // Enter and Esc are not for ending a pane.
    bool OnOK() override { return false; }
    bool OnCancel() override { return false; }

  private:
    enum Combo : std::size_t { kLead, kGain, kSpeed, kMains, kLowEdge, kHighEdge, kCombos };
    enum Check : std::size_t { kBandPass, kDerivative, kShowMarkers, kChecks };
    // By which the user holds a marker.
    enum class Step { kNone, kKeys, kDrag };
    // How the last change's re-measurement went.
    enum class Measured { kNotAsked, kFailed, kDone };

    // ---- morph_dialog.cpp: building the pane
    void Build();
    void HoldControls();
    // A control that can have the focus.
    template <class Control, class... Arguments>
    void HoldWithKeys(std::unique_ptr<Control>& place, Arguments&&... arguments);
    void AddMarkers();
    void ConfigureView();
    void FillToolbar();
    LRESULT View(UINT message, LPARAM value) const { return SendMessageA(view_, message, 0, value); }
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnComboCommand(std::size_t combo, WORD notification);
    void Choose(std::size_t combo, std::int32_t code);
    void ShowInForce(std::size_t combo);

    // ---- morph_editing.cpp: the markers
    // The lead shown; its block is the one edited, unless the markers are global.
    int Lead() const { return inForce_[kLead]; }
    int Block() const { return table_.isGlobal ? 0 : Lead(); }
    // Whether a lead is selected; without one nothing happens.
    bool HasLead() const { return combos_[kLead]->GetCurSel() >= 0; }
    MarkerStore StoreOf(int block);
    SeenMarkers ReadMarkers() const;
    std::uint32_t SumOfBeat() const;
    void Load(bool keepAutomatic);
    void TakeStored(std::size_t slot);
    bool TakeChanges();
    bool TakeReplacedBeat();
    void ShowMarkers();
    void Refresh();
    void RefreshReset(bool anyManual);
    void Redetect() override;
    // Every module may dispatch messages while it works, and these may end the pane: out of the rules as
    // well, for the record may be gone with it.
    void LeaveIfEnded() const {
        if (HasEnded()) {
            throw PaneEnded();
        }
    }
    // Runs rules as one change of the markers by `source`. Rules: a function of a MarkerEdit&.
    template <class Rules>
    void Change(std::uint32_t source, Rules rules);
    void ApplyMarkers(std::uint32_t source);
    void OnMarkerMoved(UINT id, std::int32_t ms);
    void OnLeadChosen(int code);
    void OnWaveBox(std::size_t box);
    void OnReset();

    // ---- morph_steps.cpp: where one change begins and ends, and taking it back
    void BeginStep(bool byMouse);
    void EndStep();
    bool IsDragging() const { return step_ == Step::kDrag; }
    void TakePostedMoves();
    void StoreReturned();
    void Undo();
    void Redo();
    void Restore(const MarkerSnapshot& snapshot);
    void DropHistory();

    const MorphTable& table_;
    EpisodeRecord* beat_;  // the host's
    // None without a beat, and after a failure until the next use. Shared with the call that is running,
    // which the module may interrupt with another one by dispatching messages.
    std::shared_ptr<AnalysisEngine> engine_;

    HWND view_ = nullptr;  // whose object goes with it
    std::array<std::unique_ptr<ComboBox>, kCombos> combos_;
    std::array<std::unique_ptr<CheckBox>, kChecks> checks_;
    std::unique_ptr<CheckBox> reset_;
    std::array<std::unique_ptr<CheckBox>, kMostWaveBoxes> waveBoxes_;
    std::unique_ptr<EditBox> readout_;
    std::array<std::unique_ptr<EditBox>, kMeasurementRows> measurements_;
    std::array<MarkerControls, kMostMarkers> markerControls_;
    std::array<MarkerField, kMostMarkers> fields_;

    std::array<std::int32_t, kCombos> inForce_;        // codes, as the view has them
    std::array<bool, kMostWaveBoxes> boxesInForce_{};  // checked: the wave is absent

    MarkerHistory history_;
    SeenMarkers seen_;
    std::uint32_t seenBeat_ = 0;  // sum of the samples
    Step step_ = Step::kNone;
    std::uint32_t returned_ = 0;  // notification of a marker that the step has moved onto its automatic value
    Measured measured_ = Measured::kNotAsked;
    std::optional<PaneLayout> layout_;
    bool built_ = false;  // before that, messages mean nothing
    PaneKeys keys_;
};

}  // namespace kx
