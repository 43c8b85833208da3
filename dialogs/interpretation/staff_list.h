// The name lists of the suite's data base.
#pragma once

#include <cstdint>
#include <memory>

#include "dialogs/interpretation/staff_names.h"
#include "lib/reporter.h"

namespace kx {

// What was read. `reported` is the number that the data base claims to have written; `count` is how many
// records there are to read, at most kStaffListCapacity and 0 without records.
template <class Record>
struct StaffList {
    std::unique_ptr<Record[]> records;
    std::uint32_t count = 0;
    std::uint32_t reported = 0;
};

// Where the caller reports what is missing; both are lines of the source "interp".
struct StaffListLines {
    std::uint32_t noBinding;  // kxdb.dll is missing or too old
    std::uint32_t noMemory;
};

// Binds kxdb.dll for the one call. A list that cannot be had is reported to log and empty.
StaffList<TechnicianRecord> ListTechnicians(const StaffListLines& lines, Reporter& log);
StaffList<PhysicianRecord> ListPhysicians(const StaffListLines& lines, Reporter& log);

}  // namespace kx
