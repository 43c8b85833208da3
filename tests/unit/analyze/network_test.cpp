// The networks give what the program that trained them gives, and the same figures on every system.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/delineator.h"
#include "suite/kxanalyze/network_input.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

// A beat of three leads with what tools/delineator/tables.py wrote beside it.
struct TrainedBeat {
    std::vector<std::vector<std::int16_t>> leads;
    std::vector<std::size_t> codes;
    int rr = 0, centre = 0;
    std::vector<double> points;  // of all leads, of each lead, the odds of a P wave
};

std::vector<TrainedBeat> ReadBeats() {
    std::ifstream file(KX_SOURCE_DIR "/tests/unit/analyze/network_beats.txt");
    std::vector<TrainedBeat> beats;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string kind;
        int number = 0;
        words >> kind;
        if (kind == "beat") {
            words >> number >> beats.emplace_back().rr >> beats.back().centre;
        } else if (kind == "lead") {
            words >> beats.back().codes.emplace_back();
            beats.back().leads.emplace_back(std::istream_iterator<std::int16_t>(words), std::istream_iterator<std::int16_t>());
        } else {
            beats.back().points.assign(std::istream_iterator<double>(words), std::istream_iterator<double>());
        }
    }
    return beats;
}

Episode EpisodeOf(const TrainedBeat& beat) {
    Episode episode(beat.leads, 500, 1000);
    for (std::size_t slot = 0; slot < beat.codes.size(); ++slot) {
        episode->leadTable[slot].leadCode = static_cast<std::uint32_t>(beat.codes[slot]);
    }
    episode.Set().rrInterval = static_cast<std::uint16_t>(beat.rr);
    return episode;
}

TEST(Network, GivesWhatItsTrainingGives) {
    const auto beats = ReadBeats();
    ASSERT_EQ(beats.size(), 10u);
    for (std::size_t n = 0; n < beats.size(); ++n) {
        Episode episode = EpisodeOf(beats[n]);
        Beat beat;
        ASSERT_EQ(ReadBeat(episode.Get(), beat), nullptr) << n;
        beat.centre = beats[n].centre;
        NetworkOutput output;
        output.Clear(beats[n].codes.size());
        for (const NetworkWeights* weights : kTrainedNetworks) {
            Network network(*weights);
            Rows input;
            network.Begin();
            for (const std::size_t code : beats[n].codes) {
                FillInput(beat, beat.leads[code], {}, input);
                network.AddLead(input, code);
            }
            network.Conclude(output);
        }
        NetworkPoints seen;
        seen.Take(output, kNetworks);
        std::vector<double> points(seen.global.begin(), seen.global.end());
        for (std::size_t lead = 0; lead < beats[n].codes.size(); ++lead) {
            points.insert(points.end(), seen.leads[lead].begin(), seen.leads[lead].end());
        }
        points.push_back(seen.pWave);
        ASSERT_EQ(points.size(), beats[n].points.size()) << n;
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_NEAR(points[i], beats[n].points[i], 0.02) << "beat " << n << " point " << i;
        }
    }
}

// Measured sets of real beats and of made ones, all bytes of them, are those of any other system.
TEST(Network, MeasuresTheSameOnEverySystem) {
    std::uint32_t hash = 2166136261u;  // FNV-1a
    const auto add = [&](Episode& episode) {
        MeasureEpisode(episode.Get());
        const auto* bytes = reinterpret_cast<const unsigned char*>(&episode.Set());
        for (std::size_t i = 0; i < sizeof(KxMeasurementSet); ++i) {
            hash = (hash ^ bytes[i]) * 16777619u;
        }
    };
    for (const TrainedBeat& beat : ReadBeats()) {
        Episode episode = EpisodeOf(beat);
        add(episode);
    }
    for (const std::uint32_t rate : {100u, 250u, 977u, 1000u}) {
        Episode episode(SyntheticBeat{.rate = rate});
        add(episode);
    }
    EXPECT_EQ(hash, 3979078742u);
}

}  // namespace
}  // namespace kx::analysis
