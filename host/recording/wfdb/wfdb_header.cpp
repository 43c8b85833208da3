#include "host/recording/wfdb/wfdb_header.h"

#include <array>
#include <cmath>
#include <utility>

#include "host/recording/text_scanner.h"
#include "host/recording/wfdb/header_comments.h"

namespace kx::recording {

namespace {

constexpr std::uint64_t kMostSignals = 1024;
constexpr double kHighestRate = 1'000'000;

// A line cannot be understood; the text says why.
struct LineError {
    std::string reason;
};

[[noreturn]] void Refuse(const std::string& reason) {
    throw LineError{reason};
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 40;
    std::string quoted = "'";
    for (const char c : text.substr(0, kShown)) {
        quoted += static_cast<unsigned char>(c) < ' ' ? '?' : c;
    }
    return quoted + (text.size() > kShown ? "...'" : "'");
}

// from_chars reads "inf" and "nan", which are no rates, gains or baselines.
std::optional<double> TakeFinite(std::string_view& text) {
    std::string_view rest = text;
    const std::optional<double> value = TakeNumber<double>(rest);
    if (!value || !std::isfinite(*value)) {
        return std::nullopt;
    }
    text = rest;
    return value;
}

bool IsRecordName(std::string_view name) {
    for (const char c : name) {
        const bool allowed = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                             c == '_' || c == '-' || c == '.';
        if (!allowed) {
            return false;
        }
    }
    return !name.empty();
}

// "500", "500/100(0)": the rate, then a counter's frequency and base, which serve no ECG.
double SampleRate(std::string_view field) {
    std::string_view rest = field;
    const std::optional<double> rate = TakeFinite(rest);
    if (!rate || (!rest.empty() && rest.front() != '/' && rest.front() != '(')) {
        Refuse("the sampling rate " + Quoted(field) + " is no number");
    }
    if (*rate <= 0 || *rate > kHighestRate) {
        Refuse("the sampling rate " + Quoted(field) + " is out of range");
    }
    return *rate;
}

// "10:30:15", "10:30:15.250", "30:15" and "15"; WFDB counts the missing parts as zero.
void TakeTimeOfDay(std::string_view field, KxDateTime& time) {
    std::array<int, 3> parts{};
    std::string_view rest = field;
    std::size_t count = 0;
    int hundredths = 0;
    bool valid = true;
    do {
        const std::optional<int> part = TakeNumber<int>(rest);
        valid = valid && part && *part >= 0 && count < parts.size();
        if (!valid) {
            break;
        }
        parts[count++] = *part;
    } while (Take(rest, ':'));
    if (valid && Take(rest, '.')) {
        for (int weight = 10; !rest.empty() && rest.front() >= '0' && rest.front() <= '9'; weight /= 10) {
            hundredths += (rest.front() - '0') * weight;
            rest.remove_prefix(1);
        }
    }
    const std::size_t missing = parts.size() - count;
    std::array<int, 3> clock{};
    for (std::size_t i = 0; i < count; ++i) {
        clock[i + missing] = parts[i];
    }
    if (!valid || !rest.empty() || clock[0] > 23 || clock[1] > 59 || clock[2] > 59) {
        Refuse("the time " + Quoted(field) + " is none");
    }
    time.hour = static_cast<std::uint8_t>(clock[0]);
    time.minute = static_cast<std::uint8_t>(clock[1]);
    time.second = static_cast<std::uint8_t>(clock[2]);
    time.hundredths = static_cast<std::uint8_t>(hundredths);
}

struct RecordLine {
    WfdbHeader header;
    std::uint64_t signals = 0;
};

RecordLine ParseRecordLine(std::string_view line) {
    RecordLine record;
    const std::vector<std::string_view> fields = Fields(line);
    const std::string_view name = fields[0];
    if (name.find('/') != std::string_view::npos) {
        Refuse("records of several segments are not read");
    }
    if (!IsRecordName(name)) {
        Refuse(Quoted(name) + " is no record name");
    }
    record.header.name = name;
    if (fields.size() < 2) {
        Refuse("the number of signals is missing");
    }
    const auto signals = WholeNumber<std::uint64_t>(fields[1]);
    if (!signals) {
        Refuse("the number of signals " + Quoted(fields[1]) + " is no number");
    }
    if (*signals == 0 || *signals > kMostSignals) {
        Refuse("the number of signals " + Quoted(fields[1]) + " is out of range");
    }
    record.signals = *signals;
    if (fields.size() > 2) {
        record.header.sampleRate = SampleRate(fields[2]);
    }
    if (fields.size() > 3) {
        const auto samples = WholeNumber<std::uint64_t>(fields[3]);
        if (!samples) {
            Refuse("the number of samples " + Quoted(fields[3]) + " is no number");
        }
        record.header.sampleCount = *samples;
    }
    KxDateTime time{};
    if (fields.size() > 4) {
        TakeTimeOfDay(fields[4], time);
    }
    if (fields.size() > 5) {
        if (!TakeDayMonthYear(fields[5], time)) {
            Refuse("the date " + Quoted(fields[5]) + " is none");
        }
        record.header.baseTime = time;
    }
    return record;
}

bool IsBareFileName(std::string_view name) {
    return !name.empty() && name.find_first_of("/\\:*?\"<>|") == std::string_view::npos && name != "." &&
           name != "..";
}

// "16", "212x2:3+24": format, samples per frame, skew and byte offset.
void TakeFormat(std::string_view field, WfdbSignal& signal) {
    std::string_view rest = field;
    const auto read = [&](auto& target, auto least) {
        const auto value = TakeNumber<std::remove_reference_t<decltype(target)>>(rest);
        if (!value || *value < least) {
            Refuse("the format " + Quoted(field) + " is not understood");
        }
        target = *value;
    };
    read(signal.format, 0);
    if (Take(rest, 'x')) {
        read(signal.samplesPerFrame, 1);
    }
    if (Take(rest, ':')) {
        read(signal.skew, 0);
    }
    if (Take(rest, '+')) {
        read(signal.byteOffset, std::uint64_t{0});
    }
    if (!rest.empty()) {
        Refuse("the format " + Quoted(field) + " is not understood");
    }
}

// "2000", "1000/mV", "1716(6)/mV". Tells whether a baseline is written.
bool TakeGain(std::string_view field, WfdbSignal& signal) {
    std::string_view rest = field;
    const auto refuse = [&] { Refuse("the gain " + Quoted(field) + " is not understood"); };
    const std::optional<double> gain = TakeFinite(rest);
    if (!gain) {
        refuse();
    }
    signal.gain = *gain;
    const bool hasBaseline = Take(rest, '(');
    if (hasBaseline) {
        const std::optional<double> baseline = TakeFinite(rest);
        if (!baseline || !Take(rest, ')')) {
            refuse();
        }
        signal.baseline = *baseline;
    }
    if (Take(rest, '/')) {
        if (rest.empty()) {
            refuse();
        }
        signal.units = rest;
    } else if (!rest.empty()) {
        refuse();
    }
    return hasBaseline;
}

std::int32_t Integer(std::string_view field, const char* what) {
    const auto value = WholeNumber<std::int32_t>(field);
    if (!value) {
        Refuse(std::string("the ") + what + " " + Quoted(field) + " is no number");
    }
    return *value;
}

// file format gain resolution zero initial checksum block description, from the second on each optional.
WfdbSignal ParseSignalLine(std::string_view line) {
    enum { kFile, kFormat, kGain, kResolution, kZero, kInitial, kChecksum, kBlock, kDescription };
    const std::vector<std::string_view> fields = Fields(line);
    WfdbSignal signal;
    if (!IsBareFileName(fields[kFile])) {
        Refuse("the signal file " + Quoted(fields[kFile]) + " is not a name in the header's folder");
    }
    signal.file = fields[kFile];
    signal.units = "mV";
    if (fields.size() <= kFormat) {
        Refuse("the signal's format is missing");
    }
    TakeFormat(fields[kFormat], signal);
    const bool hasBaseline = fields.size() > kGain && TakeGain(fields[kGain], signal);
    const auto number = [&fields](std::size_t field, const char* what) {
        return field < fields.size() ? std::optional(Integer(fields[field], what)) : std::nullopt;
    };
    number(kResolution, "resolution");
    const auto zero = number(kZero, "zero of the converter");
    if (zero && !hasBaseline) {
        signal.baseline = *zero;
    }
    signal.initialValue = number(kInitial, "first sample");
    signal.checksum = number(kChecksum, "checksum");
    number(kBlock, "block size");
    if (fields.size() > kDescription) {
        // The rest of the line, blanks within it included.
        const auto start = static_cast<std::size_t>(fields[kDescription].data() - line.data());
        signal.description = Trim(line.substr(start));
    }
    return signal;
}

// The lines of a text that may end in LF or CR LF.
std::optional<std::string_view> TakeLine(std::string_view& text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

WfdbHeader Parse(std::string_view text, int& lineNumber) {
    std::optional<RecordLine> record;
    CommentReader comments;
    while (const auto taken = TakeLine(text)) {
        ++lineNumber;
        const std::string_view line = Trim(*taken);
        if (line.empty() || line.front() == '#') {
            comments.Take(line.empty() ? line : Trim(line.substr(1)));
        } else if (!record) {
            record = ParseRecordLine(line);
        } else if (record->header.signals.size() < record->signals) {
            record->header.signals.push_back(ParseSignalLine(line));
        } else {
            Refuse("more signal lines than the record line says");
        }
    }
    lineNumber = 0;
    if (!record) {
        Refuse("there is no record line");
    }
    WfdbHeader& header = record->header;
    if (header.signals.size() < record->signals) {
        Refuse("the header has " + std::to_string(header.signals.size()) + " of the " +
               std::to_string(record->signals) + " signal lines that its record line says");
    }
    header.ageYears = comments.AgeYears();
    header.sex = comments.PatientSex();
    header.diagnoses = comments.Diagnoses();
    if (header.baseTime.year == 0) {
        header.baseTime = comments.RecordingDate();
    }
    return std::move(header);
}

}  // namespace

std::optional<WfdbHeader> ParseWfdbHeader(std::string_view text, std::string& error) {
    int lineNumber = 0;
    try {
        return Parse(text, lineNumber);
    } catch (const LineError& failure) {
        error =
            lineNumber > 0 ? "line " + std::to_string(lineNumber) + ": " + failure.reason : failure.reason;
        return std::nullopt;
    }
}

}  // namespace kx::recording
