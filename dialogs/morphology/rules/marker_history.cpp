#include "dialogs/morphology/rules/marker_history.h"

namespace kx {
namespace {

void Push(std::vector<MarkerSnapshot>& steps, const MarkerSnapshot& step) {
    if (steps.size() == MarkerHistory::kCapacity) {
        steps.erase(steps.begin());
    }
    steps.push_back(step);
}

MarkerSnapshot Exchange(std::vector<MarkerSnapshot>& from, std::vector<MarkerSnapshot>& to,
                        const MarkerSnapshot& now) {
    const MarkerSnapshot step = from.back();
    from.pop_back();
    Push(to, now);
    return step;
}

std::optional<std::int32_t> LastLead(const std::vector<MarkerSnapshot>& steps) {
    return steps.empty() ? std::nullopt : std::optional(steps.back().lead);
}

}  // namespace

MarkerSnapshot MarkerSnapshot::Take(std::int32_t lead, const MarkerStore& store) {
    MarkerSnapshot snapshot;
    snapshot.lead = lead;
    snapshot.flags = store.ManualFlags();
    for (std::size_t slot = 0; slot < store.Count(); ++slot) {
        snapshot.values[slot] = static_cast<std::uint16_t>(store.Value(slot));
    }
    return snapshot;
}

void MarkerSnapshot::Restore(MarkerStore& store) const {
    for (std::size_t slot = 0; slot < store.Count(); ++slot) {
        store.SetValue(slot, values[slot]);
    }
    store.ClearManual(store.AllFlags());
    store.SetManual(flags);
}

void SeenMarkers::Take(const MarkerLayout& layout, KxMeasurementSet& set, bool isGlobal) {
    const std::int32_t leads = isGlobal ? 1 : KX_MEASURED_LEADS;
    for (std::int32_t lead = 0; lead < leads; ++lead) {
        leads_[static_cast<std::size_t>(lead)] = MarkerSnapshot::Take(lead, {layout, set.leads[lead]});
    }
}

MarkerHistory::MarkerHistory() {
    done_.reserve(kCapacity);
    undone_.reserve(kCapacity);
}

void MarkerHistory::Record(const MarkerSnapshot& before, std::uint32_t source) {
    undone_.clear();
    if (open_ && source == source_ && !done_.empty() && done_.back().lead == before.lead) {
        return;
    }
    Push(done_, before);
    open_ = true;
    source_ = source;
}

void MarkerHistory::Clear() {
    done_.clear();
    undone_.clear();
    EndStep();
}

std::optional<std::int32_t> MarkerHistory::UndoLead() const {
    return LastLead(done_);
}

std::optional<std::int32_t> MarkerHistory::RedoLead() const {
    return LastLead(undone_);
}

MarkerSnapshot MarkerHistory::Undo(const MarkerSnapshot& now) {
    EndStep();
    return Exchange(done_, undone_, now);
}

MarkerSnapshot MarkerHistory::Redo(const MarkerSnapshot& now) {
    EndStep();
    return Exchange(undone_, done_, now);
}

}  // namespace kx
