// Runs a target: under libFuzzer, or over the files of its corpus, over their beginnings, and over what a fixed sequence of
// changed bytes makes of them.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "tests/fuzz/targets.h"

namespace kx::fuzz {
namespace {

const Target* TargetOf(std::string_view name) {
    const auto* found = std::ranges::find(kTargets, name, &Target::name);
    return found == std::end(kTargets) ? nullptr : found;
}

#ifndef KX_FUZZ_TARGET
using Input = std::vector<std::uint8_t>;

// Changed inputs for all files together, so that a file more does not make the test longer.
constexpr std::size_t kChangedInputs = 10000;

// Every input has exactly its size on the heap, so that a sanitizer sees every byte read beyond it.
void Feed(const Target& target, const Input& file, std::size_t rounds, std::mt19937& random) {
    constexpr std::uint8_t kEdges[] = {0x00, 0x01, 0x7F, 0x80, 0xFF};
    for (std::size_t size = 0; size <= file.size(); size += size < 256 ? 1 : 1 + file.size() / 64) {
        target.run(Input(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
    }
    target.run(file);
    for (std::size_t round = 0; round < rounds && !file.empty(); ++round) {
        Input changed(file.begin(), file.end());
        for (unsigned change = 0; change <= random() % 4; ++change) {
            std::uint8_t& byte = changed[random() % changed.size()];
            byte = random() % 2 == 0 ? static_cast<std::uint8_t>(random()) : kEdges[random() % std::size(kEdges)];
        }
        target.run(changed);
    }
}

#endif

}  // namespace
}  // namespace kx::fuzz

#ifdef KX_FUZZ_TARGET
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kx::fuzz::Target* target = kx::fuzz::TargetOf(KX_FUZZ_TARGET);
    target->run({data, size});
    return 0;
}
#else
int main(int argc, char** argv) {
    using namespace kx::fuzz;
    const std::filesystem::path folder = argc > 1 ? argv[1] : "";
    const Target* target = TargetOf(folder.filename().string());
    if (target == nullptr) {
        std::fprintf(stderr, "usage: fuzz_test FOLDER, which is called as a target is\n");
        return 1;
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());  // in the same order everywhere, or the changes would not be the same
    std::mt19937 random(1);
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        Feed(*target, Input((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>()), kChangedInputs / files.size(),
             random);
    }
    std::printf("%zu files\n", files.size());
    return files.empty() ? 1 : 0;  // nothing fed is nothing tested
}
#endif
