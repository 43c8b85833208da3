// What a list of tests shows, taken out of a test's block, and the entries that the suite reads. Portable.
#pragma once

#include <span>

#include "lib/dbclient/test_block.h"
#include "lib/dbclient/test_list_entry.h"
#include "suite/kxdb/archive/archive_file.h"

namespace kx::db {

// A time as the archive keeps it, yyyymmddhhmmss; 0 for a time without a year, and back.
std::int64_t NumberOf(const KxDateTime& time);
KxDateTime TimeOf(std::int64_t number);

// The row of a test, without what the archive gives it. A fault: the block is no whole test.
TestBlockFault DescribeTest(std::span<const std::uint8_t> block, TestRow& row);

// The first reserved words of the entry hold the test's id and revision.
void FillEntry(const ListingRow& row, KxTestListEntry& entry);

}  // namespace kx::db
