#include "lib/pick_list.h"

#include "lib/number_text.h"

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

std::int32_t PickListItem::Code() const {
    return ParseNumber(codeText);
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
