// The library's help at the topic of a modal dialog, which no host can open: F1 and "Aiuto" end there.
#pragma once

#include "lib/windows/dialog.h"

namespace kx {

inline constexpr char kHelpFile[] = "DLGHELP.CHM";

// Opens the topic that has the dialog's template as its number. Where the help or its viewer is missing the
// user is told so by the suite. The dialog may have ended when this returns.
void ShowHelpTopic(Dialog& dialog);

}  // namespace kx
