// The pane in which the interpretation of a test is reviewed (INTERPRETATIONDIALOG): the statement, the
// automatic interpretation and the comment library to take from, and the stages of the report: original,
// modified by a reviewer, confirmed by a physician.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "dialogs/dialog_library.h"
#include "dialogs/interpretation/comment_library_tree.h"
#include "dialogs/interpretation/pane_layout.h"
#include "dialogs/interpretation/stage_pickers.h"
#include "dialogs/interpretation/statement_completion.h"
#include "lib/dbclient/test_record.h"
#include "lib/windows/check_box.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/dialog.h"
#include "lib/windows/edit_box.h"
#include "lib/windows/static_label.h"
#include "lib/windows/tool_tips.h"

namespace kx {

// Every change is in the record at once, and the parent window is told of it (WM_USER, 1024, 1024). The
// object belongs to its window and is deleted in its WM_DESTROY. The parent may destroy the pane while it is
// being told.
class InterpretationDialog final : public Dialog {
  public:
    // Creates the pane in the parent's window; without a record there is none, which is reported. hostOptions
    // is not null (see automatic_interpretation.h). All outlive the pane; none is owned.
    InterpretationDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         const void* hostOptions, SystemServices* services);

    INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // False, reported, when the pane could not be built.
    bool OnInitDialog() override;
    INT_PTR OnDialogCommand(WPARAM wParam) override;
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override;
    void OnSize(UINT sizeType, int width, int height) override;
    // Enter in the comment library inserts the selected entry; it never ends the pane.
    bool OnOK() override;
    bool OnCancel() override;
    // Saves once more, then deletes the wrappers and this object.
    void OnDestroy() override;
    // Of the icon buttons.
    bool GetToolTipText(UINT_PTR controlId, HINSTANCE& module, const char*& text) override;

    // Each puts a text in the place of the statement's selection (see StatementCompletion::ReplaceSelection)
    // and the focus back into the statement.
    // The entry selected in the comment library, without its code; nothing when none was selected yet.
    void InsertLibraryEntry();
    void InsertAutomaticText();

  private:
    static constexpr int kStatementSize = sizeof(KxTestRecord::interpretationText);
    static constexpr int kNameSize = 256;

    // A stage of the report that the pane can take: its box, who and when.
    struct Stage {
        bool wasTaken = false;
        CheckBox* taken = nullptr;  // deleted by their controls (see subclassed_control.h)
        ComboBox* names = nullptr;
        std::optional<StagePickers> time;

        bool IsComplete() const;
        // Shows the stage as the record has it.
        void Show(bool isTaken, const char* name, const DateTime& time);
        bool IsNameChange(WPARAM wParam) const;
    };

    ~InterpretationDialog() = default;

    // ---- interp.cpp: building the pane
    bool Build();
    bool AdoptControls();
    void AdoptStage(Stage& stage, std::uint32_t box, std::uint32_t names, std::uint32_t date,
                    std::uint32_t time);
    void ShowOriginal();
    void ShowReview();
    void ShowConfirmation();
    void ShowSource();
    void ShowIcons();
    void Release();

    // ---- interp_actions.cpp: what the user does
    void OnStatementChanged();
    void ReplaceSelection(const char* text);
    // Opens the user dictionary of the test type; after its OK the comment library and the completion read it
    // anew.
    void EditDictionary();
    // The name of a stage as its combo box shows it. picked: in its CBN_SELCHANGE, when the edit field still
    // holds the name before.
    void ReadName(const ComboBox& names, bool picked, char (&name)[kNameSize]) const;
    // A record holds less of a name than a list may offer.
    void ShowStoredNames();
    // Whether the user has changed anything since the pane was filled.
    bool IsEdited() const;
    // Takes the stage and saves.
    void OnStageChanged(const Stage& stage, WPARAM wParam);
    // Writes the statement and the stages that are taken into the record and tells the parent window. The
    // last thing that a handler does: the pane may be gone afterwards. picked: whose list the user has just
    // chosen from, or null.
    void Save(const Stage* picked = nullptr);

    const DialogLibrary& library_;
    TestRecord* test_;
    const void* hostOptions_;

    std::unique_ptr<EditBox> originalBy_;
    std::optional<StagePickers> originalTime_;
    Stage review_;
    Stage confirmation_;
    std::unique_ptr<EditBox> statement_;
    std::unique_ptr<StatementCompletion> completion_;
    std::unique_ptr<CommentLibraryTree> tree_;
    CheckBox* insertLibraryEntry_ = nullptr;
    CheckBox* dictionary_ = nullptr;
    CheckBox* insertAutomatic_ = nullptr;
    std::unique_ptr<EditBox> automatic_;
    std::optional<StaticLabel> source_;
    std::optional<ToolTips> toolTips_;
    std::optional<PaneLayout> layout_;

    // What the controls say counts as the user's once the pane is filled.
    bool filled_ = false;
    bool edited_ = false;
    // On the way from the edit into the record.
    char statementBuffer_[kStatementSize] = {};
};

}  // namespace kx
