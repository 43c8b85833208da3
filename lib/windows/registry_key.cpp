#include "lib/windows/registry_key.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace kx {
namespace {

constexpr std::uint32_t kBinary16 = 16;

void Clear(char* buffer, std::uint32_t size) {
    if (buffer != nullptr && size > 0) {
        buffer[0] = '\0';
    }
}

}  // namespace

RegistryKey::RegistryKey(const char* path) {
    OpenOrCreate(path);
}

RegistryKey::RegistryKey(const ResourceTexts& module, std::uint32_t stringId) {
    char path[256 + 1];
    if (module.LoadText(stringId, path, sizeof path) > 0) {
        OpenOrCreate(path);
    }
}

RegistryKey::RegistryKey(const char* path, const char* subPath) {
    if (path == nullptr || subPath == nullptr) {
        return;
    }
    // A path cut short would be another key.
    char joined[1024];
    const int length = std::snprintf(joined, sizeof joined, "%s\\%s", path, subPath);
    if (length > 0 && static_cast<std::size_t>(length) < sizeof joined) {
        OpenOrCreate(joined);
    }
}

RegistryKey::RegistryKey(HKEY parentKey, const char* subPath, ReadOnly) {
    if (subPath == nullptr || RegOpenKeyExA(parentKey, subPath, 0, KEY_READ, &key_) != ERROR_SUCCESS) {
        key_ = nullptr;
    }
}

RegistryKey::~RegistryKey() {
    if (key_ != nullptr) {
        RegCloseKey(key_);
    }
}

void RegistryKey::OpenOrCreate(const char* path) {
    // The system takes a null path for the hive itself.
    if (path == nullptr) {
        return;
    }
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_ALL_ACCESS, &key_) == ERROR_SUCCESS) {
        return;
    }
    char keyClass[] = "CLASS";
    if (RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, keyClass, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &key_, nullptr) != ERROR_SUCCESS) {
        key_ = nullptr;
    }
}

bool RegistryKey::Write(const char* name, DWORD type, const void* bytes, std::size_t length) {
    return key_ != nullptr && bytes != nullptr && length <= 0xFFFFFFFF &&
           RegSetValueExA(key_, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(length)) ==
               ERROR_SUCCESS;
}

bool RegistryKey::SetString(const char* name, const char* text) {
    return text != nullptr && Write(name, REG_SZ, text, std::strlen(text) + 1);
}

bool RegistryKey::SetDword(const char* name, std::uint32_t value) {
    return Write(name, REG_DWORD, &value, sizeof value);
}

bool RegistryKey::SetBool(const char* name, int flag) {
    return SetDword(name, flag > 0 ? 1 : 0);
}

bool RegistryKey::SetBinary16(const char* name, const void* bytes) {
    return SetBinary(name, bytes, kBinary16);
}

bool RegistryKey::SetBinary(const char* name, const void* bytes, std::uint32_t length) {
    return Write(name, REG_BINARY, bytes, length);
}

bool RegistryKey::GetString(const char* name, char* buffer, std::uint32_t size) const {
    Clear(buffer, size);
    if (key_ == nullptr || buffer == nullptr || size == 0) {
        return false;
    }
    DWORD type = REG_NONE;
    DWORD length = size;
    if (RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &length) !=
            ERROR_SUCCESS ||
        type != REG_SZ) {
        buffer[0] = '\0';
        return false;
    }
    // Another program may have stored the text without its terminator.
    if (length < size) {
        buffer[length] = '\0';
    } else if (buffer[size - 1] != '\0') {
        buffer[0] = '\0';
        return false;
    }
    return true;
}

std::uint32_t RegistryKey::GetBinary(const char* name, void* buffer, std::uint32_t size) const {
    DWORD type = REG_NONE;
    DWORD length = size;
    const bool read =
        key_ != nullptr && buffer != nullptr &&
        RegQueryValueExA(key_, name, nullptr, &type, static_cast<BYTE*>(buffer), &length) == ERROR_SUCCESS &&
        type == REG_BINARY;
    return read ? length : 0;
}

bool RegistryKey::GetDword(const char* name, std::uint32_t* value) const {
    if (value == nullptr) {
        return false;
    }
    *value = 0;
    DWORD type = REG_NONE;
    DWORD stored = 0;
    DWORD length = sizeof stored;
    if (key_ == nullptr ||
        RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(&stored), &length) !=
            ERROR_SUCCESS ||
        type != REG_DWORD || length != sizeof stored) {
        return false;
    }
    *value = stored;
    return true;
}

bool RegistryKey::GetBool(const char* name, bool* flag) const {
    std::uint32_t value = 0;
    if (flag == nullptr || !GetDword(name, &value)) {
        return false;
    }
    *flag = value != 0;
    return true;
}

bool RegistryKey::GetBinary16(const char* name, void* buffer) const {
    DWORD length = 0;
    if (buffer == nullptr || !IsType(name, REG_BINARY, &length)) {
        return false;
    }
    // The system gives out a value as a whole only.
    const std::unique_ptr<BYTE[]> whole(new (std::nothrow) BYTE[length + 1]);
    if (!whole || (length > 0 && GetBinary(name, whole.get(), length) != length)) {
        return false;
    }
    std::memset(buffer, 0, kBinary16);
    std::memcpy(buffer, whole.get(), length < kBinary16 ? length : kBinary16);
    return true;
}

bool RegistryKey::IsType(const char* name, DWORD wanted, DWORD* size) const {
    DWORD type = REG_NONE;
    return key_ != nullptr && RegQueryValueExA(key_, name, nullptr, &type, nullptr, size) == ERROR_SUCCESS &&
           type == wanted;
}

bool RegistryKey::IsString(const char* name) const {
    return IsType(name, REG_SZ, nullptr);
}

bool RegistryKey::IsDword(const char* name) const {
    return IsType(name, REG_DWORD, nullptr);
}

bool RegistryKey::IsBinary(const char* name, std::uint32_t* size) const {
    DWORD length = 0;
    if (!IsType(name, REG_BINARY, &length)) {
        return false;
    }
    if (size != nullptr) {
        *size = length;
    }
    return true;
}

bool RegistryKey::ValueName(std::uint32_t index, char* buffer, std::uint32_t size) const {
    Clear(buffer, size);
    DWORD length = size;
    if (key_ != nullptr && buffer != nullptr && size > 0 &&
        RegEnumValueA(key_, index, buffer, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        return true;
    }
    Clear(buffer, size);
    return false;
}

bool RegistryKey::SubkeyName(std::uint32_t index, char* buffer, std::uint32_t size) const {
    Clear(buffer, size);
    DWORD length = size;
    if (key_ != nullptr && buffer != nullptr && size > 0 &&
        RegEnumKeyExA(key_, index, buffer, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        return true;
    }
    Clear(buffer, size);
    return false;
}

bool RegistryKey::DeleteValue(const char* name) {
    return key_ != nullptr && RegDeleteValueA(key_, name) == ERROR_SUCCESS;
}

bool RegistryKey::DeleteSubkey(const char* name) {
    // The system takes an empty name for the key itself.
    return key_ != nullptr && name != nullptr && name[0] != '\0' &&
           RegDeleteKeyA(key_, name) == ERROR_SUCCESS;
}

}  // namespace kx
