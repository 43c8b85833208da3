// What the user asked for on the command line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/file_formats.h"
#include "host/panes/pane_kinds.h"
#include "host/printing/print_page_layout.h"
#include "host/report/table_export.h"

namespace kxhost {

// Which recording: a path (UTF-8; empty for the built-in one) and, for headers whose gain is not to be
// believed, the number of sample units in a millivolt (0: as the header says).
struct RecordRequest {
    std::string path;
    int unitsPerMv = 0;

    bool operator==(const RecordRequest&) const = default;
};

struct OpenWorkstation {
    RecordRequest record;
    bool builtin = false;  // with neither a path nor this the workstation opens on its worklist
    std::string archive;   // UTF-8, here and below; empty: the user's
};

struct Measure {
    std::vector<RecordRequest> records;  // one or more
    bool json = false;
};

struct ExportSignal {
    RecordRequest record;
    std::string file;  // UTF-8
    SignalFormat format = SignalFormat::kAecg;
};

struct InterpretRecord {
    RecordRequest record;
};

struct Shot {
    RecordRequest record;
    std::string file;              // UTF-8
    std::optional<PaneKind> pane;  // none: the whole workstation window
    int width = 0;                 // pixels; 0: as large as the pane or window is by itself
    int height = 0;
    std::string archive;
};

struct ListFields {
    RecordRequest record;
    std::vector<int> codes;  // empty: all
};

struct Expand {
    RecordRequest record;
    std::string text;  // UTF-8
};

struct ExportTable {
    RecordRequest record;
    std::string file;  // UTF-8
    TableFormat format = TableFormat::kCsv;
};

struct PrintSettings {
    std::optional<unsigned> lead;  // 0 to 11; none: the whole tracing, on A4 across
    Paper paper = Paper::kA4;
};

struct PrintToFile {
    RecordRequest record;
    PrintSettings settings;
    std::string file;  // UTF-8
    PageFormat format = PageFormat::kPcl;
};

struct PrintToPrinter {
    RecordRequest record;
    PrintSettings settings;
    std::string printer;    // UTF-8
    bool byDriver = false;  // the whole tracing alone; else PCL 5 past the driver
};

struct ImportRecords {
    std::vector<RecordRequest> records;  // one or more
    std::string archive;
};

struct ListTests {
    std::string filter;  // UTF-8, as it is typed into the worklist's search; empty: all tests
    std::string archive;
};

struct ExportTest {
    unsigned id = 0;   // as --list names it
    std::string file;  // UTF-8
    ExportFormat format = ExportFormat::kAecg;
    std::string archive;
};

struct ShowHelp {};

struct ShowVersion {};

// The command line cannot be understood; text says why, in one line without a line break.
struct UsageError {
    std::string text;
};

using Command = std::variant<OpenWorkstation, Measure, InterpretRecord, Shot, ListFields, Expand, ExportTable,
                             PrintToFile, PrintToPrinter, ExportSignal, ImportRecords, ListTests, ExportTest,
                             ShowHelp, ShowVersion, UsageError>;

inline constexpr int kSmallestShot = 64;
inline constexpr int kLargestShot = 4096;
inline constexpr int kMostUnitsPerMv = 10'000'000;
inline constexpr int kLargestFieldCode = 9999;

// arguments: the words behind the program's name, UTF-8.
Command ParseCommandLine(const std::vector<std::string>& arguments);

// What --help prints. Lines end with \n.
std::string_view UsageText();

}  // namespace kxhost
