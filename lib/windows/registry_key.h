// A key of the registry and its typed values.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "lib/resource_text.h"

namespace kx {

// Holds one open key, closed with the object. Nothing is reported: a key that could not be opened has a null
// handle, and every operation on it fails. Texts are Windows-1252. A null value name is the key's unnamed
// value.
class RegistryKey {
  public:
    // For the constructor that never creates a key.
    struct ReadOnly {};

    // Opens the key under the current user's hive for every access, and creates it when that fails.
    explicit RegistryKey(const char* path);
    // The same with the path from a string resource of at most 256 characters; null handle when there is
    // none.
    RegistryKey(const ResourceTexts& module, std::uint32_t stringId);
    // The same with path\subPath, which may have up to 1023 characters together; longer gives a null handle.
    RegistryKey(const char* path, const char* subPath);
    // Opens an existing key under parentKey (an open key or one of the system's hives) for reading.
    RegistryKey(HKEY parentKey, const char* subPath, ReadOnly readOnly);
    ~RegistryKey();
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // Null when opening failed.
    HKEY Handle() const { return key_; }

    // Writers: true when the system stored the value, whatever its type was before. A null text or null bytes
    // fail.
    bool SetDword(const char* name, std::uint32_t value);

    // Readers: each fails for a null handle, a null destination, a value that is not there or has another
    // type, and a value that does not fit.

    // The text, always terminated. The buffer holds an empty text after a failure.
    bool GetString(const char* name, char* buffer, std::uint32_t size) const;
    // value is 0 after a failure.
    bool GetDword(const char* name, std::uint32_t* value) const;

    // The subkey may hold values, but no subkeys of its own. A null or empty name fails.
    bool DeleteSubkey(const char* name);

    // ---- what the suite's other programs do, and no pane of this library

    bool SetString(const char* name, const char* text);
    // Stores the double word 1 for a positive flag, else 0.
    bool SetBool(const char* name, int flag);
    bool SetBinary16(const char* name, const void* bytes);
    bool SetBinary(const char* name, const void* bytes, std::uint32_t length);

    // The number of bytes read, 0 after a failure.
    std::uint32_t GetBinary(const char* name, void* buffer, std::uint32_t size) const;
    // A double word other than 0 is true; flag is unchanged after a failure.
    bool GetBool(const char* name, bool* flag) const;
    // At most the first 16 bytes of a value of any length; what a shorter value leaves open is 0. The buffer
    // is unchanged after a failure.
    bool GetBinary16(const char* name, void* buffer) const;

    // Whether the value exists with that type. IsBinary also tells its length, where a size is asked for.
    bool IsString(const char* name) const;
    bool IsDword(const char* name) const;
    bool IsBinary(const char* name, std::uint32_t* size) const;

    // The name at an index counted from 0, while there is one and it fits with its terminator; else false and
    // an empty text. Writing and deleting shifts the indices.
    bool ValueName(std::uint32_t index, char* buffer, std::uint32_t size) const;
    bool SubkeyName(std::uint32_t index, char* buffer, std::uint32_t size) const;
    bool DeleteValue(const char* name);

  private:
    void OpenOrCreate(const char* path);
    bool Write(const char* name, DWORD type, const void* bytes, std::size_t length);
    bool IsType(const char* name, DWORD wanted, DWORD* size) const;

    HKEY key_ = nullptr;
};

}  // namespace kx
