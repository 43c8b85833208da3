// A morphology pane in a host's window: opened through its export, driven by mouse, keys and commands, and
// read through its controls.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "lib/dbclient/test_record.h"
#include "tests/windows/dialogs/library_under_test.h"
#include "tests/windows/dialogs/pane_reader.h"
#include "tests/windows/morphology/spy_kxanalyze.h"

namespace kx::test {

using Word = std::uint16_t KxLeadMeasurements::*;

struct MarkerUnderTest {
    const char* name;
    UINT edit;
    UINT manualBox;
    Word value;
    std::uint16_t flag;
};

struct PaneKind {
    const char* name;
    const char* source;  // of its reports
    WORD templateId;
    decltype(&::GENERALMORPHDIALOG) Exports::*open;
    bool isGlobal;
    std::vector<MarkerUnderTest> markers;
    // One figure that every re-measurement changes.
    UINT figure;
};

extern const PaneKind kGeneralPane;
extern const PaneKind kQrsPane;
extern const PaneKind kPPane;
extern const PaneKind kTPane;
extern const std::vector<const PaneKind*> kAllPanes;

inline std::ostream& operator<<(std::ostream& out, const PaneKind& kind) { return out << kind.name; }

enum class Engine { kSpy, kReal, kMissing };

// 1000 samples in 1000 ms, so that a sample is a millisecond; markers and measurements of its own for every
// lead.
std::unique_ptr<TestRecord> NewRecord();

// Sends what is waiting for the thread's windows.
void Pump();

class PaneUnderTest {
  public:
    // Lays the engine, and opens a visible pane of the kind in a host window at the
    // screen's corner.
    explicit PaneUnderTest(const PaneKind& kind, Engine engine = Engine::kSpy, std::unique_ptr<TestRecord> record = NewRecord());
    ~PaneUnderTest();
    PaneUnderTest(const PaneUnderTest&) = delete;
    PaneUnderTest& operator=(const PaneUnderTest&) = delete;

    // Null when there is no window.
    HWND Pane() const { return pane_; }
    HWND Host() const { return static_cast<HWND>(host_.handle); }
    HWND View() const { return Item(pane_, 31283); }
    TestRecord& Record() { return *record_; }
    KxMeasurementSet& Set() { return record_->Episode(0)->measurements; }
    LibraryUnderTest& Library() { return library_; }
    const EngineSpy& Spy() const { return spy_; }
    // What the export returned.
    std::uint32_t Handle() const { return handle_; }

    // The block that the pane edits while `lead` is selected.
    KxLeadMeasurements& Block(int lead = KX_LEAD_V6);
    std::vector<int> Stored(int lead = KX_LEAD_V6);
    std::uint16_t Flags(int lead = KX_LEAD_V6);
    // What the marker edits show, in slot order.
    std::vector<int> Shown() const;
    int Number(UINT edit) const;
    bool IsManualShown(std::size_t slot) const;
    bool CanReset() const { return IsWindowEnabled(Item(pane_, 31264)) != FALSE; }

    // As the user does it in the combo box.
    void Choose(UINT combo, LPARAM code);
    void SelectLead(int code) { Choose(31254, code); }
    void Click(UINT button);
    // Lays another engine for bindings that are made from now on.
    void LayEngine(Engine engine);
    // Presses Ctrl and a letter while a control has the focus.
    void PressControl(HWND focused, int letter);
    void Undo() { PressControl(Item(pane_, 31254), 'Z'); }
    void Redo() { PressControl(Item(pane_, 31254), 'Y'); }

    // ---- the view, by its own answers: the readout tells the time of every column
    // The column that stands for `ms`, or the nearest one that can be seen.
    int ColumnOf(int ms);
    // The time that a pointer on the column means; -1 beside the beat.
    int MsAt(int column);
    // Whether a marker can be taken at the column.
    bool IsMarkerAt(int column);
    // A line of the view where no label stands.
    int Row() const;
    // Takes the marker that stands at `from` ms and leaves it at `to` ms, by posted messages over `steps`
    // moves; then everything posted is handled. Returns the time at which it was left; -1 when there is no
    // marker at `from`.
    int Drag(int from, int to, int steps = 3);

  private:
    LibraryUnderTest& library_;
    EngineSpy spy_{};
    HMODULE engine_ = nullptr;
    KxHostWindow host_{};
    std::unique_ptr<TestRecord> record_;
    const PaneKind& kind_;
    std::uint32_t handle_ = 0;
    HWND pane_ = nullptr;
};

}  // namespace kx::test
