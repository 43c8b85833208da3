// Files on the disk for tests.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace kx::test {

// A folder of its own for one test, gone with everything in it at the end.
class TempFolder {
  public:
    TempFolder() {
        char name[MAX_PATH] = "";
        GetTempFileNameA(std::filesystem::temp_directory_path().string().c_str(), "kxf", 0, name);
        DeleteFileA(name);
        std::filesystem::create_directory(path_ = name);
    }
    ~TempFolder() {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(path_, ignored)) {
            SetFileAttributesA(entry.path().string().c_str(), FILE_ATTRIBUTE_NORMAL);
        }
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    // The full path of a name in the folder.
    std::string Named(std::string_view name) const { return path_ + "\\" + std::string(name); }
    std::set<std::string> Listing() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

  private:
    std::string path_;
};

inline void WriteBytes(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// "(none)" when the file cannot be read.
inline std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(none)";
}

// Keeps a file from being opened by others, but for what it shares, while it lives.
class LockedFile {
  public:
    explicit LockedFile(const std::string& path, DWORD shared = 0)
        : handle_(CreateFileA(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr)) {}
    ~LockedFile() { CloseHandle(handle_); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

  private:
    HANDLE handle_;
};

}  // namespace kx::test
