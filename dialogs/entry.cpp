// The library's entry hook and its ten exports.
#include <windows.h>

#include "dialogs/dialog_library.h"
#include "dialogs/library_state.h"
#include "include/kxdialogs.h"

namespace {

constinit kx::LibraryState g_state;

// The host's objects under the library's names for them: of the parent the second word is read, its window
// handle; the record's layout is the one that both sides include.
kx::Window* AsWindow(KxHostWindow* parent) {
    return reinterpret_cast<kx::Window*>(parent);
}
kx::TestRecord* AsRecord(KxTestRecord* test) {
    return reinterpret_cast<kx::TestRecord*>(test);
}

// Forwards to the operation; 0 without a library.
template <class... Parameters, class... Arguments>
std::uint32_t Forward(std::uint32_t (kx::DialogLibrary::*operation)(Parameters...) noexcept,
                      Arguments... arguments) {
    kx::DialogLibrary* library = g_state.Library();
    return library == nullptr ? 0 : (library->*operation)(arguments...);
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_state.Attach(instance);
    }
    return TRUE;
}

void KX_CALL LIBSTART(void) {
    g_state.Start();
}

void KX_CALL LIBSTOP(void) {
    g_state.Stop();
}

std::uint32_t KX_CALL TABLEDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::TABLEDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL GENERALMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::GENERALMORPHDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL PMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::PMORPHDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL QRSMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::QRSMORPHDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL TMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::TMORPHDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL HYPERTROPHYDIALOG(KxHostWindow* parent, KxTestRecord* test) {
    return Forward(&kx::DialogLibrary::HYPERTROPHYDIALOG, AsWindow(parent), AsRecord(test));
}

std::uint32_t KX_CALL INTERPRETATIONDIALOG(KxHostWindow* parent, KxTestRecord* test, void* hostOptions) {
    return Forward(&kx::DialogLibrary::INTERPRETATIONDIALOG, AsWindow(parent), AsRecord(test), hostOptions);
}

std::uint32_t KX_CALL EDITINTERPRETATION(KxHostWindow* parent, KxTestRecord* test, const KxRect* area,
                                         std::uint32_t mode) {
    return Forward(&kx::DialogLibrary::EDITINTERPRETATION, AsWindow(parent), AsRecord(test), area, mode);
}

}  // extern "C"
