// A file written beside the old one and renamed over it.
#include "lib/replacing_file.h"

#include <windows.h>

#include <cstring>

namespace kx {
namespace {

// The rename stays within one directory, where it is atomic. ReplaceFile, which would also carry the old
// file's own access rights over, may fail with the old file gone and the new one under its temporary name.
bool Rename(const wchar_t* from, const std::wstring& to) {
    return MoveFileExW(from, to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

// A file, not a directory, that may be written, or nothing at all.
bool MayBeReplaced(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0;
}

std::wstring DirectoryOf(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L"\\/");
    return end != std::wstring::npos ? path.substr(0, end + 1) : L".";
}

std::wstring WidePath(const char* path) {
    const int length = static_cast<int>(std::strlen(path));
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, path, length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_ACP, 0, path, length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace

ReplacingFile::ReplacingFile(const char* path) : path_(WidePath(path)) {}

bool ReplacingFile::CreateAlways(Reporter* /*log*/) {
    bytes_.clear();
    return true;
}

bool ReplacingFile::Write(const void* bytes, std::uint32_t count) {
    const char* const first = static_cast<const char*>(bytes);
    bytes_.insert(bytes_.end(), first, first + count);
    return true;
}

bool ReplacingFile::WriteThrough(void* file, const char* bytes, std::uint32_t count) {
    DWORD written = 0;
    return WriteFile(file, bytes, count, &written, nullptr) && written == count && FlushFileBuffers(file);
}

bool ReplacingFile::Commit() {
    wchar_t temporary[MAX_PATH];
    if (!MayBeReplaced(path_) || GetTempFileNameW(DirectoryOf(path_).c_str(), L"kxs", 0, temporary) == 0) {
        return false;
    }
    HANDLE const file =
        CreateFileW(temporary, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool done = file != INVALID_HANDLE_VALUE;
    if (done) {
        done = WriteThrough(file, bytes_.data(), static_cast<std::uint32_t>(bytes_.size()));
        CloseHandle(file);
    }
    done = done && Rename(temporary, path_);
    if (!done) {
        DeleteFileW(temporary);
    }
    return done;
}

}  // namespace kx
