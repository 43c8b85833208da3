// The rhythm of a recording as annotations of its test record.
#include <algorithm>

#include "host/recording/rhythm.h"
#include "lib/beat_labels.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

std::uint32_t TimeOf(int ms) {
    return static_cast<std::uint32_t>(std::max(ms, 0));
}

}  // namespace

bool FillAnnotations(TestRecord& test, const Rhythm& rhythm) {
    const std::size_t count = 1 + rhythm.beats.size() + rhythm.atrialMs.size() + rhythm.impulsesMs.size();
    AnnotationStore* store = test.CreateAnnotations(static_cast<std::uint32_t>(count), true);
    if (store == nullptr) {
        return false;
    }
    bool filled = true;
    for (const Rhythm::Beat& beat : rhythm.beats) {
        filled = store->Append(beat.label, TimeOf(beat.ms)) && filled;
    }
    // The rate at a beat is that of the entries beside it, so the beats stand alone until it is known.
    for (std::uint32_t i = 0; i < store->Count(); ++i) {
        store->UpdateHeartRate(i);
        if (rhythm.beats[i].inMedian) {
            store->SetSubLabel(i, kSubLabelInMedian);
        }
    }
    const auto insert = [&](std::uint8_t label, int ms) {
        filled = store->Insert(label, TimeOf(ms)).has_value() && filled;
    };
    insert(kLabelRhythm, 0);
    store->SetHeartRate(0, static_cast<std::uint16_t>(rhythm.slowOnsetMs));
    for (const int ms : rhythm.atrialMs) {
        insert(kLabelPWave, ms);
    }
    for (const int ms : rhythm.impulsesMs) {
        insert(kLabelPacingImpulse, ms);
    }
    store->ClearModified();
    return filled;
}

}  // namespace kx::recording
