// The interpretation pane in a host's window, with statement files and a suite of the test's choice.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
// After gtest: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/resources/interpretation_ids.h"
#include "tests/rig/pane.h"

namespace kx::test {

class InterpretationTest : public testing::Test {
  protected:
    InterpretationTest() { SetStatement(""); }

    // Without automatic interpretation, unless the test has changed options_; the reports before are dropped.
    void Open() {
        suite_.TakeReports();
        pane_.emplace(KindOf("Interpretation"), host_, *record_, options_);
        ASSERT_TRUE(pane_->IsAttached());
        SetFocus(Edit());
        Pump();
        host_.notices = 0;
    }
    void Close() { pane_.reset(); }

    HWND Edit() const { return pane_->Item(IDC_INTERP_STATEMENT); }
    std::string Statement() const { return pane_->Text(IDC_INTERP_STATEMENT); }
    std::string Stored() const { return record_->InterpretationText(nullptr, 0); }
    void SetStatement(const std::string& text) {
        record_->SetOriginalInterpretation(nullptr, text.c_str());
        record_->reportState = KX_REPORT_ORIGINAL;
    }
    void Type(std::string_view text) { pane_->Type(IDC_INTERP_STATEMENT, text); }
    void Press(WPARAM virtualKey) {
        SendMessageA(Edit(), WM_KEYDOWN, virtualKey, 1);
        Pump();
    }
    void Select(int start, int end) { SendMessageA(Edit(), EM_SETSEL, static_cast<WPARAM>(start), end); }

    SpyingSuite suite_;
    LibraryUse library_;
    HostWindow host_;
    std::unique_ptr<TestRecord> record_ = NewRecord();
    std::uint32_t options_[4] = {2};
    std::optional<Pane> pane_;
};

}  // namespace kx::test
