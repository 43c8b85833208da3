// Files on the disk for tests.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kx::test {

// A folder of its own for one test, gone with everything in it at the end.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    // The full path of a name in the folder.
    std::string Named(std::string_view name) const { return path_ + "\\" + std::string(name); }
    // The names in the folder, sorted and separated by a blank.
    std::string Listing() const;

  private:
    std::string path_;
};

void WriteBytes(const std::string& path, std::string_view bytes);
// "(none)" when the file cannot be read.
std::string ReadBytes(const std::string& path);

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
