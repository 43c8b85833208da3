#include "host/frame/file_dialogs.h"

#include <commdlg.h>

#include <array>

namespace kxhost {
namespace {

constexpr std::size_t kLongestPath = 4096;

OPENFILENAMEW Describe(HWND owner, const wchar_t* title, const wchar_t* filter,
                       std::array<wchar_t, kLongestPath>& name) {
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrTitle = title;
    dialog.lpstrFilter = filter;
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = static_cast<DWORD>(name.size());
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return dialog;
}

}  // namespace

std::optional<std::filesystem::path> AskRecordToOpen(HWND owner) {
    std::array<wchar_t, kLongestPath> name{};
    OPENFILENAMEW dialog = Describe(
        owner, L"Apri tracciato",
        L"Tracciati (*.hea, *.scp, *.dcm, *.xml)\0*.hea;*.scp;*.dcm;*.xml\0Tutti i file (*.*)\0*.*\0", name);
    dialog.Flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    if (!GetOpenFileNameW(&dialog)) {
        return std::nullopt;
    }
    return std::filesystem::path(name.data());
}

// The folder, then the names, each with its terminator; one file alone comes as its whole path.
std::vector<std::filesystem::path> AskRecordsToImport(HWND owner) {
    std::array<wchar_t, kLongestPath> names{};
    OPENFILENAMEW dialog = Describe(owner, L"Importa nell'archivio", L"Tutti i file (*.*)\0*.*\0", names);
    dialog.Flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ALLOWMULTISELECT;
    std::vector<std::filesystem::path> files;
    if (!GetOpenFileNameW(&dialog)) {
        return files;
    }
    const std::filesystem::path first = names.data();
    for (const wchar_t* name = names.data() + first.native().size() + 1; *name != L'\0';
         name += std::char_traits<wchar_t>::length(name) + 1) {
        files.push_back(first / name);
    }
    if (files.empty()) {
        files.push_back(first);
    }
    return files;
}

std::optional<std::filesystem::path> AskFileToSave(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const wchar_t* extension,
                                                   const std::wstring& suggestedName,
                                                   const std::filesystem::path& folder) {
    std::array<wchar_t, kLongestPath> name{};
    suggestedName.copy(name.data(), name.size() - 1);
    OPENFILENAMEW dialog = Describe(owner, title, filter, name);
    dialog.lpstrDefExt = extension;
    if (!folder.empty()) {
        dialog.lpstrInitialDir = folder.c_str();
    }
    dialog.Flags |= OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    if (!GetSaveFileNameW(&dialog)) {
        return std::nullopt;
    }
    return std::filesystem::path(name.data());
}

}  // namespace kxhost
