// The three alphabets that meet here: Windows-1252 in the records, UTF-8 in files' names on the command line
// and in batch output, UTF-16 on the screen.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kxhost {

std::wstring FromRecordText(std::string_view windows1252);
// A character that Windows-1252 does not have becomes '?' or its likest letter.
std::string ToRecordText(std::wstring_view wide);
// The system's own code page, for interfaces that take no other.
std::wstring FromSystemText(std::string_view text);
std::string ToSystemText(std::wstring_view wide);
std::wstring FromUtf8(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);
std::filesystem::path PathFromUtf8(std::string_view utf8);

// The system's message for an error code, without its line break; "errore N" when it has none. subject: the
// file that the message speaks of, for messages with a place for it.
std::wstring SystemMessage(unsigned long error, std::wstring_view subject);

}  // namespace kxhost
