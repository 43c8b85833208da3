#include "host/worklist/listing_words.h"

#include <array>
#include <cwchar>

#include "host/windows/text_conversion.h"

namespace kxhost {

std::wstring DateText(const KxDateTime& time) {
    if (time.year <= 1800) {
        return L"...";
    }
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%02d/%02d/%04d %02d:%02d", time.day, time.month, time.year,
                  time.hour, time.minute);
    return text;
}

std::wstring NameText(const std::string& name) {
    return FromRecordText(name.substr(0, name.find_last_not_of(" ,") + 1));
}

const wchar_t* StateText(std::uint32_t flags) {
    return (flags & 2) != 0   ? L"confermato"
           : (flags & 1) != 0 ? L"riletto"
           : (flags & 4) != 0 ? L"esterno"
                              : L"originale";
}

const wchar_t* TestTypeText(std::uint32_t type) {
    constexpr std::array<const wchar_t*, 7> kTypes{L"Sforzo", L"",     L"Riposo",     L"Alta risoluzione",
                                                   L"Holter", L"ABPM", L"Spirometria"};
    return type < kTypes.size() ? kTypes[type] : L"";
}

}  // namespace kxhost
