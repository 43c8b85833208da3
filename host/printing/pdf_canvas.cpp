#include "host/printing/pdf_canvas.h"

#include <array>
#include <charconv>
#include <cmath>

namespace kxhost {
namespace {

constexpr double kPointsPerMm = 72 / 25.4;

const char* ColourOf(Ink ink) {
    switch (ink) {
        case Ink::kGrey:
            return "0.35 0.35 0.35";
        case Ink::kBlue:
            return "0 0 0.5";
        default:
            return "0 0 0";
    }
}

// WinAnsiEncoding is Windows-1252: ISO 8859-1, and these from 0x80 on ('?' where it has none).
char ByteOf(wchar_t letter) {
    constexpr std::wstring_view kUpper = L"€?‚ƒ„…†‡ˆ‰Š‹Œ?Ž??‘’“”•–—˜™š›œ?žŸ";
    if ((letter >= L' ' && letter <= L'~') || (letter >= 0xA0 && letter <= 0xFF)) {
        return static_cast<char>(letter);
    }
    const std::size_t place = kUpper.find(letter);
    return place == kUpper.npos ? '?' : static_cast<char>(0x80 + place);
}

std::string Literal(std::wstring_view text) {
    std::string literal = "(";
    for (const wchar_t letter : text) {
        if (letter == L'(' || letter == L')' || letter == L'\\') {
            literal += '\\';
        }
        literal += ByteOf(letter);
    }
    return literal + ')';
}

std::string Fixed(double value) {
    std::array<char, 32> text;
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 2);
    return {text.data(), written.ptr};
}

}  // namespace

void PdfCanvas::Number(double value) {
    content_ += Fixed(value);
    content_ += ' ';
}

void PdfCanvas::Point(const PagePoint& point, const char* operation) {
    Number(point.x * kPointsPerMm);
    Number((height_ - point.y) * kPointsPerMm);
    content_ += operation;
}

void PdfCanvas::Stroke(const char* colour, double widthMm) {
    content_ += colour;
    content_ += " RG ";
    Number(widthMm * kPointsPerMm);
    content_ += "w\n";
}

void PdfCanvas::MillimetrePaper(const PageArea& area) {
    const auto lines = [&](int every, const char* colour, double width) {
        Stroke(colour, width);
        for (int mm = 0; mm <= std::lround(area.width); mm += every) {
            Point({area.left + mm, area.top}, "m ");
            Point({area.left + mm, area.top + area.height}, "l\n");
        }
        for (int mm = 0; mm <= std::lround(area.height); mm += every) {
            Point({area.left, area.top + mm}, "m ");
            Point({area.left + area.width, area.top + mm}, "l\n");
        }
        content_ += "S\n";
    };
    lines(1, "0.98 0.85 0.83", 0.08);
    lines(5, "0.93 0.66 0.62", 0.16);
}

void PdfCanvas::Polyline(Ink ink, double widthMm, std::span<const PagePoint> points) {
    if (points.size() < 2) {
        return;
    }
    Stroke(ColourOf(ink), widthMm);
    content_ += "1 j 1 J\n";
    for (std::size_t i = 0; i < points.size(); ++i) {
        Point(points[i], i == 0 ? "m\n" : "l\n");
    }
    content_ += "S\n";
}

void PdfCanvas::Text(const PagePoint& baseline, const PageFont& font, Ink ink, std::wstring_view text) {
    content_ += std::string("BT ") + ColourOf(ink) + " rg " + (font.bold ? "/F2 " : "/F1 ");
    Number(font.points);
    content_ += "Tf ";
    Point(baseline, "Td ");
    content_ += Literal(text) + " Tj ET\n";
}

std::string PdfCanvas::File(std::wstring_view title) const {
    const auto font = [](const char* name) {
        return std::string("<< /Type /Font /Subtype /Type1 /BaseFont /") + name +
               " /Encoding /WinAnsiEncoding >>";
    };
    const std::string objects[] = {
        "<< /Type /Catalog /Pages 2 0 R /ViewerPreferences << /PrintScaling /None >> >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + Fixed(width_ * kPointsPerMm) + " " +
            Fixed(height_ * kPointsPerMm) +
            "] /Contents 4 0 R /Resources << /Font << /F1 5 0 R /F2 6 0 R >> >> >>",
        "<< /Length " + std::to_string(content_.size()) + " >>\nstream\n" + content_ + "endstream",
        font("Helvetica"),
        font("Helvetica-Bold"),
        "<< /Producer (kxhost) /Title " + Literal(title) + " >>",
    };
    std::string file = "%PDF-1.4\n";
    std::string table = "xref\n0 " + std::to_string(std::size(objects) + 1) + "\n0000000000 65535 f \n";
    for (std::size_t i = 0; i < std::size(objects); ++i) {
        const std::string offset = std::to_string(file.size());
        table += std::string(10 - offset.size(), '0') + offset + " 00000 n \n";
        file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    return file + table + "trailer\n<< /Size " + std::to_string(std::size(objects) + 1) +
           " /Root 1 0 R /Info 7 0 R >>\nstartxref\n" + std::to_string(file.size()) + "\n%%EOF\n";
}

}  // namespace kxhost
