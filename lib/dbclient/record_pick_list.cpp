#include "lib/dbclient/record_pick_list.h"

#include <string_view>

#include "lib/pick_list.h"
#include "lib/text_field.h"

namespace kx {

namespace {

// A list of the resources; empty when it cannot be loaded.
class LoadedList {
  public:
    LoadedList(const ResourceTexts& texts, std::uint32_t listId)
        : length_(texts.LoadText(listId, list_, sizeof list_)) {}
    std::string_view Text() const { return {list_, length_}; }

  private:
    char list_[kPickListSize];
    std::size_t length_;
};

}  // namespace

void RecordPickText(const ResourceTexts& texts, std::uint32_t listId, std::uint32_t code, char* buffer,
                    std::size_t size) {
    const LoadedList list(texts, listId);
    std::string_view text = "*";
    if (list.Text().empty() || FindByDigitCode(list.Text(), static_cast<std::int32_t>(code), text)) {
        CopyText(text, buffer, size);
    }
}

void RecordListText(const ResourceTexts& texts, std::uint32_t listId, std::uint32_t position, char* buffer,
                    std::size_t size) {
    const LoadedList list(texts, listId);
    CopyText(list.Text().empty() ? "*" : ListPiece(list.Text(), position), buffer, size);
}

}  // namespace kx
