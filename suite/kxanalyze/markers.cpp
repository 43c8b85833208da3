#include "suite/kxanalyze/markers.h"

#include <algorithm>
#include <span>

namespace kx::analysis {
namespace {

bool IsManual(std::uint32_t flags, std::size_t marker) {
    return (flags >> marker & 1) != 0;
}

// Puts the manual markers in, then moves each of the others that stand between manual ones on the wrong side.
void TakeManual(std::span<Place> row, std::span<const Place> stored, std::uint32_t manual) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (IsManual(manual, i)) {
            row[i] = stored[i];
        }
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (IsManual(manual, i) || row[i] == 0) {
            continue;
        }
        Place earliest = 0;
        Place latest = UINT16_MAX;
        for (std::size_t k = 0; k < row.size(); ++k) {
            if (!IsManual(manual, k) || row[k] == 0) {
                continue;
            }
            if (k < i) {
                earliest = std::max(earliest, row[k]);
            } else {
                latest = std::min(latest, row[k]);
            }
        }
        row[i] = std::max(earliest, std::min(row[i], latest));
    }
}

// A wave whose onset or offset the reviewer has set to 0 is absent: its automatic markers say so too.
void TakeAbsence(std::span<Place> row, std::uint32_t manual, std::size_t on, std::size_t off) {
    const bool absent = (IsManual(manual, on) && row[on] == 0) || (IsManual(manual, off) && row[off] == 0);
    for (std::size_t i = on; absent && i <= off; ++i) {
        if (!IsManual(manual, i)) {
            row[i] = 0;
        }
    }
}

}  // namespace

GlobalRow ReadGlobalRow(const KxMeasurementSet& set) {
    GlobalRow row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = set.leads[0].*kGlobalMarkers[i].ms;
    }
    return row;
}

LeadRow ReadLeadRow(const KxLeadMeasurements& lead) {
    LeadRow row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = lead.*kLeadMarkers[i].ms;
    }
    return row;
}

void WriteGlobalRow(const GlobalRow& row, KxMeasurementSet& set) {
    for (KxLeadMeasurements& lead : set.leads) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            lead.*kGlobalMarkers[i].ms = static_cast<std::uint16_t>(row[i]);
        }
    }
}

void WriteLeadRow(const LeadRow& row, KxLeadMeasurements& lead) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        lead.*kLeadMarkers[i].ms = static_cast<std::uint16_t>(row[i]);
    }
}

GlobalRow JoinGlobal(const GlobalRow& found, const GlobalRow& stored, std::uint32_t manual) {
    GlobalRow row = found;
    TakeManual(row, stored, manual);
    TakeAbsence(row, manual, kGlobalPOn, kGlobalPOff);
    return row;
}

LeadRow JoinLead(const LeadRow& found, const LeadRow& stored, std::uint32_t manual) {
    LeadRow row = found;
    TakeManual(row, stored, manual);
    TakeAbsence(row, manual, kLeadPOn, kLeadPOff);
    TakeAbsence(row, manual, kLeadTOn, kLeadTOff);
    return row;
}

Interval Within(Interval found, Place on, Place off) {
    if (!found.Present() || off == 0) {
        return {};
    }
    found.on = std::clamp(found.on, on, std::max(on, off));
    found.off = std::clamp(found.off, found.on, std::max(found.on, off));
    return found;
}

}  // namespace kx::analysis
