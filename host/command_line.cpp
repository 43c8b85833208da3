#include "host/command_line.h"

#include <algorithm>
#include <charconv>

namespace kxhost {
namespace {

// The words of the command line sorted into options and places.
struct Words {
    std::vector<std::string> places;
    bool measure = false;
    bool builtin = false;
    std::optional<std::string> shotFile;
    std::optional<std::string> size;
    std::optional<std::string> unitsPerMv;
};

std::optional<int> ParseNumber(std::string_view text, int least, int most) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < least || value > most)
        return std::nullopt;
    return value;
}

UsageError Wrong(std::string_view what, std::string_view word) {
    return {std::string(what) + ": " + std::string(word)};
}

// Takes the words apart; a text in the result's second half means that they make no sense.
std::variant<Words, ShowHelp, UsageError> SortWords(const std::vector<std::string>& arguments) {
    Words words;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (optionsEnded || !word.starts_with("-")) {
            words.places.push_back(word);
            continue;
        }
        std::optional<std::string>* value = nullptr;
        if (word == "--") {
            optionsEnded = true;
        } else if (word == "--help" || word == "-h") {
            return ShowHelp{};
        } else if (word == "--measure") {
            words.measure = true;
        } else if (word == "--builtin") {
            words.builtin = true;
        } else if (word == "--shot") {
            value = &words.shotFile;
        } else if (word == "--size") {
            value = &words.size;
        } else if (word == "--units-per-mv") {
            value = &words.unitsPerMv;
        } else {
            return Wrong("unknown option", word);
        }
        if (value != nullptr) {
            if (i + 1 == arguments.size())
                return Wrong("a value is missing behind", word);
            *value = arguments[++i];
        }
    }
    return words;
}

// "WxH", both between the smallest and the largest picture.
bool ParseSize(std::string_view text, Shot& shot) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos)
        return false;
    const auto width = ParseNumber(text.substr(0, cross), kSmallestShot, kLargestShot);
    const auto height = ParseNumber(text.substr(cross + 1), kSmallestShot, kLargestShot);
    if (!width || !height)
        return false;
    shot.width = *width;
    shot.height = *height;
    return true;
}

bool ParsePane(std::string_view name, std::optional<PaneKind>& pane) {
    if (name == "window") {
        pane.reset();
        return true;
    }
    const auto row =
        std::find_if(kPanes.begin(), kPanes.end(), [&](const PaneRow& r) { return r.name == name; });
    if (row == kPanes.end())
        return false;
    pane = row->kind;
    return true;
}

Command ToShot(const Words& words, const RecordRequest& record, std::string_view paneName) {
    Shot shot;
    shot.record = record;
    shot.file = *words.shotFile;
    if (!ParsePane(paneName, shot.pane))
        return Wrong("unknown pane", paneName);
    if (words.size && !ParseSize(*words.size, shot))
        return Wrong("not a size between 64x64 and 4096x4096", *words.size);
    return shot;
}

Command ToCommand(const Words& words) {
    RecordRequest record;
    if (words.unitsPerMv) {
        const auto units = ParseNumber(*words.unitsPerMv, 1, kMostUnitsPerMv);
        if (!units)
            return Wrong("not a whole number of units per mV", *words.unitsPerMv);
        record.unitsPerMv = *units;
    }
    if (words.measure && words.shotFile)
        return UsageError{"--measure and --shot exclude each other"};
    if (words.size && !words.shotFile)
        return UsageError{"--size belongs to --shot"};

    // The recording stands first and may be left out only for the built-in one, which a batch form must ask
    // for.
    const bool batch = words.measure || words.shotFile;
    std::size_t next = 0;
    if (!words.builtin && next < words.places.size())
        record.path = words.places[next++];
    if (batch && !words.builtin && record.path.empty())
        return UsageError{"no recording given (a path, or --builtin)"};
    std::string_view paneName;
    if (words.shotFile) {
        if (next == words.places.size())
            return UsageError{"no pane given"};
        paneName = words.places[next++];
    }
    if (next != words.places.size())
        return Wrong("one word too many", words.places[next]);
    if (words.shotFile)
        return ToShot(words, record, paneName);
    if (words.measure)
        return Measure{record};
    return OpenWorkstation{record};
}

}  // namespace

Command ParseCommandLine(const std::vector<std::string>& arguments) {
    const auto sorted = SortWords(arguments);
    if (const auto* words = std::get_if<Words>(&sorted))
        return ToCommand(*words);
    if (const auto* error = std::get_if<UsageError>(&sorted))
        return *error;
    return ShowHelp{};
}

std::string_view UsageText() {
    return R"(usage:
  kxhost [RECORD] [--units-per-mv N]
      opens the workstation window on a recording, or on the built-in synthetic one
  kxhost --measure RECORD [--units-per-mv N]
      prints the beats and the measurements of the median beat
  kxhost --shot FILE.png RECORD PANE [--units-per-mv N] [--size WxH]
      writes a picture of one pane, or of the whole window
  kxhost --help

RECORD  the header (.hea) of a WFDB recording, with or without its extension; in its place --builtin takes the
        built-in synthetic recording
PANE    general, qrs, p, t, hypertrophy, interpretation, table, or window for the whole workstation window
N       sample units in one millivolt, in place of what the header says (a whole number)
WxH     size of the picture in pixels, 64x64 to 4096x4096; by default the pane's or the window's own size
--      what follows is no option

--measure prints one "name<TAB>value" a line: "beat" once for each beat found (ms from the start of the recording),
"rPeak" (the alignment point, ms from the start of the median beat), the intervals and durations (ms), the axes
(degrees) and the fiducial points (ms) by their names, then "LEAD.name" for each lead: amplitudes and ST levels in
microvolts, markers in ms; 0 is an absent marker. Numbers are decimal integers.

The batch forms (--measure, --shot) show no message and wait for nobody. Exit code: 0 done; 1 it could not be done,
one line on standard error says why; 2 the command line was not understood. The program is a Windows program without
a console of its own: it writes to the redirected handles, else to the console that it was started from.
)";
}

}  // namespace kxhost
