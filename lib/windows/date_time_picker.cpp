#include "lib/windows/date_time_picker.h"

#include <commctrl.h>

#include "lib/windows/common_controls.h"

namespace kx {
static_assert(sizeof(DateTimePicker) == sizeof(Window));

namespace {

constexpr DWORD kTimeStyle = 0x50010009;  // WS_CHILD, WS_VISIBLE, WS_TABSTOP, DTS_TIMEFORMAT
constexpr DWORD kDateStyle = 0x50010000;  // WS_CHILD, WS_VISIBLE, WS_TABSTOP, short date format

}  // namespace

DateTimePicker::DateTimePicker(Window* dialog, std::uint32_t id) : Window(dialog, id) {}

DateTimePicker::DateTimePicker(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y,
                               int width, int height, bool time, bool date)
    : Window(nullptr, parent, id) {
    if (time != date) {
        UseCommonControls();
        CreateControl(DATETIMEPICK_CLASSA, "", module.Handle(), time ? kTimeStyle : kDateStyle, 0, x, y,
                      width, height);
    }
}

DateTimePicker::~DateTimePicker() {
    Destroy();
}

bool DateTimePicker::SetDateTime(const DateTime* time) {
    // Some versions of the control want a record for "none" as well.
    SYSTEMTIME system{};
    if (time != nullptr) {
        time->ToSystemTime(system);
    }
    const WPARAM kind = time == nullptr ? GDT_NONE : GDT_VALID;
    return SendMsg(DTM_SETSYSTEMTIME, kind, reinterpret_cast<LPARAM>(&system)) != 0;
}

bool DateTimePicker::GetDateTime(DateTime& time) const {
    SYSTEMTIME system{};
    // Without a control the answer is 0 too, which is GDT_VALID.
    if (!IsValid() || SendMsg(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&system)) != GDT_VALID) {
        return false;
    }
    time.SetFromSystemTime(system);
    return true;
}

bool DateTimePicker::IsDateTimeChange(std::uint32_t id, const NMHDR* header) const {
    return id == Id() && header != nullptr && header->code == DTN_DATETIMECHANGE;
}

}  // namespace kx
