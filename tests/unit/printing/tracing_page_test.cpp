// The page of the whole tracing as a PDF file: it is a file that holds together, at its true size.
#include "host/printing/tracing_page.h"

#include <sstream>

#include "host/printing/pdf_canvas.h"

namespace kxhost {
namespace {

constexpr double kPointsPerMm = 72 / 25.4;

struct Line {
    double widthMm;
    std::vector<PagePoint> points;
};

// What is drawn, millimetres from the sheet's left upper corner.
struct Drawing final : PageCanvas {
    std::vector<Line> lines;
    std::vector<std::wstring> texts;
    double lowest = 0, rightmost = 0;
    PageArea paper;

    void MillimetrePaper(const PageArea& area) override { paper = area; }
    void Polyline(Ink, double widthMm, std::span<const PagePoint> points) override {
        lines.push_back({widthMm, {points.begin(), points.end()}});
    }
    void Text(const PagePoint& at, const PageFont& font, Ink, std::wstring_view text) override {
        texts.emplace_back(text);
        lowest = std::max(lowest, at.y);
        rightmost = std::max(rightmost, at.x + TextWidthMm(font, text));
    }
};

// A square wave of 1.4 mV and one second in every lead, at 500 samples a second.
struct Wave {
    std::vector<std::int16_t> samples;
    TracingPage page;

    explicit Wave(int seconds) {
        for (int i = 0; i < seconds * 500; ++i) {
            samples.push_back(i / 250 % 2 == 0 ? 0 : 1400);
        }
        page.signal.leads.assign(12, samples);
        page.signal.sampleRate = 500;
        page.signal.unitMv.assign(12, 0.001);
        page.texts.patient = L"Rossi, Nicolò (prova)";
        page.texts.globalValues.assign(7, {L"QT / QTc", L"400 / 420 ms"});
        for (int i = 0; i < 40; ++i) {
            page.texts.statement += L"Ritmo sinusale, più tracciati € confrontati con una riga che è lunga abbastanza da andare a capo.\n";
        }
    }
};

TEST(TracingPage, IsAtItsTrueSizeAndOnTheSheet) {
    for (const int seconds : {10, 60}) {
        const Wave wave(seconds);
        Drawing drawn;
        DrawTracingPage(drawn, wave.page);
        int pulses = 0;
        int traces = 0;
        for (const Line& line : drawn.lines) {
            // Where a trace rises is every 25 mm, and by 14 mm; a pulse rises by 10 mm and stands for 5.
            std::vector<PagePoint> rises;
            for (std::size_t i = 1; i < line.points.size(); ++i) {
                EXPECT_TRUE(line.points[i].x <= drawn.paper.left + drawn.paper.width + 0.01 &&
                            line.points[i].y <= drawn.paper.top + drawn.paper.height + 0.01);
                const double rise = line.points[i - 1].y - line.points[i].y;
                if (rise > 1) {
                    rises.push_back({line.points[i].x, rise});
                }
            }
            if (line.points.size() == 6) {
                ++pulses;
                ASSERT_EQ(rises.size(), 1u);
                EXPECT_NEAR(rises[0].y, 10, 1e-6);
                EXPECT_NEAR(line.points[3].x - line.points[2].x, 5, 1e-6);
            } else if (line.points.size() > 100) {
                ++traces;
                for (std::size_t i = 0; i < rises.size(); ++i) {
                    EXPECT_NEAR(rises[i].y, 14, 1e-6);
                    EXPECT_NEAR(rises[i].x - rises[i == 0 ? i : i - 1].x, i == 0 ? 0 : 25, 0.011)
                        << "a hundredth of a millimetre is what the layout keeps";
                }
            }
        }
        EXPECT_EQ(pulses, 4);
        EXPECT_EQ(traces, 13);
        EXPECT_LT(drawn.lowest, kTracingSheetHeightMm - 5);
        EXPECT_LT(drawn.rightmost, kTracingSheetWidthMm - 8);
        EXPECT_TRUE(std::count(drawn.texts.begin(), drawn.texts.end(), L"[...] Il testo intero è nella stazione."));
    }
}

TEST(PdfCanvas, WritesAFileThatHoldsTogether) {
    PdfCanvas canvas(kTracingSheetWidthMm, kTracingSheetHeightMm);
    DrawTracingPage(canvas, Wave(10).page);
    const std::string file = canvas.File(L"Nicolò");
    EXPECT_TRUE(file.starts_with("%PDF-1.4\n") && file.ends_with("%%EOF\n"));
    EXPECT_NE(file.find("/MediaBox [0 0 841.89 595.28]"), file.npos);
    EXPECT_NE(file.find("(Rossi, Nicol\xF2 \\(prova\\)) Tj"), file.npos) << "Windows-1252, brackets quoted";
    EXPECT_NE(file.find("tracciati \x80 confrontati"), file.npos);
    // The table of contents names the place of every object, and itself.
    const std::size_t table = file.find("xref\n0 8\n");
    ASSERT_NE(table, file.npos);
    EXPECT_NE(file.find("startxref\n" + std::to_string(table) + "\n"), file.npos);
    std::istringstream rows(file.substr(table + 9 + 20));
    for (int object = 1; object < 8; ++object) {
        std::size_t offset = 0, generation = 0;
        char kind = 0;
        rows >> offset >> generation >> kind;
        EXPECT_TRUE(file.substr(offset).starts_with(std::to_string(object) + " 0 obj\n")) << object;
    }
    const std::size_t stream = file.find("stream\n") + 7;
    EXPECT_NE(file.find("/Length " + std::to_string(file.find("endstream") - stream) + " "), file.npos);
    // The first stroke of the paper is a line down its left edge.
    std::istringstream first(file.substr(file.find("w\n", stream) + 2));
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    std::string move;
    first >> x1 >> y1 >> move >> x2 >> y2;
    EXPECT_NEAR(x1, kTracingPaper.left * kPointsPerMm, 0.006);
    EXPECT_NEAR(y1 - y2, kTracingPaper.height * kPointsPerMm, 0.011);
}

}  // namespace
}  // namespace kxhost
