// What the editor shows and takes, and what of it gets into the record.
#include <cstring>
#include <utility>

#include "tests/rig/window_shot.h"
#include "tests/windows/statement_editor/editor_fixture.h"

namespace kx::test {
namespace {

using testing::IsEmpty;

// The record as it is, to see that nothing has touched it.
std::string Bytes(const TestRecord& record) {
    return {reinterpret_cast<const char*>(static_cast<const KxTestRecord*>(&record)), sizeof(KxTestRecord)};
}

bool IsNow(const DateTime& time) {
    const std::int64_t age = DateTime().MillisecondsSince(time);
    return age >= 0 && age < 60000;
}

TEST_F(StatementEditorTest, WritesTheStatementByTheStateOfTheReport) {
    const DateTime then(2020, 1, 2, 3, 4, 5);
    const struct {
        const char* name;
        std::uint8_t state;
        std::uint8_t after;
    } rows[] = {
        {"original", KX_REPORT_ORIGINAL, KX_REPORT_OVERREAD},
        {"overread", KX_REPORT_OVERREAD, KX_REPORT_OVERREAD},
        {"confirmed", KX_REPORT_CONFIRMED, KX_REPORT_CONFIRMED},
        {"reviewed outside", KX_REPORT_REVIEWED_OUTSIDE, KX_REPORT_OVERREAD},
    };
    for (const auto& row : rows) {
        record_->reportState = row.state;
        record_->overreadTime = record_->confirmedTime = then;
        record_->SetOriginalBy("ECG");
        std::strcpy(record_->interpretationText, "Testo di prima.");
        record_->ClearModified();
        EXPECT_EQ(Run(kStatementMode,
                      [&](HWND editor) {
                          EXPECT_EQ(EditText(editor), "Testo di prima.") << row.name;
                          // The caret is behind the text: the first key replaces nothing.
                          TypeText(editor, " \xC8 vero.");
                          ClickOn(editor, Item(editor, IDOK));
                      }),
                  1u);
        EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Testo di prima. \xC8 vero.") << row.name;
        EXPECT_EQ(record_->reportState, row.after) << row.name;
        const bool confirmed = row.after == KX_REPORT_CONFIRMED;
        EXPECT_TRUE(IsNow(confirmed ? record_->ConfirmedTime() : record_->OverreadTime())) << row.name;
        EXPECT_EQ((confirmed ? record_->OverreadTime() : record_->ConfirmedTime()).Compare(then), 0)
            << row.name;
        EXPECT_TRUE(record_->IsModified()) << row.name;
        EXPECT_STREQ(record_->ConfirmedBy(), "Bruni") << row.name;
    }
}

TEST_F(StatementEditorTest, LeavesTheRecordAloneUnlessTheTextWasChangedAndOkPressed) {
    const struct {
        const char* name;
        bool types;
        std::function<void(HWND)> end;
        std::uint32_t result;
    } rows[] = {
        {"OK without a change", false, [](HWND e) { ClickOn(e, Item(e, IDOK)); }, 1},
        {"X", true, [](HWND e) { ClickOn(e, Item(e, IDCANCEL)); }, 0},
        {"Escape", true, [](HWND e) { PressKey(e, VK_ESCAPE); }, 0},
        {"closed by the system", true,
         [](HWND e) {
             PostMessageA(e, WM_SYSCOMMAND, SC_CLOSE, 0);
             kx::test::Pump(e);
         },
         0},
    };
    const std::string before = Bytes(*record_);
    for (const auto& row : rows) {
        for (const std::uint32_t mode : {kStatementMode, kPhysicianMode}) {
            bool ended = false;
            EXPECT_EQ(Run(mode,
                          [&](HWND editor) {
                              if (row.types) {
                                  TypeText(editor, "zz");
                              }
                              row.end(editor);
                              ended = !IsWindowVisible(editor);
                          }),
                      row.result)
                << row.name;
            EXPECT_TRUE(ended) << row.name;
            EXPECT_EQ(Bytes(*record_), before) << row.name;
        }
    }
}

// However it is left, the call returns.
TEST_F(StatementEditorTest, AlwaysEnds) {
    const HWND frame = static_cast<HWND>(parent_.handle);
    HWND child = nullptr;
    const struct {
        const char* name;
        std::function<void(HWND)> act;
    } rows[] = {
        {"its parent ends, which does not own it", [&](HWND) { DestroyWindow(child); }},
        {"told that it is destroyed, and closed then",
         [](HWND e) {
             SendMessageA(e, WM_DESTROY, 0, 0);
             PostMessageA(e, WM_SYSCOMMAND, SC_CLOSE, 0);
         }},
        {"under the menu of its edit",
         [](HWND e) {
             PostMessageA(Item(e, kEditId), WM_CONTEXTMENU, 0, MAKELPARAM(420, 120));
             PostMessageA(e, WM_SYSCOMMAND, SC_CLOSE, 0);
         }},
    };
    for (const auto& row : rows) {
        child = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 600, 400, frame, nullptr, nullptr, nullptr);
        KxHostWindow parent{};
        parent.handle = child;
        const KxHostWindow host = std::exchange(parent_, parent);
        bool ended = false;
        const std::uint32_t result = Run(kStatementMode, [&](HWND editor) {
            row.act(editor);
            ended = PumpUntil(editor, [&] { return !IsWindow(editor) || !IsWindowVisible(editor); });
        });
        parent_ = host;
        EXPECT_TRUE(ended) << row.name;
        EXPECT_EQ(result, 0u) << row.name;
        DestroyWindow(child);
    }
}

TEST_F(StatementEditorTest, CompletesStatements) {
    EXPECT_EQ(Run(kStatementMode,
                  [&](HWND editor) {
                      const HWND panelButton = Item(editor, kPanelButtonId);
                      TypeText(editor, "\r");
                      EXPECT_EQ(EditText(editor), "Testo di prima.\r\n");
                      TypeText(editor, "ritmo g");
                      EXPECT_TRUE(IsProposing());
                      EXPECT_FALSE(IsWindowEnabled(panelButton));
                      EXPECT_EQ(GetFocus(), Item(editor, kEditId));
                      EXPECT_TRUE(Shoot(editor, "editor"));
                      TypeText(editor, "\r");
                      EXPECT_FALSE(IsProposing());
                      EXPECT_TRUE(IsWindowEnabled(panelButton));
                      EXPECT_EQ(EditText(editor), "Testo di prima.\r\nRitmo giunzionale.");
                      // The whole code of a statement is a choice.
                      TypeText(editor, "\rra");
                      EXPECT_TRUE(PumpUntil(editor, [&] {
                          return EditText(editor) ==
                                 "Testo di prima.\r\nRitmo giunzionale.\r\nRitmo atriale.";
                      }));
                      ClickOn(editor, Item(editor, IDOK));
                  }),
              1u);
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0),
                 "Testo di prima.\r\nRitmo giunzionale.\r\nRitmo atriale.");
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(StatementEditorTest, ClosesTheProposalsBeforeItself) {
    EXPECT_EQ(Run(kStatementMode,
                  [&](HWND editor) {
                      TypeText(editor, "\rri");
                      ASSERT_TRUE(IsProposing());
                      PressKey(editor, VK_ESCAPE);
                      EXPECT_FALSE(IsProposing());
                      EXPECT_TRUE(IsWindowVisible(editor));
                      EXPECT_TRUE(IsWindowEnabled(Item(editor, kPanelButtonId)));
                      TypeText(editor, "t");
                      EXPECT_TRUE(IsProposing());
                      ClickOn(editor, Item(editor, IDCANCEL));
                      EXPECT_FALSE(IsProposing());
                  }),
              0u);
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Testo di prima.");
}

TEST_F(StatementEditorTest, HoldsNoMoreThanTheRecord) {
    std::strcpy(record_->interpretationText, std::string(4090, 'a').c_str());
    Run(kStatementMode, [&](HWND editor) {
        TypeText(editor, "bcdefgh");
        EXPECT_EQ(EditText(editor), std::string(4090, 'a') + "bcdef");
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_EQ(record_->InterpretationText(nullptr, 0), std::string(4090, 'a') + "bcdef");
}

TEST_F(StatementEditorTest, ConfirmsTheTestByThePhysiciansName) {
    EXPECT_EQ(Run(kPhysicianMode,
                  [&](HWND editor) {
                      EXPECT_EQ(EditText(editor), "Bruni");
                      TypeText(editor, "nic");  // over the old name
                      EXPECT_TRUE(IsProposing());
                      TypeText(editor, "\r");
                      EXPECT_EQ(EditText(editor), "Nicol\xF2 B Rossi");
                      ClickOn(editor, Item(editor, IDOK));
                  }),
              1u);
    EXPECT_STREQ(record_->ConfirmedBy(), "Nicol\xF2 B Rossi");
    EXPECT_TRUE(record_->IsConfirmed());
    EXPECT_TRUE(IsNow(record_->ConfirmedTime()));
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Testo di prima.");
    EXPECT_TRUE(record_->IsModified());
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(StatementEditorTest, StoresANameOfOneLineThatFits) {
    Run(kPhysicianMode, [&](HWND editor) {
        TypeText(editor, "Verdi\rPaolo\r");
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_STREQ(record_->ConfirmedBy(), "Verdi Paolo");
    Run(kPhysicianMode, [&](HWND editor) {
        TypeText(editor, std::string(50, 'n'));
        EXPECT_EQ(EditText(editor), std::string(38, 'n'));
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_EQ(record_->ConfirmedBy(), std::string(38, 'n'));
}

// What is kept of a name that is longer than a record's field is what the user sees.
TEST_F(StatementEditorTest, TakesTheBeginningOfALongName) {
    answers_.physicians = [](std::uint32_t, PhysicianRecord* records, std::uint32_t) {
        records[0] = Physician("Nicol\xF2 Maria", "B", "Rossi della Valle", "Specialista in cardiologia");
        return 1u;
    };
    const std::string whole = "Nicol\xF2 Maria B Rossi della Valle, Specialista in cardiologia";
    Run(kPhysicianMode, [&](HWND editor) {
        TypeText(editor, "nic\r");
        EXPECT_EQ(EditText(editor), whole.substr(0, 38));
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_EQ(record_->ConfirmedBy(), whole.substr(0, 38));
    EXPECT_TRUE(record_->IsConfirmed());
}

TEST_F(StatementEditorTest, IsWorkedByTheKeyboardAlone) {
    EXPECT_EQ(Run(kStatementMode,
                  [&](HWND editor) {
                      TypeText(editor, "!");
                      const std::uint32_t order[] = {IDOK, IDCANCEL, kPanelButtonId, kEditId, IDOK};
                      for (const std::uint32_t id : order) {
                          PressKey(editor, VK_TAB);
                          EXPECT_EQ(GetFocus(), Item(editor, id)) << id;
                      }
                      PressKey(editor, VK_SPACE);
                  }),
              1u);
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Testo di prima.!");
}

}  // namespace
}  // namespace kx::test
