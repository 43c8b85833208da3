#include "tests/windows/dictionary/dictionary_fixture.h"

#include <algorithm>

#include "lib/windows/gdi_handles.h"

namespace kx::test {

const char kDictionaryFile[] =
    "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n"
    "\t<H1>Ritmo</H1>\r\n\t<P>Ritmo sinusale.^rs</P>\r\n\t<P>Fibrillazione atriale.^fa</P>\r\n"
    "\t<H1>Attivit\xE0</H1>\r\n\t<P>Attivit\xE0 pi\xF9 lenta.</P>\r\n</BODY>\r\n";

DictionaryTest::DictionaryTest() {
    owner.Create("STATIC", "owner", nullptr, nullptr, WS_POPUP | WS_BORDER, 0, 100, 80, 640, 480);
    ShowWindow(owner.Handle(), SW_SHOWNA);
    WriteBytes(Path(), kDictionaryFile);
    dll.TakeLog();
}

DictionaryTest::~DictionaryTest() {
    owner.Destroy();
}

bool DictionaryTest::Run(const std::string& path, const std::function<void(HWND)>& script) {
    bool ok = false;
    EXPECT_TRUE(DriveModal(
        [&] { ok = UserDictionaryDialog(library, &owner, path.c_str(), library.Services()).Run(); }, script));
    return ok;
}

HWND Entry(HWND dialog, int index) {
    return Item(dialog, UserDictionaryDialog::kFirstButtonId + static_cast<std::uint32_t>(index));
}

std::string Caption(HWND dialog, int index) {
    return ItemText(dialog, UserDictionaryDialog::kFirstButtonId + static_cast<std::uint32_t>(index));
}

void ChooseSection(HWND dialog, int index) {
    const HWND sections = Item(dialog, IDC_DICT_SECTION);
    SetFocus(sections);
    SendMessageA(sections, CB_SETCURSEL, 0, 0);
    if (index == 0) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_DICT_SECTION, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(sections));
    }
    for (int i = 0; i < index; ++i) {
        PressKey(dialog, VK_DOWN);
    }
}

std::string SectionText(HWND dialog, int index) {
    char text[256] = {};
    SendMessageA(Item(dialog, IDC_DICT_SECTION), CB_GETLBTEXT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

void TypeOver(HWND dialog, std::uint32_t id, std::string_view text) {
    SetFocus(Item(dialog, id));
    SendMessageA(GetFocus(), EM_SETSEL, 0, -1);
    TypeText(dialog, text.empty() ? "\b" : text);
}

int CountPixels(HWND control, const std::function<bool(COLORREF)>& like) {
    RedrawWindow(control, nullptr, nullptr, RDW_UPDATENOW);
    RECT area{};
    GetClientRect(control, &area);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, area.right, area.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const UniqueBitmap picture(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    const UniqueMemoryDc memory(CreateCompatibleDC(nullptr));
    const GdiSelection selection(memory.get(), picture.get());
    const HDC screen = GetDC(control);
    BitBlt(memory.get(), 0, 0, area.right, area.bottom, screen, 0, 0, SRCCOPY);
    ReleaseDC(control, screen);
    GdiFlush();
    const auto* const quads = static_cast<const RGBQUAD*>(pixels);
    return static_cast<int>(std::count_if(quads, quads + area.right * area.bottom, [&](const RGBQUAD& quad) {
        return like(RGB(quad.rgbRed, quad.rgbGreen, quad.rgbBlue));
    }));
}

}  // namespace kx::test
