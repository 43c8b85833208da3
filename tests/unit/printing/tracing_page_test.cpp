// The page of the whole tracing as a PDF file: it is a file that holds together, at its true size.
#include "host/printing/tracing_page.h"

#include <sstream>

#include "host/printing/pdf_canvas.h"

namespace kxhost {
namespace {

// What is drawn, millimetres from the sheet's left upper corner.
struct Drawing final : PageCanvas {
    std::vector<std::vector<PagePoint>> lines;
    std::vector<std::wstring> texts;
    double lowest = 0, rightmost = 0;
    PageArea paper;

    void MillimetrePaper(const PageArea& area) override { paper = area; }
    void Polyline(Ink, double, std::span<const PagePoint> points) override { lines.emplace_back(points.begin(), points.end()); }
    void Text(const PagePoint& at, const PageFont& font, Ink, std::wstring_view text) override {
        texts.emplace_back(text);
        lowest = std::max(lowest, at.y);
        rightmost = std::max(rightmost, at.x + TextWidthMm(font, text));
    }
};

// A square wave of 1.4 mV and one second in every lead, at 500 samples a second.
struct Wave {
    TracingPage page;
    std::vector<std::int16_t> samples;  // which the page points to

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
        int pulses = 0, traces = 0;
        for (const auto& line : drawn.lines) {
            // Where a trace rises is every 25 mm, and by 14 mm; a pulse rises by 10 mm and stands for 5.
            std::vector<PagePoint> rises;
            for (std::size_t i = 1; i < line.size(); ++i) {
                EXPECT_TRUE(line[i].x <= drawn.paper.left + drawn.paper.width + 0.01 &&
                            line[i].y <= drawn.paper.top + drawn.paper.height + 0.01);
                const double rise = line[i - 1].y - line[i].y;
                if (rise > 1) {
                    rises.push_back({line[i].x, rise});
                }
            }
            if (line.size() == 6) {
                ++pulses;
                EXPECT_TRUE(rises.size() == 1 && std::abs(rises[0].y - 10) < 1e-6 && std::abs(line[3].x - line[2].x - 5) < 1e-6);
            }
            traces += line.size() > 100 ? 1 : 0;
            for (std::size_t i = 0; line.size() > 100 && i < rises.size(); ++i) {
                EXPECT_NEAR(rises[i].y, 14, 1e-6);
                EXPECT_NEAR(rises[i].x, rises[0].x + 25.0 * static_cast<double>(i), 0.011) << "the layout keeps hundredths of a millimetre";
            }
        }
        EXPECT_TRUE(pulses == 4 && traces == 13);
        EXPECT_TRUE(drawn.lowest < kTracingSheetHeightMm - 5 && drawn.rightmost < kTracingSheetWidthMm - 8);
        EXPECT_TRUE(std::count(drawn.texts.begin(), drawn.texts.end(), L"[...] Il testo intero è nella stazione."));
    }
}

TEST(PdfCanvas, WritesAFileThatHoldsTogether) {
    PdfCanvas canvas(kTracingSheetWidthMm, kTracingSheetHeightMm);
    DrawTracingPage(canvas, Wave(10).page);
    const std::string file = canvas.File(L"Nicolò");
    EXPECT_TRUE(file.starts_with("%PDF-1.4\n") && file.ends_with("%%EOF\n"));
    // Windows-1252, brackets quoted.
    for (const char* part : {"/MediaBox [0 0 841.89 595.28]", "(Rossi, Nicol\xF2 \\(prova\\)) Tj", "tracciati \x80 confrontati"}) {
        EXPECT_NE(file.find(part), file.npos) << part;
    }
    // The table of contents names the place of every object, and itself.
    const std::size_t table = file.find("xref\n0 8\n");
    ASSERT_NE(table, file.npos);
    EXPECT_NE(file.find("startxref\n" + std::to_string(table) + "\n"), file.npos);
    for (std::size_t object = 1; object < 8; ++object) {
        const std::size_t offset = std::stoul(file.substr(table + 9 + 20 * object, 10));
        EXPECT_TRUE(file.substr(offset).starts_with(std::to_string(object) + " 0 obj\n")) << object;
    }
    const std::size_t stream = file.find("stream\n") + 7;
    EXPECT_NE(file.find("/Length " + std::to_string(file.find("endstream") - stream) + " "), file.npos);
    // The first stroke of the paper is a line down its left edge.
    std::istringstream first(file.substr(file.find("w\n", stream) + 2));
    double x = 0, top = 0, bottom = 0;
    std::string move;
    first >> x >> top >> move >> x >> bottom;
    EXPECT_NEAR(x, kTracingPaper.left * 72 / 25.4, 0.006);
    EXPECT_NEAR(top - bottom, kTracingPaper.height * 72 / 25.4, 0.011);
}

}  // namespace
}  // namespace kxhost
