#include "tests/unit/suite/stress_test.h"

#include <memory>

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
    auto first = NewSubRecord<KxStressStage>();
    first->stLevel = 50;
    first->stTimeMs = 180000;
    first->stLead = KX_LEAD_II;
    test.AddStage(std::move(first));
    auto second = NewSubRecord<KxStressStage>();
    second->stLevel = -150;
    second->stTimeMs = 500000;
    second->stLead = KX_LEAD_V5;
    test.AddStage(std::move(second));
}

}  // namespace kx::test
