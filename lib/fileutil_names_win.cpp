// DataFile: names, the file as a whole, and FileFinder.
#include <windows.h>

#include <cstring>
#include <new>
#include <utility>

#include "lib/fileutil.h"

namespace kx {
namespace {

constexpr char kNoTempDirectory[] = "\\TEMP";

// Shared by all finders.
char foundName[MAX_PATH];

const char* Found(const WIN32_FIND_DATAA& entry, bool* isDirectory) {
    static_assert(sizeof foundName == sizeof entry.cFileName);
    std::memcpy(foundName, entry.cFileName, sizeof foundName);
    if (isDirectory != nullptr) {
        *isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }
    return foundName;
}

}  // namespace

bool DataFile::SetName(const char* name) {
    Close();
    const std::size_t length = name != nullptr ? std::strlen(name) : kNamesSize;
    // Made anew, because the name may lie in the old one.
    std::unique_ptr<char[]> names;
    if (length + 1 < kNamesSize) {
        names.reset(new (std::nothrow) char[kNamesSize]());
    }
    if (names != nullptr) {
        std::memcpy(names.get(), name, length);
    }
    names_ = std::move(names);
    multiSelect_ = false;
    return names_ != nullptr;
}

bool DataFile::MakeTempName(const char* directory, const char* prefix) {
    char name[MAX_PATH];
    return GetTempFileNameA(directory, prefix, 0, name) != 0 && SetName(name);
}

void DataFile::TempDirectory(char* buffer, std::uint32_t size) {
    if (buffer == nullptr || size == 0) {
        return;
    }
    const DWORD length = GetEnvironmentVariableA("TEMP", buffer, size);
    if (length != 0 && length < size) {
        return;
    }
    const bool fits = size >= sizeof kNoTempDirectory;
    std::memcpy(buffer, fits ? kNoTempDirectory : "", fits ? sizeof kNoTempDirectory : 1);
}

const char* DataFile::FileName(std::uint32_t index) {
    if (names_ == nullptr) {
        return nullptr;
    }
    return FileNameAt(*reinterpret_cast<char(*)[kNamesSize]>(names_.get()), multiSelect_, index,
                      composedName_);
}

bool DataFile::LastWriteTime(SYSTEMTIME* systemTime) const {
    FILETIME time{};
    return IsOpen() && systemTime != nullptr && GetFileTime(handle_, nullptr, nullptr, &time) &&
           FileTimeToSystemTime(&time, systemTime);
}

bool DataFile::SetFileTimes(const SYSTEMTIME& time) {
    FILETIME fileTime{};
    return IsOpen() && SystemTimeToFileTime(&time, &fileTime) &&
           SetFileTime(handle_, &fileTime, &fileTime, &fileTime);
}

bool DataFile::Delete(std::uint32_t index) {
    Close();
    const char* const name = FileName(index);
    return name != nullptr && DeleteFileA(name);
}

bool DataFile::CopyTo(std::uint32_t index, const char* target) {
    return IsOpen() && CopyNamedTo(index, target);
}

bool DataFile::CopyNamedTo(std::uint32_t index, const char* target) {
    const char* const name = FileName(index);
    return name != nullptr && target != nullptr && CopyFileA(name, target, FALSE);
}

bool DataFile::MoveTo(std::uint32_t index, const char* target) {
    Close();
    const char* const name = FileName(index);
    // One call deletes the target and moves the file, so that a move that fails has not cost the target.
    return name != nullptr && target != nullptr &&
           MoveFileExA(name, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED);
}

bool DataFile::IsReadOnly() {
    const char* const name = FileName(0);
    const DWORD attributes = name != nullptr ? GetFileAttributesA(name) : INVALID_FILE_ATTRIBUTES;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool DataFile::ClearReadOnly() {
    const char* const name = FileName(0);
    const DWORD attributes = name != nullptr ? GetFileAttributesA(name) : INVALID_FILE_ATTRIBUTES;
    return attributes != INVALID_FILE_ATTRIBUTES &&
           SetFileAttributesA(name, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

FileFinder::FileFinder() : search_(INVALID_HANDLE_VALUE) {}

FileFinder::~FileFinder() {
    Close();
}

const char* FileFinder::First(const char* pattern, bool* isDirectory) {
    Close();
    WIN32_FIND_DATAA entry;
    search_ = pattern != nullptr ? FindFirstFileA(pattern, &entry) : INVALID_HANDLE_VALUE;
    return search_ != INVALID_HANDLE_VALUE ? Found(entry, isDirectory) : nullptr;
}

const char* FileFinder::Next(bool* isDirectory) {
    WIN32_FIND_DATAA entry;
    return search_ != INVALID_HANDLE_VALUE && FindNextFileA(search_, &entry) ? Found(entry, isDirectory)
                                                                             : nullptr;
}

void FileFinder::Close() {
    if (search_ != INVALID_HANDLE_VALUE) {
        FindClose(search_);
        search_ = INVALID_HANDLE_VALUE;
    }
}

}  // namespace kx
