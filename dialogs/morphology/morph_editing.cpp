// morph_editing: the markers of a morphology dialog between the view, the record and the analysis engine.
#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/marker_view/trace/sample_sum.h"
#include "dialogs/morphology/morph_dialog.h"

namespace kx {

MarkerStore MorphDialog::StoreOf(int block) {
    return {table_.layout, beat_->measurements.leads[block]};
}

SeenMarkers MorphDialog::ReadMarkers() const {
    SeenMarkers markers;
    markers.Take(table_.layout, beat_->measurements, table_.isGlobal);
    return markers;
}

std::uint32_t MorphDialog::SumOfBeat() const {
    std::uint32_t sum = beat_->SamplesPerLead() ^ beat_->SampleRate();
    for (std::uint32_t lead = 0; lead < KX_LEAD_EMPTY; ++lead) {
        sum = sum * 31 + SampleSum(beat_->Samples(lead), beat_->SamplesPerLead());
    }
    return sum;
}

// keepAutomatic: a manual value stands beside the automatic one that its field has known before, so that the
// "man." box compares with it; only the first marker starts anew.
void MorphDialog::Load(bool keepAutomatic) {
    const MarkerStore store = StoreOf(Block());
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

// A manual value stands beside the automatic one that its field knows.
void MorphDialog::TakeStored(std::size_t slot) {
    const MarkerStore store = StoreOf(Block());
    if (store.IsManual(slot)) {
        fields_[slot].SetCurrent(store.Value(slot));
    } else {
        fields_[slot].SetAutomatic(store.Value(slot));
    }
}

// What another pane, or the host, has changed in the record since this pane has read or written it. Without
// it the next step would store the old values as manual ones, and a step taken back the older ones. True:
// something had changed, and is shown.
bool MorphDialog::TakeChanges() {
    const SeenMarkers now = ReadMarkers();
    if (now == seen_) {
        return false;
    }
    const MarkerSnapshot& then = seen_.Of(Block());
    const MarkerSnapshot& here = now.Of(Block());
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        const bool flagChanged = ((then.flags ^ here.flags) & table_.layout.markers[slot].flag) != 0;
        if (flagChanged || then.values[slot] != here.values[slot]) {
            TakeStored(slot);
        }
    }
    seen_ = now;
    DropHistory();
    Refresh();
    return true;
}

// The same for a beat whose samples the host has replaced: nothing of the former one is known any more.
bool MorphDialog::TakeReplacedBeat() {
    const std::uint32_t beat = SumOfBeat();
    if (beat == seenBeat_) {
        return TakeChanges();
    }
    seenBeat_ = beat;
    seen_ = ReadMarkers();
    Load(false);
    DropHistory();
    Refresh();
    return true;
}

void MorphDialog::ShowMarkers() {
    std::array<std::int32_t, kMostMarkers> positions{};
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        positions[slot] = fields_[slot].Current();
    }
    SendMessageA(view_, MV_SETLEAD, static_cast<WPARAM>(Lead()), reinterpret_cast<LPARAM>(positions.data()));
}

void MorphDialog::Refresh() {
    if (!HasLead()) {
        return;
    }
    // Read as a whole before the first message to a control: what is shown is of one moment.
    const MeasurementSet& set = MeasurementSet::Of(beat_->measurements);
    std::array<std::int32_t, kMeasurementRows> values{};
    for (std::size_t i = 0; i < kMeasurementRows; ++i) {
        values[i] = table_.measurements[i].value(set, Lead());
    }
    const MarkerStore store = StoreOf(Block());
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        boxesInForce_[i] = store.Value(table_.waveBoxes[i].marker) == 0;
    }
    const bool anyManual = store.ManualFlags() != 0;

    ShowMarkers();
    for (std::size_t i = 0; i < kMeasurementRows; ++i) {
        measurements_[i]->ShowNumber(values[i]);
    }
    for (std::size_t slot = 0; slot < table_.markers.size(); ++slot) {
        fields_[slot].Refresh();
    }
    for (std::size_t i = 0; i < table_.waveBoxes.size(); ++i) {
        waveBoxes_[i]->SetChecked(boxesInForce_[i]);
    }
    RefreshReset(anyManual);
}

void MorphDialog::RefreshReset(bool anyManual) {
    if (!anyManual && reset_->HasFocus()) {
        // A disabled control would keep the keyboard.
        SendMsg(WM_NEXTDLGCTL);
    }
    reset_->Enable(anyManual);
}

// The binding's own text says why there was no measurement. It is made anew with the next use, so that it
// works again when the module has come right.
void MorphDialog::Redetect() {
    if (engine_ == nullptr) {
        engine_ = std::make_shared<AnalysisEngine>();
        LeaveIfEnded();
    }
    std::shared_ptr<AnalysisEngine> engine = engine_;
    SetLastError(ERROR_SUCCESS);  // what the binding reports is this call's
    const bool isMeasured = engine->UPDATEDETECTION(beat_) != 0;
    LeaveIfEnded();
    if (!isMeasured) {
        const bool isBound = *engine->ErrorText() == '\0';
        engine->ReportError(Reports());
        if (!isBound) {
            engine_.reset();
            engine.reset();
        }
        LeaveIfEnded();
        measured_ = Measured::kFailed;
        Reports().LOGOEMERROR(table_.reports.source, table_.reports.redetectionLine, "UpdateDetection");
        LeaveIfEnded();
        return;
    }
    measured_ = Measured::kDone;
    const MarkerStore store = StoreOf(Block());
    for (std::size_t slot = 0; slot < store.Count(); ++slot) {
        if (!store.IsManual(slot)) {
            fields_[slot].SetAutomatic(store.Value(slot));
        }
    }
    Refresh();
}

template <class Rules>
void MorphDialog::Change(std::uint32_t source, Rules rules) {
    const int block = Block();
    MarkerEdit edit{std::span(fields_).first(table_.markers.size()), StoreOf(block), *this};
    const MarkerSnapshot before = MarkerSnapshot::Take(block, edit.store);
    measured_ = Measured::kNotAsked;
    rules(edit);
    const bool stored = MarkerSnapshot::Take(block, edit.store) != before;
    if (stored) {
        history_.Record(before, source);
    }
    seen_ = ReadMarkers();
    if (measured_ == Measured::kFailed) {
        // The measurements stay as they are; a marker that the rules have limited stands where its edit says.
        ShowMarkers();
    } else if (measured_ == Measured::kNotAsked && stored) {
        Refresh();
    }
}

void MorphDialog::ApplyMarkers(std::uint32_t source) {
    Change(source, [this](MarkerEdit& edit) { table_.applyMarkers(edit, boxesInForce_[0]); });
}

void MorphDialog::OnMarkerMoved(UINT id, std::int32_t ms) {
    if (!HasLead()) {
        return;
    }
    if (step_ == Step::kNone) {
        TakeReplacedBeat();
    } else {
        TakeChanges();
    }
    for (MarkerField& field : std::span(fields_).first(table_.markers.size())) {
        if (field.OnMarkerMoved(id, ms)) {
            returned_ = 0;
            ApplyMarkers(id);
            return;
        }
        if (id == field.NotificationId() && step_ != Step::kNone) {
            returned_ = id;
        }
    }
}

void MorphDialog::OnLeadChosen(int code) {
    if (IsDragging() || code >= KX_MEASURED_LEADS) {
        ShowInForce(kLead);
        return;
    }
    EndStep();
    TakeReplacedBeat();
    inForce_[kLead] = code;
    if (!table_.isGlobal) {
        Load(true);
    }
    Refresh();
}

void MorphDialog::OnWaveBox(std::size_t box) {
    const bool absent = waveBoxes_[box]->IsChecked();
    if (!HasLead()) {
        waveBoxes_[box]->SetChecked(boxesInForce_[box]);
        return;
    }
    EndStep();
    TakeReplacedBeat();
    Change(table_.waveBoxes[box].box, [&](MarkerEdit& edit) {
        if (table_.applyWaveBox(edit, box, absent)) {
            boxesInForce_[box] = absent;
        } else {
            waveBoxes_[box]->SetChecked(boxesInForce_[box]);
        }
    });
}

void MorphDialog::OnReset() {
    if (!HasLead() || IsDragging()) {
        return;
    }
    EndStep();
    TakeReplacedBeat();
    Change(reset_->Id(), [](MarkerEdit& edit) {
        edit.store.ClearManual(edit.store.AllFlags());
        edit.redetection.Redetect();
    });
}

}  // namespace kx
