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
};

struct Measure {
    std::vector<RecordRequest> records;  // one or more
    bool json = false;
};

// The reviewed test as HL7 aECG, or the samples of its recording as CSV.
enum class SignalFormat { kAecg, kCsv };
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
    unsigned lead = 0;  // 0 to 11
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
    std::string printer;  // UTF-8
};

struct ShowHelp {};

struct ShowVersion {};

// The command line cannot be understood; text says why, in one line without a line break.
struct UsageError {
    std::string text;
};

using Command = std::variant<OpenWorkstation, Measure, InterpretRecord, Shot, ListFields, Expand, ExportTable,
                             PrintToFile, PrintToPrinter, ExportSignal, ShowHelp, ShowVersion, UsageError>;

inline constexpr int kSmallestShot = 64;
inline constexpr int kLargestShot = 4096;
inline constexpr int kMostUnitsPerMv = 10'000'000;
inline constexpr int kLargestFieldCode = 9999;

// arguments: the words behind the program's name, UTF-8.
Command ParseCommandLine(const std::vector<std::string>& arguments);

// What --help prints. Lines end with \n.
std::string_view UsageText();

}  // namespace kxhost
