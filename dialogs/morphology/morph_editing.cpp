// The morphology frame: the markers between the view, the record and the analysis engine.
#include <utility>

#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/morphology/morph_dialog.h"

namespace kx {

int MorphDialog::SelectedLead() const {
    const std::int32_t code = combos_[kLead]->SelectedCode();
    return code >= 0 && code < KX_MEASURED_LEADS ? code : -1;
}

MarkerStore MorphDialog::StoreOf(int lead) {
    return {table_.layout, beat_->measurements.leads[lead]};
}

// keepAutomatic: a manual value stands beside the automatic one that its field has known before, so that the
// "man." box compares with it; only the first marker starts anew.
void MorphDialog::Load(bool keepAutomatic) {
    const MarkerStore store = StoreOf(lead_);
    for (std::size_t slot = 0; slot < store.Count(); ++slot) {
        const std::int32_t ms = store.Value(slot);
        if (!store.IsManual(slot)) {
            fields_[slot].SetAutomatic(ms);
        } else if (keepAutomatic && slot != 0) {
            fields_[slot].SetCurrent(ms);
        } else {
            fields_[slot].SetManual(ms);
        }
    }
}

bool MorphDialog::IsStored(std::size_t slot) {
    return fields_[slot].Current() == StoreOf(lead_).Value(slot);
}

// A manual value stands beside the automatic one that its field knows.
void MorphDialog::TakeStored(std::size_t slot) {
    const MarkerStore store = StoreOf(lead_);
    if (store.IsManual(slot)) {
        fields_[slot].SetCurrent(store.Value(slot));
    } else {
        fields_[slot].SetAutomatic(store.Value(slot));
    }
}

// What another pane, or the host, has changed in the record since it was shown. Without it the next step
// would store the old values as manual ones. True: something had changed.
bool MorphDialog::TakeChanges() {
    bool changed = false;
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        if (!IsStored(slot)) {
            TakeStored(slot);
            changed = true;
        }
    }
    return changed;
}

void MorphDialog::ShowMarkers() {
    const int lead = SelectedLead();
    if (lead < 0) {
        return;
    }
    std::array<std::int32_t, kMostMarkers> positions{};
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        positions[slot] = fields_[slot].Current();
    }
    view_->SendMsg(MV_SETLEAD, static_cast<WPARAM>(lead), reinterpret_cast<LPARAM>(positions.data()));
}

void MorphDialog::Refresh() {
    const int lead = SelectedLead();
    if (lead < 0) {
        return;
    }
    ShowMarkers();
    const MeasurementSet& set = MeasurementSet::Of(beat_->measurements);
    for (std::size_t i = 0; i < kMeasurementRows; ++i) {
        measurements_[i]->ShowNumber(table_.measurements[i].value(set, lead));
    }
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        fields_[slot].Refresh();
    }
    const MarkerStore store = StoreOf(lead_);
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        waveBoxes_[i]->SetChecked(store.Value(table_.waveBoxes[i].marker) == 0);
    }
    RefreshReset(store.ManualFlags() != 0);
}

void MorphDialog::RefreshReset(bool anyManual) {
    if (!anyManual && reset_->HasFocus()) {
        // A disabled control would keep the keyboard.
        SendMsg(WM_NEXTDLGCTL);
    }
    reset_->Enable(anyManual);
}

void MorphDialog::Redetect() {
    if (engine_->UPDATEDETECTION(beat_) == 0) {
        measured_ = Measured::kFailed;
        Reports().LOGOEMERROR(table_.reports.source, table_.reports.redetectionLine, "UpdateDetection");
        return;
    }
    measured_ = Measured::kDone;
    const MarkerStore store = StoreOf(lead_);
    for (std::size_t slot = 0; slot < store.Count(); ++slot) {
        if (!store.IsManual(slot)) {
            fields_[slot].SetAutomatic(store.Value(slot));
        }
    }
    Refresh();
}

template <class Step>
void MorphDialog::Change(std::uint32_t source, Step step) {
    MarkerEdit edit{std::span(fields_).first(table_.markers.size()), StoreOf(lead_), *this};
    const MarkerSnapshot before = MarkerSnapshot::Take(lead_, edit.store);
    measured_ = Measured::kNotAsked;
    step(edit);
    const bool stored = MarkerSnapshot::Take(lead_, edit.store) != before;
    if (stored) {
        history_.Record(before, source);
    }
    if (measured_ == Measured::kFailed) {
        // The measurements stay as they are; a marker that the rules have limited stands where its edit says.
        ShowMarkers();
    } else if (measured_ == Measured::kNotAsked && stored) {
        Refresh();
    }
}

void MorphDialog::ApplyMarkers(std::uint32_t source) {
    if (HasLead()) {
        Change(source, [this](MarkerEdit& edit) { table_.applyMarkers(edit, waveBoxes_[0]->IsChecked()); });
    }
}

void MorphDialog::OnMarkerMoved(UINT id, std::int32_t ms) {
    for (MarkerField& field : std::span(fields_).first(table_.markers.size())) {
        if (field.OnMarkerMoved(id, ms)) {
            returned_ = 0;
            ApplyMarkers(id);
            return;
        }
        if (id == field.NotificationId()) {
            returned_ = id;
        }
    }
}

void MorphDialog::OnMarkerGrasped() {
    history_.EndStep();
    returned_ = 0;
    if (TakeChanges()) {
        Refresh();
    }
}

// A marker that comes onto its automatic value measures nothing there. When it is left there after it was
// stored elsewhere on its way, it is stored as well: the record holds what the reviewer sees.
void MorphDialog::StoreReturned() {
    if (returned_ != 0) {
        ApplyMarkers(std::exchange(returned_, 0));
    }
}

void MorphDialog::OnLeadChanged() {
    // What a drag has moved in the former lead belongs to that lead.
    MSG moved{};
    while (PeekMessageA(&moved, Handle(), MVN_MARKERMOVED, MVN_MARKERMOVED + kMarkerSlots - 1, PM_REMOVE)) {
        OnMarkerMoved(moved.message, static_cast<std::int32_t>(moved.wParam));
    }
    StoreReturned();
    history_.EndStep();
    if (!table_.isGlobal && HasLead()) {
        lead_ = SelectedLead();
        Load(true);
    }
    Refresh();
}

void MorphDialog::OnWaveBox(std::size_t box) {
    if (!HasLead()) {
        return;
    }
    history_.EndStep();
    const bool absent = waveBoxes_[box]->IsChecked();
    const bool outdated = TakeChanges();
    Change(table_.waveBoxes[box].box, [&](MarkerEdit& edit) {
        if (!table_.applyWaveBox(edit, box, absent)) {
            waveBoxes_[box]->SetChecked(!absent);
        }
    });
    if (outdated && measured_ == Measured::kNotAsked) {
        Refresh();
    }
}

void MorphDialog::OnReset() {
    if (!HasLead()) {
        return;
    }
    history_.EndStep();
    Change(reset_->Id(), [](MarkerEdit& edit) {
        edit.store.ClearManual(edit.store.AllFlags());
        edit.redetection.Redetect();
    });
}

void MorphDialog::Undo() {
    if (const auto lead = history_.UndoLead()) {
        Restore(history_.Undo(MarkerSnapshot::Take(*lead, StoreOf(*lead))));
    }
}

void MorphDialog::Redo() {
    if (const auto lead = history_.RedoLead()) {
        Restore(history_.Redo(MarkerSnapshot::Take(*lead, StoreOf(*lead))));
    }
}

// Shows the lead whose markers come back, so that nothing changes unseen.
void MorphDialog::Restore(const MarkerSnapshot& snapshot) {
    MarkerStore store = StoreOf(snapshot.lead);
    snapshot.Restore(store);
    if (lead_ != snapshot.lead) {
        combos_[kLead]->SelectCode(snapshot.lead);
        lead_ = snapshot.lead;
        Load(true);
    } else {
        for (std::size_t slot = 0; slot < store.Count(); ++slot) {
            TakeStored(slot);
        }
    }
    returned_ = 0;
    measured_ = Measured::kNotAsked;
    Redetect();
    if (measured_ != Measured::kDone) {
        Refresh();
    }
}

}  // namespace kx
