// The template of the interpretation pane: its controls, room for their texts at three screen scalings, the
// order of the keyboard; and how the pane's fields share what it gains in size.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/rig/template_layout.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using kx::test::DialogTemplate;
using kx::test::ShownText;
using kx::test::TemplateItem;

class InterpretationTemplate : public testing::Test {
  protected:
    void SetUp() override {
        module_ = LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
        dialog_ = kx::test::ReadDialogTemplate(module_, IDD_INTERPRETATION);
        ASSERT_FALSE(dialog_.items.empty());
    }
    void TearDown() override { FreeLibrary(module_); }

    const TemplateItem* Find(DWORD id) const {
        const auto found = std::find_if(dialog_.items.begin(), dialog_.items.end(),
                                        [id](const TemplateItem& item) { return item.id == id; });
        return found == dialog_.items.end() ? nullptr : &*found;
    }

    HMODULE module_ = nullptr;
    DialogTemplate dialog_;
};

TEST_F(InterpretationTemplate, HasEveryControl) {
    constexpr DWORD kCombo = CBS_DROPDOWN | CBS_SORT;
    const struct {
        DWORD id;
        const wchar_t* windowClass;
        const wchar_t* text;
        DWORD mask;
        DWORD style;
    } rows[] = {
        {33825, L"Edit", L"", ES_READONLY, ES_READONLY},
        {33833, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, WS_DISABLED},
        {33839, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, WS_DISABLED | DTS_TIMEFORMAT},
        {33823, L"Button", L"&Revisore", BS_TYPEMASK, BS_AUTOCHECKBOX},
        {33824, L"ComboBox", L"", 0x3 | CBS_SORT, kCombo},
        {33834, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, 0},
        {59025, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, DTS_TIMEFORMAT},
        {33830, L"Button", L"&Medico", BS_TYPEMASK, BS_AUTOCHECKBOX},
        {33829, L"ComboBox", L"", 0x3 | CBS_SORT, kCombo},
        {33835, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, 0},
        {33822, L"SysDateTimePick32", L"", WS_DISABLED | DTS_TIMEFORMAT, DTS_TIMEFORMAT},
        {33831, L"Edit", L"", ES_MULTILINE | ES_WANTRETURN | WS_VSCROLL | ES_READONLY,
         ES_MULTILINE | ES_WANTRETURN | WS_VSCROLL},
        {33832, L"Button", L"&Inserisci", BS_ICON, BS_ICON},
        {33826, L"Edit", L"", ES_MULTILINE | ES_READONLY, ES_MULTILINE | ES_READONLY},
        {33827, L"Button", L"&Inserisci", BS_ICON, BS_ICON},
        {31224, L"Button", L"&Inserisci", BS_ICON, BS_ICON},
        {33828, L"SysTreeView32", L"", TVS_HASBUTTONS | TVS_SHOWSELALWAYS,
         TVS_HASBUTTONS | TVS_SHOWSELALWAYS},
        {33808, L"Static", L"", 0, 0},
        {IDC_INTERP_LIBRARY_TITLE, L"Static", L"Libreria Commenti", 0, 0},
    };
    EXPECT_EQ(dialog_.title, L"Interpretazione");
    for (const auto& row : rows) {
        const TemplateItem* const item = Find(row.id);
        ASSERT_NE(item, nullptr) << row.id;
        // Names of window classes have no case.
        EXPECT_EQ(_wcsicmp(item->windowClass.c_str(), row.windowClass), 0) << row.id;
        EXPECT_EQ(item->text, row.text) << row.id;
        EXPECT_EQ(item->style & row.mask, row.style) << row.id;
    }
    for (const wchar_t* text : {L"Report originale non modificato", L"Report modificato (non confermato)",
                                L"Report Confermato", L"Interpretazione "}) {
        EXPECT_TRUE(std::any_of(dialog_.items.begin(), dialog_.items.end(), [text](const TemplateItem& item) {
            return item.text == text;
        })) << text;
    }
    EXPECT_EQ(dialog_.items.size(), std::size(rows) + 4);
}

TEST_F(InterpretationTemplate, CutsNoTextAtThreeScalings) {
    const std::map<DWORD, ShownText> shown = {
        {IDC_INTERP_AUTOMATIC_SOURCE, {{L"Halcyra (255.255.255.255)"}, L""}}};
    for (const int dpi : {96, 120, 144}) {
        for (const std::string& fault : kx::test::LayoutFaults(dialog_, dpi, shown)) {
            ADD_FAILURE() << fault;
        }
    }
}

TEST_F(InterpretationTemplate, LeadsTheKeyboardFromTheStatementToTheSignatures) {
    std::vector<DWORD> order;
    for (const TemplateItem& item : dialog_.items) {
        if ((item.style & (WS_TABSTOP | WS_DISABLED)) == WS_TABSTOP) {
            order.push_back(item.id);
        }
    }
    EXPECT_EQ(order, (std::vector<DWORD>{33831, 33827, 33826, 33832, 31224, 33828, 33823, 33824, 33834, 59025,
                                         33830, 33829, 33835, 33822}));
}

class GrowingPane : public kx::test::InterpretationPane {
  protected:
    RECT Place(std::uint32_t id) {
        RECT area{};
        GetWindowRect(kx::test::Item(pane_, id), &area);
        MapWindowPoints(nullptr, pane_, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
};

TEST_F(GrowingPane, SharesWhatItGains) {
    const struct {
        std::uint32_t id;
        RECT growth;  // of 200 x 100 pixels
    } rows[] = {
        {IDC_INTERP_STATEMENT, {0, 0, 120, 100}},
        {IDC_INTERP_INSERT_AUTOMATIC, {120, 0, 120, 0}},
        {IDC_INTERP_AUTOMATIC_SOURCE, {120, 0, 200, 0}},
        {IDC_INTERP_AUTOMATIC, {120, 0, 200, 40}},
        {IDC_INTERP_INSERT_LIBRARY_ENTRY, {120, 40, 120, 40}},
        {IDC_INTERP_DICTIONARY, {120, 40, 120, 40}},
        {IDC_INTERP_LIBRARY_TITLE, {120, 40, 200, 40}},
        {IDC_INTERP_LIBRARY, {120, 40, 200, 100}},
        {IDC_INTERP_REVIEWER, {0, 0, 0, 0}},
        {IDC_INTERP_CONFIRM_TIME, {0, 0, 0, 0}},
    };
    Open();
    RECT client{};
    GetClientRect(pane_, &client);
    const auto size = [&](LONG wider, LONG higher) {
        SetWindowPos(pane_, nullptr, 0, 0, static_cast<int>(client.right + wider),
                     static_cast<int>(client.bottom + higher), SWP_NOMOVE | SWP_NOZORDER);
    };
    for (const auto& row : rows) {
        size(0, 0);
        const RECT first = Place(row.id);
        size(200, 100);
        const RECT grown = Place(row.id);
        EXPECT_EQ(grown.left - first.left, row.growth.left) << row.id;
        EXPECT_EQ(grown.top - first.top, row.growth.top) << row.id;
        EXPECT_EQ(grown.right - first.right, row.growth.right) << row.id;
        EXPECT_EQ(grown.bottom - first.bottom, row.growth.bottom) << row.id;
        size(-300, -200);
        const RECT cut = Place(row.id);
        EXPECT_TRUE(EqualRect(&cut, &first)) << row.id;
    }
}

}  // namespace
