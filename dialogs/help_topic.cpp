#include "dialogs/help_topic.h"

#include "dialogs/resources/resource_ids.h"
#include "lib/windows/html_help.h"

namespace kx {

void ShowHelpTopic(Dialog& dialog, std::uint32_t topic) {
    if (OpenHtmlHelp(dialog.Handle(), kHelpFile, kHelpContext, topic) == nullptr &&
        dialog.Services() != nullptr) {
        dialog.Services()->SHOWINFORMATION(&dialog, std::uint32_t{IDS_NO_HELP});
    }
}

}  // namespace kx
