// Rhythms made of known waves, from the recording to the statements.
#include "host/recording/rhythm.h"

#include <random>
#include <set>

#include "host/recording/signal_math.h"
#include "lib/annotation_store.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxinterp/interpreter.h"

namespace kx::recording {
namespace {

using Times = std::vector<double>;  // ms

// Ten seconds of waves, each a bell in all leads; a lead shows P, QRS and T in proportions of its own.
struct Made {
    Times p{};
    Times beats{};
    Times broad{};     // beats of another shape
    Times impulses{};  // of a pacemaker
    double flutterMs = 0;
    double fibrillation = 0;  // microvolts
};

void AddBell(Trace& lead, double ms, double widthMs, double microvolts) {
    const auto first = static_cast<std::size_t>(std::max(0.0, (ms - 4 * widthMs) / 2));
    const auto end = std::min(lead.size(), static_cast<std::size_t>(std::max(0.0, (ms + 4 * widthMs) / 2)));
    for (std::size_t i = first; i < end; ++i) {
        const double t = (static_cast<double>(i) * 2 - ms) / widthMs;
        lead[i] += static_cast<float>(microvolts * std::exp(-t * t / 2));
    }
}

Recording Record(const Made& made) {
    Recording recording;
    recording.name = "made";
    recording.sampleRate = 500;
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0, 4);
    for (std::size_t k = 0; k < kLeadCount; ++k) {
        const double angle = 0.7 * static_cast<double>(k);
        Trace& lead = recording.leads[k];
        lead.resize(5000);
        for (const double ms : made.p) {
            AddBell(lead, ms, 20, 120 * std::cos(angle - 0.5));
        }
        for (const double ms : made.beats) {
            AddBell(lead, ms, 12, 1000 * std::cos(angle));
            AddBell(lead, ms + 30, 10, -300 * std::sin(angle));
            AddBell(lead, ms + 270, 40, 250 * std::cos(angle - 0.3));
        }
        for (const double ms : made.broad) {
            AddBell(lead, ms, 35, 1400 * std::sin(angle));
            AddBell(lead, ms + 300, 60, -400 * std::sin(angle));
        }
        for (std::size_t i = 0; i < lead.size(); ++i) {
            const double ms = static_cast<double>(i) * 2;
            // A saw tooth of two harmonics; waves whose rate wanders.
            const double flutter = made.flutterMs == 0 ? 0 : 2 * 3.14159265 * ms / made.flutterMs;
            const double wandering = ms / 24 + 3 * std::sin(ms / 310) + 2 * std::sin(ms / 170 + angle);
            lead[i] += static_cast<float>((made.flutterMs == 0 ? 0 : 90 * (std::sin(flutter) + 0.5 * std::sin(2 * flutter))) *
                                              std::cos(angle - 1.2) +
                                          made.fibrillation * std::sin(wandering)) +
                       noise(random);
        }
        for (const double ms : made.impulses) {
            lead[static_cast<std::size_t>(ms / 2)] += static_cast<float>(1500 * std::cos(angle - 0.9));
        }
    }
    return recording;
}

Times After(const Times& intervals, double from = 500) {
    Times times{from};
    for (std::size_t i = 0; times.back() + intervals[i % intervals.size()] < 9700; ++i) {
        times.push_back(times.back() + intervals[i % intervals.size()]);
    }
    return times;
}

Times Every(double ms, double from = 400) { return After({ms}, from); }

Times Moved(Times times, double by) {
    std::ranges::for_each(times, [by](double& t) { t += by; });
    return times;
}

Times Without(const Times& times, std::size_t every) {
    Times left;
    std::ranges::copy_if(times, std::back_inserter(left), [&, i = 0u](double) mutable { return i++ % every != every - 1; });
    return left;
}

// Three conducted waves with a growing distance, the fourth blocked.
Times Wenckebach(const Times& waves) {
    Times beats;
    for (std::size_t i = 0; i < waves.size(); ++i) {
        if (i % 4 != 3) {
            beats.push_back(waves[i] + 150 + 60 * static_cast<double>(i % 4));
        }
    }
    return beats;
}

// The codes of the rhythm, of ectopic beats and of AV conduction for a narrow complex with a measured P wave or not.
std::set<int> CodesOf(const Made& made, bool pMeasured) {
    const AlignedBeats beats = AlignBeats(Record(made));
    TestRecord test;
    EXPECT_TRUE(FillAnnotations(test, FindRhythm(beats)));
    KxMeasurementSet set{};
    set.size = sizeof set, set.measured = 1;
    set.qrsDuration = 90, set.rrInterval = static_cast<std::uint16_t>(beats.rrMs);
    set.pDuration = pMeasured ? 100 : 0, set.prInterval = pMeasured ? 160 : 0;
    set.pAxis = set.qrsAxis = 50;
    for (KxLeadMeasurements& lead : set.leads) {
        lead.aR = 500;
    }
    const auto codes = interp::StatementCodes(set, reinterpret_cast<const KxAnnotationStore*>(test.Annotations()));
    std::set<int> ofRhythm(codes.begin(), codes.end());
    std::erase_if(ofRhythm, [](int code) { return code > 30051 || (code > 30020 && code < 30036); });
    return ofRhythm;
}

TEST(Rhythm, IsToldFromTheRecording) {
    const Times steady = Every(800);
    const Times irregular = After({620, 910, 540, 780, 1050, 660, 870, 590});
    Made early{Moved(steady, -160), steady};
    early.p[5] -= 270, early.beats[5] -= 270;
    const std::tuple<const char*, Made, bool, std::set<int>> rows[] = {
        {"sinus rhythm", {Moved(steady, -160), steady}, true, {30036}},
        {"its P wave missed in the median beat", {Moved(steady, -160), steady}, false, {30036}},
        {"long PR", {Moved(steady, -290), steady}, true, {30036}},
        {"an early beat", early, true, {30036, 30017}},
        {"a broad beat", {Moved(Without(steady, 6), -160), Without(steady, 6), {Moved(steady, -250)[5]}}, true, {30036, 30019}},
        {"fibrillation", {{}, irregular, {}, {}, 0, 40}, false, {30008}},
        {"and a P wave seen by chance", {{}, irregular, {}, {}, 0, 40}, true, {30008}},
        {"flutter", {{}, irregular, {}, {}, 225}, false, {30011}},
        {"flutter, four to one", {{}, Every(900), {}, {}, 225}, true, {30011}},
        {"complete block", {Every(780, 200), Every(1370, 500)}, false, {30046}},
        {"two to one", {Every(600, 340), Every(1200, 500)}, true, {30036, 30045}},
        {"Wenckebach", {Every(850, 250), Wenckebach(Every(850, 250))}, true, {30036, 30043}},
        {"Mobitz", {Every(800, 340), Moved(Without(Every(800, 340), 4), 160)}, true, {30036, 30044}},
        {"ventricular pacing", {{}, steady, {}, Moved(steady, -50)}, false, {30048, 30050}},
        {"atrial pacing", {Moved(steady, -160), steady, {}, Moved(steady, -210)}, true, {30048, 30049}},
        {"pacing in complete block", {Every(710, 200), Every(1000, 500), {}, Every(1000, 450)}, false, {30046, 30048, 30050}}};
    for (const auto& [name, made, pMeasured, codes] : rows) {
        EXPECT_EQ(codes, CodesOf(made, pMeasured)) << name;
    }
}

}  // namespace
}  // namespace kx::recording
