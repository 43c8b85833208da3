// The user dictionary over a statement file of the test's own.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "dialogs/dialog_library.h"
#include "dialogs/dictionary/user_dictionary_dialog.h"
#include "dialogs/resources/dictionary_ids.h"
#include "lib/windows/window.h"
#include "tests/rig/input.h"
#include "tests/windows/dialogs/library_under_test.h"
#include "tests/windows/dialogs/pane_reader.h"
#include "tests/windows/files/temp_folder.h"

namespace kx::test {

// Two sections; the second one has accents and a statement without code.
extern const char kDictionaryFile[];

class DictionaryTest : public testing::Test {
  protected:
    DictionaryTest();
    ~DictionaryTest() override;

    std::string Path(const char* name = "resting.htm") const { return folder.Named(name); }
    // Opens the dialog on a file and runs the script in it; whether it ended with OK.
    bool Run(const std::string& path, const std::function<void(HWND)>& script);

    LibraryUnderTest dll{SystemModule::kCurrent};
    DialogLibrary library{dll.Module()};
    TempFolder folder;
    Window owner;
};

HWND Entry(HWND dialog, int index);
std::string Caption(HWND dialog, int index);
// Chooses a section as a user does.
void ChooseSection(HWND dialog, int index);
std::string SectionText(HWND dialog, int index);
// Selects everything in a control of the dialog and types over it.
void TypeOver(HWND dialog, std::uint32_t id, std::string_view text);
// How many pixels of what a control shows are as `like` says.
int CountPixels(HWND control, const std::function<bool(COLORREF)>& like);

}  // namespace kx::test
