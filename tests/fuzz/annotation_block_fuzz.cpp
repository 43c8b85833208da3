// Any bytes as an annotation block: a store that reads it can be used in every way, and one made from it
// writes it again.
#include <cstdlib>
#include <cstring>

#include "lib/annotation_store.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void UseEverything(kx::AnnotationStore& store) {
    const std::uint32_t count = store.Count();
    for (std::uint32_t i = 0; i <= count; ++i) {
        store.UpdateHeartRate(i);
        store.SetWidth(i, store.QrsDurationMs(i));
        store.StrongestLead(i, nullptr);
        store.AmplitudeMicrovolts(17, i, &kx::LeadBeat::amplitude3);
        store.LabelInLead(i, i % 24);
    }
    const std::uint32_t t = store.Time(count / 2);
    const auto index = store.Insert(3, t);
    if (index) {
        Require(store.Label(*index) == 3 && store.Time(*index) == t && store.Count() == count + 1);
        Require(store.Remove(3, t) && store.Count() == count);
    }
    store.InsertSegment(t, t / 2);
    store.RemoveRange(count / 3, count / 2);
    store.RemoveLabel(store.Label(0));
    Require(store.CountOfLabel(kx::kLabelNone) <= store.Count() && store.Count() <= store.Capacity());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::SilentReporter log;
    for (const std::uint32_t capacity : {0u, 3u, 64u}) {
        kx::AnnotationStore store(capacity);
        if (store.Read(data, size, log)) {
            UseEverything(store);
        }
        kx::AnnotationStore entries(capacity, true);
        entries.ReadEntries(data, size, log);
        UseEverything(entries);
    }
    kx::AnnotationStore rebuilt(1);
    if (rebuilt.Rebuild(data, size, false)) {
        const auto block = rebuilt.Serialize();
        // All but the size word, which readers do not need.
        Require(block != nullptr &&
                std::memcmp(block.get() + 4, data + 4, rebuilt.SerializedSize() - 4) == 0);
    }
    UseEverything(rebuilt);
    rebuilt.Rebuild(data, size, true);
    UseEverything(rebuilt);
    return 0;
}
