#include "dialogs/interpretation/stage_pickers.h"

#include <cstring>

namespace kx {

StagePickers::StagePickers(Window* dialog, std::uint32_t dateId, std::uint32_t timeId)
    : date_(dialog, dateId), time_(dialog, timeId) {}

void StagePickers::Hide() {
    date_.Hide();
    time_.Hide();
}

void StagePickers::Show(const DateTime& time) {
    date_.SetDateTime(&time);
    time_.SetDateTime(&time);
    given_ = time;
    shown_ = Picked();
}

DateTime StagePickers::Value() const {
    const DateTime picked = Picked();
    return std::memcmp(&picked, &shown_, sizeof picked) == 0 ? given_ : picked;
}

bool StagePickers::IsChange(std::uint32_t id, const NMHDR* header) const {
    return date_.IsDateTimeChange(id, header) || time_.IsDateTimeChange(id, header);
}

DateTime StagePickers::Picked() const {
    DateTime day = DateTime::None();
    DateTime clock = DateTime::None();
    date_.GetDateTime(day);
    time_.GetDateTime(clock);
    return {day.Year(),     day.Month(),    day.Day(),       clock.Hour(),
            clock.Minute(), clock.Second(), clock.hundredths};
}

}  // namespace kx
