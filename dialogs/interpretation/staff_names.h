// The names of reviewers and physicians as the suite shows them and as a report stores them. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lib/modules/database_records.h"

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

}  // namespace kx
