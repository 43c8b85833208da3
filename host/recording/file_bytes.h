// A file's bytes, all at once.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kx::recording {

// A path as UTF-8, for messages.
std::string PathText(const std::filesystem::path& path);

// Gives the bytes of a file of at most `largest` bytes; nothing, and "file: reason" in `error`, when it
// cannot.
using FileBytes = std::function<std::optional<std::vector<std::uint8_t>>(
    const std::filesystem::path& file, std::uint64_t largest, std::string& error)>;

// The bytes of a file of at most `largest` bytes. Nothing, and "file: reason" in `error`, when it is no file,
// cannot be read or is larger.
std::optional<std::vector<std::uint8_t>> ReadFileBytes(const std::filesystem::path& file,
                                                       std::uint64_t largest, std::string& error);

}  // namespace kx::recording
