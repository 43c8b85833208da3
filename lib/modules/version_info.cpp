#include "lib/modules/version_info.h"

#include <cstdio>
#include <iterator>
#include <new>

namespace kx {

VersionInfo::VersionInfo(HMODULE module) {
    if (!ReadBlock(module)) {
        return;
    }
    void* value = nullptr;
    UINT length = 0;
    if (VerQueryValueA(block_.get(), "\\", &value, &length) && length >= sizeof(VS_FIXEDFILEINFO)) {
        const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
        packedVersion_ = PackVersion(fixed->dwFileVersionMS, fixed->dwFileVersionLS);
    }
    if (VerQueryValueA(block_.get(), "\\VarFileInfo\\Translation", &value, &length) &&
        length >= sizeof(*translation_)) {
        translation_ = static_cast<const std::uint32_t*>(value);
    } else {
        block_.reset();
    }
}

bool VersionInfo::ReadBlock(HMODULE module) {
    // The wide name, because the suite may be installed in a folder whose name Windows-1252 cannot write.
    wchar_t path[256 + 1] = {};
    const DWORD length = module != nullptr ? GetModuleFileNameW(module, path, std::size(path)) : 0;
    if (length == 0 || length >= std::size(path)) {
        return false;
    }
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    if (size == 0) {
        return false;
    }
    block_.reset(new (std::nothrow) std::uint8_t[size]);
    if (block_ && !GetFileVersionInfoW(path, 0, size, block_.get())) {
        block_.reset();
    }
    return block_ != nullptr;
}

const char* VersionInfo::Field(const char* name) const {
    if (!block_) {
        return "";
    }
    char path[64];
    std::snprintf(path, sizeof path, "\\StringFileInfo\\%04x%04x\\%s",
                  static_cast<unsigned>(*translation_ & 0xFFFF), static_cast<unsigned>(*translation_ >> 16),
                  name);
    void* value = nullptr;
    UINT length = 0;
    const bool found = VerQueryValueA(block_.get(), path, &value, &length) && value != nullptr && length > 0;
    return found ? static_cast<const char*>(value) : "";
}

}  // namespace kx
