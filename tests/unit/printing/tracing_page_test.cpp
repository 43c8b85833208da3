// The page of the whole tracing as a PDF file: it is a file that holds together, at its true size.
#include "host/printing/tracing_page.h"

#include <map>
#include <sstream>

#include "host/printing/pdf_canvas.h"

namespace kxhost {
namespace {

// What is drawn, millimetres from the sheet's left upper corner.
struct Drawing final : PageCanvas {
    std::vector<std::vector<PagePoint>> lines;
    std::vector<std::pair<PagePoint, std::wstring>> texts;
    double lowest = 0, rightmost = 0;
    PageArea paper;

    void MillimetrePaper(const PageArea& area) override { paper = area; }
    void Polyline(Ink, double, std::span<const PagePoint> points) override { lines.emplace_back(points.begin(), points.end()); }
    void Text(const PagePoint& at, const PageFont& font, Ink, std::wstring_view text) override {
        texts.emplace_back(at, text);
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
        page.beats = {{1000, 1, true}, {2500, 5, false}};
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
        // A beat has a tick of 2 mm under the letter of its kind.
        const auto isTick = [](const auto& line) { return line.size() == 2 && std::abs(line[1].y - line[0].y - 2) < 1e-6; };
        const auto tick = std::find_if(drawn.lines.begin(), drawn.lines.end(), isTick);
        ASSERT_TRUE(drawn.lines.end() - tick >= 2 && isTick(tick[1]));
        EXPECT_NEAR(tick[1][0].x - tick[0][0].x, 1.5 * 25, 0.011);
        const auto letter = std::ranges::find(drawn.texts, L"V", &std::pair<PagePoint, std::wstring>::second);
        ASSERT_NE(letter, drawn.texts.end());
        EXPECT_NEAR(letter->first.x, tick[1][0].x, 1.5);
        EXPECT_TRUE(drawn.lowest < kTracingSheetHeightMm - 5 && drawn.rightmost < kTracingSheetWidthMm - 8);
        // Two columns of seven lines, of which the last says that there are more; then, and before, what is shown.
        const auto* lines = &drawn.texts[drawn.texts.size() - 15];
        EXPECT_EQ(lines[13].second, L"[...] Il testo intero è nella stazione.");
        for (int i = 0; i < 14; ++i) {
            EXPECT_NEAR(lines[i].first.x, kTracingPaper.left + (i < 7 ? 0 : kTracingPaper.width / 2), 1e-6) << i;
            EXPECT_NEAR(lines[i].first.y, kTracingPaper.top + kTracingPaper.height + 16.2 + 4.2 * (i % 7), 1e-6) << i;
        }
        const std::wstring shown = seconds == 10 ? L"Registrazione: da 0,0 a 10,0 s di 10,0 s, 500 Hz" : L"Registrazione: da 0,0 a ";
        EXPECT_NEAR(lines[-2].first.y, kTracingPaper.top + kTracingPaper.height + 4, 1e-6);
        EXPECT_TRUE(lines[-2].second.starts_with(shown)) << testing::PrintToString(lines[-2].second);
    }
}

struct Stroke {
    double pen;                     // its width, points
    std::vector<PagePoint> points;  // mm from the upper left corner of the sheet
};

// The lines of the page in a file that are stroked.
std::vector<Stroke> StrokesIn(const std::string& file, double sheetHeightMm) {
    std::vector<Stroke> strokes, path;
    std::vector<double> numbers;
    double pen = 0;
    std::istringstream words(file);
    for (std::string word; words >> word && word != "endstream";) {
        char* end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') {
            numbers.push_back(number);
        } else if (word == "w") {
            pen = numbers.back();
        } else if (word == "m" || word == "l") {
            path.resize(path.size() + (word == "m" ? 1 : 0), {pen, {}});
            const double x = *(numbers.end() - 2), y = numbers.back();
            path.back().points.push_back({x * 25.4 / 72, sheetHeightMm - y * 25.4 / 72});
        } else if (word == "S") {
            strokes.insert(strokes.end(), path.begin(), path.end());
            path.clear();
        }
    }
    return strokes;
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
    EXPECT_NE(file.find("/Size 8 /Root 1 0 R /Info 7 0 R"), file.npos);
    // Behind the lines of the paper come those that the page draws.
    Drawing drawn;
    DrawTracingPage(drawn, Wave(10).page);
    std::vector<Stroke> strokes = StrokesIn(file, kTracingSheetHeightMm);
    ASSERT_GT(strokes.size(), drawn.lines.size());
    strokes.erase(strokes.begin(), strokes.end() - std::ssize(drawn.lines));
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        EXPECT_TRUE(std::ranges::equal(strokes[i].points, drawn.lines[i], [](const PagePoint& a, const PagePoint& b) {
            return std::abs(a.x - b.x) < 0.01 && std::abs(a.y - b.y) < 0.01;
        })) << i;
    }
}

TEST(PdfCanvas, DrawsThePaperEveryMillimetreAndEveryFifthStronger) {
    PdfCanvas canvas(100, 80);
    canvas.MillimetrePaper({10, 20, 12, 6});
    std::map<double, std::vector<std::string>> lines;  // by the width of the pen
    for (const Stroke& stroke : StrokesIn(canvas.File(L""), 80)) {
        std::ostringstream text;
        for (const PagePoint& point : stroke.points) {
            text << std::lround(point.x) << ',' << std::lround(point.y) << ' ';
        }
        lines[stroke.pen].push_back(text.str());
    }
    ASSERT_EQ(lines.size(), 2u);
    const auto &all = lines.begin()->second, &fifth = lines.rbegin()->second;
    EXPECT_EQ(fifth, (std::vector<std::string>{"10,20 10,26 ", "15,20 15,26 ", "20,20 20,26 ", "10,20 22,20 ", "10,25 22,25 "}));
    ASSERT_EQ(all.size(), 13u + 7u);
    EXPECT_EQ(all[1] + all[12] + all[13] + all[19], "11,20 11,26 22,20 22,26 10,20 22,20 10,26 22,26 ");
}

TEST(PageCanvas, WrapsByTheWidthsOfHelvetica) {
    // In thousandths, each letter times its place, so that two exchanged ones are seen.
    double sum = 0;
    for (int letter = ' '; letter <= 0x100; ++letter) {
        sum += letter * std::round(TextWidthMm({72, false}, std::wstring(1, static_cast<wchar_t>(letter))) / 25.4 * 1000);
    }
    EXPECT_EQ(std::lround(sum), 18140459);
    const PageFont font{10, false};
    EXPECT_NEAR(TextWidthMm({10, true}, L"12"), TextWidthMm(font, L"12") * 1.1, 1e-9);
    EXPECT_EQ(WrapText(font, L"iiii iiii\niiiiii\n\n  i", TextWidthMm(font, L"iiii") + 1e-9),
              (std::vector<std::wstring>{L"iiii", L"iiii", L"iiii", L"ii", L"", L"  i"}));
}

}  // namespace
}  // namespace kxhost
