// Filling an annotation store of 200,000 beats, the length of two days: in order and in any order.
#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "bench/ratio.h"
#include "lib/annotation_store.h"

namespace {

constexpr std::uint32_t kBeats = 200000;
constexpr std::uint32_t kIntervalMs = 800;

void Append() {
    kx::AnnotationStore store(kBeats);
    for (std::uint32_t i = 0; i < kBeats; ++i) {
        store.Append(1, i * kIntervalMs);
    }
    kx::bench::Keep(store.Count());
}

void InsertInOrder() {
    kx::AnnotationStore store(0);
    for (std::uint32_t i = 0; i < kBeats; ++i) {
        store.Insert(1, i * kIntervalMs);
    }
    kx::bench::Keep(store.Count());
}

void InsertAll(const std::vector<std::uint32_t>& times) {
    kx::AnnotationStore store(0);
    for (const std::uint32_t t : times) {
        store.Insert(1, t);
    }
    kx::bench::Keep(store.Count());
}

// The same bytes moved, found by halving: arrays in order of time cost this much however they are filled.
void MoveAll(const std::vector<std::uint32_t>& times) {
    std::vector<KxAnnotation> entries;
    std::vector<KxLeadBeat> beats[kx::kChannelSlots];
    for (const std::uint32_t t : times) {
        const auto place =
            std::lower_bound(entries.begin(), entries.end(), t,
                             [](const KxAnnotation& a, std::uint32_t time) { return a.timeMs < time; });
        const auto index = place - entries.begin();
        entries.insert(place, kx::Annotation(1, t));
        for (auto& channel : beats) {
            channel.insert(channel.begin() + index, KxLeadBeat{});
        }
    }
    kx::bench::Keep(static_cast<double>(entries.size()));
}

}  // namespace

int main() {
    kx::bench::Run("annotations_inserted_in_order", 3, Append, InsertInOrder);

    std::vector<std::uint32_t> times(kBeats);
    std::iota(times.begin(), times.end(), 0u);
    for (std::uint32_t& t : times) {
        t *= kIntervalMs;
    }
    std::shuffle(times.begin(), times.end(), std::mt19937(1));
    // Seconds long: once is enough.
    const kx::bench::Measured once{kx::bench::TimeCalls([&] { MoveAll(times); }, 1),
                                   kx::bench::TimeCalls([&] { InsertAll(times); }, 1)};
    kx::bench::PrintLine("annotations_inserted_in_any_order", once, 1.5);
    return 0;
}
