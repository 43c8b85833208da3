#include "host/batch/command_line.h"

#include <sstream>

namespace kxhost {
namespace {

template <class Form>
Form As(const std::string& line) {
    std::istringstream words(line);
    const Command command = ParseCommandLine({std::istream_iterator<std::string>(words), {}});
    const Form* form = std::get_if<Form>(&command);
    EXPECT_NE(form, nullptr) << line;
    return form != nullptr ? *form : Form();
}

TEST(CommandLine, UnderstandsItsForms) {
    const auto open = As<OpenWorkstation>("a.hea --units-per-mv 1000 --archive x");
    EXPECT_TRUE(open.record == (RecordRequest{"a.hea", 1000}) && open.archive == "x" && !open.builtin);
    EXPECT_TRUE(As<OpenWorkstation>("--builtin").builtin);
    As<ShowHelp>("a -h --nonsense");
    const std::vector<RecordRequest> records{{"", 9}, {"b", 9}};
    const auto import = As<ImportRecords>("--import --builtin b --units-per-mv 9 --archive x");
    EXPECT_TRUE(import.records == records && import.archive == "x");
    const auto measure = As<Measure>("--builtin b --json --measure --units-per-mv 9");
    EXPECT_TRUE(measure.records == records && measure.json);
    EXPECT_EQ(As<Measure>("--measure -- -odd").records[0].path, "-odd");
    EXPECT_EQ(As<ListTests>("--archive x --list rossi").filter + As<ListTests>("--list").filter, "rossi");
    const auto test = As<ExportTest>("--export 7 x.CSV --archive y");
    EXPECT_TRUE(test.id == 7 && test.file == "x.CSV" && test.format == ExportFormat::kSamples && test.archive == "y");
    const auto shot = As<Shot>("--size 64x4096 --shot f.png a table");
    EXPECT_TRUE(shot.width == 64 && shot.height == 4096 && RowOf(*shot.pane).name == std::string_view("table"));
    EXPECT_FALSE(As<Shot>("--shot f.png --builtin window").pane);
    EXPECT_EQ(As<ListFields>("--fields a 3,1,48-50,9999").codes, (std::vector<int>{3, 1, 48, 49, 50, 9999}));
    EXPECT_EQ(As<Expand>("--expand --measure a").text, "--measure");
    const auto print = As<PrintToFile>("--print x.pcl a avr --paper letter");
    EXPECT_TRUE(print.settings.lead == 3u && print.settings.paper == Paper::kLetter && print.format == PageFormat::kPcl);
    EXPECT_EQ(As<PrintToPrinter>("--paper A4 --print-to p a I").settings.lead, 0u);
}

TEST(CommandLine, SaysWhatItDoesNotUnderstand) {
    const std::pair<const char*, const char*> rows[] = {
        {"--nonsense", "unknown option: --nonsense"},
        {"a b", "one word too many: b"},
        {"--fields a --json", "--json belongs to --measure"},
        {"--measure --shot f a p", "--measure and --shot exclude each other"},
        {"--export 0 x.xml", "not the number of a test: 0"},
        {"--shot", "a value is missing behind: --shot"},
        {"--shot f.png a p --size 63x64", "not a size between 64x64 and 4096x4096: 63x64"},
        {"--measure a --units-per-mv 0", "not a whole number of units per mV: 0"},
        {"--fields a 1-2-3", "not a list of field codes like 1,2,48-59: 1-2-3"},
        {"--fields a x-3", "not a list of field codes like 1,2,48-59: x-3"},
        {"--fields a 3-1", "not a list of field codes like 1,2,48-59: 3-1"},
        {"--print x.pdf a V5", "a .pdf file holds the whole tracing, not one lead: V5"},
    };
    for (const auto& [line, text] : rows) {
        EXPECT_EQ(As<UsageError>(line).text, text) << line;
    }
}

}  // namespace
}  // namespace kxhost
