// The interpretation pane: what the user does, and how it gets into the record.
#include <string>

#include "dialogs/dictionary/user_dictionary.h"
#include "dialogs/interpretation/interp.h"
#include "dialogs/resources/interpretation_ids.h"
#include "dialogs/statements/statement_insertion.h"

namespace kx {
namespace {

constexpr WPARAM kFocusStatement = 100;  // of a WM_USER that the pane posts to itself
constexpr WPARAM kChangeNotice = 1024;   // both parameters of the WM_USER to the parent
constexpr UINT kNamePicked = WM_APP;     // posted to itself

}  // namespace

bool InterpretationDialog::Stage::IsNameChange(WPARAM wParam) const {
    return names->IsSelChange(wParam) || names->IsEditChange(wParam) || names->IsEditUpdate(wParam);
}

INT_PTR InterpretationDialog::DialogProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!filled_) {
        return Dialog::DialogProc(message, wParam, lParam);
    }
    switch (message) {
        case WM_USER:
            if (wParam == kFocusStatement) {
                statement_->SetFocus();
                return TRUE;
            }
            break;
        case kNamePicked:
            ShowStoredNames();
            return TRUE;
        case WM_CLOSE:
            // An edit of several lines sends it for Esc; the default procedure would make a Cancel of it,
            // and the user's report would be out of sight.
            OnClose();
            return TRUE;
        default:
            break;
    }
    return Dialog::DialogProc(message, wParam, lParam);
}

INT_PTR InterpretationDialog::OnDialogCommand(WPARAM wParam) {
    if (!filled_) {
        return 0;
    }
    if (statement_->IsChange(wParam)) {
        OnStatementChanged();
    } else if (review_.IsNameChange(wParam)) {
        OnStageChanged(review_, wParam);
    } else if (confirmation_.IsNameChange(wParam)) {
        OnStageChanged(confirmation_, wParam);
    } else if (statement_->IsKillFocus(wParam)) {
        Save();
    } else if (dictionary_->IsClicked(wParam)) {
        EditDictionary();
    } else if (insertLibraryEntry_->IsClicked(wParam)) {
        InsertLibraryEntry();
    } else if (insertAutomatic_->IsClicked(wParam)) {
        InsertAutomaticText();
    } else if (!completion_->OnDialogCommand(wParam)) {
        return Dialog::OnDialogCommand(wParam);
    }
    return 1;
}

bool InterpretationDialog::OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) {
    if (!filled_ || header == nullptr) {
        return false;
    }
    if (header->code == static_cast<UINT>(TTN_NEEDTEXTA)) {
        OnNotify(id, header);
        return true;
    }
    if (tree_->Notify(static_cast<std::uint32_t>(id), header, result)) {
        return true;
    }
    if (id == tree_->Id() && (header->code == NM_DBLCLK || header->code == NM_RETURN)) {
        InsertLibraryEntry();
        return false;  // the tree opens or closes a section by it
    }
    for (const Stage* stage : {&review_, &confirmation_}) {
        if (stage->time->IsChange(static_cast<std::uint32_t>(id), header)) {
            OnStageChanged(*stage, 0);
            return true;
        }
    }
    return false;
}

void InterpretationDialog::OnSize(UINT sizeType, int width, int height) {
    if (layout_ && sizeType != SIZE_MINIMIZED) {
        if (completion_ != nullptr) {
            completion_->Close();  // the caret moves away from it
        }
        layout_->Place(width, height);
    }
}

bool InterpretationDialog::OnOK() {
    if (filled_ && tree_->HasFocus()) {
        InsertLibraryEntry();
    }
    return true;
}

bool InterpretationDialog::OnCancel() {
    if (filled_) {
        completion_->Close();
    }
    return EndCancel();
}

void InterpretationDialog::OnStatementChanged() {
    edited_ = true;
    review_.taken->Check();
    completion_->OnTextChanged();
    Save();
}

void InterpretationDialog::OnStageChanged(const Stage& stage, WPARAM wParam) {
    edited_ = true;
    stage.taken->Check();
    const bool picked = stage.names->IsSelChange(wParam);
    if (picked) {
        PostMsg(kNamePicked);  // once the edit field holds the name
    }
    Save(picked ? &stage : nullptr);
}

void InterpretationDialog::InsertLibraryEntry() {
    if (!tree_->SelectedText().empty()) {
        ReplaceSelection(LibraryInsertion(tree_->SelectedText()).c_str());
    }
}

void InterpretationDialog::InsertAutomaticText() {
    char text[kStatementSize];
    automatic_->GetText(text, sizeof text);
    ReplaceSelection(text);
}

void InterpretationDialog::ReplaceSelection(const char* text) {
    // Posted before the change: the parent, told of it, may destroy the pane.
    PostUser(kFocusStatement, 0);
    completion_->ReplaceSelection(text);
}

void InterpretationDialog::EditDictionary() {
    const std::uint32_t testType = test_->TestType();
    completion_->Close();
    const bool written = EditUserDictionary(library_, this, testType);
    // The dialog has dispatched the host's messages, which may have ended the pane.
    if (HasEnded()) {
        return;
    }
    if (written) {
        tree_->Rebuild(testType);
    }
    PostUser(kFocusStatement, 0);
}

void InterpretationDialog::ReadName(const ComboBox& names, bool picked, char (&name)[kNameSize]) const {
    const int item = picked ? names.GetCurSel() : CB_ERR;
    if (item == CB_ERR || names.GetLBText(item, name, sizeof name) == CB_ERR) {
        names.GetText(name, sizeof name);
    }
}

void InterpretationDialog::ShowStoredNames() {
    const struct {
        const Stage& stage;
        std::string stored;
    } rows[] = {{review_, test_->OverreadBy()}, {confirmation_, test_->ConfirmedBy()}};
    char name[kNameSize];
    for (const auto& row : rows) {
        ReadName(*row.stage.names, false, name);
        if (row.stage.taken->IsChecked() && row.stored != name) {
            row.stage.names->SetText(row.stored.c_str());
        }
    }
}

bool InterpretationDialog::IsEdited() const {
    const auto isAsShown = [](const Stage& stage) { return stage.taken->IsChecked() == stage.wasTaken; };
    return edited_ || !isAsShown(review_) || !isAsShown(confirmation_);
}

void InterpretationDialog::Save(const Stage* picked) {
    // The host's window and not its object, which may be gone before the pane.
    const HWND parent = GetParent(Handle());
    if (Store(picked) && parent != nullptr) {
        SendMessageA(parent, WM_USER, kChangeNotice, kChangeNotice);
    }
}

bool InterpretationDialog::Store(const Stage* picked) {
    const bool ending = HasEnded();  // else it was the window's end that called this
    statement_->GetText(statementBuffer_, sizeof statementBuffer_);
    char reviewer[kNameSize];
    char physician[kNameSize];
    ReadName(*review_.names, picked == &review_, reviewer);
    ReadName(*confirmation_.names, picked == &confirmation_, physician);
    const bool edited = IsEdited();
    const bool reviewed = review_.taken->IsChecked();
    const bool confirmed = confirmation_.taken->IsChecked();
    const DateTime reviewTime = review_.time->Value(edited);
    const DateTime confirmationTime = confirmation_.time->Value(edited);
    // Whoever heard the messages to the controls may have ended the pane, and the record is the host's.
    if (ending ? IsWindow(Handle()) == FALSE : HasEnded()) {
        return false;
    }
    if (reviewed) {
        if (!confirmed) {
            test_->SetOverreadInterpretation(&reviewTime, statementBuffer_);
        }
        test_->SetOverreadBy(reviewer);
    }
    if (confirmed) {
        test_->SetConfirmedInterpretation(&confirmationTime, statementBuffer_);
        test_->SetConfirmedBy(physician);
    }
    return true;
}

}  // namespace kx
