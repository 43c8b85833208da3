#include "host/batch/command_line.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "host/file_formats.h"
#include "lib/measurement_table.h"

namespace kxhost {
namespace {

// The words of the command line, sorted; places are those that are neither options nor their values.
struct Words {
    std::vector<std::string_view> places;
    std::map<std::string_view, std::string_view> values;  // of the options, by their names
    const struct Form* form = nullptr;
    bool builtin = false;
    bool json = false;

    const std::string_view* Value(std::string_view option) const {
        const auto found = values.find(option);
        return found == values.end() ? nullptr : &found->second;
    }
};

// A batch form, named by its option. What stands behind the recording is one word, its place.
struct Form {
    std::string_view option;
    bool takesValue;
    const char* place;  // null: none
    bool placeMayMiss;
    Command (*make)(const RecordRequest& record, const Words& words, std::optional<std::string_view> place);
};

// An option of one or two forms, or of all.
struct Setting {
    std::string_view option;
    std::string_view forms[2];  // none: every one, the window too
};

// The form that takes more than one recording.
constexpr std::string_view kManyRecords = "--measure";

constexpr Setting kSettings[] = {
    {"--units-per-mv", {}}, {"--size", {"--shot", {}}}, {"--paper", {"--print", "--print-to"}}};

std::optional<unsigned> LeadOf(std::string_view name) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        const std::string_view known = kx::StandardLeadName(lead);
        if (std::equal(name.begin(), name.end(), known.begin(), known.end(),
                       [&](char a, char b) { return lower(a) == lower(b); }))
            return lead;
    }
    return std::nullopt;
}

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

// "1,2,48-59": numbers and ranges of numbers.
bool ParseCodes(std::string_view text, std::vector<int>& codes) {
    for (std::size_t next = 0; next <= text.size();) {
        const std::size_t end = std::min(text.find(',', next), text.size());
        const std::string_view item = text.substr(next, end - next);
        const std::size_t dash = std::min(item.find('-'), item.size());
        const auto first = ParseNumber(item.substr(0, dash), 0, kLargestFieldCode);
        const auto last =
            dash == item.size() ? first : ParseNumber(item.substr(dash + 1), 0, kLargestFieldCode);
        if (!first || !last || *last < *first)
            return false;
        for (int code = *first; code <= *last; ++code)
            codes.push_back(code);
        next = end + 1;
    }
    return true;
}

using Place = std::optional<std::string_view>;

// As many recordings as there are places.
Command MakeMeasure(const RecordRequest& record, const Words& words, Place) {
    Measure command{{record}, words.json};
    for (std::size_t i = words.builtin ? 0 : 1; i < words.places.size(); ++i)
        command.records.push_back({std::string(words.places[i]), record.unitsPerMv});
    return command;
}

Command MakeExportAecg(const RecordRequest& record, const Words&, Place file) {
    return ExportSignal{record, std::string(*file), SignalFormat::kAecg};
}

Command MakeExportCsv(const RecordRequest& record, const Words&, Place file) {
    return ExportSignal{record, std::string(*file), SignalFormat::kCsv};
}

Command MakeInterpret(const RecordRequest& record, const Words&, Place) {
    return InterpretRecord{record};
}

Command MakeShot(const RecordRequest& record, const Words& words, Place pane) {
    Shot shot;
    shot.record = record;
    shot.file = *words.Value("--shot");
    if (!HasExtension(shot.file, ".png"))
        return Wrong("not a .png file", shot.file);
    if (!ParsePane(*pane, shot.pane))
        return Wrong("unknown pane", *pane);
    const std::string_view* size = words.Value("--size");
    if (size != nullptr && !ParseSize(*size, shot))
        return Wrong("not a size between 64x64 and 4096x4096", *size);
    return shot;
}

Command MakeListFields(const RecordRequest& record, const Words&, Place codes) {
    ListFields command{record, {}};
    if (codes && !ParseCodes(*codes, command.codes))
        return Wrong("not a list of field codes like 1,2,48-59", *codes);
    return command;
}

Command MakeExpand(const RecordRequest& record, const Words& words, Place) {
    return Expand{record, std::string(*words.Value("--expand"))};
}

Command MakeExportTable(const RecordRequest& record, const Words& words, Place) {
    const std::string_view file = *words.Value("--table");
    const auto format = TableFormatOf(file);
    if (!format)
        return Wrong("neither a .csv nor a .html file", file);
    return ExportTable{record, std::string(file), *format};
}

// The lead by its name, in any case, and the paper.
std::optional<UsageError> ParsePrintSettings(const Words& words, std::string_view leadName,
                                             PrintSettings& settings) {
    const auto lead = LeadOf(leadName);
    if (!lead)
        return Wrong("unknown lead", leadName);
    settings.lead = *lead;
    if (const std::string_view* name = words.Value("--paper")) {
        const auto paper = PaperOf(*name);
        if (!paper)
            return Wrong("neither A4 nor Letter", *name);
        settings.paper = *paper;
    }
    return std::nullopt;
}

Command MakePrintToFile(const RecordRequest& record, const Words& words, Place lead) {
    PrintToFile command{record, {}, std::string(*words.Value("--print")), {}};
    const auto format = PageFormatOf(command.file);
    if (!format)
        return Wrong("neither a .pcl nor a .bmp nor a .png file", command.file);
    command.format = *format;
    if (const auto error = ParsePrintSettings(words, *lead, command.settings))
        return *error;
    return command;
}

Command MakePrintToPrinter(const RecordRequest& record, const Words& words, Place lead) {
    PrintToPrinter command{record, {}, std::string(*words.Value("--print-to"))};
    if (const auto error = ParsePrintSettings(words, *lead, command.settings))
        return *error;
    return command;
}

constexpr Form kForms[] = {
    {"--measure", false, nullptr, false, MakeMeasure},
    {"--interpret", false, nullptr, false, MakeInterpret},
    {"--export-aecg", false, "file", false, MakeExportAecg},
    {"--export-csv", false, "file", false, MakeExportCsv},
    {"--shot", true, "pane", false, MakeShot},
    {"--fields", false, "field codes", true, MakeListFields},
    {"--expand", true, nullptr, false, MakeExpand},
    {"--table", true, nullptr, false, MakeExportTable},
    {"--print", true, "lead", false, MakePrintToFile},
    {"--print-to", true, "lead", false, MakePrintToPrinter},
};

std::optional<UsageError> TakeForm(const Form& form, Words& words) {
    if (words.form != nullptr && words.form != &form)
        return UsageError{std::string(words.form->option) + " and " + std::string(form.option) +
                          " exclude each other"};
    words.form = &form;
    return std::nullopt;
}

// Sorts the words; what is wrong with them, or that help was asked for, is the result.
std::optional<Command> SortWords(const std::vector<std::string>& arguments, Words& words) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view word = arguments[i];
        if (!optionsEnded && (word == "--help" || word == "-h" || word == "/?"))
            return ShowHelp{};
        if (optionsEnded || !word.starts_with("-")) {
            words.places.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        if (word == "--version")
            return ShowVersion{};
        if (word == "--builtin" || word == "--json") {
            (word == "--json" ? words.json : words.builtin) = true;
            continue;
        }
        const auto named = [&](const auto& row) { return row.option == word; };
        const Form* form = std::find_if(std::begin(kForms), std::end(kForms), named);
        const bool isForm = form != std::end(kForms);
        if (!isForm && std::none_of(std::begin(kSettings), std::end(kSettings), named))
            return Wrong("unknown option", word);
        if (isForm) {
            if (const auto error = TakeForm(*form, words))
                return *error;
        }
        if (isForm && !form->takesValue)
            continue;
        if (i + 1 == arguments.size())
            return Wrong("a value is missing behind", word);
        words.values[word] = arguments[++i];
    }
    return std::nullopt;
}

std::optional<UsageError> CheckSettings(const Words& words) {
    const std::string_view form = words.form == nullptr ? std::string_view("-") : words.form->option;
    for (const Setting& setting : kSettings) {
        const auto& [first, second] = setting.forms;
        if (words.Value(setting.option) != nullptr && !first.empty() && form != first && form != second)
            return UsageError{std::string(setting.option) + " belongs to " + std::string(first)};
    }
    if (words.json && form != kManyRecords)
        return UsageError{"--json belongs to " + std::string(kManyRecords)};
    return std::nullopt;
}

Command ToCommand(const Words& words) {
    RecordRequest record;
    if (const std::string_view* text = words.Value("--units-per-mv")) {
        const auto units = ParseNumber(*text, 1, kMostUnitsPerMv);
        if (!units)
            return Wrong("not a whole number of units per mV", *text);
        record.unitsPerMv = *units;
    }
    if (const auto error = CheckSettings(words))
        return *error;

    // The recording stands first and may be left out only for the built-in one, which a batch form must ask
    // for.
    std::size_t next = 0;
    if (!words.builtin && next < words.places.size())
        record.path = words.places[next++];
    if (words.form != nullptr && !words.builtin && record.path.empty())
        return UsageError{"no recording given (a path, or --builtin)"};
    Place place;
    if (words.form != nullptr && words.form->place != nullptr) {
        if (next < words.places.size())
            place = words.places[next++];
        else if (!words.form->placeMayMiss)
            return UsageError{std::string("no ") + words.form->place + " given"};
    }
    const bool many = words.form != nullptr && words.form->option == kManyRecords;
    if (next != words.places.size() && !many)
        return Wrong("one word too many", words.places[next]);
    return words.form == nullptr ? OpenWorkstation{record, words.builtin}
                                 : words.form->make(record, words, place);
}

}  // namespace

Command ParseCommandLine(const std::vector<std::string>& arguments) {
    Words words;
    if (const auto decided = SortWords(arguments, words))
        return *decided;
    return ToCommand(words);
}

std::string_view UsageText() {
    return R"(usage:
  kxhost [RECORD | --builtin] [--units-per-mv N]
      opens the workstation window on its worklist, on a recording, or on the built-in synthetic one
  kxhost --measure RECORD... [--json] [--units-per-mv N]
      prints the beats and the measurements of the median beat
  kxhost --export-aecg RECORD FILE [--units-per-mv N]
      writes the recording with its measurements as HL7 annotated ECG
  kxhost --export-csv RECORD FILE [--units-per-mv N]
      writes the samples of the recording, in microvolts
  kxhost --interpret RECORD [--units-per-mv N]
      prints the statements of the automatic interpretation
  kxhost --fields RECORD [CODES] [--units-per-mv N]
      prints the texts of the report fields
  kxhost --expand TEMPLATE RECORD [--units-per-mv N]
      prints a text with the patient in the place of {%1}, {%2}, {%5}, {%11} and {%14}
  kxhost --table FILE.csv|FILE.html RECORD [--units-per-mv N]
      writes the table of the wave amplitudes
  kxhost --print FILE.pcl|FILE.bmp|FILE.png RECORD LEAD [--paper A4|Letter] [--units-per-mv N]
      writes the page of one lead, as a printer is sent it or as a picture
  kxhost --print-to PRINTER RECORD LEAD [--paper A4|Letter] [--units-per-mv N]
      prints it
  kxhost --shot FILE.png RECORD PANE [--units-per-mv N] [--size WxH]
      writes a picture of one pane, or of the whole window
  kxhost --version
  kxhost --help

RECORD  a file of SCP-ECG, of a DICOM waveform or of HL7 aECG, told by what it holds, or the header (.hea) of a WFDB
        recording, with or without its extension; in its place --builtin takes the built-in synthetic recording
PANE    worklist, tracing, general, qrs, p, t, hypertrophy, interpretation, table, report, or window for the whole workstation window
LEAD    I, II, III, aVR, aVL, aVF, V1 to V6
PRINTER the name of a local printer that understands PCL 5
CODES   field codes of the report templates, as 1,2,48-59; all by default
N       sample units in one millivolt, in place of what a WFDB header says (a whole number)
WxH     size of the picture in pixels, 64x64 to 4096x4096; by default the pane's or the window's own size
--      what follows is no option

--measure prints one "name<TAB>value" a line: "beat" once for each beat found (ms from the start of the recording),
"rPeak" (the alignment point, ms from the start of the median beat), the intervals and durations (ms), the axes
(degrees) and the fiducial points (ms) by their names, then "LEAD.name" for each lead: amplitudes and ST levels in
microvolts, markers in ms; 0 is an absent marker. Numbers are decimal integers. Of several recordings each begins with
"record<TAB>NAME"; one that cannot be read is told on standard error, the others are printed, and the exit code is 1.
--json prints the same as one array of objects.

--export-csv writes a line for each sample, cells separated by semicolons and decimals by a comma: the time in ms, then
the twelve leads in microvolts.

--interpret prints one "code<TAB>text" a line in UTF-8, the overall classification last.

--fields prints one "code<TAB>text" a line in UTF-8; CR, LF, tab and backslash in a text are written \r, \n, \t, \\.

--table replaces the file as a whole or leaves it as it was. A .csv file has cells separated by semicolons, in microvolts.

--print and --print-to draw the page for A4 unless --paper says otherwise, 300 dots an inch, one bit a dot, and print
the size of these bits: "rawBytes<TAB>N" as they are, "packedBytes<TAB>N" as the printer is sent them.

The batch forms show no message and wait for nobody. Exit code: 0 done; 1 it could not be done, one line on standard
error says why; 2 the command line was not understood. The program is a Windows program without a console of its own:
it writes to the redirected handles, else to the console that it was started from.
)";
}

}  // namespace kxhost
