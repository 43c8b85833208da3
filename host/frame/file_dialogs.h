// The system's dialogs for choosing a file, in Italian.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kxhost {

// The file that the user chose, or none when the dialog was left.
std::optional<std::filesystem::path> AskRecordToOpen(HWND owner);
// Any number of them; none when the user has thought better of it.
std::vector<std::filesystem::path> AskRecordsToImport(HWND owner);
// filter: pairs of text and pattern, each ended by \0. extension: added to a name without one.
std::optional<std::filesystem::path> AskFileToSave(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const wchar_t* extension,
                                                   const std::wstring& suggestedName,
                                                   const std::filesystem::path& folder = {});

}  // namespace kxhost
