// The names of reviewers and physicians: read from the suite's data base (staff_names_win.cpp), as the suite
// shows them and as a report stores them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "lib/modules/database_records.h"
#include "lib/reporter.h"

namespace kx {

// Records of a name list that are asked for at a time.
inline constexpr std::uint32_t kStaffListCapacity = 1024;

// Writes "first initial last", for a physician with ", title" behind it where there is a title. Each piece is
// written with the blank or comma before it, whole or not at all: the first one that does not fit ends the
// name. Fields are read up to their terminator or their end. Always terminated; nothing without a buffer or
// with size 0. Returns the length.
std::size_t DisplayName(const TechnicianRecord& record, char* buffer, std::size_t size);
std::size_t DisplayName(const PhysicianRecord& record, char* buffer, std::size_t size);

// Whether no field of the display name holds anything: a record that the data base counted and did not write.
bool IsNameless(const TechnicianRecord& record);
bool IsNameless(const PhysicianRecord& record);

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
