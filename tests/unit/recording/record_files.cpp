#include "tests/unit/recording/record_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>

namespace kx::recording {

std::int16_t SampleOf(std::size_t signal, std::size_t i) {
    return static_cast<std::int16_t>(
        (static_cast<int>(i * (signal + 3)) * 37 + static_cast<int>(signal) * 91) % 1800 - 900);
}

std::vector<std::uint8_t> Encode16(const std::vector<std::int16_t>& samples) {
    std::vector<std::uint8_t> bytes;
    for (const std::int16_t sample : samples) {
        const auto bits = static_cast<std::uint16_t>(sample);
        bytes.push_back(static_cast<std::uint8_t>(bits & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(bits >> 8));
    }
    return bytes;
}

std::vector<std::uint8_t> Encode212(const std::vector<std::int16_t>& samples) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < samples.size(); i += 2) {
        const unsigned a = static_cast<std::uint16_t>(samples[i]) & 0xFFFu;
        const bool pair = i + 1 < samples.size();
        const unsigned b = pair ? static_cast<std::uint16_t>(samples[i + 1]) & 0xFFFu : 0u;
        bytes.push_back(static_cast<std::uint8_t>(a & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(a >> 8 | (b >> 8) << 4));
        if (pair) {
            bytes.push_back(static_cast<std::uint8_t>(b & 0xFF));
        }
    }
    return bytes;
}

RecordFolder::RecordFolder() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    static int number = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("kx-record-" + std::to_string(now) + "-" + std::to_string(number++));
    std::filesystem::create_directories(path_);
}

RecordFolder::~RecordFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void RecordFolder::WriteFile(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
    std::ofstream stream(path_ / name, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(stream.good()) << name;
}

void RecordFolder::WriteText(const std::string& name, const std::string& text) const {
    WriteFile(name, {text.begin(), text.end()});
}

std::string RecordFolder::Text(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void RecordFolder::Resize(const std::string& name, std::uint64_t size) const {
    std::filesystem::resize_file(path_ / name, size);
}

void RecordFolder::Write(const Layout& layout) const {
    const std::size_t signals = layout.names.size();
    const std::size_t perFile = layout.signalsPerFile == 0 ? signals : layout.signalsPerFile;
    std::string header =
        "r " + std::to_string(signals) + " " + layout.rate + " " + std::to_string(layout.count) + "\n";
    for (std::size_t first = 0; first < signals; first += perFile) {
        const std::size_t inFile = std::min(perFile, signals - first);
        const std::string file =
            layout.signalsPerFile == 0 ? "r.dat" : "r" + std::to_string(first / perFile) + ".dat";
        std::vector<std::int16_t> samples;
        for (std::size_t i = 0; i < layout.count; ++i) {
            for (std::size_t signal = first; signal < first + inFile; ++signal) {
                samples.push_back(layout.sample(signal, i));
            }
        }
        const auto data = layout.format == 212 ? Encode212(samples) : Encode16(samples);
        std::vector<std::uint8_t> bytes(layout.byteOffset, 0xA5);
        bytes.insert(bytes.end(), data.begin(), data.end());
        WriteFile(file, bytes);
        for (std::size_t signal = first; signal < first + inFile; ++signal) {
            std::int16_t sum = 0;
            for (std::size_t i = 0; i < layout.count; ++i) {
                sum = static_cast<std::int16_t>(sum + layout.sample(signal, i));
            }
            header += file + " " + std::to_string(layout.format) + layout.formatSuffix + " " + layout.gain +
                      " 16 0 ";
            header += std::to_string(layout.sample(signal, 0)) + " " + std::to_string(sum) + " 0 " +
                      layout.names[signal] + "\n";
        }
    }
    WriteText("r.hea", header);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    EXPECT_NE(text.find(from), std::string::npos) << from;
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

}  // namespace kx::recording
