// morph_steps: where one change of the markers begins and ends, and how it is taken back and done again.
#include <utility>

#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/morphology/morph_dialog.h"
#include "dialogs/resources/morphology_ids.h"

namespace kx {

void MorphDialog::BeginStep(bool byMouse) {
    EndStep();
    TakeReplacedBeat();
    step_ = byMouse ? Step::kDrag : Step::kKeys;
}

// Whatever is done next belongs to another change. What the view has posted comes first.
void MorphDialog::EndStep() {
    TakePostedMoves();
    if (std::exchange(step_, Step::kNone) != Step::kNone) {
        StoreReturned();
    }
    history_.EndStep();
}

void MorphDialog::TakePostedMoves() {
    MSG moved{};
    while (PeekMessageA(&moved, Handle(), MVN_MARKERMOVED, MVN_MARKERMOVED + kMarkerSlots - 1, PM_REMOVE)) {
        OnMarkerMoved(moved.message, static_cast<std::int32_t>(moved.wParam));
    }
    // The end of the step that they belong to is now.
    while (PeekMessageA(&moved, Handle(), MVN_STEPENDS, MVN_STEPENDS, PM_REMOVE)) {
    }
}

// A marker that comes onto its automatic value measures nothing there. When it is let go there after it was
// stored elsewhere on its way, it is stored as well: the record holds what the reviewer sees.
void MorphDialog::StoreReturned() {
    const std::uint32_t id = std::exchange(returned_, 0);
    if (id == 0 || !HasLead()) {
        return;
    }
    const std::size_t slot = id - MVN_MARKERMOVED;
    if (fields_[slot].Current() != StoreOf(Block()).Value(slot)) {
        ApplyMarkers(id);
    }
}

void MorphDialog::Undo() {
    if (IsDragging()) {
        return;
    }
    EndStep();
    if (TakeReplacedBeat()) {
        return;
    }
    if (const auto lead = history_.UndoLead()) {
        Restore(history_.Undo(MarkerSnapshot::Take(*lead, StoreOf(*lead))));
    }
}

void MorphDialog::Redo() {
    if (IsDragging()) {
        return;
    }
    EndStep();
    if (TakeReplacedBeat()) {
        return;
    }
    if (const auto lead = history_.RedoLead()) {
        Restore(history_.Redo(MarkerSnapshot::Take(*lead, StoreOf(*lead))));
    }
}

// Shows the lead whose markers come back, so that nothing changes unseen.
void MorphDialog::Restore(const MarkerSnapshot& snapshot) {
    MarkerStore store = StoreOf(snapshot.lead);
    snapshot.Restore(store);
    if (Block() != snapshot.lead) {
        inForce_[kLead] = snapshot.lead;
        ShowInForce(kLead);
        Load(true);
    } else {
        for (std::size_t slot = 0; slot < store.Count(); ++slot) {
            TakeStored(slot);
        }
    }
    measured_ = Measured::kNotAsked;
    Redetect();
    seen_ = ReadMarkers();
    if (measured_ != Measured::kDone) {
        Refresh();
    }
}

// A step writes back whole snapshots: over a record that others have changed it would take their changes
// back. The reader of the pane is told, for Ctrl+Z does nothing from here on.
void MorphDialog::DropHistory() {
    if (history_.IsEmpty()) {
        return;
    }
    history_.Clear();
    char text[128];
    if (Library()->instance.LoadText(IDS_HISTORY_DROPPED, text, sizeof text) > 0) {
        readout_->ShowText(text);
    }
}

}  // namespace kx
