// DataFile: the choice of files in the system's open and save dialogs.
#include <windows.h>

#include <commdlg.h>

#include <new>
#include <string_view>
#include <utility>

#include "lib/fileutil.h"
#include "lib/text_field.h"

namespace kx {
namespace {

constexpr char kSource[] = "..\\..\\lib\\fileutil";
constexpr std::uint32_t kNoNamesMemoryLine = 96;
constexpr std::uint32_t kTitleSize = 256;

std::string_view OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace

bool DataFile::ChooseOpen(HWND owner, const char* title, const char* initialDirectory,
                          const char* initialName, const char* filter, Reporter* log, bool multiSelect) {
    return Choose(owner, title, initialDirectory, initialName, filter, log, false, multiSelect);
}

bool DataFile::ChooseSave(HWND owner, const char* title, const char* initialDirectory,
                          const char* initialName, const char* filter, Reporter* log) {
    return Choose(owner, title, initialDirectory, initialName, filter, log, true, false);
}

bool DataFile::Choose(HWND owner, const char* title, const char* initialDirectory, const char* initialName,
                      const char* filter, Reporter* log, bool save, bool multiSelect) {
    std::unique_ptr<char[]> names(new (std::nothrow) char[kNamesSize]());
    if (names == nullptr) {
        if (log != nullptr) {
            log->LOGMEMORYERROR(kSource, kNoNamesMemoryLine);
        }
        return false;
    }
    char dialogTitle[kDialogTextSize];
    char directory[kDialogTextSize];
    char filterList[kDialogTextSize];
    char fileTitle[kTitleSize] = {};
    CopyText(OrEmpty(title), dialogTitle, sizeof dialogTitle);
    CopyText(OrEmpty(initialDirectory), directory, sizeof directory);
    CopyText(OrEmpty(initialName), names.get(), kNamesSize - 1);
    MakeDialogFilter(filter, filterList);

    OPENFILENAMEA choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = owner;
    choice.lpstrFilter = filterList;
    choice.nFilterIndex = 1;
    choice.lpstrFile = names.get();
    choice.nMaxFile = kNamesSize - 1;
    choice.lpstrFileTitle = fileTitle;
    choice.nMaxFileTitle = kTitleSize - 1;
    choice.lpstrInitialDir = directory[0] != '\0' ? directory : nullptr;
    choice.lpstrTitle = dialogTitle[0] != '\0' ? dialogTitle : nullptr;
    choice.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_SHOWHELP;
    if (!save) {
        choice.Flags |= OFN_ENABLESIZING | OFN_PATHMUSTEXIST | (multiSelect ? OFN_ALLOWMULTISELECT : 0);
    }
    const bool chosen = save ? GetSaveFileNameA(&choice) : GetOpenFileNameA(&choice);
    if (chosen) {
        Close();
        names_ = std::move(names);
        multiSelect_ = multiSelect;
    }
    return chosen;
}

}  // namespace kx
