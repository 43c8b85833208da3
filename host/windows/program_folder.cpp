#include "host/windows/program_folder.h"

#include <windows.h>

#include <string>

namespace kxhost {

std::filesystem::path ProgramFolder() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size()) {
            name.resize(length);
            return std::filesystem::path(name).parent_path();
        }
        name.resize(name.size() * 2);
    }
}

}  // namespace kxhost
