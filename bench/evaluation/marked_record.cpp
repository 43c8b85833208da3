#include "bench/evaluation/marked_record.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "host/recording/wfdb/wfdb_reader.h"

namespace kx::evaluation {
namespace {

namespace fs = std::filesystem;

constexpr double kUnitsPerMv = 1000;

// Extensions of the annotation files, in the order of the lead codes.
constexpr std::array<const char*, recording::kLeadCount> kExtensions = {
    ".i", ".ii", ".iii", ".avr", ".avl", ".avf", ".v1", ".v2", ".v3", ".v4", ".v5", ".v6"};

}  // namespace

std::vector<int> RecordNumbers(const fs::path& folder) {
    std::vector<int> numbers;
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, failure)) {
        const std::string name = entry.path().stem().string();
        int number = 0;
        const auto [end, bad] = std::from_chars(name.data(), name.data() + name.size(), number);
        if (entry.path().extension() == ".hea" && bad == std::errc{} && end == name.data() + name.size()) {
            numbers.push_back(number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::optional<MarkedRecord> ReadMarkedRecord(const fs::path& folder, int number, Scale scale,
                                             std::string& error) {
    const fs::path header = folder / (std::to_string(number) + ".hea");
    recording::ReadOptions options;
    options.unitsPerMv = scale == Scale::kTrue ? kUnitsPerMv : 0;
    auto read = recording::ReadWfdb(header, options, error);
    if (!read) {
        return std::nullopt;
    }
    MarkedRecord record{number, std::move(*read), {}};
    for (const char* extension : kExtensions) {
        auto beats = ReadMarkedBeats(fs::path(header).replace_extension(extension),
                                     record.recording.sampleRate, error);
        if (!beats) {
            return std::nullopt;
        }
        record.marks.push_back(std::move(*beats));
    }
    return record;
}

}  // namespace kx::evaluation
