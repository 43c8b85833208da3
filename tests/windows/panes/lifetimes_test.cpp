// A pane may end at any moment: nothing of it runs, reads or writes afterwards.
//
// The library's memory is fenced, the host's object and its record become unreadable with the pane, so that whoever
// goes on with what is gone ends the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
// After gtest: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "tests/rig/library_memory.h"
#include "tests/rig/pane.h"

namespace {

using kx::test::ForeignRecord;
using kx::test::HostWindow;
using kx::test::KindOf;
using kx::test::LibraryMemory;
using kx::test::LibraryUse;
using kx::test::NewRecord;
using kx::test::Pane;
using kx::test::PaneKind;
using kx::test::SpyingSuite;
using testing::IsEmpty;

// Counts the messages that are sent to windows of this thread and acts at one of them.
class MessageHook {
  public:
    MessageHook(int at, std::function<void()> act) : at_(at), act_(std::move(act)) {
        g_hook = this;
        hook_ = SetWindowsHookExA(WH_CALLWNDPROC, Proc, nullptr, GetCurrentThreadId());
    }
    ~MessageHook() {
        UnhookWindowsHookEx(hook_);
        g_hook = nullptr;
    }
    MessageHook(const MessageHook&) = delete;
    MessageHook& operator=(const MessageHook&) = delete;

    int Count() const { return count_; }

  private:
    static LRESULT CALLBACK Proc(int code, WPARAM wParam, LPARAM lParam) {
        MessageHook& hook = *g_hook;
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (!IsWithinAControl(sent) && ++hook.count_ == hook.at_) {
            hook.act_();
        }
        return CallNextHookEx(hook.hook_, code, wParam, lParam);
    }
    // The system's own controls do not survive their end in the middle of a message, a painting or a notification of
    // theirs.
    static bool IsWithinAControl(const CWPSTRUCT& sent) {
        char name[20] = {};
        GetClassNameA(sent.hwnd, name, sizeof name);
        const bool isOurs = std::strcmp(name, "#32770") == 0 || std::strcmp(name, "RigHost") == 0 || std::strcmp(name, "MarkerView") == 0;
        return !isOurs || sent.message == WM_NOTIFY || (sent.message >= WM_CTLCOLORMSGBOX && sent.message <= WM_CTLCOLORSTATIC);
    }
    static inline MessageHook* g_hook = nullptr;

    int at_;
    std::function<void()> act_;
    int count_ = 0;
    HHOOK hook_;
};

// A pane in a window of a window of the host's, on a record that the host frees with it.
struct Stage {
    std::unique_ptr<kx::TestRecord> model = NewRecord();
    ForeignRecord record{*model};
    HostWindow grandparent;
    HostWindow parent{grandparent.Handle()};

    HWND PaneWindow() const { return GetWindow(parent.Handle(), GW_CHILD); }
};

struct Ending {
    const char* name;
    void (*end)(Stage&);
};
const Ending kEndings[] = {
    {"the pane", [](Stage& stage) { DestroyWindow(stage.PaneWindow()); }},
    {"its parent", [](Stage& stage) { stage.parent.Destroy(); }},
    {"its grandparent", [](Stage& stage) { stage.grandparent.Destroy(); }},
};

// What a host and a user do with a pane.
struct Step {
    const char* name;
    void (*act)(HWND pane);
};

void Send(HWND pane, std::uint32_t id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    SendMessageA(GetDlgItem(pane, static_cast<int>(id)), message, wParam, lParam);
}
void Command(HWND pane, std::uint32_t id, UINT code) {
    SendMessageA(pane, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(pane, static_cast<int>(id))));
}
void Type(HWND pane, std::uint32_t id, const char* text) {
    SetFocus(GetDlgItem(pane, static_cast<int>(id)));
    for (; *text != '\0'; ++text) {
        Send(pane, id, WM_CHAR, static_cast<unsigned char>(*text), 1);
        kx::test::Pump();
    }
}
void ChooseItem(HWND pane, std::uint32_t combo, UINT code) {
    Send(pane, combo, CB_SETCURSEL, 1);
    Command(pane, combo, code);
}
void DragInView(HWND pane) {
    RECT area{};
    GetClientRect(GetDlgItem(pane, 31283), &area);
    for (int x = 0; x < area.right; x += 7) {
        POINT point{x, area.bottom / 2};
        ClientToScreen(GetDlgItem(pane, 31283), &point);
        if (SendMessageA(GetDlgItem(pane, 31283), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTCLIENT) {
            Send(pane, 31283, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, area.bottom / 2));
            Send(pane, 31283, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x - 9, area.bottom / 2));
            kx::test::Pump();
            Send(pane, 31283, WM_LBUTTONUP, 0, MAKELPARAM(x - 9, area.bottom / 2));
            kx::test::Pump();
            return;
        }
    }
}

const Step kCommonSteps[] = {
    {"sized", [](HWND pane) { MoveWindow(pane, 0, 0, 900, 600, TRUE); }},
    {"painted", [](HWND pane) { RedrawWindow(pane, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN); }},
    {"hidden", [](HWND pane) { ShowWindow(pane, SW_HIDE); }},
};
const Step kMorphologySteps[] = {
    {"marker moved", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6); }},
    {"dragged", DragInView},
    {"marker stepped", [](HWND pane) { SetFocus(GetDlgItem(pane, 31283)), Send(pane, 31283, WM_KEYDOWN, VK_LEFT, 1), kx::test::Pump(); }},
    {"undone", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6), SendMessageA(pane, 1451, 0, 0); }},
    {"lead chosen", [](HWND pane) { ChooseItem(pane, 31254, CBN_SELENDOK); }},
    {"gain chosen", [](HWND pane) { ChooseItem(pane, 31242, CBN_SELENDOK); }},
    {"reset", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6), Send(pane, 31264, BM_CLICK); }},
    {"readout", [](HWND pane) { SendMessageA(pane, 1450, 0, reinterpret_cast<LPARAM>("text")); }},
};
const Step kInterpretationSteps[] = {
    {"typed", [](HWND pane) { Type(pane, 33831, "ri"); }},
    {"code typed", [](HWND pane) { Type(pane, 33831, "rs"); }},
    {"reviewer chosen", [](HWND pane) { ChooseItem(pane, 33824, CBN_SELCHANGE); }},
    {"physician typed", [](HWND pane) { SetWindowTextA(GetDlgItem(pane, 33829), "Neri"), Command(pane, 33829, CBN_EDITCHANGE); }},
    {"focus lost", [](HWND pane) { SetFocus(GetDlgItem(pane, 33831)), SetFocus(GetDlgItem(pane, 33823)); }},
    {"automatic inserted", [](HWND pane) { Send(pane, 33827, BM_CLICK), kx::test::Pump(); }},
    {"entry inserted",
     [](HWND pane) {
         Send(pane, 33828, TVM_SELECTITEM, TVGN_CARET, SendMessageA(GetDlgItem(pane, 33828), TVM_GETNEXTITEM, TVGN_ROOT, 0)),
             Send(pane, 33832, BM_CLICK), kx::test::Pump();
     }},
    {"cancelled", [](HWND pane) { SendMessageA(pane, WM_COMMAND, IDCANCEL, 0); }},
};

std::vector<Step> StepsOf(const PaneKind& kind) {
    std::vector<Step> steps(std::begin(kCommonSteps), std::end(kCommonSteps));
    if (IsMorphology(kind)) {
        steps.insert(steps.end(), std::begin(kMorphologySteps), std::end(kMorphologySteps));
    } else if (kind.templateId == 20542) {
        steps.insert(steps.end(), std::begin(kInterpretationSteps), std::end(kInterpretationSteps));
    }
    return steps;
}

class Interpretation : public testing::Test {
  protected:
    std::uint32_t OpenInterpretation(Stage& stage) {
        return KindOf("Interpretation").open(stage.parent.Object(), &stage.record.Record(), options_);
    }

    SpyingSuite suite_;
    LibraryMemory memory_{LibraryMemory::Kind::kFenced};
    LibraryUse library_;
    std::uint32_t options_[4] = {};
};

class Lifetimes : public testing::TestWithParam<PaneKind> {
  protected:
    // Opens a pane and does a step in it, which ends at its n-th message when n is above 0; how many messages there were.
    int Do(const Step* step, int at, const Ending& ending) {
        Stage stage;
        const auto end = [&] {
            const HWND pane = stage.PaneWindow();
            ending.end(stage);
            // No host acts in the middle of a control's message; the panes that say once what they show bear even that.
            if (pane != nullptr && IsWindow(pane) == FALSE && (GetParam().templateId == 0 || GetParam().templateId == 20548)) {
                stage.record.Revoke();
            }
        };
        int count = 0;
        if (step == nullptr) {
            const MessageHook hook(at, end);
            GetParam().open(stage.parent.Object(), &stage.record.Record(), options_);
            kx::test::Pump();
            count = hook.Count();
        } else {
            GetParam().open(stage.parent.Object(), &stage.record.Record(), options_);
            kx::test::Pump();
            const MessageHook hook(at, end);
            step->act(stage.PaneWindow());
            kx::test::Pump();
            count = hook.Count();
        }
        return count;
    }

    // At so many of its messages, evenly, and the first and last ones.
    void EndAnywhere(const Step* step, int most) {
        const int count = Do(step, 0, kEndings[0]);
        const int stride = std::max(1, count / most);
        for (int at = 1; at <= count; at += stride) {
            const Ending& ending = kEndings[at / stride % std::size(kEndings)];
            SCOPED_TRACE(std::string(step == nullptr ? "opened" : step->name) + " at message " + std::to_string(at) + " of " +
                         std::to_string(count) + ": " + ending.name);
            Do(step, at, ending);
        }
    }

    SpyingSuite suite_;
    LibraryMemory memory_{LibraryMemory::Kind::kFenced};
    LibraryUse library_;
    std::uint32_t options_[4] = {};
};

TEST_P(Lifetimes, EndsAtAnyMessageOfItsOpening) { EndAnywhere(nullptr, 20); }

TEST_P(Lifetimes, EndsAtAnyMessageOfAStep) {
    for (const Step& step : StepsOf(GetParam())) {
        EndAnywhere(&step, 8);
    }
}

// Told of a change, the host ends the pane and frees the record; so does a module that dispatches messages while the
// pane opens.
TEST_F(Interpretation, EndsWithinItsNoticesAndTheModulesOfItsOpening) {
    for (const Ending& ending : kEndings) {
        for (const Step& step : kInterpretationSteps) {
            SCOPED_TRACE(std::string(step.name) + ", " + ending.name);
            Stage stage;
            stage.parent.onNotice = [&] {
                stage.parent.onNotice = nullptr;
                ending.end(stage);
                stage.record.Revoke();
            };
            OpenInterpretation(stage);
            step.act(stage.PaneWindow());
            kx::test::Pump();
            stage.parent.onNotice = nullptr;
        }
        for (const char* const module : {"TECH_LIST", "PHYS_LIST", "INTERPRET"}) {
            SCOPED_TRACE(std::string(module) + ", " + ending.name);
            Stage stage;
            suite_.onCall = [&](const std::string& name) {
                if (name == module && stage.PaneWindow() != nullptr) {
                    ending.end(stage);
                    suite_.On(module, [](SpyingSuite::Arguments) { return 0u; });
                    stage.record.Revoke();
                }
            };
            EXPECT_EQ(OpenInterpretation(stage), 0u);
            EXPECT_EQ(stage.PaneWindow(), nullptr);
            suite_.onCall = nullptr;
        }
    }
}

// A pane that says goodbye is destroyed again, and the host's last word is heard once.
TEST_F(Interpretation, EndsWhileItSaysGoodbye) {
    Stage stage;
    OpenInterpretation(stage);
    const HWND pane = stage.PaneWindow();
    int depth = 0;
    stage.parent.onNotice = [&] {
        if (++depth < 4) {
            DestroyWindow(pane);
        }
    };
    DestroyWindow(pane);
    EXPECT_EQ(depth, 1);
    EXPECT_FALSE(IsWindow(pane));
}

// The last stop ends what is open, and another start opens as the first one did.
TEST_F(Interpretation, TheLastStopEndsEveryPane) {
    Stage stage;
    for (const PaneKind& kind : kx::test::PaneKinds()) {
        kind.open(stage.parent.Object(), &stage.record.Record(), options_);
    }
    kx::test::LibraryExports().stop();
    EXPECT_EQ(stage.PaneWindow(), nullptr);
    kx::test::LibraryExports().start();
    for (const PaneKind& kind : kx::test::PaneKinds()) {
        const Pane pane(kind, stage.parent, stage.record.Record());
        EXPECT_TRUE(pane.IsAttached()) << kind;
    }
}

TEST_F(Interpretation, APaneWithoutAWindowSaysSo) {
    Stage stage;
    KxHostWindow nowhere{nullptr, nullptr};
    for (const PaneKind& kind : kx::test::PaneKinds()) {
        suite_.TakeReports();
        const std::uint32_t handle = kind.open(&nowhere, &stage.record.Record(), options_);
        EXPECT_EQ(kx::test::WindowOf(handle), nullptr) << kind;
        EXPECT_THAT(suite_.TakeReports(), testing::ElementsAre(testing::HasSubstr("LOGMEMORYERROR \"" + std::string(kind.source)))) << kind;
    }
}

// A module that dispatches messages while it works.
TEST_P(Lifetimes, EndsWithinACallOfAModule) {
    for (const Step& step : StepsOf(GetParam())) {
        for (const Ending& ending : kEndings) {
            for (const std::uint32_t answer : {0u, 1u}) {
                SCOPED_TRACE(std::string(step.name) + ", " + ending.name + ", answer " + std::to_string(answer));
                Stage stage;
                GetParam().open(stage.parent.Object(), &stage.record.Record(), options_);
                kx::test::Pump();
                bool called = false;
                suite_.On("UPDATEDETECTION", [&](SpyingSuite::Arguments) {
                    called = true;
                    ending.end(stage);
                    stage.record.Revoke();
                    return answer;
                });
                step.act(stage.PaneWindow());
                kx::test::Pump();
                EXPECT_EQ(called && stage.PaneWindow() != nullptr, false);
                suite_.On("UPDATEDETECTION", [](SpyingSuite::Arguments) { return 1u; });
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Panes, Lifetimes, testing::ValuesIn(kx::test::PaneKinds()), [](const auto& row) { return row.param.name; });

}  // namespace
