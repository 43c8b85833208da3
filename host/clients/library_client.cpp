#include "host/clients/library_client.h"

namespace kxhost {
namespace {

using PaneFunction = decltype(&TABLEDIALOG);
using InterpretationFunction = decltype(&INTERPRETATIONDIALOG);

// What the object behind a dialog handle shows of itself: its second word is the pane's window.
HWND WindowBehind(uint32_t dialogHandle) {
    if (dialogHandle == 0) {
        return nullptr;
    }
    const auto* object = reinterpret_cast<const KxHostWindow*>(static_cast<uintptr_t>(dialogHandle));
    return static_cast<HWND>(object->handle);
}

// The interpretation pane keeps this for as long as it is open; 0 in the first word: interpret automatically.
uint32_t interpretationOptions[4] = {};

}  // namespace

HWND LibraryClient::Open(PaneKind kind, KxHostWindow& parent, KxTestRecord& test) const {
    const char* name = RowOf(kind).exportName;
    if (kind == PaneKind::Interpretation) {
        const auto open = module_.Find<InterpretationFunction>(name);
        return open == nullptr ? nullptr : WindowBehind(open(&parent, &test, interpretationOptions));
    }
    const auto open = module_.Find<PaneFunction>(name);
    return open == nullptr ? nullptr : WindowBehind(open(&parent, &test));
}

bool LibraryClient::EditReport(KxHostWindow& parent, KxTestRecord& test, const KxRect& area,
                               uint32_t mode) const {
    const auto edit = module_.Find<decltype(&EDITINTERPRETATION)>("EDITINTERPRETATION");
    return edit != nullptr && edit(&parent, &test, &area, mode) == 1;
}

}  // namespace kxhost
