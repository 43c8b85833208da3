// The version record of a loaded module.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "lib/packed_version.h"

namespace kx {

// Nothing is reported: what cannot be read is 0 or an empty text. The texts are Windows-1252 and live as long
// as the object.
class VersionInfo {
  public:
    // Reads the record from the module's file, whose path may have up to 256 characters.
    explicit VersionInfo(HMODULE module);

    // See PackVersion; 0 when the module has no version record.
    std::uint32_t PackedVersion() const { return packedVersion_; }

    // The fields of the record's first language; all empty when the record names no language.
    const char* ProductName() const { return Field("ProductName"); }
    const char* InternalName() const { return Field("InternalName"); }
    const char* FileDescription() const { return Field("FileDescription"); }
    const char* ProductVersion() const { return Field("ProductVersion"); }
    const char* FileVersion() const { return Field("FileVersion"); }
    const char* CompanyName() const { return Field("CompanyName"); }

  private:
    bool ReadBlock(HMODULE module);
    const char* Field(const char* name) const;

    const std::uint32_t* translation_ =
        nullptr;  // inside block_: language in the low half, code page in the high one
    std::unique_ptr<std::uint8_t[]> block_;
    std::uint32_t packedVersion_ = 0;
};

}  // namespace kx
