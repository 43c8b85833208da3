#include "host/batch_print.h"

#include <memory>

#include "host/page_output.h"
#include "host/print_page.h"
#include "host/record_session.h"
#include "host/standard_output.h"
#include "host/text_conversion.h"
#include "lib/modules/system_services.h"

namespace kxhost {
namespace {

void WriteSizes(const PageSizes& sizes) {
    WriteOutput("rawBytes\t" + std::to_string(sizes.raw) + "\npackedBytes\t" + std::to_string(sizes.packed) +
                '\n');
}

std::unique_ptr<PageImage> Draw(const RecordSession& session, const PrintSettings& settings) {
    return DrawPage(DescribePage(session.Test(), settings.lead), settings.paper);
}

}  // namespace

int RunPrintToFile(const PrintToFile& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    const auto page = Draw(*session, command.settings);
    const PageSizes sizes = SizesOf(*page);
    if (!SavePage(*page, command.settings.paper, command.format, PathFromUtf8(command.file)))
        throw RecordError(command.file + ": the page could not be written");
    WriteSizes(sizes);
    return 0;
}

int RunPrintToPrinter(const PrintToPrinter& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    const auto page = Draw(*session, command.settings);
    const PageSizes sizes = SizesOf(*page);
    kx::SystemServices services(nullptr);
    if (!PrintPage(*page, command.settings.paper, ToSystemText(FromUtf8(command.printer)),
                   ToSystemText(session->Title()), services))
        throw RecordError(command.printer + ": the printer is not there, or refuses the page");
    WriteSizes(sizes);
    return 0;
}

}  // namespace kxhost
