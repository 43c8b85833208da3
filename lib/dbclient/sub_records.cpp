#include "lib/dbclient/sub_records.h"

#include <algorithm>

namespace kx {

ValueSeries::ValueSeries(std::span<const KxSeriesPoint> values) noexcept
    : KxValueSeries{sizeof(KxValueSeries), KX_MARK_SERIES, 0, nullptr} {
    if (values.empty() || values.size() > KX_SERIES_POINTS) {
        return;
    }
    points = new (std::nothrow) KxSeriesPoint[values.size()];
    if (points != nullptr) {
        std::copy(values.begin(), values.end(), points);
        count = static_cast<std::uint32_t>(values.size());
    }
}

std::optional<std::int32_t> ValueAt(const KxValueSeries* series, std::uint32_t timeMs) {
    if (Understood(series) == nullptr || series->points == nullptr || series->count > KX_SERIES_POINTS) {
        return std::nullopt;
    }
    const std::span points(series->points, series->count);
    const auto later = std::find_if(points.begin(), points.end(),
                                    [timeMs](const KxSeriesPoint& point) { return point.timeMs > timeMs; });
    return later != points.begin() ? std::optional(std::prev(later)->value) : std::nullopt;
}

}  // namespace kx
