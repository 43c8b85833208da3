// The dialog with which the user maintains the statement file of a test type ("Aggiorna Dizionario Utenti").
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "dialogs/dictionary/entry_button.h"
#include "dialogs/statements/statement_files.h"
#include "dialogs/statements/statement_library.h"
#include "dialogs/statements/statement_writer.h"
#include "lib/modules/library_module.h"
#include "lib/windows/child_control.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/dialog.h"
#include "lib/windows/edit_box.h"
#include "lib/windows/gdi_handles.h"

namespace kx {

// Edits a copy of the file in memory: nothing is written before OK, which replaces the file as a whole. What
// another workstation has saved in between stays: the edits are then done to its file. The object is its
// caller's and is used for one run.
class UserDictionaryDialog final : public Dialog {
  public:
    static constexpr std::uint32_t kFirstButtonId = 100;

    // Reads the file at path; one that cannot be read is reported and gives an empty dictionary. owner may be
    // null.
    UserDictionaryDialog(const LibraryModule& library, Window* owner, const char* path,
                         SystemServices* services);

    // Runs the dialog. True: the user ended it with OK and the file has been written.
    bool Run();

    bool OnInitDialog() override;
    INT_PTR OnDialogCommand(WPARAM wParam) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;
    HBRUSH OnCtlColorStatic(HDC context, HWND control) override;
    // Writes the file. When that fails the user is told so, and the dialog stays open with its edits.
    bool OnOK() override;
    const char* ReportName() const noexcept override { return "UserDictionaryDialog"; }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // An edit and what of it is in the dictionary.
    struct Edit {
        std::unique_ptr<EditBox> box;
        std::string taken;

        std::string Text() const;
        void Show(const char* text);
    };

    void HoldControls();
    void MakeButtons();
    void MakeReason();
    void FitHeight();
    void FillSections();

    void ShowSection();
    void SelectEntry(std::size_t entry);
    void TakeEdits();
    // Whether an edit holds what the file could not: it shows its former text then, and the dialog why.
    bool Refuses(Edit& edit, StatementPart part);
    void TakeTitle(const char* title);
    bool WriteFile();

    // Of what the combo box shows; kNone when it shows no section.
    std::size_t CurrentSection() const;
    // kNone while no statement is selected.
    std::size_t SelectedEntry() const;

    std::string path_;
    StatementLibrary dictionary_;
    FileStamp stamp_;  // of the file before it was read
    bool fileRead_;
    StatementLibrary asRead_;
    // Its own writing into the edits is no typing.
    bool filling_ = false;

    std::unique_ptr<ComboBox> sections_;
    Edit text_;
    Edit code_;
    std::unique_ptr<ChildControl> reason_;  // why a text was refused
    UniqueFont buttonFont_;
    std::array<std::unique_ptr<EntryButton>, StatementLibrary::kEntries> buttons_;
};

}  // namespace kx
