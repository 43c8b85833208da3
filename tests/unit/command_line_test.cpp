#include "host/batch/command_line.h"

namespace kxhost {
namespace {

using Words = std::vector<std::string>;

// One line that says what was understood, so that a row is compared at once.
std::string Describe(const Command& command) {
    struct Describer {
        static std::string Of(const RecordRequest& r) {
            return (r.path.empty() ? "<builtin>" : r.path) + (r.unitsPerMv ? " @" + std::to_string(r.unitsPerMv) : "");
        }
        std::string operator()(const OpenWorkstation& c) const {
            return "open " + Of(c.record) + (c.archive.empty() ? "" : " in " + c.archive);
        }
        std::string operator()(const Measure& c) const {
            std::string text = c.json ? "measure as JSON" : "measure";
            for (const RecordRequest& record : c.records) {
                text += ' ' + Of(record);
            }
            return text;
        }
        std::string operator()(const ExportSignal& c) const {
            return std::string(c.format == SignalFormat::kAecg ? "aecg " : "csv ") + c.file + " of " + Of(c.record);
        }
        std::string operator()(const ShowVersion&) const { return "version"; }
        std::string operator()(const InterpretRecord& c) const { return "interpret " + Of(c.record); }
        std::string operator()(const Shot& c) const {
            return "shot " + c.file + " of " + Of(c.record) + " " + (c.pane ? std::string(RowOf(*c.pane).name) : "window") + " " +
                   std::to_string(c.width) + "x" + std::to_string(c.height);
        }
        std::string operator()(const ListFields& c) const {
            std::string text = "fields of " + Of(c.record);
            for (const int code : c.codes) {
                text += ' ' + std::to_string(code);
            }
            return text;
        }
        std::string operator()(const Expand& c) const { return "expand " + c.text + " for " + Of(c.record); }
        std::string operator()(const ExportTable& c) const {
            return std::string("table ") + (c.format == TableFormat::kCsv ? "csv " : "html ") + c.file + " of " + Of(c.record);
        }
        std::string operator()(const PrintToFile& c) const {
            return "print " + c.file + " as " + std::to_string(static_cast<int>(c.format)) + " of " + Of(c.record) + Of(c.settings);
        }
        std::string operator()(const PrintToPrinter& c) const {
            return std::string(c.byDriver ? "print by the driver on " : "print on ") + c.printer + " of " + Of(c.record) + Of(c.settings);
        }
        static std::string Of(const PrintSettings& s) {
            return (s.lead ? " lead " + std::to_string(*s.lead) : " tracing") + " " + NameOf(s.paper);
        }
        std::string operator()(const ImportRecords& c) const {
            std::string text = "import into " + c.archive;
            for (const RecordRequest& record : c.records) {
                text += ' ' + Of(record);
            }
            return text;
        }
        std::string operator()(const ListTests& c) const { return "list " + c.filter + " of " + c.archive; }
        std::string operator()(const ExportTest& c) const {
            return "export " + std::to_string(c.id) + " as " + std::to_string(static_cast<int>(c.format)) + " " + c.file + " of " +
                   c.archive;
        }
        std::string operator()(const ShowHelp&) const { return "help"; }
        std::string operator()(const UsageError& c) const { return "error: " + c.text; }
    };
    return std::visit(Describer{}, command);
}

TEST(CommandLine, UnderstandsEveryForm) {
    const struct {
        Words words;
        const char* expected;
    } rows[] = {
        {{}, "open <builtin>"},
        {{"a.hea"}, "open a.hea"},
        {{"--builtin"}, "open <builtin>"},
        {{"a", "--units-per-mv", "1000"}, "open a @1000"},
        {{"--help"}, "help"},
        {{"a", "-h", "--nonsense"}, "help"},
        {{"--archive", "x.kxdb"}, "open <builtin> in x.kxdb"},
        {{"a", "--archive", "x.kxdb"}, "open a in x.kxdb"},
        {{"--import", "a", "b", "--archive", "x"}, "import into x a b"},
        {{"--import", "--builtin", "b", "--units-per-mv", "9"}, "import into  <builtin> @9 b @9"},
        {{"--list"}, "list  of "},
        {{"--archive", "x", "--list", "rossi riletto"}, "list rossi riletto of x"},
        {{"--export", "7", "x.XML"}, "export 7 as 0 x.XML of "},
        {{"--export", "7", "x.csv", "--archive", "y"}, "export 7 as 1 x.csv of y"},
        {{"--export", "7", "x.html"}, "export 7 as 2 x.html of "},
        {{"--measure", "a.hea"}, "measure a.hea"},
        {{"a.hea", "--measure"}, "measure a.hea"},
        {{"--measure", "--builtin"}, "measure <builtin>"},
        {{"--measure", "a", "b", "--json", "--units-per-mv", "5"}, "measure as JSON a @5 b @5"},
        {{"--export-aecg", "a", "x.xml"}, "aecg x.xml of a"},
        {{"--export-csv", "--builtin", "x.csv"}, "csv x.csv of <builtin>"},
        {{"--version"}, "version"},
        {{"/?"}, "help"},
        {{"--measure", "a", "--units-per-mv", "2000"}, "measure a @2000"},
        {{"--measure", "--", "-odd name"}, "measure -odd name"},
        {{"--interpret", "a", "--units-per-mv", "1000"}, "interpret a @1000"},
        {{"--shot", "f.png", "a", "qrs"}, "shot f.png of a qrs 0x0"},
        {{"--shot", "f.png", "--builtin", "window"}, "shot f.png of <builtin> window 0x0"},
        {{"--shot", "f.png", "a", "table", "--size", "800x600"}, "shot f.png of a table 800x600"},
        {{"--shot", "f.png", "a", "report"}, "shot f.png of a report 0x0"},
        {{"--fields", "a"}, "fields of a"},
        {{"--fields", "--builtin", "1"}, "fields of <builtin> 1"},
        {{"--fields", "a", "3,1,48-50,0"}, "fields of a 3 1 48 49 50 0"},
        {{"--fields", "a", "9999-9999", "--units-per-mv", "200"}, "fields of a @200 9999"},
        {{"--expand", "{%1} è", "a"}, "expand {%1} è for a"},
        {{"--expand", "--measure", "a"}, "expand --measure for a"},
        {{"--expand", "", "--builtin"}, "expand  for <builtin>"},
        {{"--table", "x.csv", "a"}, "table csv x.csv of a"},
        {{"--table", "x y.HTML", "--builtin"}, "table html x y.HTML of <builtin>"},
        {{"--print", "x.pcl", "a", "V5"}, "print x.pcl as 0 of a lead 10 A4"},
        {{"--print", "x.BMP", "--builtin", "avr", "--paper", "letter"}, "print x.BMP as 1 of <builtin> lead 3 Letter"},
        {{"--paper", "A4", "--print-to", "Laser 1", "a", "I"}, "print on Laser 1 of a lead 0 A4"},
        {{"--size", "64x4096", "--shot", "f.png", "a", "p"}, "shot f.png of a p 64x4096"},
        {{"--print", "x.pdf", "a", "tracing"}, "print x.pdf as 3 of a tracing A4"},
        {{"--print-to", "p", "a", "tracing"}, "print on p of a tracing A4"},
        {{"--print-by-driver", "p", "a"}, "print by the driver on p of a tracing A4"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Describe(ParseCommandLine(row.words)), row.expected) << testing::PrintToString(row.words);
    }
}

TEST(CommandLine, SaysWhatItDoesNotUnderstand) {
    const struct {
        Words words;
        const char* expected;
    } rows[] = {
        {{"--nonsense"}, "unknown option: --nonsense"},
        {{"a", "b"}, "one word too many: b"},
        {{"--import"}, "no recording given (a path, or --builtin)"},
        {{"--list", "a", "b"}, "one word too many: b"},
        {{"--list", "--builtin"}, "--builtin does not belong to --list"},
        {{"--list", "--units-per-mv", "5"}, "--units-per-mv belongs to --measure"},
        {{"--export", "7"}, "no file given"},
        {{"--export", "0", "x.xml"}, "not the number of a test: 0"},
        {{"--export", "7", "x.doc"}, "none of .xml, .csv, .html, .pdf, .png: x.doc"},
        {{"--measure", "a", "--archive", "x"}, "--archive belongs to --import"},
        {{"--builtin", "a"}, "one word too many: a"},
        {{"--measure"}, "no recording given (a path, or --builtin)"},
        {{"--interpret", "a", "b"}, "one word too many: b"},
        {{"--export-aecg", "a"}, "no file given"},
        {{"--fields", "a", "--json"}, "--json belongs to --measure"},
        {{"--shot", "x.jpg", "a", "qrs"}, "not a .png file: x.jpg"},
        {{"--measure", "a", "--units-per-mv"}, "a value is missing behind: --units-per-mv"},
        {{"--measure", "a", "--units-per-mv", "0"}, "not a whole number of units per mV: 0"},
        {{"--measure", "a", "--units-per-mv", "-5"}, "not a whole number of units per mV: -5"},
        {{"--measure", "a", "--units-per-mv", "1e3"}, "not a whole number of units per mV: 1e3"},
        {{"--measure", "a", "--units-per-mv", "99999999999"}, "not a whole number of units per mV: 99999999999"},
        {{"--measure", "a", "--size", "64x64"}, "--size belongs to --shot"},
        {{"--measure", "--shot", "f", "a", "p"}, "--measure and --shot exclude each other"},
        {{"--fields", "a", "--expand", "x"}, "--fields and --expand exclude each other"},
        {{"--fields"}, "no recording given (a path, or --builtin)"},
        {{"--fields", "a", ""}, "not a list of field codes like 1,2,48-59: "},
        {{"--fields", "a", "1,"}, "not a list of field codes like 1,2,48-59: 1,"},
        {{"--fields", "a", "-"}, "unknown option: -"},
        {{"--fields", "a", "3-1"}, "not a list of field codes like 1,2,48-59: 3-1"},
        {{"--fields", "a", "1-2-3"}, "not a list of field codes like 1,2,48-59: 1-2-3"},
        {{"--fields", "a", "10000"}, "not a list of field codes like 1,2,48-59: 10000"},
        {{"--fields", "a", "1", "2"}, "one word too many: 2"},
        {{"--expand"}, "a value is missing behind: --expand"},
        {{"--expand", "x"}, "no recording given (a path, or --builtin)"},
        {{"--table", "x.csv"}, "no recording given (a path, or --builtin)"},
        {{"--table", "x.txt", "a"}, "neither a .csv nor a .html file: x.txt"},
        {{"--table", "x.csv", "a", "b"}, "one word too many: b"},
        {{"--print", "x.pcl", "a"}, "no lead given"},
        {{"--print", "x.pcl", "V5"}, "no lead given"},
        {{"--print", "x.gif", "a", "V5"}, "neither a .pcl nor a .bmp nor a .png nor a .pdf file: x.gif"},
        {{"--print", "x.pdf", "a", "V5"}, "a .pdf file holds the whole tracing, not one lead: V5"},
        {{"--print", "x.pcl", "a", "tracing", "--paper", "letter"}, "the tracing is printed on A4"},
        {{"--print", "x.pcl", "a", "V7"}, "unknown lead: V7"},
        {{"--print", "x.pcl", "a", "V5", "--paper", "A3"}, "neither A4 nor Letter: A3"},
        {{"--print-to", "p", "a", ""}, "unknown lead: "},
        {{"--measure", "a", "--paper", "A4"}, "--paper belongs to --print"},
        {{"--print", "x.pcl", "--print-to", "p", "a", "I"}, "--print and --print-to exclude each other"},
        {{"a", "--size", "64x64"}, "--size belongs to --shot"},
        {{"--shot"}, "a value is missing behind: --shot"},
        {{"--shot", "f.png"}, "no recording given (a path, or --builtin)"},
        {{"--shot", "f.png", "a"}, "no pane given"},
        {{"--shot", "f.png", "--builtin"}, "no pane given"},
        {{"--shot", "f.png", "a", "u"}, "unknown pane: u"},
        {{"--shot", "f.png", "a", "p", "--size", "63x64"}, "not a size between 64x64 and 4096x4096: 63x64"},
        {{"--shot", "f.png", "a", "p", "--size", "64x4097"}, "not a size between 64x64 and 4096x4096: 64x4097"},
        {{"--shot", "f.png", "a", "p", "--size", "800"}, "not a size between 64x64 and 4096x4096: 800"},
        {{"--shot", "f.png", "a", "p", "--size", "800x600x3"}, "not a size between 64x64 and 4096x4096: 800x600x3"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Describe(ParseCommandLine(row.words)), std::string("error: ") + row.expected) << testing::PrintToString(row.words);
    }
}

TEST(CommandLine, HelpNamesEveryOptionAndPane) {
    const std::string usage(UsageText());
    for (const char* option : {"--measure", "--shot",        "--fields",     "--expand",       "--table",  "--print", "--print-to",
                               "--paper",   "--builtin",     "--size",       "--units-per-mv", "--help",   "window",  "--json",
                               "--version", "--export-aecg", "--export-csv", "--archive",      "--import", "--list",  "--export "}) {
        EXPECT_NE(usage.find(option), std::string::npos) << option;
    }
    for (const PaneRow& row : kPanes) {
        EXPECT_NE(usage.find(row.name), std::string::npos) << row.name;
    }
}

}  // namespace
}  // namespace kxhost
