// What a file that is written is, by its name's extension.
#pragma once

#include <optional>
#include <string_view>

namespace kxhost {

// Whether the name ends with the extension (".csv", in small letters), in either case, and is more than it.
bool HasExtension(std::string_view file, std::string_view extension);

// The files that a page can be printed into.
enum class PageFormat { kPcl, kBmp, kPng, kPdf };

// By the extension of a file's name, in either case; none for any other.
std::optional<PageFormat> PageFormatOf(std::string_view file);

// The reviewed test as HL7 aECG, or the samples of its recording as CSV.
enum class SignalFormat { kAecg, kCsv };

// What a test can be written as: one of those, the table of its wave amplitudes, or the page of its tracing.
enum class ExportFormat { kAecg, kSamples, kTable, kPdf, kPng };
std::optional<ExportFormat> ExportFormatOf(std::string_view file);

}  // namespace kxhost
