// marker_field: one marker of a morphology dialog: its value and where the value came from.
#pragma once

#include <algorithm>
#include <cstdint>

namespace kx {

// Marker k of a view moves with this message plus k.
inline constexpr std::uint32_t kFirstMarkerNotification = 1345;
// What the record's words can hold, ms.
inline constexpr std::int32_t kLatestMarker = 0xFFFF;

// Where a field shows itself: its edit and its "man." box.
class MarkerDisplay {
  public:
    virtual void Show(std::int32_t ms, bool manual) = 0;

  protected:
    MarkerDisplay() = default;
    MarkerDisplay(const MarkerDisplay&) = default;
    MarkerDisplay& operator=(const MarkerDisplay&) = default;
    ~MarkerDisplay() = default;
};

// Times in ms from the start of the beat; 0 = the marker is absent.
class MarkerField {
  public:
    // slot: the marker's number in the view, from 0. display: outlives the field; null: shown nowhere.
    void Bind(std::uint32_t slot, MarkerDisplay* display) {
        notificationId_ = kFirstMarkerNotification + slot;
        display_ = display;
    }

    std::uint32_t NotificationId() const { return notificationId_; }
    std::int32_t Current() const { return current_; }
    // Whether the value is the reviewer's: it differs from what the analysis gave, or the analysis gave none.
    bool IsManual() const { return !hasAutomatic_ || current_ != automatic_; }

    // The value of the analysis. Shown with the next Refresh.
    void SetAutomatic(std::int32_t ms) {
        current_ = ms;
        automatic_ = ms;
        hasAutomatic_ = true;
    }
    // A value placed by hand for which no automatic one is known. Shown with the next Refresh.
    void SetManual(std::int32_t ms) {
        current_ = ms;
        automatic_ = 0;
        hasAutomatic_ = false;
    }
    // A new value beside the automatic one, shown at once. Returns IsManual.
    bool SetCurrent(std::int32_t ms) {
        current_ = ms;
        return Refresh();
    }
    // Shows the value. Returns IsManual.
    bool Refresh() {
        const bool manual = IsManual();
        if (display_ != nullptr) {
            display_->Show(current_, manual);
        }
        return manual;
    }
    // The view's message `id` with the value `ms`, taken as 0 to kLatestMarker. True: it was this marker, and
    // its value is not the automatic one.
    bool OnMarkerMoved(std::uint32_t id, std::int32_t ms) {
        return id == notificationId_ && SetCurrent(std::clamp(ms, std::int32_t{0}, kLatestMarker));
    }

  private:
    std::uint32_t notificationId_ = 0;
    MarkerDisplay* display_ = nullptr;
    std::int32_t current_ = 0;
    std::int32_t automatic_ = 0;
    bool hasAutomatic_ = false;
};

}  // namespace kx
