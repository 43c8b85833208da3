// Rhythms made of known waves, from the recording to the statements.
#include "host/recording/rhythm.h"

#include <random>
#include <set>
#include <sstream>

#include "host/recording/median_beat.h"
#include "host/recording/p_waves.h"
#include "host/recording/signal_math.h"
#include "host/recording/synthetic.h"
#include "lib/annotation_store.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxanalyze/delineator.h"
#include "suite/kxanalyze/waves_by_rules.h"
#include "suite/kxinterp/interpreter.h"
#include "tests/unit/analyze/synthetic_beat.h"

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
std::set<int> CodesOf(const AlignedBeats& beats, const Rhythm& rhythm, bool pMeasured) {
    TestRecord test;
    EXPECT_TRUE(FillAnnotations(test, rhythm));
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

// A line of figures under a word.
class Figures {
  public:
    explicit Figures(const std::string& name) { text_ << name << '\n'; }
    std::ostringstream& Line(const char* word) {
        text_ << "  " << word;
        return text_;
    }
    template <class Values>
    void Line(const char* word, const Values& values, std::size_t every = 1) {
        Line(word);
        for (std::size_t i = 0; i < std::size(values); i += every) {
            text_ << ' ' << std::lround(values[i]);
        }
        text_ << '\n';
    }
    std::string Text() const { return text_.str(); }

  private:
    std::ostringstream text_;
};

void AddSignal(const AlignedBeats& beats, const Rhythm& rhythm, Figures& figures) {
    figures.Line("signal") << " RR " << beats.rrMs << " hum " << beats.hum.hertz << " Hz " << std::lround(beats.hum.microvolts)
                           << " uV slow onset " << rhythm.slowOnsetMs << " ms\n";
    std::ostringstream& line = figures.Line("beats (label, * in the median)");
    for (const Rhythm::Beat& beat : rhythm.beats) {
        line << ' ' << beat.ms << '(' << int{beat.label} << (beat.inMedian ? "*)" : ")");
    }
    line << "\n";
    figures.Line("atria", rhythm.atrialMs);
    figures.Line("impulses", rhythm.impulsesMs);
    if (const auto waves = FindWavesBeforeBeats(MakeAtrialSignal(beats))) {
        figures.Line("before the beats") << " at " << waves->peak * 4 << " ms in " << std::lround(100 * waves->part) << " %\n";
        std::array<float, kLeadCount> noise = waves->noise;
        std::ranges::for_each(noise, [](float& value) { value *= 100; });
        figures.Line("noise, 10 nV", noise);
    }
    figures.Line("II every 200 ms", beats.recording.leads[kLeadII], 100);
}

void AddMeasurements(const MedianBeat& median, Figures& figures) {
    figures.Line("median II every 40 ms", median.leads[kLeadII], 20);
    analysis::Episode episode({median.leads.begin(), median.leads.end()}, kWorkingRate, kResolutionNv);
    episode->value36 = static_cast<std::uint32_t>(median.rhythm.atrialLead);
    episode.Set().rrInterval = static_cast<std::uint16_t>(median.rrMs);
    analysis::Beat beat;
    ASSERT_EQ(analysis::ReadBeat(episode.Get(), beat), nullptr);
    const analysis::QrsByRules qrs = FindQrs(beat);
    const analysis::Place tOff = FindTOff(beat, qrs.all);
    const analysis::PByRules p = FindP(beat, qrs.all, tOff);
    figures.Line("rules") << " P " << p.all.on << ' ' << p.all.off << " clear " << std::lround(100 * p.clearness) << " QRS " << qrs.all.on
                          << ' ' << qrs.all.off << (qrs.paced ? " paced" : "") << " T " << tOff << '\n';
    ASSERT_EQ(analysis::MeasureEpisode(episode.Get()), 1u);
    const KxMeasurementSet& set = episode.Set();
    TestRecord test;
    ASSERT_TRUE(FillAnnotations(test, median.rhythm));
    figures.Line("statements", interp::StatementCodes(set, reinterpret_cast<const KxAnnotationStore*>(test.Annotations())));
    figures.Line("P, PR, QRS, QT, QTc, axes", std::array<int, 8>{set.pDuration, set.prInterval, set.qrsDuration, set.qtInterval, set.qtc,
                                                                 set.pAxis, set.qrsAxis, set.tAxis});
    for (const std::size_t lead : {KX_LEAD_II, KX_LEAD_V1, KX_LEAD_V5}) {
        const KxLeadMeasurements& of = set.leads[lead];
        figures.Line(
            lead == KX_LEAD_II   ? "II markers"
            : lead == KX_LEAD_V1 ? "V1 markers"
                                 : "V5 markers",
            std::array<int, 12>{of.pOnMarker, of.pPrimeOnMarker, of.pOffMarker, of.qOnMarker, of.rOnMarker, of.sOnMarker, of.rPrimeOnMarker,
                                of.sPrimeOnMarker, of.qrsOffMarker, of.tOnMarker, of.tPrimeOnMarker, of.tOffMarker});
        figures.Line("   uV", std::array<int, 11>{of.aP1, of.aP2, of.aQ, of.aR, of.aS, of.aR1, of.aS1, of.aT1, of.aT2, of.stLevel[0],
                                                  of.stLevel[8]});
    }
}

// What is found in a recording and measured in its median beat.
std::string FiguresOf(const char* name, const Recording& recording, const AlignedBeats& beats, const Rhythm& rhythm) {
    Figures figures(name);
    AddSignal(beats, rhythm, figures);
    std::string error;
    if (const auto median = MakeMedianBeat(recording, error)) {
        AddMeasurements(*median, figures);
    }
    return figures.Text() + error;
}

// The figures of a recording as figures.txt holds them: its name and the indented lines below. Where they are meant to change,
// the failing case prints what belongs there.
std::string StoredFiguresOf(const std::string& name) {
    std::ifstream file(KX_SOURCE_DIR "/tests/unit/recording/figures.txt");
    std::string text;
    for (std::string line; std::getline(file, line);) {
        if (text.empty() ? line == name : line.starts_with("  ")) {
            text += line + '\n';
        } else if (!text.empty()) {
            break;
        }
    }
    return text;
}

void ExpectFigures(const char* name, const Recording& recording, const AlignedBeats& beats, const Rhythm& rhythm) {
    EXPECT_EQ(StoredFiguresOf(name), FiguresOf(name, recording, beats, rhythm));
}

TEST(Rhythm, IsToldFromTheRecording) {
    const Times steady = Every(800);
    const Times irregular = After({620, 910, 540, 780, 1050, 660, 870, 590});
    Made early{Moved(steady, -160), steady};
    early.p[5] -= 270, early.beats[5] -= 270;
    constexpr AtrialLead kUnknown = AtrialLead::kUnknown, kEveryBeat = AtrialLead::kEveryBeat, kNone = AtrialLead::kNone;
    const std::tuple<const char*, Made, AtrialLead, std::set<int>> rows[] = {
        {"sinus rhythm", {Moved(steady, -160), steady}, kEveryBeat, {30036}},
        {"long PR", {Moved(steady, -290), steady}, kEveryBeat, {30036}},
        {"an early beat", early, kEveryBeat, {30036, 30017}},
        {"a broad beat", {Moved(Without(steady, 6), -160), Without(steady, 6), {Moved(steady, -250)[5]}}, kEveryBeat, {30036, 30019}},
        {"fibrillation", {{}, irregular, {}, {}, 0, 40}, kUnknown, {30008}},
        {"flutter", {{}, irregular, {}, {}, 225}, kNone, {30011}},
        {"flutter, four to one", {{}, Every(900), {}, {}, 225}, kNone, {30011}},
        {"complete block", {Every(780, 200), Every(1370, 500)}, kNone, {30046}},
        {"two to one", {Every(600, 340), Every(1200, 500)}, kUnknown, {30036, 30045}},
        {"Wenckebach", {Every(850, 250), Wenckebach(Every(850, 250))}, kNone, {30036, 30043}},
        {"Mobitz", {Every(800, 340), Moved(Without(Every(800, 340), 4), 160)}, kEveryBeat, {30036, 30044}},
        {"ventricular pacing", {{}, steady, {}, Moved(steady, -50)}, kUnknown, {30048, 30050}},
        {"atrial pacing", {Moved(steady, -160), steady, {}, Moved(steady, -210)}, kEveryBeat, {30048, 30049}},
        {"pacing in complete block", {Every(710, 200), Every(1000, 500), {}, Every(1000, 450)}, kNone, {30046, 30048, 30050}}};
    for (const auto& [name, made, atria, codes] : rows) {
        const Recording recording = Record(made);
        const AlignedBeats beats = AlignBeats(recording);
        const Rhythm rhythm = FindRhythm(beats);
        EXPECT_EQ(rhythm.atrialLead, atria) << name;
        for (const bool pMeasured : {true, false}) {
            EXPECT_EQ(codes, CodesOf(beats, rhythm, pMeasured)) << name << (pMeasured ? "" : ", its P wave missed in the median beat");
        }
        ExpectFigures(name, recording, beats, rhythm);
    }
}

TEST(Rhythm, AndItsFiguresAreToldFromADisturbedRecording) {
    const std::pair<const char*, SyntheticOptions> rows[] = {
        {"as it is made", {}},
        {"a slow recorder, a wander", {.sampleRate = 250, .wanderMicrovolts = 800}},
        {"a fast recorder, an irregular heart", {.sampleRate = 977, .seconds = 7, .beatsPerMinute = 95, .rrVariationMs = 120}},
        {"hum and noise", {.seconds = 5, .noiseMicrovolts = 25, .mainsMicrovolts = 150}}};
    for (const auto& [name, options] : rows) {
        Recording recording = MakeSyntheticRecording(options);
        recording.gaps = {{recording.SampleCount() / 2, recording.SampleCount() / 2 + 70}};
        const AlignedBeats beats = AlignBeats(recording);
        ExpectFigures(name, recording, beats, FindRhythm(beats));
    }
}

}  // namespace
}  // namespace kx::recording
