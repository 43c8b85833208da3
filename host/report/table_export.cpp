#include "host/report/table_export.h"

#include "host/file_formats.h"
#include "lib/dbclient/test_record.h"
#include "lib/html_document.h"
#include "lib/measurement_table.h"

namespace kxhost {
namespace {

constexpr char kCsvSeparator = ';';

// As much of the text as becomes at most `room` characters of HTML.
std::string HtmlText(std::string_view text, std::size_t room) {
    std::string html;
    for (const char c : text) {
        const std::string_view written = c == '&'   ? "&amp;"
                                         : c == '<' ? "&lt;"
                                         : c == '>' ? "&gt;"
                                         : c == '"' ? "&quot;"
                                                    : std::string_view(&c, 1);
        if (html.size() + written.size() > room) {
            break;
        }
        html += written;
    }
    return html;
}

std::string TitleOf(const kx::TestRecord& test, const kx::LocaleFormats& locale) {
    char id[sizeof test.patientId] = {};
    char name[sizeof test.patientName] = {};
    char time[64] = {};
    test.PatientId(id, sizeof id);
    test.SortName(name, sizeof name);
    const kx::DateTime start(test.acquisitionTime);
    const bool dated = start.IsValid() && start.DateAndTime(time, sizeof time, locale);
    std::string title;
    for (const std::string_view part : {std::string_view(id), std::string_view(dated ? time : ""),
                                        std::string_view(test.patientName[0] != '\0' ? name : "")}) {
        if (!part.empty()) {
            title += (title.empty() ? "" : ", ") + std::string(part);
        }
    }
    return HtmlText(title, kx::HtmlDocument::kTitleSize - 1);
}

class TableDocument final : public kx::HtmlDocument {
  public:
    explicit TableDocument(const KxMeasurementSet& set) : HtmlDocument(nullptr), set_(set) {
        AddColumn(kx::kLeadColumnTitle);
        for (const kx::AmplitudeColumn& column : kx::kAmplitudeColumns) {
            AddColumn(column.title);
        }
    }

    void WriteRows(kx::ByteSink& file) override {
        for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            BeginRow(file);
            Cell(file, kx::StandardLeadName(lead));
            for (const kx::AmplitudeColumn& column : kx::kAmplitudeColumns) {
                Cell(file, std::to_string(set_.leads[lead].*column.value).c_str());
            }
            EndRow(file);
        }
    }

  private:
    const KxMeasurementSet& set_;
};

}  // namespace

std::optional<TableFormat> TableFormatOf(std::string_view file) {
    if (HasExtension(file, ".csv")) {
        return TableFormat::kCsv;
    }
    if (HasExtension(file, ".html") || HasExtension(file, ".htm")) {
        return TableFormat::kHtml;
    }
    return std::nullopt;
}

bool WriteTable(const kx::TestRecord& test, TableFormat format, const kx::LocaleFormats& locale,
                kx::ByteSink& file) {
    const KxMeasurementSet& set = test.Episode(0)->measurements;
    if (format == TableFormat::kCsv) {
        const std::string text = kx::MeasurementTableText(set, kCsvSeparator);
        return file.CreateAlways(nullptr) && file.Write(text.data(), static_cast<std::uint32_t>(text.size()));
    }
    TableDocument document(set);
    document.SetTitle(TitleOf(test, locale).c_str());
    return document.WriteDocument(file);
}

}  // namespace kxhost
