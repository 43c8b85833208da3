// morph_dialog: building the pane, its toolbar and its size.
#include "dialogs/morphology/morph_dialog.h"

#include <iterator>
#include <utility>

#include "dialogs/dialog_library.h"
#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/resources/morphology_ids.h"
#include "lib/windows/held_control.h"

namespace kx {
namespace {

static_assert(kFirstMarkerNotification == MVN_MARKERMOVED && kMostMarkers == kMarkerSlots);

constexpr int kFirstLead = KX_LEAD_V6;
constexpr std::int32_t kFirstLowEdge = 10;  // thousandths of a Hz
constexpr std::int32_t kMainsOff = 0;
constexpr GrowthRow kGrowth[] = {{IDC_MORPH_VIEW, 0, 0, 100, 100}};

// In the order of MorphDialog::Combo. The lead has no message of its own.
struct ComboRow {
    UINT control;
    UINT pickList;
    UINT message;
    bool hidden;
};
constexpr ComboRow kComboRows[] = {
    {IDC_MORPH_LEAD, IDS_LEAD_PICK_LIST, 0, false},
    {IDC_MORPH_GAIN, IDS_GAIN_PICK_LIST, MV_SETGAIN, false},
    {IDC_MORPH_SPEED, IDS_SPEED_PICK_LIST, MV_SETSPEED, false},
    {IDC_MORPH_MAINS, IDS_MAINS_PICK_LIST, MV_SETMAINS, true},
    {IDC_MORPH_LOW_EDGE, IDS_FILTER_EDGE_PICK_LIST, MV_SETLOWCUT, true},
    {IDC_MORPH_HIGH_EDGE, IDS_FILTER_EDGE_PICK_LIST, MV_SETHIGHCUT, true},
};

// In the order of MorphDialog::Check.
struct CheckRow {
    UINT control;
    UINT message;
    bool checked;
    bool hidden;
};
constexpr CheckRow kCheckRows[] = {
    {IDC_MORPH_BAND_PASS, MV_SETBANDPASS, false, true},
    {IDC_MORPH_DERIVATIVE, MV_SHOWDERIVATIVE, false, true},
    {IDC_MORPH_SHOW_MARKERS, MV_SHOWMARKERS, true, false},
};

}  // namespace

void MarkerControls::Hold(Window* dialog, const MarkerRow& row) {
    kx::Hold(edit_, dialog, row.edit);
    kx::Hold(manual_, dialog, row.manualBox, kHeld);
}

void MarkerControls::Show(std::int32_t ms, bool manual) {
    edit_->ShowNumber(ms);
    manual_->SetChecked(manual);
}

MorphDialog::MorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         SystemServices* services, const MorphTable& table)
    : Pane(library, parent, library.HelpFile(), services),
      table_(table),
      beat_(test->Episode(0)),
      inForce_{kFirstLead, table.gain, table.speed, kMainsOff, kFirstLowEdge, table.highEdge} {}

void MorphDialog::Open() {
    if (beat_ != nullptr) {
        const HWND parent = ParentHandle();
        engine_ = std::make_shared<AnalysisEngine>();
        // A module that dispatches messages while it is loaded may have ended the host's window.
        if (IsWindow(parent) != FALSE) {
            CreateModeless(table_.templateId, this);
        }
    }
    if (Handle() == nullptr) {
        Reports().LOGMEMORYERROR(table_.reports.source, table_.reports.noEpisodeLine);
    }
}

bool MorphDialog::OnInitDialog() {
    try {
        Build();
        if (!HasEnded()) {
            built_ = true;
            Refresh();
            Show();
            return true;
        }
    } catch (...) {
        // Reported below.
    }
    if (!HasEnded()) {
        Reports().LOGMEMORYERROR(table_.reports.source, table_.reports.initialisationLine);
    }
    return false;
}

void MorphDialog::Build() {
    view_ = GetDlgItem(Handle(), IDC_MORPH_VIEW);
    HoldControls();
    AddMarkers();
    Load(false);
    seen_ = ReadMarkers();
    seenBeat_ = SumOfBeat();
    ConfigureView();
    FillToolbar();
    layout_.emplace(Handle(), kGrowth, std::size(kGrowth));
}

template <class Control, class... Arguments>
void MorphDialog::HoldWithKeys(std::unique_ptr<Control>& place, Arguments&&... arguments) {
    Hold(place, std::forward<Arguments>(arguments)...);
    keys_.Watch(*this, *place);
}

void MorphDialog::HoldControls() {
    if (View(MV_ATTACHOWNER, reinterpret_cast<LPARAM>(static_cast<Window*>(this))) == 0) {
        throw MissingControl();
    }
    for (std::size_t i = 0; i < kCombos; ++i) {
        HoldWithKeys(combos_[i], *Library(), this, kComboRows[i].control, kHeld);
    }
    for (std::size_t i = 0; i < kChecks; ++i) {
        HoldWithKeys(checks_[i], this, kCheckRows[i].control, kHeld);
    }
    HoldWithKeys(reset_, this, IDC_MORPH_RESET, kHeld);
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        HoldWithKeys(waveBoxes_[i], this, table_.waveBoxes[i].box, kHeld);
    }
    HoldWithKeys(readout_, this, IDC_MORPH_READOUT);
    for (std::size_t i = 0; i < kMeasurementRows; ++i) {
        HoldWithKeys(measurements_[i], this, table_.measurements[i].edit);
    }
}

void MorphDialog::AddMarkers() {
    for (const MarkerRow& row : table_.markers) {
        if (View(MV_ADDMARKER, row.label) == 0) {
            throw MissingControl();
        }
    }
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        markerControls_[slot].Hold(this, table_.markers[slot]);
        keys_.Watch(*this, markerControls_[slot].Edit());
        fields_[slot].Bind(static_cast<std::uint32_t>(slot), &markerControls_[slot]);
    }
}

void MorphDialog::ConfigureView() {
    View(MV_SETBEAT, reinterpret_cast<LPARAM>(static_cast<KxEpisodeRecord*>(beat_)));
    View(MV_SETGAIN, table_.gain);
    View(MV_SETSPEED, table_.speed);
    View(MV_SETMAINS, kMainsOff);
    View(MV_SETBANDPASS, 0);
    if (table_.hidesDerivative) {
        View(MV_SHOWDERIVATIVE, 0);
    }
    View(MV_SETLOWCUT, kFirstLowEdge);
    View(MV_SETHIGHCUT, table_.highEdge);
    View(MV_SETHSCROLL, table_.horizontalPosition);
    View(MV_SETVOFFSET, 0);
}

void MorphDialog::FillToolbar() {
    for (std::size_t i = 0; i < kCombos; ++i) {
        combos_[i]->FillPickList(kComboRows[i].pickList, inForce_[i]);
        if (kComboRows[i].hidden) {
            combos_[i]->Hide();
        }
    }
    for (std::size_t i = 0; i < kChecks; ++i) {
        checks_[i]->SetChecked(kCheckRows[i].checked);
        if (kCheckRows[i].hidden) {
            checks_[i]->Hide();
        }
    }
}

INT_PTR MorphDialog::DialogProc(UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return OnMessage(message, wParam, lParam);
    } catch (const PaneEnded&) {
        return 1;
    }
}

INT_PTR MorphDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!built_) {
        return Dialog::DialogProc(message, wParam, lParam);
    }
    if (message >= MVN_MARKERMOVED && message < MVN_MARKERMOVED + kMarkerSlots) {
        OnMarkerMoved(message, static_cast<std::int32_t>(wParam));
        return 1;
    }
    switch (message) {
        case MVN_READOUT:
            readout_->ShowText(reinterpret_cast<const char*>(lParam));
            return 1;
        case MVN_UNDO:
            Undo();
            return 1;
        case MVN_REDO:
            Redo();
            return 1;
        case MVN_STEPSLEFT:
            SetMsgResult((history_.UndoLead() ? 1 : 0) | (history_.RedoLead() ? 2 : 0));
            return 1;
        case MVN_STEPBEGINS:
            BeginStep(wParam != 0);
            return 1;
        case MVN_STEPENDS:
            EndStep();
            return 1;
        default:
            return Dialog::DialogProc(message, wParam, lParam);
    }
}

INT_PTR MorphDialog::OnDialogCommand(WPARAM wParam) {
    if (!built_) {
        return 0;
    }
    for (std::size_t i = 0; i < kCombos; ++i) {
        if (LOWORD(wParam) == kComboRows[i].control) {
            OnComboCommand(i, HIWORD(wParam));
            return 1;
        }
    }
    for (std::size_t i = 0; i < kChecks; ++i) {
        if (checks_[i]->IsClicked(wParam)) {
            View(kCheckRows[i].message, checks_[i]->IsChecked() ? 1 : 0);
            return 1;
        }
    }
    if (reset_->IsClicked(wParam)) {
        OnReset();
        return 1;
    }
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        if (waveBoxes_[i]->IsClicked(wParam)) {
            OnWaveBox(i);
            return 1;
        }
    }
    return Dialog::OnDialogCommand(wParam);
}

// A choice that the keyboard makes in the open list comes into force when the list is left with it. Left
// without, by the end of the selection or of the focus, the box shows again what is in force.
void MorphDialog::OnComboCommand(std::size_t combo, WORD notification) {
    switch (notification) {
        case CBN_SELENDOK:
            if (combos_[combo]->GetCurSel() >= 0) {
                Choose(combo, combos_[combo]->SelectedCode());
            }
            break;
        case CBN_SELENDCANCEL:
        case CBN_KILLFOCUS:
            ShowInForce(combo);
            break;
        default:
            break;
    }
}

void MorphDialog::Choose(std::size_t combo, std::int32_t code) {
    if (combo == kLead) {
        OnLeadChosen(code);
    } else {
        inForce_[combo] = code;
        View(kComboRows[combo].message, code);
    }
}

void MorphDialog::ShowInForce(std::size_t combo) {
    // Without a selection nothing is to happen until there is one.
    if (combos_[combo]->GetCurSel() >= 0) {
        combos_[combo]->SelectCode(inForce_[combo]);
    }
}

void MorphDialog::OnSize(UINT sizeType, int width, int height) {
    if (layout_ && sizeType != SIZE_MINIMIZED) {
        layout_->Place(width, height);
    }
}

}  // namespace kx
