// How hard the patient worked, as text. For the sources of the stress-test fields alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "lib/dbclient/summary_fields.h"

namespace kx {

// A speed, grade, load or MET value that the test did not come to.
inline constexpr auto kNotReached = static_cast<std::uint32_t>(KX_NOT_REACHED);

inline bool IsTreadmill(const TestRecord& test) {
    return test.exerciseDevice == 0;
}

// The caller's name of the unit in which speeds are shown.
const char* SpeedUnit(const SummaryOutput& output);

// The highest heart rate in percent of the target, rounded; nothing without a target.
std::optional<std::int32_t> PercentOfTarget(const TestRecord& test);

// A speed and a grade (treadmill) or a load (ergometer), in the units of the record. What is not reached has
// an empty text.
class ExerciseLevel {
  public:
    ExerciseLevel(const SummaryOutput& output, std::uint32_t speed, std::uint32_t gradeOrLoad)
        : output_(output), speed_(speed), gradeOrLoad_(gradeOrLoad) {}

    bool HasSpeed() const { return speed_ != kNotReached; }
    bool HasGradeOrLoad() const { return gradeOrLoad_ != kNotReached; }
    std::string SpeedText() const;
    // A grade with its percent sign, a load alone.
    std::string GradeOrLoadText() const;
    // Both with their units: " 3.1 mph, 12.0 % grade" or "  60 RPM,  150 W".
    std::string Text() const;

  private:
    const SummaryOutput& output_;
    std::uint32_t speed_;
    std::uint32_t gradeOrLoad_;
};

// The fields of the stage and of the values at the time.
bool RenderStageField(const SummaryOutput& output);

}  // namespace kx
