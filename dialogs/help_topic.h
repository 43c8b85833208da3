// The library's help at the topic of a modal dialog, which no host can open: F1 and "Aiuto" end there.
#pragma once

#include <cstdint>

#include "lib/windows/dialog.h"

namespace kx {

inline constexpr char kHelpFile[] = "DLGHELP.CHM";

// The editor's topic: it is made without a template that could give the number.
inline constexpr std::uint32_t kEditorTopic = 5;

// Opens the topic of that number; a dialog made from a template has its template's. Where the help or its
// viewer is missing the user is told so by the suite. The dialog may have ended when this returns.
void ShowHelpTopic(Dialog& dialog, std::uint32_t topic);

}  // namespace kx
