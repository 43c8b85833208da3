#include "tests/unit/suite/stress_test.h"

#include <tuple>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"

namespace kx::test {

void FillTreadmillTest(TestRecord& test) {
    test.SetTestType(KX_TEST_STRESS);
    test.exerciseDevice = 0;
    test.metricSpeed = 1;
    test.exerciseTimeMs = 570000;
    test.targetHeartRate = 170;
    test.maxHeartRate = 152;
    test.bloodPressure = 120u << 16 | 80;
    test.peakBloodPressure = 180u << 16 | 90;
    test.peakSpeed = 420;        // hundredths of a mile per hour
    test.peakGradeOrLoad = 140;  // tenths of a percent
    test.peakMets = 101;
    for (const auto& [level, ms, lead] : {std::tuple{50, 180000, KX_LEAD_II}, {-150, 500000, KX_LEAD_V5}}) {
        auto stage = NewSubRecord<KxStressStage>();
        stage->stLevel = level;
        stage->stTimeMs = static_cast<std::uint32_t>(ms);
        stage->stLead = static_cast<std::uint32_t>(lead);
        test.AddStage(std::move(stage));
    }
}

}  // namespace kx::test
