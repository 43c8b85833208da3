// String resources from a table.
#pragma once

#include <cstring>
#include <map>
#include <string>

#include "lib/resource_text.h"

namespace kx::test {

struct TextTable final : ResourceTexts {
    TextTable(std::map<std::uint32_t, std::string> table = {}) : texts(std::move(table)) {}

    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override {
        const auto found = texts.find(id);
        const std::string text = found == texts.end() ? "" : found->second.substr(0, size - 1);
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return text.size();
    }

    std::map<std::uint32_t, std::string> texts;
};

}  // namespace kx::test
