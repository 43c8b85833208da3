// DataFile: the choice of files in the system's open and save dialogs.
#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "lib/fileutil.h"

namespace kx {
namespace {

constexpr char kSource[] = "..\\..\\lib\\fileutil";
constexpr std::uint32_t kNoNamesMemoryLine = 96;
constexpr std::uint32_t kTitleSize = 256;

// A copy of a text that may be null, cut at the buffer's size.
void CopyText(const char* text, char* buffer, std::size_t size) {
    const std::size_t length = text != nullptr ? std::min(std::strlen(text), size - 1) : 0;
    std::memcpy(buffer, text != nullptr ? text : "", length);
    buffer[length] = '\0';
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
    CopyText(title, dialogTitle, sizeof dialogTitle);
    CopyText(initialDirectory, directory, sizeof directory);
    CopyText(initialName, names.get(), kNamesSize - 1);
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
