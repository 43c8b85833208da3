// Lists of choices as the string resources hold them: pieces joined by '^', in a pick list alternately a code
// and the text that the code selects, as in "0^...^1^Uomo^2^Donna". A list of names without codes
// ("first^second") is read piece by piece.
//
// The readers walk over a text of the caller's, Windows-1252, which must outlive them and what they give;
// nothing is copied or allocated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kx {

inline constexpr char kPickListSeparator = '^';
// The buffer that the texts of a pick list resource are loaded into, terminator included.
inline constexpr std::size_t kPickListSize = 256;

// The pieces between separators, in order. An empty text has no piece; a separator at the end is followed by
// an empty one.
class ListPieces {
  public:
    explicit ListPieces(std::string_view list) : rest_(list), atEnd_(list.empty()) {}

    // False: no piece is left, `piece` is as it was.
    bool Next(std::string_view& piece);

  private:
    std::string_view rest_;
    bool atEnd_;
};

// Piece `index` (from 0) of a list of names; empty when there are not so many.
std::string_view ListPiece(std::string_view list, std::size_t index);

// One choice of a pick list.
struct PickListItem {
    std::string_view codeText;
    std::string_view text;

    // The number at the start of codeText; see ParseNumber.
    std::int32_t Code() const;
    // The first character of codeText less '0', the rule of the record's own lists of one-digit codes; 0 for
    // none.
    std::int32_t DigitCode() const;
};

// The pairs code^text, in order. A code that no separator follows is no choice; a code whose text is missing
// after its separator has an empty text.
class PickList {
  public:
    explicit PickList(std::string_view list) : pieces_(list) {}

    // False: no choice is left, `item` is as it was.
    bool Next(PickListItem& item);

  private:
    ListPieces pieces_;
};

// The text of the first choice whose DigitCode is `code`. False: there is none, and `text` is as it was.
bool FindByDigitCode(std::string_view list, std::int32_t code, std::string_view& text);

}  // namespace kx
