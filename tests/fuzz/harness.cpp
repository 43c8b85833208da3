// Runs a target: under libFuzzer, or over the files of its corpus, over their beginnings, and over what a fixed sequence of
// changed bytes makes of them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "tests/fuzz/targets.h"

namespace kx::fuzz {
namespace {

// The targets by the names of their folders in corpus/.
constexpr std::pair<std::string_view, Run*> kTargets[] = {{"aecg", Aecg},
                                                          {"annotation_block", AnnotationBlock},
                                                          {"dicom", Dicom},
                                                          {"episode_block", EpisodeBlock},
                                                          {"record_texts", RecordTexts},
                                                          {"scp", Scp},
                                                          {"script", Script},
                                                          {"statement_library", StatementFile},
                                                          {"typed_time", TypedTime},
                                                          {"wfdb", Wfdb}};

Run* TargetOf(std::string_view name) {
    const auto* found = std::ranges::find(kTargets, name, &std::pair<std::string_view, Run*>::first);
    Require(found != std::end(kTargets));
    return found->second;
}

}  // namespace
}  // namespace kx::fuzz

#ifdef KX_FUZZ_TARGET
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static kx::fuzz::Run* const run = kx::fuzz::TargetOf(KX_FUZZ_TARGET);
    run({data, size});
    return 0;
}
#else
using Input = std::vector<std::uint8_t>;

// Changed inputs for all files together, so that a file more does not make the test longer.
constexpr std::size_t kChangedInputs = 3000;

// Every input has exactly its size on the heap, so that a sanitizer sees every byte read beyond it.
static void Feed(kx::fuzz::Run* run, const Input& file, std::size_t rounds, std::mt19937& random) {
    constexpr std::uint8_t kEdges[] = {0x00, 0x01, 0x7F, 0x80, 0xFF};
    for (std::size_t size = 0; size <= file.size(); size += size < 256 ? 1 : 1 + file.size() / 64) {
        run(Input(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
    }
    run(file);
    for (std::size_t round = 0; round < rounds && !file.empty(); ++round) {
        Input changed = file;
        for (unsigned change = 0; change <= random() % 4; ++change) {
            std::uint8_t& byte = changed[random() % changed.size()];
            byte = random() % 2 == 0 ? static_cast<std::uint8_t>(random()) : kEdges[random() % std::size(kEdges)];
        }
        run(changed);
    }
}

// tests/fuzz/corpus/NAME, the target's folder.
int main(int argc, char** argv) {
    const std::filesystem::path folder = argc > 1 ? argv[1] : "";
    kx::fuzz::Run* const run = kx::fuzz::TargetOf(folder.filename().string());
    std::set<std::filesystem::path> files;  // in the same order everywhere, or the changes would not be the same
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.insert(entry.path());
    }
    std::mt19937 random(1);
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        Feed(run, Input((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>()), kChangedInputs / files.size(), random);
    }
    return files.empty() ? 1 : 0;  // nothing fed is nothing tested
}
#endif
