// Files read and written whole through Win32, each failure reported once.
#include "lib/fileutil.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <new>

#include "lib/modules/system_message.h"

namespace kx {
namespace {

constexpr char kSource[] = "..\\..\\lib\\fileutil";
constexpr std::uint32_t kNoNameLine = 212;
constexpr std::uint32_t kOpenFailedLine = 231;
constexpr std::uint32_t kReadFailedLine = 268;
constexpr std::uint32_t kNoContentMemoryLine = 312;
constexpr std::uint32_t kInvalidPositionLine = 386;
constexpr std::uint32_t kOtherPositionLine = 391;

constexpr DWORD kInvalidData = 13;  // ERROR_INVALID_DATA
constexpr std::uint32_t kLargestContent = 0xFFFFFFFE;

void ReportNoName(Reporter* log) {
    if (log != nullptr) {
        log->LOGOEMERROR(kSource, kNoNameLine, "Filename NULL");
    }
}

void ReportFile(Reporter* log, const char* what, std::uint32_t line, const char* name) {
    if (log != nullptr) {
        log->LOGSYSTEMERROR(what);
        log->LOGOEMERROR(kSource, line, name);
    }
}

// The system's message for `code` line by line, then the file that it is about.
void ReportCreation(Reporter* log, DWORD code, const char* name) {
    if (log == nullptr) {
        return;
    }
    char message[kSystemMessageSize];
    SystemMessage(code, "E = %d", message);
    for (char* line = message; *line != '\0';) {
        char* const end = std::strstr(line, "\r\n");
        if (end != nullptr) {
            *end = '\0';
        }
        if (*line != '\0') {
            log->LOGSYSTEMERROR(line);
        }
        if (end == nullptr) {
            break;
        }
        line = end + 2;
    }
    char text[kSystemMessageSize + MAX_PATH];
    std::snprintf(text, sizeof text, "Could not open %s", name);
    log->LOGSYSTEMERROR(text);
}

}  // namespace

DataFile::DataFile() : handle_(INVALID_HANDLE_VALUE) {}

DataFile::~DataFile() {
    Close();
}

void DataFile::FreeContent() {
    content_.reset();
    capacity_ = 0;
    length_ = 0;
}

bool DataFile::IsOpen() const {
    return handle_ != INVALID_HANDLE_VALUE;
}

void DataFile::Close() {
    if (IsOpen()) {
        CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }
    length_ = 0;
}

bool DataFile::Create(bool overwrite, Reporter* log) {
    return CreateNamed(FileName(0), overwrite, log);
}

bool DataFile::CreateNamed(const char* name, bool overwrite, Reporter* log) {
    Close();
    if (name == nullptr) {
        ReportNoName(log);
        return false;
    }
    handle_ = CreateFileA(name, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          overwrite ? CREATE_ALWAYS : CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!IsOpen()) {
        ReportCreation(log, GetLastError(), name);
        return false;
    }
    return true;
}

bool DataFile::Open(const char* name, bool readWrite, Reporter* log, std::uint64_t* size) {
    Close();
    FreeContent();
    if (name == nullptr) {
        ReportNoName(log);
        return false;
    }
    handle_ = CreateFileA(name, readWrite ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                          readWrite ? 0 : FILE_SHARE_READ, nullptr, readWrite ? OPEN_ALWAYS : OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr);
    LARGE_INTEGER bytes{};
    // A device opens as well, but has no size.
    if (!IsOpen() || !GetFileSizeEx(handle_, &bytes)) {
        Close();
        ReportFile(log, "Could not open File", kOpenFailedLine, name);
        return false;
    }
    *size = static_cast<std::uint64_t>(bytes.QuadPart);
    length_ = bytes.HighPart == 0 ? bytes.LowPart : 0xFFFFFFFF;
    return true;
}

bool DataFile::OpenRead(Reporter* log) {
    std::uint64_t size = 0;
    return Open(FileName(0), false, log, &size);
}

bool DataFile::OpenReadWrite(Reporter* log) {
    std::uint64_t size = 0;
    return Open(FileName(0), true, log, &size);
}

bool DataFile::ReadAll(std::uint32_t index, std::uint32_t limit, Reporter* log) {
    const char* const name = FileName(index);
    std::uint64_t size = 0;
    if (!Open(name, false, log, &size)) {
        return false;
    }
    const std::uint64_t wanted = limit != 0 ? limit : size;
    if (wanted <= kLargestContent) {
        content_.reset(new (std::nothrow) char[static_cast<std::size_t>(wanted) + 1]);
    }
    if (content_ == nullptr) {
        Close();
        if (log != nullptr) {
            log->LOGMEMORYERROR(kSource, kNoContentMemoryLine);
        }
        return false;
    }
    capacity_ = static_cast<std::uint32_t>(wanted);
    contentIndex_ = index;
    if (limit != 0 && size > limit && log != nullptr) {
        log->LOGSYSTEMERROR("All records might not be read - buffer too small");
    }
    if (!ReadContent(name, log)) {
        Close();
        FreeContent();
        return false;
    }
    return true;
}

bool DataFile::ReadContent(const char* name, Reporter* log) {
    length_ = 0;
    // A file on a network may come in pieces.
    while (length_ < capacity_) {
        DWORD read = 0;
        if (!ReadFile(handle_, content_.get() + length_, capacity_ - length_, &read, nullptr)) {
            ReportFile(log, "Could not read File", kReadFailedLine, name);
            return false;
        }
        if (read == 0) {
            break;
        }
        length_ += read;
    }
    content_[length_] = '\0';
    return true;
}

std::uint32_t DataFile::Read(std::uint32_t count, void* buffer, Reporter* log) {
    DWORD read = 0;
    if (!IsOpen() || buffer == nullptr || !ReadFile(handle_, buffer, count, &read, nullptr)) {
        ReportFile(log, "Could not read File", kReadFailedLine, names_ != nullptr ? names_.get() : "");
        return 0;
    }
    return read;
}

bool DataFile::Write(const void* buffer, std::uint32_t count) {
    if (!IsOpen()) {
        SetLastError(kInvalidData);
        return false;
    }
    DWORD written = 0;
    return WriteFile(handle_, buffer, count, &written, nullptr) && written == count;
}

bool DataFile::Seek(std::uint32_t position, Reporter* log) {
    // With the high part given, the low one is taken as unsigned.
    LONG high = 0;
    const DWORD reached = IsOpen() ? SetFilePointer(handle_, static_cast<LONG>(position), &high, FILE_BEGIN)
                                   : INVALID_SET_FILE_POINTER;
    if (reached == INVALID_SET_FILE_POINTER) {
        if (log != nullptr) {
            log->LOGOEMERROR(kSource, kInvalidPositionLine, "Invalid position");
        }
        return false;
    }
    if (reached != position) {
        if (log != nullptr) {
            log->LOGOEMERROR(kSource, kOtherPositionLine, "unknown position error");
        }
        return false;
    }
    return true;
}

bool DataFile::CopyOut(void* destination, std::uint32_t offset, std::uint32_t count) const {
    const std::uint64_t end = std::uint64_t{offset} + count;
    if (content_ == nullptr || destination == nullptr || end > capacity_ || end > length_) {
        return false;
    }
    std::memcpy(destination, content_.get() + offset, count);
    return true;
}

std::int32_t DataFile::ReadLine(std::uint32_t offset, char* destination, std::int32_t maxLength) const {
    return ReadLineAt(content_.get(), length_, offset, destination, maxLength);
}

bool DataFile::Rewrite(std::uint32_t newLength) {
    // Of a multiple selection the file that the content came from.
    const bool written =
        CreateNamed(FileName(contentIndex_), true, nullptr) && Write(content_.get(), newLength);
    length_ = newLength;
    content_[newLength] = '\0';
    return written;
}

bool DataFile::DeleteRange(std::uint32_t from, std::uint32_t to) {
    if (content_ == nullptr || from >= to || to > length_) {
        return false;
    }
    return Rewrite(RemoveBytes(content_.get(), length_, from, to));
}

bool DataFile::InsertAt(std::uint32_t position, const void* bytes, std::int32_t count) {
    if (content_ == nullptr || bytes == nullptr || count < 1 || position > length_ ||
        std::uint64_t{length_} + static_cast<std::uint32_t>(count) >= capacity_) {
        return false;
    }
    return Rewrite(InsertBytes(content_.get(), length_, position, static_cast<const char*>(bytes),
                               static_cast<std::uint32_t>(count)));
}

}  // namespace kx
