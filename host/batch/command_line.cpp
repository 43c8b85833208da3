#include "host/batch/command_line.h"

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <map>

#include "host/batch/argument_values.h"
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

// How many recordings a form takes.
enum Records { kNone, kOne, kMany };

// A batch form, named by its option. What stands behind the recording is one word, its place.
struct Form {
    std::string_view option;
    bool takesValue;
    Records records;
    const char* place;  // null: none
    bool placeMayMiss;
    Command (*make)(const RecordRequest& record, const Words& words, std::optional<std::string_view> place);
};

// An option and the forms that it belongs to; "-" is the window.
struct Setting {
    std::string_view option;
    std::initializer_list<std::string_view> forms;
};

constexpr std::string_view kWindow = "-";
constexpr std::string_view kWholeTracing = "tracing";  // in the place of a lead
constexpr std::string_view kJsonForm = "--measure";

const Setting kSettings[] = {
    {"--units-per-mv",
     {"--measure", "--interpret", "--export-aecg", "--export-csv", "--shot", "--fields", "--expand",
      "--table", "--print", "--print-to", "--print-by-driver", "--import", kWindow}},
    {"--size", {"--shot"}},
    {"--paper", {"--print", "--print-to"}},
    {"--archive", {"--import", "--list", "--export", "--shot", kWindow}}};

UsageError Wrong(std::string_view what, std::string_view word) {
    return {std::string(what) + ": " + std::string(word)};
}

using Place = std::optional<std::string_view>;

// The file that --archive names; empty: none.
std::string ArchiveOf(const Words& words) {
    const std::string_view* file = words.Value("--archive");
    return file == nullptr ? std::string() : std::string(*file);
}

// As many recordings as there are places.
std::vector<RecordRequest> AllRecords(const RecordRequest& record, const Words& words) {
    std::vector<RecordRequest> records{record};
    for (std::size_t i = words.builtin ? 0 : 1; i < words.places.size(); ++i) {
        records.push_back({std::string(words.places[i]), record.unitsPerMv});
    }
    return records;
}

Command MakeMeasure(const RecordRequest& record, const Words& words, Place) {
    return Measure{AllRecords(record, words), words.json};
}

Command MakeImport(const RecordRequest& record, const Words& words, Place) {
    return ImportRecords{AllRecords(record, words), ArchiveOf(words)};
}

Command MakeList(const RecordRequest&, const Words& words, Place filter) {
    return ListTests{std::string(filter.value_or("")), ArchiveOf(words)};
}

Command MakeExport(const RecordRequest&, const Words& words, Place file) {
    const std::string_view number = *words.Value("--export");
    const auto id = ParseNumber(number, 1, std::numeric_limits<int>::max());
    if (!id) {
        return Wrong("not the number of a test", number);
    }
    const auto format = ExportFormatOf(*file);
    if (!format) {
        return Wrong("none of .xml, .csv, .html, .pdf, .png", *file);
    }
    return ExportTest{static_cast<unsigned>(*id), std::string(*file), *format, ArchiveOf(words)};
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
    shot.archive = ArchiveOf(words);
    if (!HasExtension(shot.file, ".png")) {
        return Wrong("not a .png file", shot.file);
    }
    if (!ParsePane(*pane, shot.pane)) {
        return Wrong("unknown pane", *pane);
    }
    const std::string_view* size = words.Value("--size");
    if (size != nullptr && !ParseSize(*size, shot)) {
        return Wrong("not a size between 64x64 and 4096x4096", *size);
    }
    return shot;
}

Command MakeListFields(const RecordRequest& record, const Words&, Place codes) {
    ListFields command{record, {}};
    if (codes && !ParseCodes(*codes, command.codes)) {
        return Wrong("not a list of field codes like 1,2,48-59", *codes);
    }
    return command;
}

Command MakeExpand(const RecordRequest& record, const Words& words, Place) {
    return Expand{record, std::string(*words.Value("--expand"))};
}

Command MakeExportTable(const RecordRequest& record, const Words& words, Place) {
    const std::string_view file = *words.Value("--table");
    const auto format = TableFormatOf(file);
    if (!format) {
        return Wrong("neither a .csv nor a .html file", file);
    }
    return ExportTable{record, std::string(file), *format};
}

// The lead by its name, in any case, and the paper.
std::optional<UsageError> ParsePrintSettings(const Words& words, std::string_view leadName,
                                             PrintSettings& settings) {
    settings.lead = LeadOf(leadName);
    if (!settings.lead && leadName != kWholeTracing) {
        return Wrong("unknown lead", leadName);
    }
    if (const std::string_view* name = words.Value("--paper")) {
        const auto paper = PaperOf(*name);
        if (!paper) {
            return Wrong("neither A4 nor Letter", *name);
        }
        if (!settings.lead && *paper != Paper::kA4) {
            return UsageError{"the tracing is printed on A4"};
        }
        settings.paper = *paper;
    }
    return std::nullopt;
}

Command MakePrintToFile(const RecordRequest& record, const Words& words, Place lead) {
    PrintToFile command{record, {}, std::string(*words.Value("--print")), {}};
    const auto format = PageFormatOf(command.file);
    if (!format) {
        return Wrong("neither a .pcl nor a .bmp nor a .png nor a .pdf file", command.file);
    }
    command.format = *format;
    if (const auto error = ParsePrintSettings(words, *lead, command.settings)) {
        return *error;
    }
    if (command.format == PageFormat::kPdf && command.settings.lead) {
        return Wrong("a .pdf file holds the whole tracing, not one lead", *lead);
    }
    return command;
}

Command MakePrintByDriver(const RecordRequest& record, const Words& words, Place) {
    return PrintToPrinter{record, {}, std::string(*words.Value("--print-by-driver")), true};
}

Command MakePrintToPrinter(const RecordRequest& record, const Words& words, Place lead) {
    PrintToPrinter command{record, {}, std::string(*words.Value("--print-to")), false};
    if (const auto error = ParsePrintSettings(words, *lead, command.settings)) {
        return *error;
    }
    return command;
}

constexpr Form kForms[] = {
    {"--measure", false, kMany, nullptr, false, MakeMeasure},
    {"--interpret", false, kOne, nullptr, false, MakeInterpret},
    {"--export-aecg", false, kOne, "file", false, MakeExportAecg},
    {"--export-csv", false, kOne, "file", false, MakeExportCsv},
    {"--shot", true, kOne, "pane", false, MakeShot},
    {"--fields", false, kOne, "field codes", true, MakeListFields},
    {"--expand", true, kOne, nullptr, false, MakeExpand},
    {"--table", true, kOne, nullptr, false, MakeExportTable},
    {"--print", true, kOne, "lead", false, MakePrintToFile},
    {"--print-to", true, kOne, "lead", false, MakePrintToPrinter},
    {"--print-by-driver", true, kOne, nullptr, false, MakePrintByDriver},
    {"--import", false, kMany, nullptr, false, MakeImport},
    {"--list", false, kNone, "filter", true, MakeList},
    {"--export", true, kNone, "file", false, MakeExport},
};

std::optional<UsageError> TakeForm(const Form& form, Words& words) {
    if (words.form != nullptr && words.form != &form) {
        return UsageError{std::string(words.form->option) + " and " + std::string(form.option) +
                          " exclude each other"};
    }
    words.form = &form;
    return std::nullopt;
}

// Sorts the words; what is wrong with them, or that help was asked for, is the result.
std::optional<Command> SortWords(const std::vector<std::string>& arguments, Words& words) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view word = arguments[i];
        if (!optionsEnded && (word == "--help" || word == "-h" || word == "/?")) {
            return ShowHelp{};
        }
        if (optionsEnded || !word.starts_with("-")) {
            words.places.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        if (word == "--version") {
            return ShowVersion{};
        }
        if (word == "--builtin" || word == "--json") {
            (word == "--json" ? words.json : words.builtin) = true;
            continue;
        }
        const auto named = [&](const auto& row) { return row.option == word; };
        const Form* form = std::find_if(std::begin(kForms), std::end(kForms), named);
        const bool isForm = form != std::end(kForms);
        if (!isForm && std::none_of(std::begin(kSettings), std::end(kSettings), named)) {
            return Wrong("unknown option", word);
        }
        if (isForm) {
            if (const auto error = TakeForm(*form, words)) {
                return *error;
            }
        }
        if (isForm && !form->takesValue) {
            continue;
        }
        if (i + 1 == arguments.size()) {
            return Wrong("a value is missing behind", word);
        }
        words.values[word] = arguments[++i];
    }
    return std::nullopt;
}

std::optional<UsageError> CheckSettings(const Words& words) {
    const std::string_view form = words.form == nullptr ? kWindow : words.form->option;
    for (const Setting& setting : kSettings) {
        if (words.Value(setting.option) != nullptr &&
            std::ranges::find(setting.forms, form) == setting.forms.end()) {
            return UsageError{std::string(setting.option) + " belongs to " +
                              std::string(*setting.forms.begin())};
        }
    }
    if (words.json && form != kJsonForm) {
        return UsageError{"--json belongs to " + std::string(kJsonForm)};
    }
    if (words.builtin && words.form != nullptr && words.form->records == kNone) {
        return UsageError{"--builtin does not belong to " + std::string(form)};
    }
    return std::nullopt;
}

Command ToCommand(const Words& words) {
    RecordRequest record;
    if (const std::string_view* text = words.Value("--units-per-mv")) {
        const auto units = ParseNumber(*text, 1, kMostUnitsPerMv);
        if (!units) {
            return Wrong("not a whole number of units per mV", *text);
        }
        record.unitsPerMv = *units;
    }
    if (const auto error = CheckSettings(words)) {
        return *error;
    }

    // The recording stands first and may be left out only for the built-in one, which a batch form must ask
    // for.
    const Records records = words.form == nullptr ? kOne : words.form->records;
    std::size_t next = 0;
    if (records != kNone && !words.builtin && next < words.places.size()) {
        record.path = words.places[next++];
    }
    if (words.form == nullptr && next == words.places.size()) {
        return OpenWorkstation{record, words.builtin, ArchiveOf(words)};
    }
    if (words.form != nullptr && records != kNone && !words.builtin && record.path.empty()) {
        return UsageError{"no recording given (a path, or --builtin)"};
    }
    Place place;
    if (words.form != nullptr && words.form->place != nullptr) {
        if (next < words.places.size()) {
            place = words.places[next++];
        } else if (!words.form->placeMayMiss) {
            return UsageError{std::string("no ") + words.form->place + " given"};
        }
    }
    if (next != words.places.size() && records != kMany) {
        return Wrong("one word too many", words.places[next]);
    }
    return words.form->make(record, words, place);
}

}  // namespace

Command ParseCommandLine(const std::vector<std::string>& arguments) {
    Words words;
    if (const auto decided = SortWords(arguments, words)) {
        return *decided;
    }
    return ToCommand(words);
}

}  // namespace kxhost
