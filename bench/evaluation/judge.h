// The measurement of a marked record, held against its marks.
#pragma once

#include <optional>
#include <string>

#include "bench/evaluation/error_table.h"
#include "bench/evaluation/marked_record.h"
#include "bench/evaluation/reference.h"
#include "suite/kxanalyze/delineator.h"

namespace kx::evaluation {

// The record's median beat, made and measured as the workstation does it. Nothing, and the reason in
// `refusal`, when it is not measured.
struct MeasuredRecord {
    std::vector<int> beatsMs;  // as the workstation reports them
    BeatPlaces places;
    bool electrodesExchanged = false;  // as the workstation remarks
};
std::optional<MeasuredRecord> Measure(const recording::Recording& recording, analysis::Workspace& workspace,
                                      std::string& refusal);

// The errors of a measured record.
RecordErrors Judge(const MarkedRecord& record, const MeasuredRecord& measured);

}  // namespace kx::evaluation
