#include "bench/evaluation/statement_report.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <functional>
#include <string_view>

#include "bench/evaluation/finding_table.h"

namespace kx::evaluation {

namespace {

// Degrees beside the limit of an axis class that count for both classes.
constexpr int kAxisTolerance = 5;
constexpr int kLeftLimit = 30;
constexpr int kRightLimit = 90;

using Records = std::vector<StatedRecord>;

std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Format(const char* format, ...) {
    char line[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    return line;
}

bool IsRead(const StatedRecord& record, const Finding& finding) {
    return std::any_of(
        std::begin(finding.diagnoses), std::end(finding.diagnoses),
        [&](std::string_view beginning) { return !beginning.empty() && record.IsDiagnosed(beginning); });
}

bool IsStated(const StatedRecord& record, const Finding& finding) {
    return std::any_of(std::begin(finding.codes), std::end(finding.codes),
                       [&](std::uint16_t code) { return code != 0 && record.States(code); });
}

std::string Percent(int part, int whole) {
    return whole == 0 ? "-" : Format("%.1f", 100.0 * part / whole);
}

std::string Row(const Records& records, const Finding& finding) {
    int read = 0;
    int found = 0;
    std::string missed;
    std::string added;
    int additions = 0;
    for (const StatedRecord& record : records) {
        const bool isRead = IsRead(record, finding);
        const bool isStated = IsStated(record, finding);
        read += isRead;
        found += isRead && isStated;
        additions += !isRead && isStated;
        if (isRead != isStated) {
            (isRead ? missed : added) += (isRead ? missed : added).empty() ? record.name : ' ' + record.name;
        }
    }
    const int others = static_cast<int>(records.size()) - read;
    const std::string target =
        finding.sensitivity == 0 ? "" : Format("%d, %d", finding.sensitivity, finding.specificity);
    return Format("| %s | %d | %s | %s | %s | ", std::string(finding.name).c_str(), read,
                  Percent(found, read).c_str(), Percent(others - additions, others).c_str(), target.c_str()) +
           missed + " | " + added + " |\n";
}

using Belongs = std::function<bool(const StatedRecord&, const Finding&)>;

std::string_view ClassOf(const StatedRecord& record, std::span<const Finding> classes,
                         std::string_view otherwise, const Belongs& belongs) {
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const Finding& finding) { return belongs(record, finding); });
    return found == classes.end() ? otherwise : found->name;
}

bool IsNearLimit(const StatedRecord& record) {
    const auto isNear = [&record](int limit) {
        const int distance = record.set.qrsAxis - limit;
        return -kAxisTolerance <= distance && distance <= kAxisTolerance;
    };
    return isNear(kLeftLimit) || isNear(kRightLimit);
}

// One line: how many of the records belong to the class that was read, and which do not.
std::string ClassLine(const char* name, const Records& records, std::span<const Finding> classes,
                      std::string_view otherwise, const std::function<bool(const StatedRecord&)>& isEither) {
    const int count = static_cast<int>(records.size());
    int right = 0;
    std::string differing;
    for (const StatedRecord& record : records) {
        const std::string_view read = ClassOf(record, classes, otherwise, IsRead);
        const std::string_view stated = ClassOf(record, classes, otherwise, IsStated);
        if (read == stated || isEither(record)) {
            ++right;
        } else {
            differing +=
                "\n  " + record.name + ": read " + std::string(read) + ", stated " + std::string(stated);
        }
    }
    return Format("%s right in %s %% of %d records", name, Percent(right, count).c_str(), count) +
           (differing.empty() ? "" : "; not in:") + differing + "\n\n";
}

}  // namespace

std::string ReportStatements(const Records& records) {
    std::string report = ClassLine("Rhythm class", records, RhythmClasses(), "another",
                                   [](const StatedRecord&) { return false; });
    Records withAxis;
    std::copy_if(records.begin(), records.end(), std::back_inserter(withAxis),
                 [](const StatedRecord& record) { return record.IsDiagnosed("Electric axis"); });
    report += ClassLine("Axis class", withAxis, AxisClasses(), "between", IsNearLimit);
    report +=
        "| finding | read in | sensitivity % | specificity % | asked | read, not stated | stated, not read "
        "|\n"
        "|---|---|---|---|---|---|---|\n";
    for (const Finding& finding : Findings()) {
        report += Row(records, finding);
    }
    return report;
}

}  // namespace kx::evaluation
