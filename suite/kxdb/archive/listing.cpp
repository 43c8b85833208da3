#include "suite/kxdb/archive/listing.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "lib/dbclient/test_record.h"
#include "suite/kxdb/archive/folded_text.h"

namespace kx::db {

namespace {

// The part of an entry that says something; behind it all is reserved.
constexpr std::size_t kEntrySize = offsetof(KxTestListEntry, reserved584);

// What the worklist calls the states of a report, by reportState.
constexpr const char* kStateWords[] = {"originale", "riletto", "confermato", "esterno"};

// The day as it may be typed.
std::string DayWords(const KxDateTime& time) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d/%02d/%04d", time.year, time.month, time.day,
                  time.day, time.month, time.year);
    return text;
}

}  // namespace

std::int64_t NumberOf(const KxDateTime& time) {
    if (time.year <= 0) {
        return 0;
    }
    const std::int64_t day = (time.year * std::int64_t{100} + time.month) * 100 + time.day;
    return ((day * 100 + time.hour) * 100 + time.minute) * 100 + time.second;
}

KxDateTime TimeOf(std::int64_t number) {
    KxDateTime time{};
    const auto take = [&number] {
        const auto part = static_cast<std::uint8_t>(number % 100);
        number /= 100;
        return part;
    };
    time.second = take();
    time.minute = take();
    time.hour = take();
    time.day = take();
    time.month = take();
    time.year = static_cast<std::int16_t>(number);
    return time;
}

TestBlockFault DescribeTest(std::span<const std::uint8_t> block, TestRow& row) {
    TestRecord test;
    const TestBlockFault fault = ReadTestBlock(block, test);
    if (fault != TestBlockFault::kNone) {
        return fault;
    }
    const auto entry = std::make_unique<TestListEntry>(test);
    const auto* bytes = reinterpret_cast<const char*>(static_cast<const KxTestListEntry*>(entry.get()));
    ListingRow& listing = row.listing;
    listing.entry.assign(bytes, kEntrySize);
    listing.entry.resize(listing.entry.find_last_not_of('\0') + 1);
    listing.time = NumberOf(test.acquisitionTime);
    listing.name = Folded(entry->sortName);
    listing.patientId =
        Folded(std::string_view(entry->patientId, strnlen(entry->patientId, sizeof entry->patientId)));
    listing.state = std::min<std::int64_t>(test.reportState, 3);
    listing.testType = test.TestType();
    listing.words = listing.name + ' ' + listing.patientId + ' ' + DayWords(test.acquisitionTime) + ' ' +
                    kStateWords[listing.state];
    row.block.assign(reinterpret_cast<const char*>(block.data()), block.size());
    return fault;
}

void FillEntry(const ListingRow& row, KxTestListEntry& entry) {
    auto* bytes = reinterpret_cast<char*>(&entry);
    std::memset(bytes, 0, sizeof entry);
    std::copy_n(row.entry.data(), std::min(row.entry.size(), kEntrySize), bytes);
    entry.reserved0[0] = static_cast<std::uint32_t>(row.id);
    entry.reserved0[1] = static_cast<std::uint32_t>(row.revision);
}

}  // namespace kx::db
