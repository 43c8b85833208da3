#include "bench/evaluation/degradations.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "host/recording/beat_finder.h"

namespace kx::evaluation {
namespace {

using recording::Recording;

void AddSine(Recording& recording, double hertz, double microvolts) {
    for (std::size_t lead = 0; lead < recording.leads.size(); ++lead) {
        for (std::size_t i = 0; i < recording.leads[lead].size(); ++i) {
            const double turns =
                hertz * static_cast<double>(i) / recording.sampleRate + 0.13 * static_cast<double>(lead);
            recording.leads[lead][i] +=
                static_cast<float>(microvolts * std::sin(2 * std::numbers::pi * turns));
        }
    }
}

int AddHum(Recording& recording) {
    AddSine(recording, 50.02, 1000);
    return 0;
}

int AddWander(Recording& recording) {
    AddSine(recording, 0.31, 1000);
    return 0;
}

int AddNoise(Recording& recording) {
    std::mt19937 random(20240229);
    std::normal_distribution<float> noise(0, 50);
    for (auto& lead : recording.leads) {
        for (float& value : lead) {
            value += noise(random);
        }
    }
    return 0;
}

void Flatten(Recording& recording, std::initializer_list<std::size_t> leads) {
    for (const std::size_t lead : leads) {
        std::fill(recording.leads[lead].begin(), recording.leads[lead].end(), 0.0f);
    }
}

int FlattenV2(Recording& recording) {
    Flatten(recording, {recording::kLeadV1 + 1});
    return 0;
}

int KeepThreeLeads(Recording& recording) {
    Flatten(recording, {2, 3, 4, 5, 6, 8, 9, 10, 11});
    return 0;
}

// The electrodes of the right and the left arm in each other's place: I upside down, II and III, aVR and aVL
// exchanged.
int SwapArms(Recording& recording) {
    for (float& value : recording.leads[recording::kLeadI]) {
        value = -value;
    }
    std::swap(recording.leads[recording::kLeadII], recording.leads[recording::kLeadIII]);
    std::swap(recording.leads[recording::kLeadAVR], recording.leads[recording::kLeadAVL]);
    return 0;
}

// The electrodes of the left arm and the left leg: III upside down, I and II, aVL and aVF exchanged.
int SwapLeftArmAndLeg(Recording& recording) {
    for (float& value : recording.leads[2]) {
        value = -value;
    }
    std::swap(recording.leads[recording::kLeadI], recording.leads[recording::kLeadII]);
    std::swap(recording.leads[recording::kLeadAVL], recording.leads[recording::kLeadAVF]);
    return 0;
}

// V2 to V4 held at 40 % of their largest deflections.
int Saturate(Recording& recording) {
    for (std::size_t lead = recording::kLeadV1 + 1; lead < recording::kLeadV1 + 4; ++lead) {
        auto& samples = recording.leads[lead];
        const auto [lowest, highest] = std::minmax_element(samples.begin(), samples.end());
        const float low = 0.4f * *lowest, high = 0.4f * *highest;
        for (float& value : samples) {
            value = std::clamp(value, low, high);
        }
    }
    return 0;
}

int Cut(Recording& recording, double fromMs, double toMs) {
    const auto count = static_cast<double>(recording.SampleCount());
    const auto first = std::floor(std::clamp(fromMs * recording.sampleRate / 1000, 0.0, count));
    const auto end = std::floor(std::clamp(toMs * recording.sampleRate / 1000, first, count));
    for (auto& lead : recording.leads) {
        lead = {lead.begin() + static_cast<std::ptrdiff_t>(first),
                lead.begin() + static_cast<std::ptrdiff_t>(end)};
    }
    return static_cast<int>(first * 1000 / recording.sampleRate);
}

int KeepOneBeat(Recording& recording) {
    const std::vector<int> beats = recording::FindBeats(recording);
    const double beat = beats.empty() ? 0 : beats[beats.size() / 2];
    return Cut(recording, beat - 460, beat + 760);
}

int KeepTwoSeconds(Recording& recording) {
    return Cut(recording, 4000, 6000);
}

// A fifth of the recording missing, 300 ms in every 1500.
int MakeGaps(Recording& recording) {
    const auto gap = static_cast<std::size_t>(0.3 * recording.sampleRate);
    const auto every = static_cast<std::size_t>(1.5 * recording.sampleRate);
    recording.gaps.clear();
    for (std::size_t first = every / 2; first + gap + 1 < recording.SampleCount(); first += every) {
        recording.gaps.push_back({first, first + gap});
        for (auto& lead : recording.leads) {
            const float from = lead[first - 1];
            const float step = (lead[first + gap] - from) / static_cast<float>(gap + 1);
            for (std::size_t i = 0; i < gap; ++i) {
                lead[first + i] = from + step * static_cast<float>(i + 1);
            }
        }
    }
    return 0;
}

// Every fifth of 500 samples a second, each the mean of the five around it.
int ThinOut(Recording& recording) {
    for (auto& lead : recording.leads) {
        std::vector<float> thin;
        for (std::size_t i = 0; i + 2 < lead.size(); i += 5) {
            const std::size_t before = std::max<std::size_t>(i, 2);
            thin.push_back((lead[before - 2] + lead[before - 1] + lead[i] + lead[i + 1] + lead[i + 2]) / 5);
        }
        lead = thin;
    }
    recording.sampleRate /= 5;
    return 0;
}

}  // namespace

const std::vector<Degradation> kDegradations = {
    {"as they are", [](Recording&) { return 0; }},
    {"hum of 1 mV at 50 Hz", AddHum},
    {"white noise of 50 uV", AddNoise},
    {"baseline wander of 1 mV", AddWander},
    {"100 samples a second", ThinOut},
    {"V2 flat", FlattenV2},
    {"I, II and V2 alone", KeepThreeLeads},
    {"arm electrodes exchanged", SwapArms},
    {"left arm and leg exchanged", SwapLeftArmAndLeg},
    {"V2 to V4 saturate", Saturate},
    {"two seconds", KeepTwoSeconds},
    {"one beat", KeepOneBeat},
    {"a fifth missing, in gaps", MakeGaps},
};

}  // namespace kx::evaluation
