// The string resources of the library, as a module of the suite reads them.
#pragma once

#include <windows.h>

#include "lib/resource_text.h"

namespace kx::suite {

// Texts of kxdialogs.dll, which whoever shows them has loaded; it is looked for once, at construction, and
// never loaded from here. Not loaded: there is no text.
class LibraryTexts final : public ResourceTexts {
  public:
    LibraryTexts() : library_(GetModuleHandleW(L"kxdialogs.dll")) {}

    bool IsLoaded() const { return library_ != nullptr; }
    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override;

  private:
    HMODULE library_;
};

}  // namespace kx::suite
