// Any bytes as a record: a header up to the first zero byte, behind it the contents of every signal file.
// What is read is a whole recording in which beats can be sought; what is not says why in one line. The same
// bytes are also taken as samples, since a changed sample seldom passes its record's checksum.
#include <cstring>
#include <string>

#include "host/recording/wfdb/annotations.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "tests/fuzz/fuzz_recording.h"

namespace {

using kx::recording::Recording;
using kx::recording::Require;
using kx::recording::UseEverything;

// Two bytes a sample, the leads by turns, 500 a second (not resampled).
void SeekBeatsIn(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kFrame = 2 * kx::recording::kLeadCount;
    constexpr std::size_t kMostFrames = 340;
    Recording recording;
    recording.sampleRate = kx::recording::kWorkingRate;
    for (std::size_t i = 0; i < size / kFrame && i < kMostFrames; ++i) {
        for (std::size_t lead = 0; lead < kx::recording::kLeadCount; ++lead) {
            const std::uint8_t* sample = data + i * kFrame + 2 * lead;
            recording.leads[lead].push_back(static_cast<std::int16_t>(sample[0] | sample[1] << 8));
        }
    }
    if (recording.SampleCount() > 0) {
        UseEverything(recording, data, size);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* zero = size == 0 ? nullptr : static_cast<const std::uint8_t*>(std::memchr(data, 0, size));
    const std::size_t headerSize = zero ? static_cast<std::size_t>(zero - data) : size;
    const std::size_t rest = zero ? headerSize + 1 : size;
    const auto files = [&](const std::filesystem::path& file, std::uint64_t largest,
                           std::string& error) -> std::optional<std::vector<std::uint8_t>> {
        const bool header = file.extension() == ".hea";
        std::vector<std::uint8_t> bytes(data + (header ? 0 : rest), data + (header ? headerSize : size));
        if (bytes.size() > largest) {
            error = "too large";
            return std::nullopt;
        }
        return bytes;
    };
    for (const double unitsPerMv : {0.0, 1000.0}) {
        std::string error;
        const auto recording = kx::recording::ReadWfdb("r.hea", {.unitsPerMv = unitsPerMv}, files, error);
        if (recording) {
            UseEverything(*recording, data, size);
        } else {
            Require(!error.empty() && error.find('\n') == std::string::npos);
        }
    }
    SeekBeatsIn(data, size);
    for (const auto& mark : kx::recording::ParseAnnotations({data, size})) {
        Require(mark.code > 0 && mark.code < 50);
    }
    return 0;
}
