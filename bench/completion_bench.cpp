// A keystroke in the interpretation pane, from the key to the finished list of proposals and the text in the
// record, against the same keystroke in a bare edit of the system.
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

#include "bench/ratio.h"
#include "dialogs/resources/interpretation_ids.h"
#include "include/kxdialogs.h"
#include "lib/dbclient/test_record.h"

namespace {

struct Exports {
    decltype(&::LIBSTART) start = nullptr;
    decltype(&::INTERPRETATIONDIALOG) open = nullptr;
};

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

bool Load(Exports& exports) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH - 1);
    const std::string program = path;
    const HMODULE library =
        LoadLibraryA((program.substr(0, program.find_last_of('\\')) + "\\..\\bin\\kxdialogs.dll").c_str());
    return library != nullptr && Find(library, "LIBSTART", exports.start) &&
           Find(library, "INTERPRETATIONDIALOG", exports.open);
}

// A letter and its taking back, as two keystrokes.
void TypeAndTakeBack(HWND edit) {
    SendMessageA(edit, WM_CHAR, 'i', 1);
    SendMessageA(edit, WM_CHAR, '\b', 1);
}

}  // namespace

int main() {
    Exports exports;
    if (!Load(exports)) {
        std::fprintf(stderr, "kxdialogs.dll cannot be loaded\n");
        return 1;
    }
    exports.start();
    const HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 760, 500, nullptr,
                                      nullptr, nullptr, nullptr);
    const HWND bare = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE | ES_MULTILINE | WS_VSCROLL, 0, 0,
                                      400, 300, host, nullptr, nullptr, nullptr);
    KxHostWindow parent{};
    parent.handle = host;
    std::uint32_t options = 0;
    const auto test = std::make_unique<kx::TestRecord>();
    test->SetTestType(KX_TEST_RESTING);
    const std::uint32_t handle = exports.open(&parent, test.get(), &options);
    if (handle == 0) {
        std::fprintf(stderr, "the pane does not open\n");
        return 1;
    }
    const auto* const object = reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle));
    const HWND statement = GetDlgItem(static_cast<HWND>(object->handle), IDC_INTERP_STATEMENT);
    SetFocus(statement);
    for (const HWND edit : {bare, statement}) {
        SendMessageA(edit, WM_CHAR, 'r', 1);
    }
    if (FindWindowA("CompletionPopup", nullptr) == nullptr) {
        std::fprintf(stderr, "nothing is proposed\n");
        return 1;
    }
    kx::bench::Run(
        "two_keystrokes_to_the_list", 1.2, [bare] { TypeAndTakeBack(bare); },
        [statement] { TypeAndTakeBack(statement); });
    return 0;
}
