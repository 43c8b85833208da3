// The template of the user dictionary: its controls, and room for every text and for the buttons at three
// scalings.
#include <gtest/gtest.h>

#include "dialogs/resources/dictionary_ids.h"
#include "tests/rig/template_layout.h"

namespace kx::test {
namespace {

TEST(DictionaryTemplate, IsACaptionedModalDialogWithItsControls) {
    const HMODULE module = LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const DialogTemplate dialog = ReadDialogTemplate(module, IDD_USER_DICTIONARY);
    FreeLibrary(module);
    EXPECT_EQ(dialog.title, L"Aggiorna Dizionario Utenti");
    EXPECT_EQ(dialog.style & (WS_POPUP | WS_CHILD | WS_CAPTION | WS_SYSMENU),
              static_cast<DWORD>(WS_POPUP | WS_CAPTION | WS_SYSMENU));
    const struct {
        DWORD id;
        const wchar_t* windowClass;
        const wchar_t* text;
    } rows[] = {
        {33419, L"ComboBox", L""},
        {31218, L"Edit", L""},
        {33852, L"Edit", L""},
        {1, L"Button", L"&OK"},
        {2, L"Button", L"&Cancella"},
        {9, L"Button", L"&Aiuto"},
        {0xFFFFFFFF, L"Static",
         L"Edit Instructions\nLeft Click any button to edit text.\nRemove all characters to hide a button.\n"
         L"Those buttons displayed with a red 'X' will be hidden.\nPress 'OK' to save changes.\n"
         L"Press 'Cancel' to discard changes."},
    };
    ASSERT_EQ(dialog.items.size(), std::size(rows));
    for (const auto& row : rows) {
        int found = 0;
        for (const TemplateItem& item : dialog.items) {
            found += static_cast<WORD>(item.id) == static_cast<WORD>(row.id) &&
                     item.windowClass == row.windowClass && item.text == row.text;
            if (item.id == IDC_DICT_SECTION) {
                EXPECT_EQ(item.style & (CBS_SORT | CBS_DROPDOWNLIST), static_cast<DWORD>(CBS_DROPDOWNLIST));
            }
        }
        EXPECT_EQ(found, 1) << row.id;
    }
    for (const int dpi : {96, 120, 144}) {
        for (const std::string& fault : LayoutFaults(dialog, dpi, {})) {
            ADD_FAILURE() << dpi << ": " << fault;
        }
    }
}

}  // namespace
}  // namespace kx::test
