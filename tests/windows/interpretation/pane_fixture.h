// The interpretation pane in a host's window, with a suite and statement files of the test's choice.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/resources/interpretation_ids.h"
#include "lib/dbclient/test_record.h"
#include "lib/modules/database_records.h"
#include "tests/windows/dialogs/library_under_test.h"
#include "tests/windows/dialogs/pane_reader.h"
#include "tests/windows/interpretation/suite_hooks.h"

namespace kx::test {

enum class SuiteModule { kCurrent, kOutdated, kMissing };

// What the spy modules answer while a pane is opened.
struct SuiteAnswers {
    std::function<std::uint32_t(TechnicianRecord*, std::uint32_t)> technicians;
    std::function<std::uint32_t(std::uint32_t, PhysicianRecord*, std::uint32_t)> physicians;
    std::function<std::uint32_t(KxMeasurementSet*, KxInterpretationResult*, void*, std::uint32_t)> interpret;
    std::function<std::uint32_t(const char*, char*, std::uint32_t, KxTestRecord*, std::uint32_t)> createText;
};

TechnicianRecord Technician(const char* first, const char* initial, const char* last);
PhysicianRecord Physician(const char* first, const char* initial, const char* last, const char* title);

// The program's folder holds a copy of the library, so that the files beside it are the test's own.
class InterpretationPane : public testing::Test {
  protected:
    InterpretationPane();
    ~InterpretationPane() override;

    // Before Open: which modules stand beside the program, and the files beside the library.
    void LayModule(const char* name, SuiteModule module);
    void LayFile(const char* name, const std::string& content);
    void RemoveFile(const char* name);

    // Loads the modules, so that they give this test's answers. Open does it as well.
    void HoldModules();
    // Opens the pane on record_ and drops the reports before; null when there is no window.
    HWND Open();
    void Close();
    // The pane's reports since the last call.
    std::vector<std::string> Reports() { return library_.TakeLog(); }

    HWND Edit() const { return Item(pane_, IDC_INTERP_STATEMENT); }
    std::string Statement() const { return Text(IDC_INTERP_STATEMENT); }
    std::string Text(std::uint32_t id) const;
    bool IsChecked(std::uint32_t id) const { return IsItemChecked(pane_, id); }
    void Click(std::uint32_t id);
    std::vector<std::string> ListOf(std::uint32_t comboId) const;
    // Chooses an item as the list of the combo box does, with its notifications.
    void Pick(std::uint32_t comboId, const char* text);
    // Types into the edit field of a combo box.
    void TypeName(std::uint32_t comboId, const char* text);
    void SetPicker(std::uint32_t id, const DateTime& time);
    DateTime PickerTime(std::uint32_t id) const;

    // Types into the statement, one WM_CHAR a character; posted messages are handled after each.
    void Type(const std::string& text);
    void Press(WPARAM virtualKey);
    // Handles what is posted.
    static void Pump();

    // How often the pane has told its parent of a change, and what is called then.
    int changes_ = 0;
    std::function<void()> onChange_;

    SuiteAnswers answers_;
    std::unique_ptr<TestRecord> record_;
    std::uint32_t hostOptions_[4] = {2};  // no automatic interpretation
    HWND pane_ = nullptr;
    KxHostWindow parent_{};
    LibraryUnderTest library_;

  private:
    static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void HoldModule(const char* name);

    std::vector<HMODULE> held_;
};

}  // namespace kx::test
