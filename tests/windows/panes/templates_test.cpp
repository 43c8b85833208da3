// Every dialog template of the product, laid out by the dialog manager itself as it is at three screen scalings: room for
// every text and for the largest value, nothing over another, and a letter of its own for each.
#include <gmock/gmock.h>

#include <cwctype>
#include <map>
#include <set>

#include "dialogs/resources/interpretation_ids.h"
#include "dialogs/resources/resource_ids.h"
#include "tests/rig/pane.h"

namespace kx::test {
namespace {

using testing::IsEmpty;
using Texts = std::vector<std::wstring>;

constexpr wchar_t kLargest[] = L"-32768";  // of a figure

INT_PTR CALLBACK LeaveIt(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// At the resolution of the tests, 96 dpi, a font of more points is as high as the template's is at a higher one.
class Layout {
  public:
    Layout(HMODULE module, LPCWSTR id, int dpi) : dpi_(dpi) {
        const HRSRC found = FindResourceW(module, id, reinterpret_cast<LPCWSTR>(RT_DIALOG));
        const auto* const bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, found)));
        std::vector<BYTE> copy(bytes, bytes + SizeofResource(module, found));
        std::size_t at = 26;  // behind the extended header
        Skip(copy, at), Skip(copy, at), Skip(copy, at);
        auto* const points = reinterpret_cast<WORD*>(&copy[at]);
        *points = static_cast<WORD>(*points * dpi / 96);
        auto* const style = reinterpret_cast<DWORD*>(&copy[12]);
        *style = (*style & ~(WS_VISIBLE | WS_CHILD | WS_DISABLED)) | WS_POPUP | DS_NOFAILCREATE;
        dialog = CreateDialogIndirectParamW(module, reinterpret_cast<LPCDLGTEMPLATEW>(copy.data()), HostWindow::Frame(), LeaveIt, 0);
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            items_.push_back(child);
        }
    }
    ~Layout() { DestroyWindow(dialog); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    // One line for each fault. shown: what a control shows besides its text.
    std::vector<std::string> Faults(const std::map<int, Texts>& shown, const std::set<int>& bold) {
        faults_.clear();
        for (const HWND item : items_) {
            Texts texts = {TextOfItem(item)};
            if (const auto more = shown.find(GetDlgCtrlID(item)); more != shown.end()) {
                texts.insert(texts.end(), more->second.begin(), more->second.end());
            }
            if (Is(item, "Edit") && (StyleOf(item) & ES_RIGHT) != 0) {
                texts.push_back(kLargest);
            }
            for (const std::wstring& text : texts) {
                CheckText(item, text, bold.count(GetDlgCtrlID(item)) != 0);
            }
        }
        CheckPlaces();
        return faults_;
    }

    HWND dialog;

  private:
    // A text, or an ordinal behind 0xFFFF.
    static void Skip(const std::vector<BYTE>& bytes, std::size_t& at) {
        const auto* const text = reinterpret_cast<const WORD*>(&bytes[at]);
        at += sizeof(WORD) * (*text == 0xFFFF ? 2 : std::wcslen(reinterpret_cast<const wchar_t*>(text)) + 1);
    }
    static std::wstring TextOfItem(HWND item) {
        wchar_t text[512] = {};
        GetWindowTextW(item, text, 512);
        return text;
    }
    static bool Is(HWND item, const char* windowClass) {
        char name[32] = {};
        GetClassNameA(item, name, sizeof name);
        return lstrcmpiA(name, windowClass) == 0;
    }
    static LONG StyleOf(HWND item) { return GetWindowLongA(item, GWL_STYLE); }
    static LONG ButtonKind(HWND item) { return Is(item, "Button") ? StyleOf(item) & BS_TYPEMASK : -1; }
    static LONG StaticKind(HWND item) { return Is(item, "Static") ? StyleOf(item) & SS_TYPEMASK : -1; }
    static bool IsGroup(HWND item) { return ButtonKind(item) == BS_GROUPBOX; }
    static bool MayBeCovered(HWND item) {
        return IsGroup(item) || (StaticKind(item) >= SS_ETCHEDHORZ && StaticKind(item) <= SS_ETCHEDFRAME);
    }
    static bool IsIcon(HWND item) { return Is(item, "Button") && (StyleOf(item) & (BS_ICON | BS_BITMAP)) != 0; }

    RECT PlaceOf(HWND item) const {
        RECT area{};
        GetWindowRect(item, &area);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    void Add(HWND item, const std::string& fault) {
        char windowClass[32] = {};
        GetClassNameA(item, windowClass, sizeof windowClass);
        faults_.push_back(std::to_string(dpi_) + " dpi: " + windowClass + ' ' + std::to_string(GetDlgCtrlID(item)) + " \"" + TextOf(item) +
                          "\" " + fault);
    }

    void CheckText(HWND item, const std::wstring& text, bool bold) {
        RECT room{};
        GetClientRect(item, &room);
        UINT format = DT_SINGLELINE | DT_EXPANDTABS;
        const LONG kind = ButtonKind(item);
        if (text.empty() || IsIcon(item) || kind == BS_OWNERDRAW) {
            return;
        }
        if (StaticKind(item) >= SS_LEFT && StaticKind(item) <= SS_RIGHT) {
            format = DT_WORDBREAK;
        } else if (kind >= 0) {
            // The frame of a push button; of a box its square of 13 pixels at 96 dpi, and half a digit before the text.
            const bool isPush = kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
            room.right -= MulDiv(IsGroup(item) ? 18 : isPush ? 8 : 17, dpi_, 96);
            room.bottom -= isPush ? MulDiv(4, dpi_, 96) : 0;
            format = (StyleOf(item) & BS_MULTILINE) != 0 ? DT_WORDBREAK : DT_SINGLELINE;
        } else if (!Is(item, "Edit")) {
            return;
        }
        const HFONT boldFont = CreateFontW(-MulDiv(8, dpi_, 72), 0, 0, 0, 800, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial");
        const HDC dc = GetDC(item);
        const HGDIOBJ before = SelectObject(dc, bold ? boldFont : reinterpret_cast<HFONT>(SendMessageW(item, WM_GETFONT, 0, 0)));
        RECT needed = {0, 0, room.right, 0};
        DrawTextW(dc, text.c_str(), -1, &needed, format | DT_CALCRECT);
        SelectObject(dc, before);
        ReleaseDC(item, dc);
        DeleteObject(boldFont);
        if (needed.right > room.right || (needed.bottom > room.bottom && !IsGroup(item))) {
            Add(item, "needs " + std::to_string(needed.right) + " x " + std::to_string(needed.bottom) + " of " +
                          std::to_string(room.right) + " x " + std::to_string(room.bottom));
        }
    }

    void CheckPlaces() {
        std::set<wint_t> mnemonics;
        RECT client{};
        GetClientRect(dialog, &client);
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const RECT area = PlaceOf(items_[i]);
            if (area.left < 0 || area.top < 0 || area.right > client.right || area.bottom > client.bottom) {
                Add(items_[i], "reaches out of the dialog");
            }
            for (std::size_t j = i + 1; j < items_.size() && !MayBeCovered(items_[i]); ++j) {
                const RECT other = PlaceOf(items_[j]);
                RECT common{};
                if (!MayBeCovered(items_[j]) && IntersectRect(&common, &area, &other)) {
                    Add(items_[i], "covers " + std::to_string(GetDlgCtrlID(items_[j])));
                }
            }
            const std::wstring text = TextOfItem(items_[i]);
            const std::size_t mark = text.find(L'&');
            if (mark != text.npos && mark + 1 < text.size() && !IsIcon(items_[i]) &&
                !mnemonics.insert(std::towlower(text[mark + 1])).second) {
                Add(items_[i], "has the letter of another one");
            }
        }
    }

    int dpi_;
    std::vector<HWND> items_;
    std::vector<std::string> faults_;
};

// The largest values.
std::map<int, Texts> ShownTexts() {
    std::map<int, Texts> shown = {
        {IDC_HYP_SOKOLOW_LYON, {L"-65536"}},
        {IDC_HYP_CORNELL, {L"-65536"}},
        {IDC_HYP_TOTAL_POINTS, {L"13"}},
        {IDC_INTERP_AUTOMATIC_SOURCE, {L"Halcyra (255.255.255.255)"}},
    };
    for (const int id : {IDC_HYP_R_V5, IDC_HYP_R_V6, IDC_HYP_S_V1, IDC_HYP_R_AVL, IDC_HYP_S_V3}) {
        shown[id] = {kLargest};
    }
    return shown;
}
const std::set<int> kBold = {IDC_HYP_SOKOLOW_LYON, IDC_HYP_CORNELL, IDC_HYP_TOTAL_POINTS};

BOOL CALLBACK TakeName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR names) {
    reinterpret_cast<std::vector<LPWSTR>*>(names)->push_back(name);
    return TRUE;
}

TEST(Templates, HaveRoomForTheirTextsAndLargestValues) {
    SpyingSuite suite;
    LibraryUse library;
    const HMODULE host = LoadLibraryExA(Beside("..\\..\\bin\\kxhost.exe").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    for (const HMODULE module : {library.Module(), host}) {
        std::vector<LPWSTR> names;
        EnumResourceNamesW(module, reinterpret_cast<LPCWSTR>(RT_DIALOG), TakeName, reinterpret_cast<LONG_PTR>(&names));
        EXPECT_GE(names.size(), module == host ? 1u : 7u);
        for (const LPWSTR name : names) {
            for (const int dpi : {96, 120, 144}) {
                EXPECT_THAT(Layout(module, name, dpi).Faults(ShownTexts(), kBold), IsEmpty()) << reinterpret_cast<ULONG_PTR>(name);
            }
        }
    }
    FreeLibrary(host);
}

}  // namespace
}  // namespace kx::test
