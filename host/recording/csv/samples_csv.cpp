#include "host/recording/csv/samples_csv.h"

#include <charconv>

namespace kx::recording {

namespace {

constexpr int kTimeDecimals = 3;

// `last` is behind the number; a fraction of zero is left out.
void AppendNumber(std::string& csv, const char* first, const char* last) {
    std::string number(first, last);
    const std::size_t point = number.find('.');
    if (point != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.size() == point + 1) {
            number.pop_back();
        } else {
            number[point] = ',';
        }
    }
    csv += number == "-0" ? "0" : number;
}

}  // namespace

std::string SamplesCsv(const Recording& recording) {
    constexpr std::size_t kUsualLine = 80;
    std::string csv = "Tempo (ms)";
    csv.reserve(recording.SampleCount() * kUsualLine);
    for (const char* lead : kLeadNames) {
        csv += std::string(";") + lead + " (uV)";
    }
    csv += "\r\n";
    char text[128];
    for (std::size_t i = 0; i < recording.SampleCount(); ++i) {
        const double ms = static_cast<double>(i) * 1000 / recording.sampleRate;
        AppendNumber(
            csv, text,
            std::to_chars(text, text + sizeof text, ms, std::chars_format::fixed, kTimeDecimals).ptr);
        for (const auto& lead : recording.leads) {
            csv += ';';
            AppendNumber(csv, text,
                         std::to_chars(text, text + sizeof text, lead[i], std::chars_format::fixed).ptr);
        }
        csv += "\r\n";
    }
    return csv;
}

}  // namespace kx::recording
