#include "lib/pick_list.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace kx {

bool ListPieces::Next(std::string_view& piece) {
    if (atEnd_) {
        return false;
    }
    const std::size_t length = rest_.find(kPickListSeparator);
    piece = rest_.substr(0, length);
    atEnd_ = length == std::string_view::npos;
    rest_.remove_prefix(atEnd_ ? rest_.size() : length + 1);
    return true;
}

std::string_view ListPiece(std::string_view list, std::size_t index) {
    ListPieces pieces(list);
    std::string_view piece;
    for (std::size_t i = 0; pieces.Next(piece); ++i) {
        if (i == index) {
            return piece;
        }
    }
    return {};
}

std::int32_t LeadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    std::int32_t number = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        return text.front() == '-' ? Limits::min() : Limits::max();
    }
    return number;
}

std::int32_t PickListItem::Code() const {
    return LeadingNumber(codeText);
}

std::int32_t PickListItem::DigitCode() const {
    return codeText.empty() ? 0 : codeText.front() - '0';
}

bool PickList::Next(PickListItem& item) {
    PickListItem next;
    if (!pieces_.Next(next.codeText) || !pieces_.Next(next.text)) {
        return false;
    }
    item = next;
    return true;
}

bool FindByDigitCode(std::string_view list, std::int32_t code, std::string_view& text) {
    PickList choices(list);
    PickListItem item;
    while (choices.Next(item)) {
        if (item.DigitCode() == code) {
            text = item.text;
            return true;
        }
    }
    return false;
}

}  // namespace kx
