#include "tests/windows/modules/temp_folder.h"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace kx::test {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    static std::atomic<int> count{0};
    path_ = (fs::temp_directory_path() / ("kx_files_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++count))).string();
    fs::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(path_, ignored)) {
        SetFileAttributesA(entry.path().string().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    fs::remove_all(path_, ignored);
}

std::string TempFolder::Listing() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
        names.insert(entry.path().filename().string());
    }
    std::string listing;
    for (const std::string& name : names) {
        listing += (listing.empty() ? "" : " ") + name;
    }
    return listing;
}

void WriteBytes(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(none)";
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kx::test
