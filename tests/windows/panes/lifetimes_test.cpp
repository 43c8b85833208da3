// A pane may end at any moment: nothing of it runs, reads or writes afterwards.
//
// The library's memory is fenced, the host's object and its record become unreadable with the pane, so that whoever
// goes on with what is gone ends the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "tests/rig/library_memory.h"
#include "tests/windows/panes/pane_steps.h"

namespace kx::test {
namespace {

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

class Lifetimes : public testing::Test {
  protected:
    std::uint32_t Open(const PaneKind& kind, Stage& stage) { return kind.open(stage.parent.Object(), &stage.record.Record(), options_); }
    // The host ends the pane, and frees the record.
    static void End(const Ending& ending, Stage& stage) {
        ending.end(stage);
        stage.record.Revoke();
    }

    SpyingSuite suite_;
    LibraryMemory memory_;
    LibraryUse library_;
    std::uint32_t options_[4] = {};
};

class PaneLifetimes : public Lifetimes, public testing::WithParamInterface<PaneKind> {
  protected:
    // Opens a pane and does a step in it (null: opens it only), which ends at its n-th message when n is above 0; how many
    // messages there were.
    int Do(const Step* step, int at, const Ending& ending) {
        SCOPED_TRACE(std::string(step == nullptr ? "opened" : step->name) + " at message " + std::to_string(at) + ": " + ending.name);
        memory_.Rewind();
        Stage stage;
        const auto end = [&] {
            const HWND pane = stage.PaneWindow();
            ending.end(stage);
            // No host acts in the middle of a control's message; the panes that say once what they show bear even that.
            if (pane != nullptr && IsWindow(pane) == FALSE && (GetParam().templateId == 0 || GetParam().templateId == 20548)) {
                stage.record.Revoke();
            }
        };
        if (step != nullptr) {
            Open(GetParam(), stage);
            Pump();
            EXPECT_NE(stage.PaneWindow(), nullptr);
        }
        const MessageHook hook(at, end);
        step == nullptr ? void(Open(GetParam(), stage)) : step->act(stage.PaneWindow());
        Pump();
        return hook.Count();
    }
};

// A few of them each, evenly: the random host ends panes at all of them, for hours.
TEST_P(PaneLifetimes, EndsAtAnyMessageOfItsOpening) {
    const int count = Do(nullptr, 0, kEndings[0]);
    const int stride = std::max(1, count / 7);
    for (int at = 1; at <= count; at += stride) {
        Do(nullptr, at, kEndings[at / stride % std::size(kEndings)]);
    }
}

TEST_P(PaneLifetimes, EndsAtAnyMessageOfAStep) {
    std::vector<std::pair<Step, int>> counted;
    {
        Stage stage;
        Open(GetParam(), stage);
        Pump();
        for (const Step& step : StepsOf(GetParam())) {
            const MessageHook hook(0, [] {});
            step.act(stage.PaneWindow());
            Pump();
            counted.emplace_back(step, hook.Count());
        }
    }
    std::size_t turn = 0;
    for (const auto& [step, count] : counted) {
        for (const int at : {std::max(1, count / 2), std::max(1, count)}) {
            Do(&step, at, kEndings[turn++ % std::size(kEndings)]);
        }
    }
}

// By whoever thinks them his own: the pane goes on without.
TEST_P(PaneLifetimes, ItsControlsEndOneByOne) {
    for (unsigned seed = 0; seed < 2; ++seed) {
        SCOPED_TRACE(seed);
        Stage stage;
        Open(GetParam(), stage);
        std::vector<HWND> controls;
        for (HWND control = GetWindow(stage.PaneWindow(), GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
            controls.push_back(control);
        }
        std::shuffle(controls.begin(), controls.end(), std::mt19937(seed));
        const std::vector<Step> steps = StepsOf(GetParam());
        for (std::size_t i = 0; i < controls.size(); ++i) {
            DestroyWindow(controls[i]);
            steps[i % steps.size()].act(stage.PaneWindow());
            Pump();
        }
        EXPECT_NE(stage.PaneWindow(), nullptr);
    }
}

TEST_F(Lifetimes, APaneWithoutAWindowSaysSo) {
    Stage stage;
    KxHostWindow nowhere{nullptr, nullptr};
    for (const PaneKind& kind : PaneKinds()) {
        suite_.TakeReports();
        EXPECT_EQ(WindowOf(kind.open(&nowhere, &stage.record.Record(), options_)), nullptr) << kind;
        EXPECT_THAT(suite_.TakeReports(), testing::ElementsAre(testing::HasSubstr("LOGMEMORYERROR \"" + std::string(kind.source)))) << kind;
    }
}

INSTANTIATE_TEST_SUITE_P(Panes, PaneLifetimes, testing::ValuesIn(KindsOfFrames()), [](const auto& row) { return row.param.name; });

// A module that dispatches messages while it works.
TEST_F(Lifetimes, EndsWithinACallOfTheEngine) {
    std::size_t turn = 0;
    for (const Step& step : kMeasuredSteps) {
        for (const std::uint32_t answer : {0u, 1u}) {
            const Ending& ending = kEndings[turn++ % std::size(kEndings)];
            SCOPED_TRACE(std::string(step.name) + ", " + ending.name + ", answer " + std::to_string(answer));
            memory_.Rewind();
            Stage stage;
            Open(KindOf("Qrs"), stage);
            Pump();
            suite_.On("UPDATEDETECTION", [&](SpyingSuite::Arguments) {
                End(ending, stage);
                return answer;
            });
            step.act(stage.PaneWindow());
            Pump();
            EXPECT_EQ(stage.PaneWindow(), nullptr);
            suite_.On("UPDATEDETECTION", [](SpyingSuite::Arguments) { return 1u; });
        }
    }
}

TEST_F(Lifetimes, EndsWithinItsNotices) {
    for (const Ending& ending : kEndings) {
        for (const Step& step : kInterpretationSteps) {
            SCOPED_TRACE(std::string(step.name) + ", " + ending.name);
            Stage stage;
            stage.parent.onNotice = [&] {
                stage.parent.onNotice = nullptr;
                End(ending, stage);
            };
            Open(KindOf("Interpretation"), stage);
            step.act(stage.PaneWindow());
            Pump();
            stage.parent.onNotice = nullptr;
        }
    }
}

TEST_F(Lifetimes, EndsWithinTheModulesOfItsOpening) {
    library_.LayFile("stress.htm", "<BODY>");
    library_.LayFile("stress.scr", "x");
    const std::pair<const char*, const char*> rows[] = {{"Interpretation", "TECH_LIST"}, {"Interpretation", "PHYS_LIST"},
                                                        {"Interpretation", "INTERPRET"}, {"Interpretation", "CREATETEXT"},
                                                        {"Interpretation", "LIBSTART"},  {"Qrs", "LIBSTART"}};
    for (const Ending& ending : kEndings) {
        for (const auto& [kind, module] : rows) {
            SCOPED_TRACE(std::string(kind) + ' ' + module + ", " + ending.name);
            Stage stage;
            bool ended = false;
            stage.record.Store(7556, std::strcmp(module, "CREATETEXT") == 0 ? KX_TEST_STRESS : KX_TEST_RESTING, 4);
            suite_.onCall = [&, name = std::string(module)](const std::string& called) {
                if (called == name && !ended && (stage.PaneWindow() != nullptr || &ending != kEndings)) {
                    ended = true;
                    End(ending, stage);
                }
            };
            suite_.On(module, [](SpyingSuite::Arguments) { return 0u; });
            const std::uint32_t handle = Open(KindOf(kind), stage);
            EXPECT_EQ(ended, stage.PaneWindow() == nullptr);
            EXPECT_TRUE(!ended || handle == 0 || WindowOf(handle) == nullptr);
            suite_.onCall = nullptr;
        }
    }
}

// An engine that is given up after a failure and loaded again with the next use.
TEST_F(Lifetimes, EndsWhileTheEngineComesAndGoes) {
    for (const Ending& ending : kEndings) {
        for (const char* const module : {"LIBSTOP", "LIBSTART", "LOGOEMERROR"}) {
            SCOPED_TRACE(std::string(module) + ", " + ending.name);
            suite_.Lay("kxanalyze.dll", Sibling::kWithoutExports);
            Stage stage;
            Open(KindOf("Qrs"), stage);
            suite_.onCall = [&](const std::string& called) {
                if (called == module && stage.PaneWindow() != nullptr) {
                    End(ending, stage);
                }
            };
            for (const int ms : {190, 180}) {
                SendMessageA(stage.PaneWindow(), 1345, static_cast<WPARAM>(ms), KX_LEAD_V6);
            }
            EXPECT_EQ(stage.PaneWindow(), nullptr);
            suite_.onCall = nullptr;
        }
    }
}

// The host goes on while a dialog of the library is open in front.
TEST_F(Lifetimes, EndsBehindAModalDialog) {
    int button = IDOK;
    for (const Ending& ending : kEndings) {
        SCOPED_TRACE(std::string(ending.name) + ' ' + std::to_string(button));
        Stage stage;
        Open(KindOf("Interpretation"), stage);
        EXPECT_TRUE(DriveModal([&] { Send(stage.PaneWindow(), 31224, BM_CLICK); },
                               [&](HWND dialog) {
                                   End(ending, stage);
                                   SetDlgItemTextA(dialog, 31218, "Altro");
                                   SendDlgItemMessageA(dialog, button, BM_CLICK, 0, 0);
                               }));
        EXPECT_EQ(stage.PaneWindow(), nullptr);

        Stage behind;
        const KxRect area{0, 0, 300, 100};
        std::uint32_t result = 99;
        for (const PaneKind& kind : KindsOfFrames()) {
            Open(kind, behind);
        }
        EXPECT_TRUE(DriveModal([&] { result = library_->editInterpretation(behind.parent.Object(), &behind.record.Record(), &area, 0); },
                               [&](HWND editor) {
                                   TypeText(editor, "rit");
                                   End(&ending == kEndings ? kEndings[1] : ending, behind);
                                   SendDlgItemMessageA(editor, button, BM_CLICK, 0, 0);
                               }));
        EXPECT_EQ(result, 0u);
        button = button == IDOK ? IDCANCEL : IDOK;
    }
}

// A pane that says goodbye is destroyed again, and the host's last word is heard once.
TEST_F(Lifetimes, EndsWhileItSaysGoodbye) {
    Stage stage;
    Open(KindOf("Interpretation"), stage);
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
TEST_F(Lifetimes, TheLastStopEndsEveryPane) {
    Stage stage;
    for (const PaneKind& kind : PaneKinds()) {
        Open(kind, stage);
    }
    LibraryExports().stop();
    EXPECT_EQ(stage.PaneWindow(), nullptr);
    LibraryExports().start();
    for (const PaneKind& kind : PaneKinds()) {
        const Pane pane(kind, stage.parent, stage.record.Record());
        EXPECT_TRUE(pane.IsAttached()) << kind;
    }
}

}  // namespace
}  // namespace kx::test
