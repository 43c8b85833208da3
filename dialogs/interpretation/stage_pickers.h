// When a stage of a report was reached: a picker for the date beside one for the time of day.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/timestmp.h"
#include "lib/windows/date_time_picker.h"

namespace kx {

class StagePickers {
  public:
    // Adopts two items of a dialog.
    StagePickers(Window* dialog, std::uint32_t dateId, std::uint32_t timeId);

    // Null unless both are there.
    HWND Handle() const { return time_.Handle() != nullptr ? date_.Handle() : nullptr; }
    void Hide();
    void Show(const DateTime& time);
    // The date of the one with the time of day of the other. As long as the pickers stand as Show left them
    // it is the time that was shown: a picker knows no hundredths, and a report that nobody touched keeps its
    // time. A time that is no date cannot be shown; in a report that was edited what the pickers show in its
    // place is the time.
    DateTime Value(bool edited) const;
    // Whether a WM_NOTIFY says that one of the two was changed.
    bool IsChange(std::uint32_t id, const NMHDR* header) const;

  private:
    DateTime Picked() const;

    DateTimePicker date_;
    DateTimePicker time_;
    DateTime given_ = DateTime::None();
    bool isShown_ = false;               // the pickers could show it
    DateTime shown_ = DateTime::None();  // what the pickers made of it
};

}  // namespace kx
