// Records of 12 leads written as files, whole or with something wrong in them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kx::recording {

// Sample i of the n-th signal that is written; fits 12 bits.
std::int16_t SampleOf(std::size_t signal, std::size_t i);

// How a record is written.
struct Layout {
    std::vector<std::string> names = {"I", "II", "III", "aVR", "aVL", "aVF", "V1", "V2", "V3", "V4", "V5", "V6"};
    int format = 16;
    std::string formatSuffix{};    // of the format field: "+24", "x2", ":3"
    std::string gain = "1000/mV";  // of every signal
    std::string rate = "500";
    std::size_t count = 60;      // samples a signal
    std::size_t byteOffset = 0;  // bytes before the samples
    std::int16_t (*sample)(std::size_t signal, std::size_t i) = SampleOf;
    std::size_t signalsPerFile = 0;  // 0: all in one
};

// A folder for one test, removed with it. Records are called "r": r.hea, r.dat or r0.dat, r1.dat, ...
class RecordFolder {
  public:
    RecordFolder();
    ~RecordFolder();
    RecordFolder(const RecordFolder&) = delete;
    RecordFolder& operator=(const RecordFolder&) = delete;

    std::filesystem::path Header() const { return path_ / "r.hea"; }
    void Write(const Layout& layout) const;
    void WriteText(const std::string& name, const std::string& text) const;
    std::string Text(const std::string& name) const;
    void Resize(const std::string& name, std::uint64_t size) const;

  private:
    std::filesystem::path path_;
};

// The text with every `from` in it, which must be there, replaced by `to`.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

}  // namespace kx::recording
