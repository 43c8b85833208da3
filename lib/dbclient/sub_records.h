// The sub-records that a host or a recorder hangs into a test: which of them the library understands.
#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <type_traits>

#include "include/kxdialogs.h"

namespace kx {

// The mark of a layout; see kxdialogs.h.
template <class Record>
inline constexpr std::uint32_t kMarkOf = 0;
template <>
inline constexpr std::uint32_t kMarkOf<KxValueSeries> = KX_MARK_SERIES;
template <>
inline constexpr std::uint32_t kMarkOf<KxStressStage> = KX_MARK_STAGE;
template <>
inline constexpr std::uint32_t kMarkOf<KxPressureReading> = KX_MARK_PRESSURE;
template <>
inline constexpr std::uint32_t kMarkOf<KxHolterData> = KX_MARK_HOLTER;
template <>
inline constexpr std::uint32_t kMarkOf<KxHolterSummary> = KX_MARK_SUMMARY;
template <>
inline constexpr std::uint32_t kMarkOf<KxSpirometry> = KX_MARK_SPIROMETRY;

// The record, or null when it has another size or another mark: its bytes mean something else then.
template <class Record>
Record* Understood(Record* record) {
    constexpr std::uint32_t kMark = kMarkOf<std::remove_const_t<Record>>;
    static_assert(kMark != 0);
    return record != nullptr && record->size == sizeof *record && record->mark == kMark ? record : nullptr;
}

// A new record, zero but for its size and mark. Null when memory is short.
template <class Record>
std::unique_ptr<Record> NewSubRecord() {
    static_assert(kMarkOf<Record> != 0);
    std::unique_ptr<Record> record(new (std::nothrow) Record{});
    if (record != nullptr) {
        record->size = sizeof *record;
        record->mark = kMarkOf<Record>;
    }
    return record;
}

// A KxValueSeries that was made here: it owns its points. Empty when memory was short or there are more than
// KX_SERIES_POINTS.
struct ValueSeries : KxValueSeries {
    explicit ValueSeries(std::span<const KxSeriesPoint> values = {}) noexcept;
    ~ValueSeries() { delete[] points; }
    ValueSeries(const ValueSeries&) = delete;
    ValueSeries& operator=(const ValueSeries&) = delete;
};

// The value last known at a time; nothing before the first point and of a series that is not understood.
std::optional<std::int32_t> ValueAt(const KxValueSeries* series, std::uint32_t timeMs);

}  // namespace kx
