#include "suite/kxdb/staff_list.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "suite/text_file.h"

namespace kx::db {

namespace {

enum Field { kRole, kLastName, kFirstName, kInitial, kTitle, kFieldCount };
using Fields = std::array<std::string, kFieldCount>;

constexpr char kHeading[] = "ruolo";
constexpr char kTechnician[] = "tecnico";
constexpr char kPhysician[] = "medico";

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Takes the next field of a line, up to its semicolon. False: a quote is not closed, or something follows it.
bool TakeField(std::string_view& line, std::string& field) {
    field.clear();
    line = Trimmed(line);
    if (!line.starts_with('"')) {
        const std::size_t end = std::min(line.find(';'), line.size());
        field = Trimmed(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
        return true;
    }
    line.remove_prefix(1);
    for (;;) {
        const std::size_t quote = line.find('"');
        if (quote == line.npos) {
            return false;
        }
        field += line.substr(0, quote);
        line.remove_prefix(quote + 1);
        if (!line.starts_with('"')) {
            break;
        }
        field += '"';
        line.remove_prefix(1);
    }
    field = Trimmed(field);
    line = Trimmed(line);
    if (!line.empty() && line[0] != ';') {
        return false;
    }
    line.remove_prefix(std::min<std::size_t>(1, line.size()));
    return true;
}

// What is wrong with the line, null when it is a row of fields.
const char* SplitLine(std::string_view line, Fields& fields) {
    for (std::size_t i = 0; !line.empty(); ++i) {
        std::string field;
        if (!TakeField(line, field)) {
            return "virgolette non chiuse";
        }
        if (i < kFieldCount) {
            fields[i] = field;
        } else if (!field.empty()) {
            return "troppi campi";
        }
    }
    // A question mark is what is left of a character that Windows-1252 does not have.
    const auto isForeign = [](unsigned char c) { return c < ' ' || c == 0x7F || c == '?'; };
    for (const std::string& field : fields) {
        if (std::any_of(field.begin(), field.end(), isForeign)) {
            return "carattere non ammesso";
        }
    }
    return nullptr;
}

bool IsWord(std::string_view text, std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

// Copies a text that leaves room for its terminator. The record is zeroed.
template <std::size_t N>
bool SetText(char (&to)[N], const std::string& text) {
    std::memcpy(to, text.data(), std::min(text.size(), N - 1));
    return text.size() < N;
}

template <class Record>
const char* SetName(Record& record, const Fields& fields) {
    if (fields[kLastName].empty()) {
        return "cognome mancante";
    }
    return SetText(record.lastName, fields[kLastName]) && SetText(record.firstName, fields[kFirstName]) &&
                   SetText(record.initial, fields[kInitial])
               ? nullptr
               : "campo troppo lungo";
}

const char* AddTechnician(const Fields& fields, StaffList& staff) {
    TechnicianRecord record{};
    const char* fault = SetName(record, fields);
    if (fault == nullptr && !fields[kTitle].empty()) {
        fault = "un tecnico non ha titolo";
    }
    if (fault == nullptr) {
        staff.technicians.push_back(record);
    }
    return fault;
}

const char* AddPhysician(const Fields& fields, StaffList& staff) {
    PhysicianRecord record{};
    const char* fault = SetName(record, fields);
    if (fault == nullptr && !SetText(record.title, fields[kTitle])) {
        fault = "campo troppo lungo";
    }
    if (fault == nullptr) {
        staff.physicians.push_back(record);
    }
    return fault;
}

const char* AddLine(std::string_view line, StaffList& staff) {
    Fields fields;
    if (const char* fault = SplitLine(line, fields)) {
        return fault;
    }
    if (IsWord(fields[kRole], kTechnician)) {
        return AddTechnician(fields, staff);
    }
    if (IsWord(fields[kRole], kPhysician)) {
        return AddPhysician(fields, staff);
    }
    return IsWord(fields[kRole], kHeading) ? nullptr : "ruolo sconosciuto";
}

}  // namespace

StaffList ParseStaff(std::string_view file, const char* fileName, Reporter& log) {
    const std::string text = suite::TextOfFile(file);
    StaffList staff;
    std::uint32_t number = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = Trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        ++number;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        if (const char* fault = AddLine(line, staff)) {
            log.LOGOEMERROR(fileName, number, (std::string(fault) + ", riga ignorata").c_str());
        }
    }
    return staff;
}

}  // namespace kx::db
