// Any bytes as the staff file: every record that comes of them is terminated and names somebody.
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "suite/kxdb/staff_list.h"

namespace {

template <class Record>
void RequireName(const Record& record) {
    const auto isTerminated = [](const auto& field) {
        return std::memchr(field, '\0', sizeof field) != nullptr;
    };
    if (record.lastName[0] == '\0' || !isTerminated(record.lastName) || !isTerminated(record.firstName) ||
        !isTerminated(record.initial)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::SilentReporter log;
    const kx::db::StaffList staff =
        kx::db::ParseStaff(std::string_view(reinterpret_cast<const char*>(data), size), "staff.csv", log);
    for (const auto& technician : staff.technicians) {
        RequireName(technician);
    }
    for (const auto& physician : staff.physicians) {
        RequireName(physician);
    }
    return 0;
}
