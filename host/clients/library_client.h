// kxdialogs.dll as this workstation uses it: loaded at run time, reached by the ten exports of
// include/kxdialogs.h.
#pragma once

#include <string>

#include "host/clients/suite_module.h"
#include "host/panes/pane_kinds.h"
#include "include/kxdialogs.h"

namespace kxhost {

// Starts the library, and stops it at the end. Every pane must be gone before it goes.
class LibraryClient {
  public:
    LibraryClient() : module_(L"kxdialogs.dll") {}

    bool IsLoaded() const { return module_.IsLoaded(); }
    const std::wstring& FailureText() const { return module_.FailureText(); }

    // Opens a pane as a child of the parent's window. Returns the pane's window, null when the library made
    // none. Parent and record must outlive the pane; who wants to end it destroys its window.
    HWND Open(PaneKind kind, KxHostWindow& parent, KxTestRecord& test) const;

    // Has the user edit the report in the library's modal editor, at an area relative to the parent's window;
    // `mode` as in include/kxdialogs.h. No interpretation pane may be open on the record: it writes its own
    // statement once more when it is destroyed. True when the user ended it with OK.
    bool EditReport(KxHostWindow& parent, KxTestRecord& test, const KxRect& area, uint32_t mode) const;

  private:
    SuiteModule module_;
};

}  // namespace kxhost
