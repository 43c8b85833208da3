// kxdb.dll: the suite's data base, stand-in. It lists the technicians and physicians of a text file beside
// the module (staff_list.h says how it is written); tests, queues, reports and clinics it does not keep:
// those exports answer 0, not done.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "suite/kxdb/staff_list.h"
#include "suite/suite_log.h"
#include "suite/unattached.h"

namespace {

constexpr char kStaffFile[] = "staff.csv";
constexpr std::uintmax_t kLongestFile = 1 << 20;
constexpr std::uint32_t kTooLongLine = 1;  // reported as the file's first line

std::filesystem::path StaffPath() {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&StaffPath), &self);
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(self, path, MAX_PATH);
    return std::filesystem::path(path, path + length).replace_filename(kStaffFile);
}

// The list as the file was when it was last looked at; read again when the file has changed, so that an edit
// is seen in the next pane and a broken line is reported once for each state of the file.
class StaffFile {
  public:
    const kx::db::StaffList& Current() {
        std::error_code failed;
        const std::filesystem::path path = StaffPath();
        const auto changed = std::filesystem::last_write_time(path, failed);
        const auto size = failed ? 0 : std::filesystem::file_size(path, failed);
        if (failed) {
            seen_.reset();
            staff_ = {};
        } else if (seen_ != State{changed, size}) {
            staff_ = Read(path, size);
            seen_ = State{changed, size};
        }
        return staff_;
    }

  private:
    struct State {
        std::filesystem::file_time_type changed;
        std::uintmax_t size;
        bool operator==(const State&) const = default;
    };

    static kx::db::StaffList Read(const std::filesystem::path& path, std::uintmax_t size) {
        kx::suite::SuiteLog log;
        if (size > kLongestFile) {
            log.LOGOEMERROR(kStaffFile, kTooLongLine, "file troppo lungo, ignorato");
            return {};
        }
        std::ifstream stream(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        return kx::db::ParseStaff(text, kStaffFile, log);
    }

    std::optional<State> seen_;
    kx::db::StaffList staff_;
};

StaffFile staffFile;

// No exception leaves the module: an empty list is what short memory comes to.
template <class Record>
std::uint32_t List(std::vector<Record> kx::db::StaffList::*records, std::uint32_t first, Record* buffer,
                   std::uint32_t capacity) {
    if (buffer == nullptr || capacity == 0) {
        return 0;
    }
    try {
        return kx::db::ListRecords(staffFile.Current().*records, first, buffer, capacity);
    } catch (...) {
        kx::suite::SuiteLog().LOGEXCEPTION(kStaffFile);
        return 0;
    }
}

}  // namespace

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

// Records lib/modules/database_records.h; at most `capacity` are written, and how many is the answer.
extern "C" std::uint32_t __stdcall TECH_LIST(kx::TechnicianRecord* buffer, std::uint32_t capacity) {
    return List(&kx::db::StaffList::technicians, 0, buffer, capacity);
}
extern "C" std::uint32_t __stdcall PHYS_LIST(std::uint32_t first, kx::PhysicianRecord* buffer,
                                             std::uint32_t capacity) {
    return List(&kx::db::StaffList::physicians, first, buffer, capacity);
}

KX_UNATTACHED_1(TEST_ADD)
KX_UNATTACHED_1(TEST_UPDATE)
KX_UNATTACHED_1(TEST_DELETE)
KX_UNATTACHED_1(TEST_FETCH)
KX_UNATTACHED_1(PHYS_ADD)
KX_UNATTACHED_1(PHYS_UPDATE)
KX_UNATTACHED_1(PHYS_DELETE)
KX_UNATTACHED_1(QUEUE_ADD)
KX_UNATTACHED_1(QUEUE_UPDATE)
KX_UNATTACHED_1(QUEUE_DELETE)
KX_UNATTACHED_1(RPT_ADD)
KX_UNATTACHED_1(RPT_UPDATE)
KX_UNATTACHED_1(RPT_DELETE)
KX_UNATTACHED_1(RPT_FETCH)
KX_UNATTACHED_1(CLIN_ADD)
KX_UNATTACHED_1(CLIN_UPDATE)
KX_UNATTACHED_1(CLIN_DELETE)
KX_UNATTACHED_1(TECH_ADD)
KX_UNATTACHED_1(TECH_UPDATE)
KX_UNATTACHED_1(TECH_DELETE)
KX_UNATTACHED_5(TEST_LIST)
KX_UNATTACHED_3(QUEUE_LIST)
KX_UNATTACHED_3(RPT_LIST)
KX_UNATTACHED_2(CLIN_LIST)
KX_UNATTACHED_0(CONFIG)
KX_UNATTACHED_0(RESET)
