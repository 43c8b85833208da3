// Typed access to a date and time picker.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/modules/module_instance.h"
#include "lib/timestmp.h"
#include "lib/windows/window.h"

namespace kx {

// Owned by whoever made it; its end is the end of its control.
class DateTimePicker final : public Window {
  public:
    // Adopts item `id` of a dialog.
    DateTimePicker(Window* dialog, std::uint32_t id);
    // Creates a picker for a time of day or for a date in the short format, in pixels of the parent's client
    // area. With both or neither asked for there is no control.
    DateTimePicker(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                   int height, bool time, bool date);
    ~DateTimePicker();

    // Shows a time; null: none, which only a picker with DTS_SHOWNONE takes. False: the control did not
    // accept it (no calendar date, or outside its range) and shows what it showed.
    bool SetDateTime(const DateTime* time);
    // False: the picker shows no time, and `time` is as it was. A picker for dates gives the time of day of
    // its last setting, one for times the date of its last setting.
    bool GetDateTime(DateTime& time) const;

    // Whether a WM_NOTIFY says that the time of this picker was changed.
    bool IsDateTimeChange(std::uint32_t id, const NMHDR* header) const;
};

}  // namespace kx
