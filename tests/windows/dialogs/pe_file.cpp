#include "tests/windows/dialogs/pe_file.h"

#include <algorithm>
#include <cctype>

namespace kx::test {
namespace {

template <class T>
const T* At(HMODULE module, DWORD address) {
    return reinterpret_cast<const T*>(reinterpret_cast<const BYTE*>(module) + address);
}

const IMAGE_DATA_DIRECTORY& Directory(HMODULE module, int index) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    return At<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(dos->e_lfanew))
        ->OptionalHeader.DataDirectory[index];
}

}  // namespace

std::vector<std::string> ExportNames(HMODULE module) {
    std::vector<std::string> names;
    const auto* table =
        At<IMAGE_EXPORT_DIRECTORY>(module, Directory(module, IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
    const auto* addresses = At<DWORD>(module, table->AddressOfNames);
    for (DWORD i = 0; i < table->NumberOfNames; ++i) {
        names.emplace_back(At<char>(module, addresses[i]));
    }
    return names;
}

std::vector<std::string> ImportNames(HMODULE module) {
    std::vector<std::string> names;
    const auto* entry =
        At<IMAGE_IMPORT_DESCRIPTOR>(module, Directory(module, IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
    for (; entry->Name != 0; ++entry) {
        std::string name = At<char>(module, entry->Name);
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        names.push_back(name);
    }
    return names;
}

}  // namespace kx::test
