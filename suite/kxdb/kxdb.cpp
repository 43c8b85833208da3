// kxdb.dll: the suite's data base, stand-in. Tests, physicians and technicians lie in an archive
// (archive/archive.h); queues, reports and clinics it does not keep: those exports answer 0, not done.
#include <windows.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "suite/kxdb/archive_service.h"
#include "suite/suite_log.h"
#include "suite/unattached.h"

namespace {

constexpr char kStaffFile[] = "staff.csv";  // beside the module; a new archive begins with its people
constexpr wchar_t kSetting[] = L"KX_ARCHIVE";
constexpr wchar_t kArchiveFile[] = L"kxdialogs\\archive.kxdb";  // in the user's application data
constexpr std::uintmax_t kLongestStaffFile = 1 << 20;
constexpr std::uint32_t kTooLongLine = 1;  // reported as the file's first line

std::filesystem::path ModuleFolder() {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ModuleFolder), &self);
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(self, path, MAX_PATH);
    return std::filesystem::path(path, path + length).parent_path();
}

std::filesystem::path Variable(const wchar_t* name) {
    std::array<wchar_t, 1024> text;
    const DWORD length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    return length < text.size() ? std::filesystem::path(text.data(), text.data() + length)
                                : std::filesystem::path();
}

kx::db::StaffList ReadStaff(kx::Reporter& log) {
    const std::filesystem::path path = ModuleFolder() / kStaffFile;
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);
    if (!failed && size > kLongestStaffFile) {
        log.LOGOEMERROR(kStaffFile, kTooLongLine, "file troppo lungo, ignorato");
        return {};
    }
    std::ifstream stream(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    return kx::db::ParseStaff(text, kStaffFile, log);
}

kx::db::ArchiveService::Settings Settings(kx::Reporter& log) {
    const std::filesystem::path set = Variable(kSetting);
    return {set.empty() ? Variable(L"APPDATA") / kArchiveFile : set, ReadStaff(log)};
}

kx::suite::SuiteLog suiteLog;
kx::db::ArchiveService service(Settings, suiteLog);

}  // namespace

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {
    service.Close();
}
extern "C" std::uint32_t __stdcall CONFIG() {
    return service.Opens() ? 1 : 0;
}
extern "C" std::uint32_t __stdcall RESET() {
    service.Close();
    return 1;
}

// Records lib/modules/archive_records.h.
extern "C" std::uint32_t __stdcall TEST_ADD(kx::ArchivedTest* test) {
    return service.Add(test);
}
extern "C" std::uint32_t __stdcall TEST_UPDATE(kx::ArchivedTest* test) {
    return service.Update(test);
}
extern "C" std::uint32_t __stdcall TEST_DELETE(kx::ArchivedTest* test) {
    return service.Delete(test);
}
extern "C" std::uint32_t __stdcall TEST_FETCH(kx::ArchivedTest* test) {
    return service.Fetch(test);
}
extern "C" std::uint32_t __stdcall TEST_LIST(const kx::ArchiveFilter* filter, std::uint32_t order,
                                             std::uint32_t first, KxTestListEntry* buffer,
                                             std::uint32_t capacity) {
    return service.List(filter, order, first, buffer, capacity);
}

// Records lib/modules/database_records.h; at most `capacity` are written, and how many is the answer.
extern "C" std::uint32_t __stdcall TECH_LIST(kx::TechnicianRecord* buffer, std::uint32_t capacity) {
    return service.ListTechnicians(0, buffer, capacity);
}
extern "C" std::uint32_t __stdcall PHYS_LIST(std::uint32_t first, kx::PhysicianRecord* buffer,
                                             std::uint32_t capacity) {
    return service.ListPhysicians(first, buffer, capacity);
}
extern "C" std::uint32_t __stdcall TECH_ADD(kx::TechnicianRecord* record) {
    return service.SaveTechnician(record, true, false);
}
extern "C" std::uint32_t __stdcall TECH_UPDATE(kx::TechnicianRecord* record) {
    return service.SaveTechnician(record, false, false);
}
extern "C" std::uint32_t __stdcall TECH_DELETE(kx::TechnicianRecord* record) {
    return service.SaveTechnician(record, false, true);
}
extern "C" std::uint32_t __stdcall PHYS_ADD(kx::PhysicianRecord* record) {
    return service.SavePhysician(record, true, false);
}
extern "C" std::uint32_t __stdcall PHYS_UPDATE(kx::PhysicianRecord* record) {
    return service.SavePhysician(record, false, false);
}
extern "C" std::uint32_t __stdcall PHYS_DELETE(kx::PhysicianRecord* record) {
    return service.SavePhysician(record, false, true);
}

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
KX_UNATTACHED_3(QUEUE_LIST)
KX_UNATTACHED_3(RPT_LIST)
KX_UNATTACHED_2(CLIN_LIST)
