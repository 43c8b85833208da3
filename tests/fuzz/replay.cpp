// Runs a fuzz target without a fuzzer: over the files of the folder named as the argument, over their
// beginnings, and over what a fixed sequence of changed bytes makes of them.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

// A copy of exactly the size, so that a sanitizer sees every byte read beyond it.
void Feed(const Bytes& bytes, std::size_t size) {
    const Bytes input(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

// Changed inputs for all files together, so that a file more does not make the test longer.
constexpr std::size_t kChangedInputs = 10000;

void FeedChanged(const Bytes& original, std::size_t rounds, std::mt19937& random) {
    constexpr std::uint8_t kEdges[] = {0x00, 0x01, 0x7F, 0x80, 0xFF};
    for (std::size_t round = 0; round < rounds && !original.empty(); ++round) {
        Bytes bytes = original;
        for (unsigned change = 0; change <= random() % 4; ++change) {
            bytes[random() % bytes.size()] = random() % 2 == 0 ? static_cast<std::uint8_t>(random())
                                                               : kEdges[random() % std::size(kEdges)];
        }
        Feed(bytes, bytes.size());
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argc > 1 ? argv[1] : ".")) {
        files.push_back(entry.path());
    }
    // In the same order everywhere, or the changes would not be the same.
    std::sort(files.begin(), files.end());
    std::mt19937 random(1);
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        const Bytes bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        for (std::size_t size = 0; size <= bytes.size(); size += size < 256 ? 1 : 1 + bytes.size() / 64) {
            Feed(bytes, size);
        }
        Feed(bytes, bytes.size());
        FeedChanged(bytes, kChangedInputs / files.size(), random);
    }
    std::printf("%zu files\n", files.size());
    // Nothing fed is nothing tested.
    return files.empty() ? 1 : 0;
}
