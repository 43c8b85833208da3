#include "dialogs/interpretation/stage_pickers.h"

#include <cstring>

namespace kx {
namespace {

bool IsSameSecond(const DateTime& a, const DateTime& b) {
    return a.Year() == b.Year() && a.Month() == b.Month() && a.Day() == b.Day() && a.Hour() == b.Hour() &&
           a.Minute() == b.Minute() && a.Second() == b.Second();
}

}  // namespace

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
    isShown_ = IsSameSecond(given_, shown_);
}

DateTime StagePickers::Value(bool edited) const {
    const DateTime picked = Picked();
    const bool isAsShown = std::memcmp(&picked, &shown_, sizeof picked) == 0;
    return isAsShown && (isShown_ || !edited) ? given_ : picked;
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
