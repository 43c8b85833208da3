// The fields of a stress test as a whole.
#include "lib/dbclient/summary_stress.h"

namespace kx {

namespace {

using Record = KxTestRecord;

void PutPeakTargetPercent(const SummaryOutput& output) {
    if (const auto percent = PercentOfTarget(output.test)) {
        output.Print("%d %%", *percent);
    } else {
        output.PutMissing();
    }
}

void PutPeakRateAndTarget(const SummaryOutput& output) {
    const TestRecord& test = output.test;
    if (const auto percent = PercentOfTarget(test)) {
        output.Print("%u [%d %% of THR (%lu) ]", test.maxHeartRate, *percent,
                     static_cast<unsigned long>(test.targetHeartRate));
    } else {
        output.Print("%u", test.maxHeartRate);
    }
}

void PutPeakPressure(const SummaryOutput& output) {
    const std::uint32_t pressure = output.test.peakBloodPressure;
    if (pressure == 0) {
        output.PutMissing();
    } else {
        output.Print("%u / %u", pressure >> 16, pressure & 0xFFFFu);
    }
}

void PutPeakRatePressureProduct(const SummaryOutput& output) {
    output.Print("%u", (output.test.peakBloodPressure >> 16) * output.test.maxHeartRate);
}

void PutValue7416(const SummaryOutput& output) {
    if (output.test.value7416 == 0) {
        output.PutMissing();
    } else {
        output.Print("%u", output.test.value7416);
    }
}

void PutExerciseTime(const SummaryOutput& output) {
    DurationMinSec(output.test.exerciseTimeMs, output.buffer, output.size);
}

ExerciseLevel PeakLevel(const SummaryOutput& output) {
    return {output, output.test.peakSpeed, output.test.peakGradeOrLoad};
}

void PutPeakGradeOrLoad(const SummaryOutput& output) {
    output.Put(PeakLevel(output).GradeOrLoadText());
}

void PutPeakSpeed(const SummaryOutput& output) {
    const ExerciseLevel level = PeakLevel(output);
    if (level.HasSpeed()) {
        output.Print("%s %s", level.SpeedText().c_str(), SpeedUnit(output));
    }
}

void PutPeakStage(const SummaryOutput& output) {
    const TestRecord& test = output.test;
    const ExerciseLevel level = PeakLevel(output);
    if (!level.HasSpeed() || !level.HasGradeOrLoad() || test.peakMets == kNotReached) {
        return;
    }
    output.Print("%s [%4.1f METs]", level.Text().c_str(), test.peakMets / 10.0);
}

// Which device, with the first of the three texts that the record keeps beside its kind: its name.
void PutDevice(const SummaryOutput& output) {
    char name[sizeof output.test.text7189[0]];
    CopyField(output.test.text7189[0], name, sizeof name);
    output.Print(IsTreadmill(output.test) ? "Treadmill (%s)" : "Ergometer (%s)", name);
}

template <int kIndex>
void PutValue7480(const SummaryOutput& output) {
    output.Print("%u", output.test.values7480[kIndex]);
}

// The titles of columns, for each device.
struct Title {
    int code;
    const char* treadmill;
    const char* ergometer;
};

constexpr Title kTitles[] = {
    {362, "Elevation (%)", "Load (W)"}, {364, "Elevation", "Load"}, {366, "(%)", "(W)"},
    {363, nullptr, "Speed (RPM)"},      {365, "Speed", "Speed"},    {367, nullptr, "(RPM)"},
};

// Two titles of the treadmill name the speed unit that the record is shown in.
bool RenderTitle(const SummaryOutput& output) {
    for (const Title& title : kTitles) {
        if (title.code != output.code) {
            continue;
        }
        const char* text = IsTreadmill(output.test) ? title.treadmill : title.ergometer;
        if (text != nullptr) {
            output.Put(text);
        } else {
            output.Print(title.code == 363 ? "Speed (%s)" : "%s", SpeedUnit(output));
        }
        return true;
    }
    return false;
}

constexpr SummaryField kStressFields[] = {
    {12, PutNumber<&Record::targetHeartRate>},
    {16, PutDevice},
    {100, PutValue7480<0>},
    {101, PutValue7480<1>},
    {102, PutValue7480<2>},
    {108, PutPeakGradeOrLoad},
    {109, PutNumber<&Record::maxHeartRate>},
    {110, PutPeakPressure},
    {111, PutExerciseTime},
    {112, PutPeakTargetPercent},
    {141, PutPeakRatePressureProduct},
    {359, PutPeakSpeed},
    {491, PutPeakRateAndTarget},
    {492, PutValue7416},
    {495, PutPeakStage},
};

}  // namespace

bool RenderStressField(const SummaryOutput& output) {
    return RenderField(kStressFields, output) || RenderTitle(output) || RenderStageField(output);
}

}  // namespace kx
