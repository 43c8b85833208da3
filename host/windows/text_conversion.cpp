#include "host/windows/text_conversion.h"

#include <windows.h>

namespace kxhost {
namespace {

std::wstring ToWide(std::string_view text, UINT codePage) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string FromWide(std::wstring_view wide, UINT codePage) {
    if (wide.empty()) {
        return {};
    }
    const int length = static_cast<int>(wide.size());
    const int bytes = WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), bytes, nullptr, nullptr);
    return text;
}

}  // namespace

std::wstring FromRecordText(std::string_view windows1252) {
    return ToWide(windows1252, 1252);
}

std::wstring FromUtf8(std::string_view utf8) {
    return ToWide(utf8, CP_UTF8);
}

std::string ToRecordText(std::wstring_view wide) {
    return FromWide(wide, 1252);
}

std::wstring FromSystemText(std::string_view text) {
    return ToWide(text, CP_ACP);
}

std::string ToSystemText(std::wstring_view wide) {
    return FromWide(wide, CP_ACP);
}

std::string ToUtf8(std::wstring_view wide) {
    return FromWide(wide, CP_UTF8);
}

std::filesystem::path PathFromUtf8(std::string_view utf8) {
    return {FromUtf8(utf8)};
}

std::wstring SystemMessage(unsigned long error, std::wstring_view subject) {
    wchar_t text[256];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                                  0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 &&
           (text[length - 1] == L'\r' || text[length - 1] == L'\n' || text[length - 1] == L' ')) {
        --length;
    }
    if (length == 0) {
        return L"errore " + std::to_wstring(error);
    }
    std::wstring message(text, length);
    if (const std::size_t place = message.find(L"%1"); place != std::wstring::npos) {
        message.replace(place, 2, subject);
    }
    return message;
}

}  // namespace kxhost
