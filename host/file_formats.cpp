#include "host/file_formats.h"

#include <algorithm>

namespace kxhost {

bool HasExtension(std::string_view file, std::string_view extension) {
    if (file.size() <= extension.size()) {
        return false;
    }
    const std::string_view end = file.substr(file.size() - extension.size());
    return std::equal(end.begin(), end.end(), extension.begin(), [](char written, char small) {
        return (written >= 'A' && written <= 'Z' ? written - 'A' + 'a' : written) == small;
    });
}

std::optional<PageFormat> PageFormatOf(std::string_view file) {
    if (HasExtension(file, ".pcl")) {
        return PageFormat::kPcl;
    }
    if (HasExtension(file, ".bmp")) {
        return PageFormat::kBmp;
    }
    if (HasExtension(file, ".png")) {
        return PageFormat::kPng;
    }
    if (HasExtension(file, ".pdf")) {
        return PageFormat::kPdf;
    }
    return std::nullopt;
}

std::optional<ExportFormat> ExportFormatOf(std::string_view file) {
    if (HasExtension(file, ".xml")) {
        return ExportFormat::kAecg;
    }
    if (HasExtension(file, ".csv")) {
        return ExportFormat::kSamples;
    }
    if (HasExtension(file, ".html")) {
        return ExportFormat::kTable;
    }
    if (HasExtension(file, ".pdf")) {
        return ExportFormat::kPdf;
    }
    if (HasExtension(file, ".png")) {
        return ExportFormat::kPng;
    }
    return std::nullopt;
}

}  // namespace kxhost
