// The records in which the suite's data base answers TECH_LIST and PHYS_LIST. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kx {

// Texts are zero-terminated Windows-1252. The suite shows a person as "first initial last" and, behind a
// comma, a physician's title.
struct TechnicianRecord {
    std::uint8_t reserved0[20];
    char lastName[32];
    char firstName[32];
    char initial[4];
};

struct PhysicianRecord {
    std::uint8_t reserved0[20];
    char lastName[32];
    char firstName[32];
    char initial[4];
    char title[580];  // what the suite keeps behind a short one stands behind its terminator
};

static_assert(sizeof(TechnicianRecord) == 88);
static_assert(offsetof(TechnicianRecord, lastName) == 20 && offsetof(TechnicianRecord, firstName) == 52 &&
              offsetof(TechnicianRecord, initial) == 84);
static_assert(sizeof(PhysicianRecord) == 668);
static_assert(offsetof(PhysicianRecord, lastName) == 20 && offsetof(PhysicianRecord, firstName) == 52 &&
              offsetof(PhysicianRecord, initial) == 84 && offsetof(PhysicianRecord, title) == 88);

}  // namespace kx
