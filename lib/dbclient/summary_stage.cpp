// The fields of a stage of a stress test and of the values followed over it.
#include <cstdlib>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/summary_stress.h"
#include "lib/leads.h"
#include "lib/muldiv.h"

namespace kx {

namespace {

// Series codes of what is followed over a stress test.
enum : int { kHeartRateSeries = -7, kSystolicSeries = -6, kDiastolicSeries = -5 };

// A treadmill's speed is kept in hundredths of a mile per hour.
constexpr double kKilometresPerHour = 0.01609;
constexpr double kMilesPerHour = 0.01;

const char* OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

std::string Formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

const KxStressStage* CurrentStage(const SummaryOutput& output) {
    return output.test.Stage(-1);
}

std::optional<std::int32_t> AtTime(const SummaryOutput& output, int code) {
    const std::int32_t timeMs = output.request.timeMs;
    return timeMs >= 0 ? ValueAt(output.test.Series(code), static_cast<std::uint32_t>(timeMs)) : std::nullopt;
}

void PutOptional(const SummaryOutput& output, std::optional<std::int32_t> value) {
    if (value) {
        output.Print("%ld", static_cast<long>(*value));
    } else {
        output.PutMissing();
    }
}

void PutStageHeartRate(const SummaryOutput& output) {
    const KxStressStage* stage = CurrentStage(output);
    const bool known = stage != nullptr && stage->heartRate != 0;
    PutOptional(output,
                known ? static_cast<std::int32_t>(stage->heartRate) : AtTime(output, kHeartRateSeries));
}

template <int kSeries>
void PutSeriesValue(const SummaryOutput& output) {
    PutOptional(output, AtTime(output, kSeries));
}

void PutPressureAtTime(const SummaryOutput& output) {
    const auto systolic = AtTime(output, kSystolicSeries);
    const auto diastolic = AtTime(output, kDiastolicSeries);
    if (systolic && diastolic) {
        output.Print("%ld / %ld", static_cast<long>(*systolic), static_cast<long>(*diastolic));
    } else {
        output.PutMissing();
    }
}

// Writes what `write` makes of the current stage; without one the value is missing.
template <void (*kWrite)(const SummaryOutput&, const KxStressStage&)>
void PutOfStage(const SummaryOutput& output) {
    if (const KxStressStage* stage = CurrentStage(output)) {
        kWrite(output, *stage);
    } else {
        output.PutMissing();
    }
}

ExerciseLevel LevelOf(const SummaryOutput& output, const KxStressStage& stage) {
    return {output, stage.speed, stage.gradeOrLoad};
}

void WriteMets(const SummaryOutput& output, const KxStressStage& stage) {
    output.Print("%u.%u", stage.mets / 10, stage.mets % 10);
}

void WriteSpeed(const SummaryOutput& output, const KxStressStage& stage) {
    output.Put(LevelOf(output, stage).SpeedText());
}

void WriteGradeOrLoad(const SummaryOutput& output, const KxStressStage& stage) {
    output.Put(LevelOf(output, stage).GradeOrLoadText());
}

void WriteLevel(const SummaryOutput& output, const KxStressStage& stage) {
    output.Put(LevelOf(output, stage).Text());
}

void WriteDuration(const SummaryOutput& output, const KxStressStage& stage) {
    DurationMinSec(stage.durationMs, output.buffer, output.size);
}

void WriteStart(const SummaryOutput& output, const KxStressStage& stage) {
    DurationMinSec(stage.startMs, output.buffer, output.size);
}

bool HasStLevel(const KxStressStage& stage) {
    return stage.stLevel >= -KX_ST_LIMIT && stage.stLevel <= KX_ST_LIMIT;
}

// The ST level of a stage, with when and where if asked for.
template <bool kWithPlace>
void WriteSt(const SummaryOutput& output, const KxStressStage& stage) {
    if (!HasStLevel(stage)) {
        output.PutMissing();
        return;
    }
    const double millimetres = stage.stLevel / 100.0;
    if (kWithPlace) {
        output.Print("%3.1f mm @ %u:%02u [%s]", millimetres, stage.stTimeMs / 60000,
                     stage.stTimeMs / 1000 % 60, StandardLeadName(stage.stLead));
    } else {
        output.Print("%3.1f mm", millimetres);
    }
}

void WriteStTime(const SummaryOutput& output, const KxStressStage& stage) {
    output.Print("%u:%02u", stage.stTimeMs / 60000, stage.stTimeMs / 1000 % 60);
}

// The stage with the largest ST level of the whole test, up or down, the first of several.
template <void (*kWrite)(const SummaryOutput&, const KxStressStage&)>
void PutOfLargestSt(const SummaryOutput& output) {
    const KxStressStage* largest = nullptr;
    for (std::uint32_t i = 0; i < output.test.StageCount(); ++i) {
        const KxStressStage* stage = output.test.Stage(static_cast<int>(i));
        if (stage != nullptr && HasStLevel(*stage) &&
            (largest == nullptr || std::abs(stage->stLevel) > std::abs(largest->stLevel))) {
            largest = stage;
        }
    }
    if (largest != nullptr) {
        kWrite(output, *largest);
    } else {
        output.PutMissing();
    }
}

constexpr SummaryField kStageFields[] = {
    {80, PutOfStage<WriteSt<false>>},
    {81, PutOfStage<WriteStTime>},
    {86, PutStageHeartRate},
    {87, PutOfStage<WriteDuration>},
    {88, PutOfStage<WriteStart>},
    {89, PutOfStage<WriteSpeed>},
    {90, PutOfStage<WriteGradeOrLoad>},
    {95, PutSeriesValue<kHeartRateSeries>},
    {96, PutPressureAtTime},
    {97, PutPressureAtTime},
    {103, PutSeriesValue<kSystolicSeries>},
    {360, PutOfLargestSt<WriteSt<false>>},
    {361, PutOfLargestSt<WriteStTime>},
    {440, PutOfStage<WriteSt<true>>},
    {489, PutOfStage<WriteMets>},
    {490, PutOfStage<WriteLevel>},
    {494, PutOfLargestSt<WriteSt<true>>},
};

}  // namespace

const char* SpeedUnit(const SummaryOutput& output) {
    const SummaryRequest& request = output.request;
    if (!IsTreadmill(output.test)) {
        return OrEmpty(request.revolutionsPerMinute);
    }
    return OrEmpty(output.test.metricSpeed != 0 ? request.kilometresPerHour : request.milesPerHour);
}

std::optional<std::int32_t> PercentOfTarget(const TestRecord& test) {
    const auto rate = static_cast<std::int32_t>(test.maxHeartRate);
    const auto target = static_cast<std::int32_t>(test.targetHeartRate);
    if (rate < 0 || target <= 0) {
        return std::nullopt;
    }
    return MulDivRound(100, rate, target);
}

std::string ExerciseLevel::SpeedText() const {
    if (!HasSpeed()) {
        return {};
    }
    if (!IsTreadmill(output_.test)) {
        return Formatted("%4.0f", speed_ / 100.0);
    }
    return Formatted("%4.1f", speed_ * (output_.test.metricSpeed != 0 ? kKilometresPerHour : kMilesPerHour));
}

std::string ExerciseLevel::GradeOrLoadText() const {
    if (!HasGradeOrLoad()) {
        return {};
    }
    if (!IsTreadmill(output_.test)) {
        return Formatted("%4.0f", gradeOrLoad_ / 10.0);
    }
    return Formatted("%4.1f %%", gradeOrLoad_ / 10.0);
}

std::string ExerciseLevel::Text() const {
    const char* behind =
        OrEmpty(IsTreadmill(output_.test) ? output_.request.gradeName : output_.request.watts);
    return SpeedText() + " " + SpeedUnit(output_) + ", " + GradeOrLoadText() + " " + behind;
}

bool RenderStageField(const SummaryOutput& output) {
    return RenderField(kStageFields, output);
}

}  // namespace kx
