#include "host/printing/print_page_layout.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>

#include "lib/spooler.h"

namespace kxhost {
namespace {

// Paper sizes in dots (ISO 216; Letter is 8.5 by 11 inches). The unprintable edges are as wide on the right
// and at the bottom as on the left and at the top.
struct PaperRow {
    const char* name;
    int width;
    int height;
    int pclCode;
};

constexpr PaperRow kPapers[] = {
    {"A4", DotsOf(210), DotsOf(297), 26},
    {"Letter", 17 * kPrintDpi / 2, 11 * kPrintDpi, 2},
};

const PaperRow& RowOfPaper(Paper paper) {
    return kPapers[static_cast<std::size_t>(paper)];
}

// Millimetres, from the corner of the printable area.
constexpr double kPatientMm = 19;
constexpr double kGridTopMm = 24;
constexpr int kGridWidthMm = 130;
constexpr double kTablesLeftMm = 136;
constexpr double kStatementGapMm = 6;
constexpr double kFooterMm = 6;
// What the statement has at least, whatever the paper.
constexpr double kStatementMm = 55;
constexpr int kHighestGridMm = 160;
constexpr int kLinesMm = 5;

constexpr int kSpeeds[] = {100, 50, 25};
constexpr int kGains[] = {40, 20, 10, 5};
constexpr int kMarginMm = 5;  // on both sides of the beat

int Limited(double mm) {
    constexpr double kFarthestMm = 1000;
    return DotsOf(std::clamp(mm, -kFarthestMm, kFarthestMm));
}

bool SameText(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace

std::optional<Paper> PaperOf(std::string_view name) {
    for (const Paper paper : {Paper::kA4, Paper::kLetter}) {
        if (SameText(name, NameOf(paper))) {
            return paper;
        }
    }
    return std::nullopt;
}

const char* NameOf(Paper paper) {
    return RowOfPaper(paper).name;
}

int PclPaperCode(Paper paper) {
    return RowOfPaper(paper).pclCode;
}

PageLayout LayOutPage(Paper paper) {
    PageLayout page;
    page.width = RowOfPaper(paper).width - 2 * kx::kPrintableLeft;
    page.height = RowOfPaper(paper).height - 2 * kx::kPrintableTop;
    const int footerTop = page.height - DotsOf(kFooterMm);
    page.patient = {0, 0, page.width, DotsOf(kPatientMm)};

    page.gridWidthMm = kGridWidthMm;
    int rows = kHighestGridMm;
    while (DotsOf(kGridTopMm + rows + kStatementGapMm + kStatementMm) > footerTop) {
        rows -= kLinesMm;
    }
    page.gridHeightMm = rows;
    page.grid = {0, DotsOf(kGridTopMm), DotsOf(kGridWidthMm), DotsOf(kGridTopMm + rows)};
    page.tables = {DotsOf(kTablesLeftMm), page.grid.top, page.width, page.grid.bottom};
    page.statement = {0, DotsOf(kGridTopMm + rows + kStatementGapMm), page.width, footerTop};
    page.footer = {0, footerTop, page.width, page.height};
    return page;
}

WaveScale ChooseScale(const PageLayout& layout, int durationMs, int lowestUv, int highestUv) {
    WaveScale scale;
    scale.startMm = kMarginMm;
    const int across = layout.gridWidthMm - 2 * kMarginMm;
    const auto fitting = std::find_if(std::begin(kSpeeds), std::end(kSpeeds), [&](int speed) {
        return std::int64_t{durationMs} * speed <= std::int64_t{across} * 1000;
    });
    scale.mmPerSecond = fitting == std::end(kSpeeds) ? kSpeeds[std::size(kSpeeds) - 1] : *fitting;

    // The isoelectric line always belongs to the picture.
    const double lowest = std::min(lowestUv, 0) / 1000.0;
    const double highest = std::max(highestUv, 0) / 1000.0;
    const double labels = kLabelRows * kLabelRowMm;
    for (const int gain : kGains) {
        scale.mmPerMv = gain;
        const double middle = (layout.gridHeightMm + (highest + lowest) * gain) / 2;
        scale.zeroMm = static_cast<int>((middle + kLinesMm / 2.0) / kLinesMm) * kLinesMm;
        scale.zeroMm = std::clamp(scale.zeroMm, 0, layout.gridHeightMm);
        if (scale.zeroMm - highest * gain >= labels &&
            scale.zeroMm - lowest * gain <= layout.gridHeightMm - labels) {
            break;
        }
    }
    return scale;
}

int ColumnOf(const PageLayout& layout, const WaveScale& scale, double ms) {
    return layout.grid.left + Limited(scale.startMm + ms * scale.mmPerSecond / 1000);
}

int RowOf(const PageLayout& layout, const WaveScale& scale, double microvolts) {
    return layout.grid.top + Limited(scale.zeroMm - microvolts * scale.mmPerMv / 1000);
}

std::vector<int> StaggerLabels(std::span<const LabelPlace> labels, int rows) {
    std::vector<std::size_t> order(labels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return labels[a].centre < labels[b].centre; });
    std::vector<int> taken(labels.size(), rows - 1);
    std::vector<int> ends(static_cast<std::size_t>(std::max(rows, 1)), std::numeric_limits<int>::min());
    for (const std::size_t i : order) {
        const int left = labels[i].centre - labels[i].width / 2;
        const auto free = std::find_if(ends.begin(), ends.end(), [left](int end) { return end <= left; });
        const auto row = free == ends.end() ? std::prev(free) : free;
        *row = left + labels[i].width;
        taken[i] = static_cast<int>(row - ends.begin());
    }
    return taken;
}

}  // namespace kxhost
