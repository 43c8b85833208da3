// A value followed over the time of a test.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace kx {

// Points in the order of their times. The series of the lead codes 0 to 11 carry ten points, 0 to 90 ms.
class ValueSeries {
  public:
    struct Point {
        std::uint32_t timeMs;
        std::int32_t value;
    };

    ValueSeries() = default;
    explicit ValueSeries(std::vector<Point> points) : points_(std::move(points)) {}

    const std::vector<Point>& Points() const { return points_; }
    // The value last known at a time; nothing before the first point.
    std::optional<std::int32_t> ValueAt(std::uint32_t timeMs) const {
        std::optional<std::int32_t> value;
        for (const Point& point : points_) {
            if (point.timeMs > timeMs) {
                break;
            }
            value = point.value;
        }
        return value;
    }

  private:
    std::vector<Point> points_;
};

}  // namespace kx
