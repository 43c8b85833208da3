#include "host/recording/wfdb/wfdb_reader.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/recording/file_bytes.h"
#include "host/recording/read_failure.h"
#include "host/recording/signal_groups.h"
#include "host/recording/text_scanner.h"
#include "host/recording/voltage_units.h"
#include "host/recording/wfdb/wfdb_header.h"
#include "host/recording/wfdb/wfdb_samples.h"

namespace kx::recording {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestHeader = 1u << 20;
constexpr std::uint64_t kLargestSignalFile = 256u << 20;
constexpr double kDefaultGain = 200;      // units per mV, the format's convention for a gain of 0
constexpr double kSmallestGain = 1e-3;    // a unit of a thousand physical ones is no recording of the heart
constexpr double kLargestBaseline = 1e9;  // keeps the subtraction within what a float can tell
constexpr int kDaysPerYear = 365;         // as the test record counts them

[[noreturn]] void Fail(const fs::path& file, const std::string& reason) {
    Refuse(PathText(file) + ": " + reason);
}

// Signals that share a file: their samples alternate in it.
struct SignalFile {
    std::size_t first = 0;  // index of its first signal
    std::size_t count = 0;
};

std::vector<SignalFile> GroupByFile(const WfdbHeader& header, const fs::path& headerFile) {
    std::vector<SignalFile> groups;
    for (std::size_t i = 0; i < header.signals.size(); ++i) {
        const std::string& name = header.signals[i].file;
        if (!groups.empty() && header.signals[groups.back().first].file == name) {
            ++groups.back().count;
            continue;
        }
        for (const SignalFile& group : groups) {
            if (header.signals[group.first].file == name) {
                Fail(headerFile, "the signals of " + name + " do not stand together");
            }
        }
        groups.push_back({i, 1});
    }
    return groups;
}

// Throws for the signals of one file that this reader does not decode.
void CheckLayout(const WfdbHeader& header, const SignalFile& group, const fs::path& headerFile) {
    const WfdbSignal& first = header.signals[group.first];
    if (!IsSampleFormat(first.format)) {
        Fail(headerFile, "signal format " + std::to_string(first.format) + " is not read");
    }
    for (std::size_t i = group.first; i < group.first + group.count; ++i) {
        const WfdbSignal& signal = header.signals[i];
        if (signal.format != first.format) {
            Fail(headerFile, "the signals of " + first.file + " have different formats");
        }
        // The format's rule: a file's offset may stand with its first signal only.
        if (signal.byteOffset != first.byteOffset && signal.byteOffset != 0) {
            Fail(headerFile, "the signals of " + first.file + " have different byte offsets");
        }
        if (signal.samplesPerFrame != 1) {
            Fail(headerFile, "signals of several samples per frame are not read");
        }
        if (signal.skew != 0) {
            Fail(headerFile, "skewed signals are not read");
        }
    }
}

// All samples of a file, frame after frame.
std::vector<std::int32_t> ReadSamples(const FileBytes& files, const fs::path& file, const WfdbSignal& layout,
                                      std::size_t signals, std::uint64_t statedCount) {
    std::string error;
    const auto bytes = files(file, kLargestSignalFile, error);
    if (!bytes) {
        Refuse(error);
    }
    if (layout.byteOffset > bytes->size()) {
        Fail(file, "is shorter than the byte offset of its samples");
    }
    const std::span<const std::uint8_t> data =
        std::span(*bytes).subspan(static_cast<std::size_t>(layout.byteOffset));
    const std::uint64_t held = SamplesIn(layout.format, data.size());
    const std::uint64_t frames = statedCount != 0 ? statedCount : held / signals;
    // The header's reader keeps the number of signals small and ReadWfdb that of samples: the product fits.
    if (frames > kMostSamples) {
        Fail(file, "is longer than " + std::to_string(kMostSamples) + " samples a lead");
    }
    if (frames == 0) {
        Fail(file, "holds no samples");
    }
    if (frames * signals > held) {
        Fail(file, "holds " + std::to_string(held / signals) + " of the " + std::to_string(frames) +
                       " samples per signal that the header says");
    }
    const auto wanted = static_cast<std::size_t>(frames * signals);
    return DecodeSamples(layout.format, data, wanted);
}

// From differences to values.
void AddUp(std::vector<std::int32_t>& samples, std::int32_t initial) {
    constexpr std::int32_t kFarthest = 1 << 24;
    std::int32_t value = std::clamp(initial, -kFarthest, kFarthest);  // and a million steps of a byte
    for (std::int32_t& sample : samples) {
        sample = value += sample;
    }
}

// Compares the samples with what the header says of them.
void CheckSamples(const WfdbSignal& signal, std::span<const std::int32_t> samples, const fs::path& file) {
    // Zero in both fields is what some write in the place of either.
    if (signal.initialValue == 0 && signal.checksum == 0) {
        return;
    }
    if (signal.format != kDifferencesFormat && signal.initialValue &&
        *signal.initialValue != samples.front()) {
        Fail(file, "the first sample of " + signal.description + " is " + std::to_string(samples.front()) +
                       ", the header says " + std::to_string(*signal.initialValue));
    }
    if (!signal.checksum) {
        return;
    }
    std::uint16_t sum = 0;
    for (const std::int32_t sample : samples) {
        sum = static_cast<std::uint16_t>(sum + static_cast<std::uint32_t>(sample));
    }
    if (sum != static_cast<std::uint16_t>(*signal.checksum)) {
        Fail(file, "the checksum of " + signal.description + " is not the header's: the samples are damaged");
    }
}

class Reader {
  public:
    Reader(fs::path headerFile, const ReadOptions& options, const FileBytes& files)
        : headerFile_(std::move(headerFile)), options_(options), files_(files) {}

    Recording Read() {
        std::string error;
        const auto text = files_(headerFile_, kLargestHeader, error);
        if (!text) {
            Refuse(error);
        }
        const auto header =
            ParseWfdbHeader({reinterpret_cast<const char*>(text->data()), text->size()}, error);
        if (!header) {
            Fail(headerFile_, error);
        }
        if (header->sampleCount > kMostSamples) {
            Fail(headerFile_,
                 "the recording is longer than " + std::to_string(kMostSamples) + " samples a lead");
        }
        Describe(*header);
        SignalGroup signals;
        signals.sampleRate = header->sampleRate;
        for (const SignalFile& group : GroupByFile(*header, headerFile_)) {
            ReadFile(*header, group, signals.channels);
        }
        try {
            TakeSignals({std::move(signals)}, recording_);
        } catch (const ReadFailure& failure) {
            Fail(headerFile_, failure.text);
        }
        return std::move(recording_);
    }

  private:
    void Describe(const WfdbHeader& header) {
        recording_.name = header.name;
        recording_.source = "WFDB record";
        // The format names no patient and no device: its records are known by their name.
        recording_.patient.id = header.name;
        recording_.patient.ageDays = header.ageYears < 0 ? -1 : header.ageYears * kDaysPerYear;
        recording_.patient.sex = header.sex;
        recording_.device = {recording_.source, header.name,
                             std::to_string(std::lround(header.sampleRate)) + " Hz"};
        recording_.diagnoses = header.diagnoses;
        recording_.acquisitionTime = header.baseTime;
    }

    // The wanted leads of one signal file; a file without any is not opened.
    void ReadFile(const WfdbHeader& header, const SignalFile& group, std::vector<Channel>& channels) {
        std::vector<std::pair<std::size_t, NamedLead>> wanted;
        for (std::size_t i = 0; i < group.count; ++i) {
            if (const auto lead = LeadOfName(header.signals[group.first + i].description)) {
                wanted.emplace_back(i, *lead);
            }
        }
        if (wanted.empty()) {
            return;
        }
        CheckLayout(header, group, headerFile_);
        const WfdbSignal& layout = header.signals[group.first];
        const fs::path file =
            headerFile_.parent_path() / fs::path(std::u8string(layout.file.begin(), layout.file.end()));
        const std::vector<std::int32_t> all =
            ReadSamples(files_, file, layout, group.count, header.sampleCount);
        std::vector<std::int32_t> samples(all.size() / group.count);
        for (const auto& [place, lead] : wanted) {
            for (std::size_t i = 0; i < samples.size(); ++i) {
                samples[i] = all[i * group.count + place];
            }
            const WfdbSignal& signal = header.signals[group.first + place];
            if (signal.format == kDifferencesFormat) {
                AddUp(samples, signal.initialValue.value_or(0));
            }
            CheckSamples(signal, samples, file);
            channels.push_back(MakeChannel(lead, signal, samples));
        }
    }

    Channel MakeChannel(NamedLead lead, const WfdbSignal& signal, std::span<const std::int32_t> samples) {
        const double scale = Microvolts(signal);
        Channel channel{lead, std::abs(scale), {}, {}};
        channel.microvolts.reserve(samples.size());
        for (const std::int32_t sample : samples) {
            channel.microvolts.push_back(static_cast<float>((sample - signal.baseline) * scale));
        }
        channel.gaps = GapsOf(signal.format, samples);
        return channel;
    }

    // Microvolts per unit.
    double Microvolts(const WfdbSignal& signal) {
        if (options_.unitsPerMv > 0) {
            return 1000 / options_.unitsPerMv;
        }
        if (signal.gain == 0) {
            recording_.remarks.push_back("lead " + signal.description +
                                         ": no gain is stated, 200 units per mV are assumed");
            return 1000 / kDefaultGain;
        }
        const auto perUnit = MicrovoltsOfUnit(signal.units);
        if (!perUnit) {
            Fail(headerFile_,
                 "lead " + signal.description + " is in '" + signal.units + "', which is no voltage");
        }
        if (std::abs(signal.gain) < kSmallestGain || std::abs(signal.baseline) > kLargestBaseline) {
            Fail(headerFile_, "the gain or baseline of lead " + signal.description + " is out of range");
        }
        return *perUnit / signal.gain;
    }

    fs::path headerFile_;
    ReadOptions options_;
    const FileBytes& files_;
    Recording recording_;
};

}  // namespace

bool HasHeaderExtension(const fs::path& path) {
    return Lower(PathText(path.extension())) == ".hea";
}

std::optional<Recording> ReadWfdb(const fs::path& path, const ReadOptions& options, std::string& error) {
    return ReadWfdb(path, options, ReadFileBytes, error);
}

std::optional<Recording> ReadWfdb(const fs::path& path, const ReadOptions& options, const FileBytes& files,
                                  std::string& error) {
    fs::path headerFile = path;
    if (!HasHeaderExtension(path)) {
        headerFile += ".hea";
    }
    return ReadWfdbHeader(headerFile, options, files, error);
}

std::optional<Recording> ReadWfdbHeader(const fs::path& headerFile, const ReadOptions& options,
                                        const FileBytes& files, std::string& error) {
    try {
        return Reader(headerFile, options, files).Read();
    } catch (const ReadFailure& failure) {
        error = failure.text;
    } catch (const std::bad_alloc&) {
        error = PathText(headerFile) + ": there is not enough memory for it";
    } catch (const std::exception& failure) {
        error = PathText(headerFile) + ": " + failure.what();
    }
    return std::nullopt;
}

}  // namespace kx::recording
