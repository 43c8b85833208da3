// What a test wants to know of a PNG file.
#pragma once

#include <cstddef>
#include <filesystem>

namespace kx::test {

struct PngPicture {
    int width = 0;  // 0: the file is no picture
    int height = 0;
    std::size_t colours = 0;  // different ones
};

PngPicture ReadPng(const std::filesystem::path& file);

}  // namespace kx::test
