#include "tests/unit/recording/record_files.h"

#include <chrono>
#include <iterator>

namespace kx::recording {
namespace {

std::string Encoded(const std::vector<std::int16_t>& samples, int format) {
    std::string bytes;
    const auto put = [&bytes](unsigned byte) { bytes += static_cast<char>(byte & 0xFF); };
    for (std::size_t i = 0; i < samples.size(); i += format == 212 ? 2 : 1) {
        const unsigned a = static_cast<std::uint16_t>(samples[i]);
        const bool pair = i + 1 < samples.size();
        const unsigned b = pair ? static_cast<std::uint16_t>(samples[i + 1]) & 0xFFFu : 0u;
        put(a);
        put(format == 212 ? (a >> 8 & 0xF) | (b >> 8) << 4 : a >> 8);
        if (format == 212 && pair) {
            put(b);
        }
    }
    return bytes;
}

}  // namespace

std::int16_t SampleOf(std::size_t signal, std::size_t i) {
    return static_cast<std::int16_t>((static_cast<int>(i * (signal + 3)) * 37 + static_cast<int>(signal) * 91) % 1800 - 900);
}

RecordFolder::RecordFolder() {
    static int number = 0;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    path_ = std::filesystem::temp_directory_path() / ("kx-record-" + std::to_string(now) + "-" + std::to_string(number++));
    std::filesystem::create_directories(path_);
}

RecordFolder::~RecordFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void RecordFolder::WriteText(const std::string& name, const std::string& text) const {
    std::ofstream stream(path_ / name, std::ios::binary);
    EXPECT_TRUE(stream << text) << name;
}

std::string RecordFolder::Text(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void RecordFolder::Resize(const std::string& name, std::uint64_t size) const { std::filesystem::resize_file(path_ / name, size); }

void RecordFolder::Write(const Layout& layout) const {
    const std::size_t signals = layout.names.size(), perFile = layout.signalsPerFile == 0 ? signals : layout.signalsPerFile;
    std::string header = "r " + std::to_string(signals) + " " + layout.rate + " " + std::to_string(layout.count) + "\n";
    for (std::size_t first = 0; first < signals; first += perFile) {
        const std::size_t end = std::min(first + perFile, signals);
        const std::string file = layout.signalsPerFile == 0 ? "r.dat" : "r" + std::to_string(first / perFile) + ".dat";
        std::vector<std::int16_t> samples, sums(end - first);
        for (std::size_t i = 0; i < layout.count * (end - first); ++i) {
            const std::size_t signal = i % (end - first);
            samples.push_back(layout.sample(first + signal, i / (end - first)));
            sums[signal] = static_cast<std::int16_t>(sums[signal] + samples.back());
        }
        WriteText(file, std::string(layout.byteOffset, '\xA5') + Encoded(samples, layout.format));
        for (std::size_t signal = first; signal < end; ++signal) {
            header += file + " " + std::to_string(layout.format) + layout.formatSuffix + " " + layout.gain + " 16 0 " +
                      std::to_string(layout.sample(signal, 0)) + " " + std::to_string(sums[signal - first]) + " 0 " + layout.names[signal] +
                      "\n";
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
