// The one object behind the exports: what every dialog shares, and the operation that opens each of them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "dialogs/activation_context.h"
#include "dialogs/help_topic.h"
#include "dialogs/marker_view/marker_view_class.h"
#include "dialogs/service_session.h"
#include "include/kxdialogs.h"
#include "lib/modules/library_module.h"
#include "lib/windows/window_class.h"

namespace kx {

struct TestRecord;
class Pane;
class Window;

// The window class of the typing completion's popup.
inline constexpr char kCompletionPopupClass[] = "CompletionPopup";

// Made by the first LIBSTART and deleted by the last LIBSTOP. A constructor that throws has undone what it
// had done, in reverse order: the start banner then has its stop banner and kxsys.dll its LIBSTOP.
class DialogLibrary final : public LibraryModule {
  public:
    // module: the library's own handle, whose resources hold the templates, texts and version record.
    explicit DialogLibrary(HMODULE module);
    ~DialogLibrary();
    DialogLibrary(const DialogLibrary&) = delete;
    DialogLibrary& operator=(const DialogLibrary&) = delete;

    // Keeps a pane whose window there is not, because the host has its address.
    void KeepWithoutWindow(std::unique_ptr<Pane> pane);

    // Null only when there was no memory for the binding; Reports serves in any case.
    SystemServices* Services() const { return session_.Services(); }
    Reporter& Reports() const { return session_.Reports(); }
    // The help file of the dialogs that offer context help.
    const char* HelpFile() const { return helpFile_; }
    // To be activated around the creation of windows; see activation_context.h.
    const ActivationContext& Controls() const { return controls_; }

    // One operation behind each dialog export. A null argument is reported as "no Wpar or tst" with the
    // dialog's source and line, an exception as LOGEXCEPTION with its class name; both give 0, and so does a
    // lack of memory, without a report. Else a modeless operation returns the address of the dialog object,
    // which belongs to its window and deletes itself with it; the modal one returns the modal result.
    std::uint32_t TABLEDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t GENERALMORPHDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t PMORPHDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t QRSMORPHDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t TMORPHDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t HYPERTROPHYDIALOG(Window* parent, TestRecord* test) noexcept;
    std::uint32_t INTERPRETATIONDIALOG(Window* parent, TestRecord* test, void* hostOptions) noexcept;
    std::uint32_t EDITINTERPRETATION(Window* parent, TestRecord* test, const KxRect* area,
                                     std::uint32_t mode) noexcept;

  private:
    ServiceSession session_;
    MarkerViewClass markerViewClass_;  // the classes are unregistered before the session ends
    WindowClass completionPopupClass_;
    const char* helpFile_ = kHelpFile;
    ActivationContext controls_;
    std::vector<std::unique_ptr<Pane>> withoutWindow_;
};

}  // namespace kx
