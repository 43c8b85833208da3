#include "suite/kxinterp/ecg.h"

#include <algorithm>
#include <array>

namespace kx::interp {

namespace {

// The onsets of Q, R, S, R', S' and the end of the complex; 0 = absent.
std::array<int, 6> Marks(const KxLeadMeasurements& lead) {
    return {lead.qOnMarker,      lead.rOnMarker,      lead.sOnMarker,
            lead.rPrimeOnMarker, lead.sPrimeOnMarker, lead.qrsOffMarker};
}

bool IsPresent(int mark) {
    return mark != 0;
}

}  // namespace

int Ecg::Span(int lead, std::size_t k) const {
    const std::array<int, 6> marks = Marks(Lead(lead));
    const auto next =
        std::find_if(marks.begin() + static_cast<std::ptrdiff_t>(k) + 1, marks.end(), IsPresent);
    return marks[k] == 0 || next == marks.end() ? 0 : std::max(0, *next - marks[k]);
}

int Ecg::TypicalQrsDuration() const {
    std::array<int, KX_STANDARD_LEADS> durations;
    std::ptrdiff_t count = 0;
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_V6; ++lead) {
        const std::array<int, 6> marks = Marks(Lead(lead));
        const auto onset = std::find_if(marks.begin(), marks.end() - 1, IsPresent);
        if (onset != marks.end() - 1 && marks.back() > *onset) {
            durations[static_cast<std::size_t>(count++)] = marks.back() - *onset;
        }
    }
    if (count == 0) {
        return set_.qrsDuration;
    }
    const auto median = durations.begin() + count / 2;
    std::nth_element(durations.begin(), median, durations.begin() + count);
    return *median;
}

}  // namespace kx::interp
