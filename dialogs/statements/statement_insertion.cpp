#include "dialogs/statements/statement_insertion.h"

#include <cstring>

namespace kx {

std::string LibraryInsertion(std::string_view itemText) {
    const std::size_t code = itemText.find('[');
    return code != std::string_view::npos ? std::string(itemText.substr(0, code))
                                          : std::string(itemText) + ' ';
}

std::size_t InsertCompletion(char* text, std::size_t size, std::size_t start, std::size_t length,
                             std::string_view chosen) {
    const auto* const end = static_cast<const char*>(std::memchr(text, '\0', size));
    const std::size_t total = end != nullptr ? static_cast<std::size_t>(end - text) : size;
    if (end == nullptr || start > total || length > total - start ||
        chosen.size() >= size - (total - length)) {
        return kNoInsertion;
    }
    std::memmove(text + start + chosen.size(), text + start + length, total - start - length + 1);
    std::memcpy(text + start, chosen.data(), chosen.size());
    return start + chosen.size();
}

}  // namespace kx
