// The string resources of kxdialogs.dll, by which codes of a record are shown.
#pragma once

#include <string>

#include "host/windows/win32_handles.h"
#include "lib/resource_text.h"

namespace kxhost {

// Loads the module for its resources alone: none of its code runs, and the library need not be started.
class LibraryResources final : public kx::ResourceTexts {
  public:
    LibraryResources();

    // Without the module there are no texts.
    bool AreLoaded() const { return module_ != nullptr; }
    // Why they are not (Italian, one line); empty when they are.
    const std::wstring& FailureText() const { return failure_; }
    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override;

  private:
    UniqueModule module_;
    std::wstring failure_;
};

}  // namespace kxhost
