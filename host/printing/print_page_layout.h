// Where everything stands on a printed page: arithmetic in millimetres and dots, without a device.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kxhost {

inline constexpr int kPrintDpi = 300;

// A length on paper, rounded to the nearest dot. Places are reckoned from their millimetres and never added
// up from rounded steps, so that 25 mm are 25 mm anywhere on the page.
constexpr int DotsOf(double mm) {
    constexpr double kMmPerInch = 25.4;
    const double dots = mm * kPrintDpi / kMmPerInch;
    return static_cast<int>(dots < 0 ? dots - 0.5 : dots + 0.5);
}

enum class Paper { kA4, kLetter };

// "A4" or "Letter", in any case; none for any other.
std::optional<Paper> PaperOf(std::string_view name);
const char* NameOf(Paper paper);
// The number of the paper in the page size command of PCL 5.
int PclPaperCode(Paper paper);

// Dots from the corner of the printable area; right and bottom are the first dots outside.
struct PageBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
};

// An upright page: the patient on top, the waveform on millimetre paper with the tables beside it, the
// statement below, one line at the bottom.
struct PageLayout {
    int width = 0;  // of the printable area, dots
    int height = 0;
    PageBox patient;
    PageBox grid;
    int gridWidthMm = 0;  // a multiple of 5, like the height: the paper ends with its lines
    int gridHeightMm = 0;
    PageBox tables;
    PageBox statement;
    PageBox footer;
};

PageLayout LayOutPage(Paper paper);

// How the beat is put on the grid.
struct WaveScale {
    int mmPerSecond = 25;
    int mmPerMv = 10;
    int startMm = 5;  // of the beat, from the grid's left edge
    int zeroMm = 0;   // of the isoelectric line, from the grid's top edge; a multiple of 5
};

// Rows of marker labels above and below the waveform, and the height of one.
inline constexpr int kLabelRows = 6;
inline constexpr double kLabelRowMm = 4.0;

// The largest of the usual speeds (25, 50, 100 mm/s) and gains (5, 10, 20, 40 mm/mV) at which a beat of that
// length and between those levels (microvolts) fits between the rows of labels; the smallest of them when
// none does.
WaveScale ChooseScale(const PageLayout& layout, int durationMs, int lowestUv, int highestUv);

// The place of a time (ms) and of a level (microvolts) on the page, dots; limited to a page's distance from
// the grid.
int ColumnOf(const PageLayout& layout, const WaveScale& scale, double ms);
int RowOf(const PageLayout& layout, const WaveScale& scale, double microvolts);

// One label of a row of markers: centred on its marker's column.
struct LabelPlace {
    int centre = 0;
    int width = 0;  // with the distance to its neighbour
};

// In which of `rows` rows each label stands so that none covers another, the first possible one; a label for
// which there is none stands in the last.
std::vector<int> StaggerLabels(std::span<const LabelPlace> labels, int rows);

}  // namespace kxhost
