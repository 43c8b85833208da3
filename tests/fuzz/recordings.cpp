// Bytes as the files of recordings: a whole recording, in which beats can be sought, or one line that says why not.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <string>

#include "host/recording/aecg/aecg_reader.h"
#include "host/recording/dicom/dicom_reader.h"
#include "host/recording/median_beat.h"
#include "host/recording/read_failure.h"
#include "host/recording/scp/scp_reader.h"
#include "host/recording/wfdb/annotations.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "tests/fuzz/targets.h"

namespace kx::fuzz {
namespace {

using recording::Recording;

void RequireOneLine(const std::string& text) { Require(!text.empty() && text.find_first_of("\r\n") == std::string::npos); }

// It is whole; for one input in eight beats are sought in it, which takes a hundred times as long as a reading.
void UseEverything(const Recording& recording, Bytes input) {
    Require(recording.SampleCount() > 0 && recording.sampleRate > 0);
    for (const auto& lead : recording.leads) {
        Require(lead.size() == recording.SampleCount() && std::ranges::all_of(lead, [](float value) { return std::isfinite(value); }));
    }
    std::size_t end = 0;
    for (const auto& gap : recording.gaps) {
        Require(gap.first < gap.end && gap.first >= end && gap.end <= recording.SampleCount());
        end = gap.end;
    }
    // Seconds of signal only: the search takes time in proportion.
    if (std::accumulate(input.begin(), input.end(), 0u) % 8 == 0 && recording.DurationMs() < 3000 && recording.sampleRate < 5000) {
        std::string error;
        const auto beat = MakeMedianBeat(recording, error);
        Require(beat.has_value() != !error.empty());
    }
}

template <class Read>
void UseFile(Read read, Bytes input) {
    try {
        UseEverything(read({input.data(), input.size()}), input);
    } catch (const recording::ReadFailure& failure) {
        RequireOneLine(failure.text);
    }
}

// Two bytes a sample, the leads by turns, 500 a second (not resampled).
void SeekBeatsIn(Bytes input) {
    constexpr std::size_t kFrame = 2 * recording::kLeadCount, kMostFrames = 340;
    Recording recording;
    recording.sampleRate = recording::kWorkingRate;
    for (std::size_t at = 0; at + kFrame <= std::min(input.size(), kMostFrames * kFrame); at += 2) {
        recording.leads[at % kFrame / 2].push_back(static_cast<std::int16_t>(input[at] | input[at + 1] << 8));
    }
    for (auto& lead : recording.leads) {
        lead.resize(recording.leads.back().size());
    }
    if (recording.SampleCount() > 0) {
        UseEverything(recording, input);
    }
}

}  // namespace

void Aecg(Bytes input) { UseFile(recording::ReadAecg, input); }
void Dicom(Bytes input) { UseFile(recording::ReadDicom, input); }
void Scp(Bytes input) { UseFile(recording::ReadScp, input); }

// A header up to the first zero byte, behind it the contents of every signal file. The same bytes are also taken as samples, since
// a changed sample seldom passes its record's checksum.
void Wfdb(Bytes input) {
    const std::size_t headerSize = std::min(TextOf(input).find('\0'), input.size());
    const Bytes header = input.first(headerSize), samples = input.subspan(std::min(headerSize + 1, input.size()));
    using Content = std::optional<std::vector<std::uint8_t>>;
    const auto files = [&](const std::filesystem::path& file, std::uint64_t largest, std::string& error) -> Content {
        const Bytes bytes = file.extension() == ".hea" ? header : samples;
        error = bytes.size() > largest ? "too large" : "";
        return bytes.size() > largest ? Content() : Content({bytes.begin(), bytes.end()});
    };
    for (const double unitsPerMv : {0.0, 1000.0}) {
        std::string error;
        if (const auto read = recording::ReadWfdb("r.hea", {.unitsPerMv = unitsPerMv}, files, error)) {
            UseEverything(*read, input);
        } else {
            RequireOneLine(error);
        }
    }
    SeekBeatsIn(input);
    const auto marks = recording::ParseAnnotations({input.data(), input.size()});
    Require(std::ranges::all_of(marks, [](const auto& mark) { return mark.code > 0 && mark.code < 50; }));
}

}  // namespace kx::fuzz
