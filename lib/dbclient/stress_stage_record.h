// One stage of a stress test.
#pragma once

#include <cstdint>

namespace kx {

// 672 bytes; the layout is this library's own. Not given: 0. Speeds in hundredths of a mile per hour
// (treadmill) or of a revolution per minute (ergometer), grades in tenths of a percent, loads in tenths of a
// watt.
struct StressStageRecord {
    std::uint32_t number;
    char name[32];
    std::uint32_t startMs;  // within the recording
    std::uint32_t durationMs;
    std::uint32_t speed;
    std::uint32_t gradeOrLoad;
    std::uint32_t mets;           // tenths of a MET
    std::uint32_t heartRate;      // beats per minute
    std::uint32_t bloodPressure;  // systolic << 16 | diastolic
    std::int32_t stLevel;         // the most conspicuous ST level, hundredths of a millimetre
    std::uint32_t stTimeMs;       // when, within the recording
    std::uint32_t stLead;         // where, a lead code
    std::uint8_t reserved[596];
};

static_assert(sizeof(StressStageRecord) == 672);

}  // namespace kx
