#include "tests/rig/pane.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

namespace kx::test {
namespace {

constexpr char kHostClass[] = "RigHost";
constexpr DWORD kPage = 4096;

std::uint32_t g_hostOptions[4] = {};

HMODULE LoadLaidLibrary() {
    const std::string copy = Beside("kxdialogs.dll");
    EXPECT_TRUE(CopyFileA(Beside("..\\..\\bin\\kxdialogs.dll").c_str(), copy.c_str(), FALSE));
    return LoadLibraryA(copy.c_str());
}

template <class Function>
void Find(const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(LibraryModuleHandle(), name)));
    EXPECT_NE(function, nullptr) << name;
}

template <auto kExport>
std::uint32_t Open(KxHostWindow* parent, KxTestRecord* test, void*) {
    return (LibraryExports().*kExport)(parent, test);
}

std::uint32_t OpenInterpretation(KxHostWindow* parent, KxTestRecord* test, void* hostOptions) {
    return LibraryExports().interpretation(parent, test, hostOptions);
}

}  // namespace

HMODULE LibraryModuleHandle() {
    static const HMODULE module = LoadLaidLibrary();
    return module;
}

const Exports& LibraryExports() {
    static const Exports exports = [] {
        Exports found{};
        Find("LIBSTART", found.start);
        Find("LIBSTOP", found.stop);
        Find("TABLEDIALOG", found.table);
        Find("GENERALMORPHDIALOG", found.generalMorph);
        Find("PMORPHDIALOG", found.pMorph);
        Find("QRSMORPHDIALOG", found.qrsMorph);
        Find("TMORPHDIALOG", found.tMorph);
        Find("HYPERTROPHYDIALOG", found.hypertrophy);
        Find("INTERPRETATIONDIALOG", found.interpretation);
        Find("EDITINTERPRETATION", found.editInterpretation);
        return found;
    }();
    return exports;
}

LibraryUse::LibraryUse() {
    LayFile("resting.htm",
            "<BODY><H1>Ritmo</H1><P>Ritmo sinusale.^RS</P><P>Ritmo giunzionale.^RG</P>"
            "<P>Ritmo atriale.^RA</P><H1>Asse</H1><P>Asse normale</P></BODY>");
    LibraryExports().start();
}

LibraryUse::~LibraryUse() {
    LibraryExports().stop();
    for (const std::string& name : files_) {
        DeleteFileA(Beside(name).c_str());
    }
}

void LibraryUse::LayFile(const std::string& name, const std::string& content) {
    std::ofstream(Beside(name), std::ios::binary) << content;
    files_.push_back(name);
}

HWND HostWindow::Frame() {
    static const HWND frame = [] {
        // Wine asks every 10 ms whether the pointer is still over a button: on a busy machine a queue that is never empty.
        SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
        WNDCLASSA hostClass{};
        hostClass.lpfnWndProc = Procedure;
        hostClass.hInstance = GetModuleHandleA(nullptr);
        hostClass.lpszClassName = kHostClass;
        RegisterClassA(&hostClass);
        return CreateWindowExA(WS_EX_NOACTIVATE, kHostClass, "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 1000, 640, nullptr, nullptr,
                               hostClass.hInstance, nullptr);
    }();
    return frame;
}

HostWindow::HostWindow(HWND parent, int width, int height)
    : object_(static_cast<KxHostWindow*>(VirtualAlloc(nullptr, kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {
    window_ = CreateWindowExA(0, kHostClass, "host", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, width, height,
                              parent != nullptr ? parent : Frame(), nullptr, GetModuleHandleA(nullptr), nullptr);
    object_->handle = window_;
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HostWindow::~HostWindow() {
    Destroy();
    VirtualFree(object_, 0, MEM_RELEASE);
}

void HostWindow::Destroy() {
    if (IsWindow(window_) != FALSE) {
        DestroyWindow(window_);
    }
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const host = reinterpret_cast<HostWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (host != nullptr && message == WM_DESTROY) {
        DWORD before = 0;
        VirtualProtect(host->object_, kPage, PAGE_NOACCESS, &before);
    } else if (host != nullptr && message == WM_USER && wParam == 1024 && lParam == 1024) {
        ++host->notices;
        if (const auto kept = host->onNotice) {
            kept();
        }
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

const std::vector<PaneKind>& PaneKinds() {
    static const std::vector<PaneKind> kinds = {
        {"Table", "TableDialog", "mrphlist", 0, Open<&Exports::table>},
        {"Hypertrophy", "HypertrophyDialog", "hyptrphy", 20548, Open<&Exports::hypertrophy>},
        {"General", "GeneralMorphDialog", "genmorph", 20540, Open<&Exports::generalMorph>},
        {"Qrs", "QrsMorphDialog", "qrsmrph", 20544, Open<&Exports::qrsMorph>},
        {"P", "PMorphDialog", "pmorph", 20547, Open<&Exports::pMorph>},
        {"T", "TMorphDialog", "tmorph", 20546, Open<&Exports::tMorph>},
        {"Interpretation", "InterpretationDialog", "interp", 20542, OpenInterpretation},
    };
    return kinds;
}

const PaneKind& KindOf(const std::string& name) {
    for (const PaneKind& kind : PaneKinds()) {
        if (kind.name == name) {
            return kind;
        }
    }
    ADD_FAILURE() << "no pane " << name;
    return PaneKinds().front();
}

std::vector<PaneKind> KindsOfFrames() { return {KindOf("Table"), KindOf("Hypertrophy"), KindOf("Qrs"), KindOf("Interpretation")}; }

bool IsMorphology(const PaneKind& kind) { return std::strstr(kind.className, "Morph") != nullptr; }

HWND WindowOf(std::uint32_t handle) { return handle == 0 ? nullptr : static_cast<HWND>(Address<KxHostWindow>(handle)->handle); }

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)), '\0');
    GetWindowTextA(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

Pane::Pane(const PaneKind& kind, HostWindow& host, KxTestRecord& record, void* hostOptions)
    : handle_(kind.open(host.Object(), &record, hostOptions != nullptr ? hostOptions : g_hostOptions)), window_(WindowOf(handle_)) {}

Pane::~Pane() { Destroy(); }

void Pane::Destroy() {
    if (IsAlive()) {
        DestroyWindow(window_);
    }
}

std::string Pane::Text(std::uint32_t id) const { return TextOf(Item(id)); }

bool Pane::IsChecked(std::uint32_t id) const { return SendMessageA(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

void Pane::Click(std::uint32_t id) const {
    SendMessageA(Item(id), BM_CLICK, 0, 0);
    Pump();
}

void Pane::Choose(std::uint32_t combo, std::int32_t code) const {
    const HWND box = Item(combo);
    const auto count = static_cast<int>(SendMessageA(box, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        if (SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(i), 0) == code) {
            SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(i), 0);
            Notify(combo, CBN_SELENDOK);
            return;
        }
    }
    ADD_FAILURE() << "combo " << combo << " has no code " << code;
}

void Pane::Type(std::uint32_t id, std::string_view text) const {
    const HWND field = GetWindow(Item(id), GW_CHILD);
    const HWND control = field != nullptr ? field : Item(id);
    for (const char character : text) {
        SendMessageA(control, WM_CHAR, static_cast<unsigned char>(character), 1);
        Pump();
    }
}

void Pane::Notify(std::uint32_t id, UINT code) const {
    SendMessageA(window_, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(Item(id)));
}

}  // namespace kx::test
