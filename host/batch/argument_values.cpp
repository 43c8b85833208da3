#include "host/batch/argument_values.h"

#include <algorithm>
#include <charconv>

#include "lib/leads.h"

namespace kxhost {

std::optional<unsigned> LeadOf(std::string_view name) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        const std::string_view known = kx::StandardLeadName(lead);
        if (std::equal(name.begin(), name.end(), known.begin(), known.end(),
                       [&](char a, char b) { return lower(a) == lower(b); })) {
            return lead;
        }
    }
    return std::nullopt;
}

std::optional<int> ParseNumber(std::string_view text, int least, int most) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < least || value > most) {
        return std::nullopt;
    }
    return value;
}

bool ParseSize(std::string_view text, Shot& shot) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) {
        return false;
    }
    const auto width = ParseNumber(text.substr(0, cross), kSmallestShot, kLargestShot);
    const auto height = ParseNumber(text.substr(cross + 1), kSmallestShot, kLargestShot);
    if (!width || !height) {
        return false;
    }
    shot.width = *width;
    shot.height = *height;
    return true;
}

bool ParsePane(std::string_view name, std::optional<PaneKind>& pane) {
    if (name == "window") {
        pane.reset();
        return true;
    }
    const auto row =
        std::find_if(kPanes.begin(), kPanes.end(), [&](const PaneRow& r) { return r.name == name; });
    if (row == kPanes.end()) {
        return false;
    }
    pane = row->kind;
    return true;
}

bool ParseCodes(std::string_view text, std::vector<int>& codes) {
    for (std::size_t next = 0; next <= text.size();) {
        const std::size_t end = std::min(text.find(',', next), text.size());
        const std::string_view item = text.substr(next, end - next);
        const std::size_t dash = std::min(item.find('-'), item.size());
        const auto first = ParseNumber(item.substr(0, dash), 0, kLargestFieldCode);
        const auto last =
            dash == item.size() ? first : ParseNumber(item.substr(dash + 1), 0, kLargestFieldCode);
        if (!first || !last || *last < *first) {
            return false;
        }
        for (int code = *first; code <= *last; ++code) {
            codes.push_back(code);
        }
        next = end + 1;
    }
    return true;
}

}  // namespace kxhost
