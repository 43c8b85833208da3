// The pane in which the interpretation of a test is reviewed (INTERPRETATIONDIALOG): the statement, the
// automatic interpretation and the comment library to take from, and the stages of the report: original,
// modified by a reviewer, confirmed by a physician.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "dialogs/dialog_library.h"
#include "dialogs/interpretation/comment_library_tree.h"
#include "dialogs/interpretation/stage_pickers.h"
#include "dialogs/interpretation/statement_completion.h"
#include "dialogs/pane_layout.h"
#include "lib/dbclient/test_record.h"
#include "lib/windows/check_box.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/dialog.h"
#include "lib/windows/edit_box.h"
#include "lib/windows/static_label.h"
#include "lib/windows/tool_tips.h"

namespace kx {

// Every change is in the record at once (a ticked box with the next save), and the parent window is told of
// it (WM_USER, 1024, 1024). The parent may destroy the pane while it is being told.
class InterpretationDialog final : public Pane {
  public:
    // hostOptions is not null (see automatic_interpretation.h). All outlive the pane; none is owned.
    InterpretationDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                         const void* hostOptions, SystemServices* services);

    // Without a record there is no window, which is reported.
    void Open() override;
    INT_PTR DialogProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // False, reported, when the pane could not be built.
    bool OnInitDialog() override;
    INT_PTR OnDialogCommand(WPARAM wParam) override;
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override;
    void OnSize(UINT sizeType, int width, int height) override;
    // Enter in the comment library inserts the selected entry; it never ends the pane.
    bool OnOK() override;
    bool OnCancel() override;
    // Saves once more.
    void OnEnd() override;
    // Of the icon buttons.
    bool GetToolTipText(UINT_PTR controlId, HINSTANCE& module, const char*& text) override;

    // Each puts a text in the place of the statement's selection (see StatementCompletion::ReplaceSelection)
    // and the focus back into the statement.
    // The entry selected in the comment library, without its code; nothing when none was selected yet.
    void InsertLibraryEntry();
    void InsertAutomaticText();
    const char* ReportName() const noexcept override { return "InterpretationDialog"; }

  private:
    static constexpr int kStatementSize = sizeof(KxTestRecord::interpretationText);
    static constexpr int kNameSize = 256;

    // A stage of the report that the pane can take: its box, who and when.
    struct Stage {
        bool wasTaken = false;
        std::unique_ptr<CheckBox> taken;
        std::unique_ptr<ComboBox> names;
        std::unique_ptr<StagePickers> time;

        // Shows the stage as the record has it.
        void Show(bool isTaken, const char* name, const DateTime& time);
        bool IsNameChange(WPARAM wParam) const;
    };

    // What the pane shows of the record, taken before the first message to a control.
    struct Shown;

    // ---- interp.cpp: building the pane; what is not there throws
    void Build();
    void HoldControls(std::uint32_t testType);
    void HoldStage(Stage& stage, std::uint32_t box, std::uint32_t names, std::uint32_t date,
                   std::uint32_t time);
    void ShowOriginal(const Shown& shown);
    void ShowReview(const Shown& shown);
    void ShowConfirmation(const Shown& shown);
    void ShowSource();
    void ShowIcons();

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
    // What the controls say into the record. False: there is no record any more.
    bool Store(const Stage* picked);

    const DialogLibrary& library_;
    TestRecord* test_;
    const void* hostOptions_;

    std::unique_ptr<EditBox> originalBy_;
    std::unique_ptr<StagePickers> originalTime_;
    Stage review_;
    Stage confirmation_;
    std::unique_ptr<EditBox> statement_;
    std::unique_ptr<StatementCompletion> completion_;
    std::unique_ptr<CommentLibraryTree> tree_;
    std::unique_ptr<CheckBox> insertLibraryEntry_;
    std::unique_ptr<CheckBox> dictionary_;
    std::unique_ptr<CheckBox> insertAutomatic_;
    std::unique_ptr<EditBox> automatic_;
    std::unique_ptr<StaticLabel> source_;
    std::optional<ToolTips> toolTips_;
    std::optional<PaneLayout> layout_;

    // What the controls say counts as the user's once the pane is filled.
    bool filled_ = false;
    bool edited_ = false;
    // On the way from the edit into the record.
    char statementBuffer_[kStatementSize] = {};
};

}  // namespace kx
