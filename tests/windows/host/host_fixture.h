// What the tests of the workstation share.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kx::test {

namespace fs = std::filesystem;

// What the head of a PNG file says; 0 for what is none. One that shows an empty area is packed to a thousandth.
struct PngPicture {
    explicit PngPicture(const std::string& file) {
        const auto number = [&](std::size_t at) {
            return file.compare(1, 3, "PNG") != 0 || file.size() < at + 4
                       ? 0
                       : static_cast<unsigned char>(file[at + 2]) * 256 + static_cast<unsigned char>(file[at + 3]);
        };
        width = number(16);
        height = number(20);
        isDrawn = width > 0 && file.size() > static_cast<std::size_t>(width) * static_cast<std::size_t>(height) / 200;
    }
    int width, height;
    bool isDrawn;
};

// A folder of this test run's own, removed at the end.
class HostTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() / (std::string("kxhost-") + test->name() + std::to_string(GetCurrentProcessId()));
        fs::create_directories(folder_);
    }
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    fs::path Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
        return folder_ / name;
    }
    static std::string Read(const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // A recording whose header promises more samples than the signal file holds.
    fs::path TruncatedRecord() const {
        Write("short.dat", std::string(1000, '\0'));
        return Write("short.hea", "short 1 500 5000\nshort.dat 16 1000 16 0 0 0 0 I\n");
    }

    fs::path folder_;
};

}  // namespace kx::test
