#include "tests/windows/interpretation/pane_fixture.h"

#include <algorithm>
#include <cstring>
#include <fstream>

namespace kx::test {
namespace {

constexpr char kHostClass[] = "InterpretationHost";
constexpr const char* kModules[] = {"kxdb.dll", "kxinterp.dll", "kxrender.dll"};
constexpr const char* kFiles[] = {"resting.htm", "stress.htm", "holter.htm", "stress.scr"};

SuiteAnswers* g_answers = nullptr;

std::uint32_t TechList(void* records, std::uint32_t capacity) {
    return g_answers->technicians ? g_answers->technicians(static_cast<TechnicianRecord*>(records), capacity)
                                  : 0;
}
std::uint32_t PhysList(std::uint32_t first, void* records, std::uint32_t capacity) {
    return g_answers->physicians
               ? g_answers->physicians(first, static_cast<PhysicianRecord*>(records), capacity)
               : 0;
}
std::uint32_t Interpret(KxMeasurementSet* set, KxInterpretationResult* result, void* store,
                        std::uint32_t zeros) {
    return g_answers->interpret ? g_answers->interpret(set, result, store, zeros) : 0;
}
std::uint32_t CreateText(const char* script, char* buffer, std::uint32_t size, KxTestRecord* test,
                         std::uint32_t zeros) {
    return g_answers->createText ? g_answers->createText(script, buffer, size, test, zeros) : 0;
}

std::string Beside(const char* name) {
    return ProgramFolder() + "\\" + name;
}

// Once for the program.
const char* LaidLibrary() {
    static const bool laid = CopyFileA(Beside("..\\..\\bin\\kxdialogs.dll").c_str(),
                                       Beside("kxdialogs.dll").c_str(), FALSE) != FALSE;
    return laid ? "\\kxdialogs.dll" : "";
}

// One for the program: a screen without window manager is slow to show it.
HWND HostWindow(WNDPROC procedure) {
    static const HWND host = [procedure] {
        WNDCLASSA hostClass{};
        hostClass.lpfnWndProc = procedure;
        hostClass.hInstance = GetModuleHandleA(nullptr);
        hostClass.lpszClassName = kHostClass;
        RegisterClassA(&hostClass);
        const HWND window = CreateWindowExA(0, kHostClass, "", WS_POPUP | WS_VISIBLE, 0, 0, 760, 500, nullptr,
                                            nullptr, hostClass.hInstance, nullptr);
        SetForegroundWindow(window);
        return window;
    }();
    return host;
}

template <std::size_t kSize>
void Fill(char (&field)[kSize], const char* text) {
    std::memcpy(field, text, std::min(std::strlen(text), kSize));
}

}  // namespace

TechnicianRecord Technician(const char* first, const char* initial, const char* last) {
    TechnicianRecord record{};
    Fill(record.firstName, first);
    Fill(record.initial, initial);
    Fill(record.lastName, last);
    return record;
}

PhysicianRecord Physician(const char* first, const char* initial, const char* last, const char* title) {
    PhysicianRecord record{};
    Fill(record.firstName, first);
    Fill(record.initial, initial);
    Fill(record.lastName, last);
    Fill(record.title, title);
    return record;
}

InterpretationPane::InterpretationPane()
    : record_(std::make_unique<TestRecord>()), library_(SystemModule::kCurrent, LaidLibrary()) {
    g_answers = &answers_;
    for (const char* module : kModules) {
        LayModule(module, SuiteModule::kCurrent);
    }
    for (const char* file : kFiles) {
        RemoveFile(file);
    }
    LayFile("resting.htm",
            "<BODY><H1>Ritmo</H1><P>Ritmo sinusale.^RS</P><P>Ritmo giunzionale.^RG</P>"
            "<P>Ritmo atriale.^RA</P><H1>Asse</H1><P>Asse normale</P></BODY>");
    record_->SetTestType(KX_TEST_RESTING);

    parent_.handle = HostWindow(HostProc);
    SetWindowLongPtrA(static_cast<HWND>(parent_.handle), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    library_->start();
}

InterpretationPane::~InterpretationPane() {
    onChange_ = nullptr;
    if (pane_ != nullptr) {
        DestroyWindow(pane_);
    }
    SetWindowLongPtrA(static_cast<HWND>(parent_.handle), GWLP_USERDATA, 0);
    library_->stop();
    for (const HMODULE module : held_) {
        FreeLibrary(module);
    }
    for (const char* module : kModules) {
        // One that was refused stays mapped.
        while (const HMODULE left = GetModuleHandleA(module)) {
            FreeLibrary(left);
        }
        DeleteFileA(Beside(module).c_str());
    }
    g_answers = nullptr;
}

void InterpretationPane::LayModule(const char* name, SuiteModule module) {
    DeleteFileA(Beside(name).c_str());
    if (module != SuiteModule::kMissing) {
        const char* source = module == SuiteModule::kCurrent ? "suite_current.dll" : "suite_outdated.dll";
        ASSERT_TRUE(CopyFileA(Beside(source).c_str(), Beside(name).c_str(), FALSE)) << name;
    }
}

void InterpretationPane::LayFile(const char* name, const std::string& content) {
    std::ofstream(Beside(name), std::ios::binary) << content;
}

void InterpretationPane::RemoveFile(const char* name) {
    DeleteFileA(Beside(name).c_str());
}

// Loaded before the library binds it and for as long as the test runs, so that the answers stay.
void InterpretationPane::HoldModule(const char* name) {
    const HMODULE module = LoadLibraryA(Beside(name).c_str());
    if (module == nullptr) {
        return;
    }
    held_.push_back(module);
    using GetHooks = SuiteHooks*(__stdcall*)();
    const auto hooks =
        reinterpret_cast<GetHooks>(reinterpret_cast<void*>(GetProcAddress(module, "SPY_HOOKS")))();
    *hooks = {TechList, PhysList, Interpret, CreateText, hooks->starts};
}

void InterpretationPane::HoldModules() {
    if (held_.empty()) {
        for (const char* module : kModules) {
            HoldModule(module);
        }
    }
}

HWND InterpretationPane::Open() {
    HoldModules();
    library_.TakeLog();
    const std::uint32_t handle = library_->interpretation(&parent_, record_.get(), hostOptions_);
    EXPECT_NE(handle, 0u);
    pane_ = handle == 0
                ? nullptr
                : static_cast<HWND>(
                      reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
    if (pane_ != nullptr) {
        SetFocus(Edit());
    }
    Pump();
    changes_ = 0;
    return pane_;
}

void InterpretationPane::Close() {
    DestroyWindow(pane_);
    pane_ = nullptr;
}

std::string InterpretationPane::Text(std::uint32_t id) const {
    std::string text(8192, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(Item(pane_, id), text.data(), 8192)));
    return text;
}

void InterpretationPane::Click(std::uint32_t id) {
    SendMessageA(Item(pane_, id), BM_CLICK, 0, 0);
    Pump();
}

std::vector<std::string> InterpretationPane::ListOf(std::uint32_t comboId) const {
    const HWND combo = Item(pane_, comboId);
    std::vector<std::string> names;
    for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(combo, CB_GETCOUNT, 0, 0)); ++i) {
        char name[512] = {};
        SendMessageA(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
        names.emplace_back(name);
    }
    return names;
}

void InterpretationPane::Pick(std::uint32_t comboId, const char* text) {
    const HWND combo = Item(pane_, comboId);
    const LRESULT item =
        SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
    ASSERT_GE(item, 0) << text;
    // The list tells the choice before the edit field shows it.
    SetWindowTextA(GetWindow(combo, GW_CHILD), "");
    SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageA(pane_, WM_COMMAND, MAKEWPARAM(comboId, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

void InterpretationPane::TypeName(std::uint32_t comboId, const char* text) {
    const HWND edit = GetWindow(Item(pane_, comboId), GW_CHILD);
    for (const char* c = text; *c != '\0'; ++c) {
        SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*c), 1);
    }
}

void InterpretationPane::SetPicker(std::uint32_t id, const DateTime& time) {
    SYSTEMTIME system{};
    time.ToSystemTime(system);
    SendMessageA(Item(pane_, id), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&system));
    NMDATETIMECHANGE change{};
    change.nmhdr = {Item(pane_, id), id, static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.st = system;
    SendMessageA(pane_, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&change));
}

DateTime InterpretationPane::PickerTime(std::uint32_t id) const {
    SYSTEMTIME system{};
    SendMessageA(Item(pane_, id), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&system));
    DateTime time = DateTime::None();
    time.SetFromSystemTime(system);
    return time;
}

void InterpretationPane::Type(const std::string& text) {
    for (const char c : text) {
        SendMessageA(Edit(), WM_CHAR, static_cast<unsigned char>(c), 1);
        Pump();
    }
}

void InterpretationPane::Press(WPARAM virtualKey) {
    SendMessageA(Edit(), WM_KEYDOWN, virtualKey, 1);
    SendMessageA(Edit(), WM_KEYUP, virtualKey, 1);
    Pump();
}

void InterpretationPane::Pump() {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

LRESULT CALLBACK InterpretationPane::HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const host = reinterpret_cast<InterpretationPane*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_USER && wParam == 1024 && lParam == 1024 && host != nullptr) {
        ++host->changes_;
        if (host->onChange_) {
            host->onChange_();
        }
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace kx::test
