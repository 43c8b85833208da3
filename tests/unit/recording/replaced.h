#pragma once

#include <gtest/gtest.h>

#include <string>

namespace kx::recording {

// The text with every `from` in it, which must be there, replaced by `to`.
inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    EXPECT_NE(text.find(from), std::string::npos) << from;
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

}  // namespace kx::recording
