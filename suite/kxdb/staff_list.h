// The staff file: who may review and confirm reports. Portable.
//
// A text file (staff.csv beside the module), one person a line, as spreadsheets save it with semicolons:
//
//     ruolo;cognome;nome;iniziale;titolo
//     tecnico;Nicolò;Anna;M.;
//     medico;D'Andrea;Giosuè;;Specialista in cardiologia
//
// - ruolo: "tecnico" (may review) or "medico" (may confirm), in any case. A line whose first field is
//   "ruolo" is the heading.
// - cognome is required; cognome and nome hold up to 31 characters, iniziale up to 3, titolo, which is for
//   physicians only, up to 579. Blanks around a field do not count; a field in double quotes may hold
//   semicolons, and two quotes for one.
// - Empty lines and lines that begin with # are passed over.
// - UTF-8 or Windows-1252, told apart by their bytes. No field holds a question mark, a control character
//   or one that Windows-1252 does not have.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "lib/modules/database_records.h"
#include "lib/reporter.h"

namespace kx::db {

struct StaffList {
    std::vector<TechnicianRecord> technicians;  // both in the file's order
    std::vector<PhysicianRecord> physicians;
};

// A line that breaks a rule is left out and reported as a program error of `fileName` with the number of the
// line.
StaffList ParseStaff(std::string_view file, const char* fileName, Reporter& log);

// Copies records from index `first` on into a buffer for `capacity` of them and returns how many. 0 without a
// buffer.
template <class Record>
std::uint32_t ListRecords(const std::vector<Record>& records, std::uint32_t first, Record* buffer,
                          std::uint32_t capacity) {
    std::uint32_t written = 0;
    while (buffer != nullptr && written < capacity && first < records.size() - written) {
        buffer[written] = records[first + written];
        ++written;
    }
    return written;
}

}  // namespace kx::db
