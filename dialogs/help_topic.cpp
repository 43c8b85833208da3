#include "dialogs/help_topic.h"

#include "dialogs/resources/resource_ids.h"
#include "lib/windows/html_help.h"

namespace kx {

void ShowHelpTopic(Dialog& dialog) {
    if (OpenHtmlHelp(dialog.Handle(), kHelpFile, kHelpContext, dialog.Id()) == nullptr &&
        dialog.Services() != nullptr) {
        dialog.Services()->SHOWINFORMATION(&dialog, std::uint32_t{IDS_NO_HELP});
    }
}

}  // namespace kx
