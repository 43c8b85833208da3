#include "host/clients/suite_module.h"

#include <cwchar>
#include <vector>

#include "host/windows/program_folder.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

using ControlFunction = void(__stdcall*)();

std::uint32_t VersionOf(const std::filesystem::path& file) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(file.c_str(), &ignored);
    std::vector<unsigned char> record(size);
    void* fixed = nullptr;
    UINT length = 0;
    if (size == 0 || !GetFileVersionInfoW(file.c_str(), 0, size, record.data()) ||
        !VerQueryValueW(record.data(), L"\\", &fixed, &length) || length < sizeof(VS_FIXEDFILEINFO)) {
        return 0;
    }
    const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(fixed);
    const std::uint32_t high = info.dwFileVersionMS;
    const std::uint32_t low = info.dwFileVersionLS;
    return ((((((high >> 16) << 8) + (high & 0xFFFF)) << 8) + (low >> 16)) << 8) + (low & 0xFFFF);
}

}  // namespace

SuiteModule::SuiteModule(const wchar_t* fileName, std::uint32_t oldestVersion) {
    const std::filesystem::path file = ProgramFolder() / fileName;
    UniqueModule module(LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!module) {
        failure_ = std::wstring(fileName) + L": " + SystemMessage(GetLastError(), fileName);
        return;
    }
    const std::uint32_t version = VersionOf(file);
    if (version < oldestVersion) {
        wchar_t text[64];
        std::swprintf(text, std::size(text), L": versione %lX, serve almeno %lX",
                      static_cast<unsigned long>(version), static_cast<unsigned long>(oldestVersion));
        failure_ = std::wstring(fileName) + text;
        return;
    }
    module_ = std::move(module);
    if (const auto start = Find<ControlFunction>("LIBSTART")) {
        start();
    }
}

SuiteModule::~SuiteModule() {
    if (const auto stop = Find<ControlFunction>("LIBSTOP")) {
        stop();
    }
}

}  // namespace kxhost
