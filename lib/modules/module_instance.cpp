#include "lib/modules/module_instance.h"

#include "lib/modules/system_message.h"

namespace kx {

bool ModuleInstance::HasModule() const {
    if (handle_ == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return false;
    }
    return true;
}

bool ModuleInstance::Load(const char* fileName, DWORD flags) {
    handle_ = LoadLibraryExA(fileName, nullptr, flags);
    return handle_ != nullptr;
}

void ModuleInstance::Free() {
    if (handle_ != nullptr) {
        FreeLibrary(handle_);
        handle_ = nullptr;
    }
}

FARPROC ModuleInstance::GetProc(const char* exportName) const {
    return HasModule() ? GetProcAddress(handle_, exportName) : nullptr;
}

std::size_t ModuleInstance::LoadText(std::uint32_t id, char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    buffer[0] = '\0';
    if (!HasModule()) {
        return 0;
    }
    constexpr std::size_t kLongest = 0x7FFFFFFF;
    const int length = LoadStringA(handle_, id, buffer, static_cast<int>(size < kLongest ? size : kLongest));
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

HANDLE ModuleInstance::LoadImageById(std::uint32_t id, UINT type, int width, int height, UINT flags) const {
    return HasModule() ? LoadImageA(handle_, MAKEINTRESOURCEA(id), type, width, height, flags) : nullptr;
}

HICON ModuleInstance::LoadIconById(std::uint32_t id) const {
    return HasModule() ? LoadIconA(handle_, MAKEINTRESOURCEA(id)) : nullptr;
}

HCURSOR ModuleInstance::LoadCursorById(std::uint32_t id) const {
    return HasModule() ? LoadCursorA(handle_, MAKEINTRESOURCEA(id)) : nullptr;
}

HMENU ModuleInstance::LoadMenuById(std::uint32_t id) const {
    return HasModule() ? LoadMenuA(handle_, MAKEINTRESOURCEA(id)) : nullptr;
}

HACCEL ModuleInstance::LoadAcceleratorsById(std::uint32_t id) const {
    return HasModule() ? LoadAcceleratorsA(handle_, MAKEINTRESOURCEA(id)) : nullptr;
}

const void* ModuleInstance::LoadRaw(std::uint32_t id, const char* type, std::size_t& size) const {
    size = 0;
    HRSRC const found = HasModule() ? FindResourceA(handle_, MAKEINTRESOURCEA(id), type) : nullptr;
    HGLOBAL const loaded = found != nullptr ? LoadResource(handle_, found) : nullptr;
    const void* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes != nullptr) {
        size = SizeofResource(handle_, found);
    }
    return bytes;
}

std::uint32_t ModuleInstance::LogLastSystemError(Reporter& log) {
    const DWORD code = GetLastError();
    if (code == 0) {
        return 0;
    }
    char message[kSystemMessageSize];
    SystemMessage(code, "E = %d", message);
    return log.LOGSYSTEMERROR(message);
}

}  // namespace kx
