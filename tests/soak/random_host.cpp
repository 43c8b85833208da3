#include "tests/soak/random_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "dialogs/resources/interpretation_ids.h"
#include "tests/rig/library_memory.h"

namespace kx::test {
namespace {

// A modal dialog that has been asked so often to end and is still there does not end.
constexpr int kMostModalTicks = 400;
constexpr UINT kTickMs = 10;

RandomHost* g_host = nullptr;

std::string ShownText(HWND pane) {
    std::string text = TextOf(GetDlgItem(pane, IDC_INTERP_STATEMENT));
    return text.substr(0, sizeof(KxTestRecord::interpretationText) - 1);
}

BOOL CALLBACK FindModal(HWND window, LPARAM found) {
    char name[16] = {};
    GetClassNameA(window, name, sizeof name);
    if (lstrcmpA(name, "#32770") == 0 && IsWindowVisible(window) != FALSE && GetParent(window) != GetDesktopWindow()) {
        *reinterpret_cast<HWND*>(found) = window;
    }
    return TRUE;
}

HWND ModalDialog() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindModal, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

}  // namespace

RandomHost::RandomHost(unsigned seed, SpyingSuite& suite, SoakCounts& counts) : random_(seed), suite_(suite), counts_(counts) {
    g_host = this;
    for (int i = 0; i < 3; ++i) {
        Subject subject;
        subject.isAbsurd = random_.OneIn(4);
        subject.model = subject.isAbsurd ? AbsurdRecord() : NewRecord();
        subject.record = random_.OneIn(6) ? std::make_unique<ForeignRecord>() : std::make_unique<ForeignRecord>(*subject.model);
        subjects_.push_back(std::move(subject));
    }
    suite_.onCall = [this](const std::string& name) {
        if (name != "LIBSTART" && name != "LIBSTOP") {
            MayEndInside();
        }
    };
    timer_ = SetTimer(nullptr, 0, kTickMs, Tick);
}

RandomHost::~RandomHost() {
    suite_.onCall = nullptr;
    KillTimer(nullptr, timer_);
    g_host = nullptr;
}

void RandomHost::Note(const char* what) { std::printf("%ld %s\n", counts_.steps, what); }

void CALLBACK RandomHost::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (g_host != nullptr) {
        g_host->OnModalTick();
    }
}

void RandomHost::Run(int steps) {
    for (int i = 0; i < steps; ++i) {
        ++counts_.steps;
        Step();
        EXPECT_TRUE(Pump()) << "messages without an end";
        CheckStored();
    }
    Note("the end");
    RememberShown();
    grandparent_->Destroy();  // while both are held: what it says on its way out may end them once more
    parent_.reset();
    grandparent_.reset();
    Pump();
    CheckStored();
}

void RandomHost::Step() {
    if (grandparent_ == nullptr || IsWindow(parent_->Handle()) == FALSE) {
        Note("windows of the host");
        parent_.reset();
        grandparent_ = std::make_unique<HostWindow>();
        parent_ = std::make_unique<HostWindow>(grandparent_->Handle());
        parent_->onNotice = [this] { MayEndInside(); };
    }
    panes_.erase(std::remove_if(panes_.begin(), panes_.end(), [](HWND pane) { return IsWindow(pane) == FALSE; }), panes_.end());
    const unsigned choice = panes_.empty() ? 0 : random_.Below(40);
    if (choice < 3 && panes_.size() < 5) {
        OpenPane();
    } else if (choice < 6) {
        EndSomething();
    } else if (choice < 7) {
        EditModally();
    } else if (choice < 9) {
        ChangeSuite();
    } else if (choice < 10) {
        ChangeStatementFile();
    } else if (choice < 13) {
        ActAsHost();
    } else {
        UseLibraryWindow();
    }
}

void RandomHost::OpenPane() {
    const auto& kinds = PaneKinds();
    const PaneKind& kind = random_.OneIn(3) ? KindOf("Interpretation") : kinds[random_.Below(static_cast<unsigned>(kinds.size()))];
    Subject& subject = subjects_[random_.Below(static_cast<unsigned>(subjects_.size()))];
    const bool isInterpretation = kind.templateId == IDD_INTERPRETATION;
    if (isInterpretation && IsWindow(subject.interpretation) != FALSE) {
        return;
    }
    Note(kind.name);
    options_[0] = random_.Below(3);
    ++counts_.panes;
    const HWND parent = parent_->Handle();
    const std::uint32_t handle = kind.open(parent_->Object(), &subject.record->Record(), options_);
    // A pane that was ended while it opened has no object any more, and its parent may be gone with it.
    const HWND pane = handle == 0 || IsWindow(parent) == FALSE ? nullptr : WindowOf(handle);
    if (pane != nullptr) {
        panes_.push_back(pane);
        if (isInterpretation) {
            subject.interpretation = pane;
        }
    }
}

void RandomHost::EditModally() {
    Subject& subject = subjects_[random_.Below(static_cast<unsigned>(subjects_.size()))];
    Note("the editor");
    ++counts_.modalDialogs;
    modalTicks_ = 0;
    const KxRect area{10, 10, static_cast<std::int32_t>(random_.Below(600)), static_cast<std::int32_t>(random_.Below(200))};
    LibraryExports().editInterpretation(parent_->Object(), &subject.record->Record(), &area, random_.Below(3));
}

void RandomHost::UseLibraryWindow() {
    const HWND window = AnyLibraryWindow();
    if (window == nullptr) {
        return;
    }
    switch (random_.Below(5)) {
        case 0:
            Note("anything");
            SendAnything(random_, window);
            break;
        case 1:
            Note("notification");
            SendNotification(random_, AnyPane());
            break;
        case 2:
            Note("keyboard");
            UseKeyboard(random_, window);
            break;
        case 3:
            Note("statement");
            UseKeyboard(random_, GetDlgItem(AnyPane(), IDC_INTERP_STATEMENT));
            break;
        default:
            Note("mouse");
            UseMouse(random_, window);
            break;
    }
}

void RandomHost::ActAsHost() {
    Subject& subject = subjects_[random_.Below(static_cast<unsigned>(subjects_.size()))];
    KxEpisodeRecord& beat = subject.record->Episode();
    Note("the host");
    switch (random_.Below(6)) {
        case 0:
            MoveWindow(parent_->Handle(), 0, 0, static_cast<int>(random_.Below(1400)), static_cast<int>(random_.Below(900)), TRUE);
            break;
        case 1: ShowWindow(AnyPane(), random_.OneIn(2) ? SW_HIDE : SW_SHOW); break;
        case 2: SendMessageA(AnyPane(), 1450, 0, random_.OneIn(3) ? 0 : reinterpret_cast<LPARAM>("300 ms")); break;
        case 3:  // another beat in the same place
            for (std::uint32_t i = 0; beat.samples != nullptr && beat.totalSize > sizeof beat && i < 200; ++i) {
                beat.samples[i] = static_cast<std::int16_t>(random_.Number());
            }
            break;
        case 4: beat.measurements.leads[random_.Below(KX_MEASURED_LEADS)].pOnMarker = static_cast<std::uint16_t>(random_.Number()); break;
        default: RedrawWindow(grandparent_->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); break;
    }
}

void RandomHost::ChangeSuite() {
    constexpr const char* kExports[] = {"UPDATEDETECTION", "INTERPRET", "CREATETEXT", "TECH_LIST", "PHYS_LIST"};
    Note("the suite");
    const char* const name = random_.Of(kExports);
    switch (random_.Below(4)) {
        case 0: suite_.AnswerGarbage(); break;
        case 1: suite_.On(name, [](SpyingSuite::Arguments) { return 0u; }); break;
        case 2:
            suite_.On("UPDATEDETECTION", [this](SpyingSuite::Arguments a) {
                auto& beat = *Address<KxEpisodeRecord>(a[0]);
                for (KxLeadMeasurements& lead : beat.measurements.leads) {
                    lead.qrsOn = static_cast<std::uint16_t>(random_.Below(1000));
                    lead.tOffMarker = static_cast<std::uint16_t>(random_.Number());
                }
                return 1u;
            });
            break;
        default:
            if (inside_ == 0) {  // what is bound for each call may vanish at any time, other modules stay while a pane is open
                constexpr const char* kModules[] = {"kxdb.dll", "kxrender.dll", "kxinterp.dll"};
                constexpr Sibling kForms[] = {Sibling::kSpying, Sibling::kMissing, Sibling::kOutdated, Sibling::kWithoutExports};
                suite_.Lay(random_.Of(kModules), random_.Of(kForms));
            }
            break;
    }
}

void RandomHost::ChangeStatementFile() {
    constexpr const char* kFiles[] = {"<BODY><H1>Ritmo</H1><P>Ritmo sinusale.^RS</P><P>Ritmo atriale.^RA</P></BODY>", "",
                                      "<BODY><H1>A</H1><P>^</P><P>Uno^Uno^Uno</P><H1></H1><P>", "\xFF\xFE\x00<BODY>",
                                      "<BODY><P>Senza sezione.^RS</P><H1>B</H1><P>On ^SR</P><P>Testo&nbsp;lungo&amp;</P></BODY>"};
    Note("the statement file");
    library_.LayFile("resting.htm", random_.Of(kFiles));
}

void RandomHost::EndSomething() {
    RememberShown();
    ++endings_;
    const HWND pane = AnyPane();
    switch (random_.Below(6)) {
        case 0:
            Note("end of the parent");
            parent_->Destroy();
            break;
        case 1:
            Note("end of the grandparent");
            grandparent_->Destroy();
            break;
        case 2:
            Note("end, twice");
            DestroyWindow(pane);
            DestroyWindow(pane);
            break;
        default:
            Note("end of a pane");
            DestroyWindow(pane);
            break;
    }
    --endings_;
}

void RandomHost::MayEndInside() {
    ++inside_;
    if (inside_ < 4 && random_.OneIn(30)) {
        ++counts_.endsInside;
        EndSomething();
    } else if (endings_ == 0 && inside_ < 3 && random_.OneIn(20)) {  // what is typed into a pane that goes is no statement
        Note("messages inside");
        Pump();
    }
    --inside_;
}

void RandomHost::OnModalTick() {
    const HWND dialog = ModalDialog();
    if (dialog == nullptr) {
        modalTicks_ = 0;
        return;
    }
    if (++modalTicks_ > kMostModalTicks) {
        ADD_FAILURE() << "a modal dialog does not end: " << TextOf(dialog);
        EndDialog(dialog, -2);
        return;
    }
    const std::vector<HWND> windows = WindowsFrom(dialog);
    const HWND window = windows[random_.Below(static_cast<unsigned>(windows.size()))];
    switch (random_.Below(modalTicks_ < 20 ? 10 : 5)) {
        case 0:
            Note("modal: escape");
            PostMessageA(GetFocus() != nullptr ? GetFocus() : dialog, WM_KEYDOWN, VK_ESCAPE, 1);
            break;
        case 1:
            Note("modal: closed");
            PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
            break;
        case 2:
            Note("modal: OK");
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
            break;
        case 3:
            if (random_.OneIn(10)) {
                EndSomething();
            }
            break;
        case 4:
            Note("modal: notification");
            SendNotification(random_, dialog);
            break;
        case 5:
            Note("modal: mouse");
            UseMouse(random_, window);
            break;
        default:
            Note("modal: keyboard");
            UseKeyboard(random_, window);
            break;
    }
}

HWND RandomHost::AnyPane() {
    std::vector<HWND> alive;
    std::copy_if(panes_.begin(), panes_.end(), std::back_inserter(alive), [](HWND pane) { return IsWindow(pane) != FALSE; });
    return alive.empty() ? nullptr : alive[random_.Below(static_cast<unsigned>(alive.size()))];
}

HWND RandomHost::AnyLibraryWindow() {
    std::vector<HWND> windows = WindowsFrom(AnyPane());
    if (const HWND popup = FindWindowA("CompletionPopup", nullptr); popup != nullptr) {
        windows.push_back(popup);
    }
    return windows.empty() ? nullptr : windows[random_.Below(static_cast<unsigned>(windows.size()))];
}

// A stage that is ticked has what the pane shows in the record, at the latest when the pane has ended.
void RandomHost::RememberShown() {
    for (Subject& subject : subjects_) {
        const HWND pane = subject.interpretation;
        subject.shown.reset();
        const bool taken =
            IsDlgButtonChecked(pane, IDC_INTERP_REVIEWED) == BST_CHECKED || IsDlgButtonChecked(pane, IDC_INTERP_CONFIRMED) == BST_CHECKED;
        if (IsWindow(pane) != FALSE && !subject.isAbsurd && taken && GetDlgItem(pane, IDC_INTERP_STATEMENT) != nullptr) {
            subject.shown = ShownText(pane);
        }
    }
}

void RandomHost::CheckStored() {
    for (Subject& subject : subjects_) {
        if (subject.shown && IsWindow(subject.interpretation) == FALSE) {
            const KxTestRecord& record = subject.record->Record();
            const std::string stored(record.interpretationText, strnlen(record.interpretationText, sizeof record.interpretationText));
            EXPECT_EQ(stored, *subject.shown);
            counts_.statements += stored.empty() ? 0 : 1;
        }
        subject.shown.reset();
    }
}

}  // namespace kx::test
