// morph_dialog: building the pane, its toolbar and its size.
#include "dialogs/morphology/morph_dialog.h"

#include <algorithm>

#include "dialogs/dialog_library.h"
#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/morphology/pane_keys.h"
#include "dialogs/resources/morphology_ids.h"
#include "lib/windows/subclassed_control.h"

namespace kx {
namespace {

constexpr int kFirstLead = KX_LEAD_V6;
constexpr std::int32_t kFirstLowEdge = 10;  // thousandths of a Hz
constexpr std::int32_t kMainsOff = 0;
constexpr LONG kMarginUnits = 7;  // dialog units around the controls

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

// A wrapper of a control that the template made; false when it is missing.
bool AdoptBox(CheckBox*& box, Window* dialog, UINT id) {
    box = new CheckBox(dialog, id);
    return box->Handle() != nullptr;
}

bool AdoptEdit(std::unique_ptr<EditBox>& edit, Window* dialog, UINT id) {
    edit = std::make_unique<EditBox>(dialog, id);
    return edit->Handle() != nullptr;
}

}  // namespace

bool MarkerControls::Adopt(Window* dialog, const MarkerRow& row) {
    return AdoptEdit(edit_, dialog, row.edit) && AdoptBox(manual_, dialog, row.manualBox);
}

void MarkerControls::Release() {
    edit_.reset();
    ReleaseSubclassed(manual_);
}

void MarkerControls::Show(std::int32_t ms, bool manual) {
    edit_->ShowNumber(ms);
    manual_->SetChecked(manual);
}

MorphDialog::MorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         SystemServices* services, const MorphTable& table)
    : Dialog(library, parent, library.HelpFile(), services),
      table_(table),
      beat_(test->Episode(0)),
      inForce_{kFirstLead, table.gain, table.speed, kMainsOff, kFirstLowEdge, table.highEdge} {
    if (beat_ == nullptr) {
        Reports().LOGMEMORYERROR(table.reports.source, table.reports.noEpisodeLine);
        return;
    }
    engine_.emplace();
    CreateModeless(table.templateId, this);
}

bool MorphDialog::OnInitDialog() {
    try {
        if (Build()) {
            Refresh();
            Show();
            return true;
        }
    } catch (...) {
        // Reported below, as every other failure of this step.
    }
    Reports().LOGMEMORYERROR(table_.reports.source, table_.reports.initialisationLine);
    return false;
}

bool MorphDialog::Build() {
    HWND view = GetDlgItem(Handle(), IDC_MORPH_VIEW);
    view_ = reinterpret_cast<Window*>(
        SendMessageA(view, MV_ATTACHOWNER, 0, reinterpret_cast<LPARAM>(static_cast<Window*>(this))));
    if (view_ == nullptr) {
        return false;
    }
    WatchPane(Handle(), view);
    if (!AdoptControls() || !AddMarkers()) {
        return false;
    }
    Load(false);
    seen_ = ReadMarkers();
    seenBeat_ = SumOfBeat();
    ConfigureView();
    FillToolbar();

    RECT margin{0, 0, kMarginUnits, kMarginUnits};
    MapDialogRect(Handle(), &margin);
    viewMargin_ = {margin.right, margin.bottom};
    const RECT area = ViewArea();
    smallestView_ = {area.right - area.left, area.bottom - area.top};
    return true;
}

bool MorphDialog::AdoptControls() {
    for (std::size_t i = 0; i < kCombos; ++i) {
        combos_[i] = new ComboBox(*Library(), this, kComboRows[i].control);
        if (combos_[i]->Handle() == nullptr) {
            return false;
        }
    }
    for (std::size_t i = 0; i < kChecks; ++i) {
        if (!AdoptBox(checks_[i], this, kCheckRows[i].control)) {
            return false;
        }
    }
    if (!AdoptBox(reset_, this, IDC_MORPH_RESET)) {
        return false;
    }
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        if (!AdoptBox(waveBoxes_[i], this, table_.waveBoxes[i].box)) {
            return false;
        }
    }
    if (!AdoptEdit(readout_, this, IDC_MORPH_READOUT)) {
        return false;
    }
    for (std::size_t i = 0; i < kMeasurementRows; ++i) {
        if (!AdoptEdit(measurements_[i], this, table_.measurements[i].edit)) {
            return false;
        }
    }
    return true;
}

bool MorphDialog::AddMarkers() {
    for (const MarkerRow& row : table_.markers) {
        if (View(MV_ADDMARKER, row.label) == 0) {
            return false;
        }
    }
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        if (!markerControls_[slot].Adopt(this, table_.markers[slot])) {
            return false;
        }
        fields_[slot].Bind(static_cast<std::uint32_t>(slot), &markerControls_[slot]);
    }
    return true;
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

void MorphDialog::Release() {
    for (ComboBox*& combo : combos_) {
        ReleaseSubclassed(combo);
    }
    for (CheckBox*& check : checks_) {
        ReleaseSubclassed(check);
    }
    ReleaseSubclassed(reset_);
    for (CheckBox*& box : waveBoxes_) {
        ReleaseSubclassed(box);
    }
    for (MarkerControls& controls : markerControls_) {
        controls.Release();
    }
    for (auto& edit : measurements_) {
        edit.reset();
    }
    readout_.reset();
}

INT_PTR MorphDialog::DialogProc(UINT message, WPARAM wParam, LPARAM lParam) {
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

RECT MorphDialog::ViewArea() const {
    RECT area{};
    view_->GetWindowRect(area);
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// The view fills the pane to its margins. In a pane that is too small it keeps its first size, as the other
// controls do, and is cut off.
void MorphDialog::OnSize(UINT sizeType, int width, int height) {
    if (sizeType == SIZE_MINIMIZED || smallestView_.cx == 0) {
        return;
    }
    const RECT area = ViewArea();
    const int fillWidth = static_cast<int>(std::max(smallestView_.cx, width - viewMargin_.cx - area.left));
    const int fillHeight = static_cast<int>(std::max(smallestView_.cy, height - viewMargin_.cy - area.top));
    if (fillWidth != area.right - area.left || fillHeight != area.bottom - area.top) {
        view_->MoveTo(static_cast<int>(area.left), static_cast<int>(area.top), fillWidth, fillHeight);
    }
}

}  // namespace kx
