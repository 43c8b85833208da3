#include "host/printing/page_canvas.h"

#include <algorithm>
#include <array>

namespace kxhost {
namespace {

// Thousandths of the font's size, from the space to the tilde.
constexpr std::array<short, 95> kHelvetica{
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

// Accents do not widen a letter: from À to ÿ by the letters under them; the others as wide as a digit.
constexpr std::wstring_view kUnaccented = L"AAAAAAWCEEEEIIIIDNOOOOO+OUUUUYPsaaaaaamceeeeiiiidnooooo+ouuuuypy";

double WidthOf(wchar_t letter) {
    constexpr short kDigit = 556;
    constexpr wchar_t kFirstAccented = 0xC0;
    if (letter >= kFirstAccented && letter < kFirstAccented + static_cast<wchar_t>(kUnaccented.size())) {
        letter = kUnaccented[static_cast<std::size_t>(letter - kFirstAccented)];
    }
    return letter >= L' ' && letter <= L'~' ? kHelvetica[static_cast<std::size_t>(letter - L' ')] : kDigit;
}

}  // namespace

double TextWidthMm(const PageFont& font, std::wstring_view text) {
    constexpr double kMmPerPoint = 25.4 / 72;
    double thousandths = 0;
    for (const wchar_t letter : text) {
        thousandths += WidthOf(letter);
    }
    return thousandths / 1000 * font.points * kMmPerPoint * (font.bold ? 1.1 : 1);
}

std::vector<std::wstring> WrapText(const PageFont& font, std::wstring_view text, double widthMm) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view rest = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        do {
            std::size_t fits = rest.size();
            while (fits > 1 && TextWidthMm(font, rest.substr(0, fits)) > widthMm) {
                const std::size_t blank = rest.substr(0, fits).find_last_of(L' ');
                fits = blank == rest.npos || blank == 0 ? fits - 1 : blank;
            }
            lines.emplace_back(rest.substr(0, fits));
            rest.remove_prefix(fits);
            rest.remove_prefix(std::min(rest.find_first_not_of(L' '), rest.size()));
        } while (!rest.empty());
    }
    return lines;
}

}  // namespace kxhost
