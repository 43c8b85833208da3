#include "lib/spooler.h"

#include <cstdio>
#include <cstring>
#include <new>

#include "lib/packbits.h"

namespace kx {
namespace {

// A command with the zero byte that ends it.
template <std::size_t Size>
bool WriteCommand(ByteSink& sink, const char (&command)[Size]) {
    return sink.Write(command, static_cast<std::uint32_t>(Size));
}

// A command formatted into text: `length` as snprintf gives it, without the zero byte.
bool WriteText(ByteSink& sink, const char* text, int length) {
    return length > 0 && sink.Write(text, static_cast<std::uint32_t>(length));
}

}  // namespace

bool PclPage::Reset() {
    return WriteCommand(sink_,
                        "\x1B"
                        "E");
}

bool PclPage::FormFeed() {
    return WriteCommand(sink_, "\x0C");
}

bool PclPage::Portrait() {
    return WriteCommand(sink_, "\x1B&l0O");
}

bool PclPage::Landscape() {
    return WriteCommand(sink_, "\x1B&l1O");
}

bool PclPage::EndRaster() {
    return WriteCommand(sink_, "\x1B*rC");
}

bool PclPage::BeginRaster(std::int32_t x, std::int32_t y, std::int32_t dpi) {
    char text[96];
    // In 64 bits, so that no position can wrap.
    const long long left = std::int64_t{x} - originX_;
    const long long top = std::int64_t{y} - originY_;
    const int length = std::snprintf(text, sizeof text, "\x1B*p%lldx%lldY\x1B*t%dR\x1B*r0F\x1B*r1A\x1B*b2M",
                                     left, top, static_cast<int>(dpi));
    return WriteText(sink_, text, length);
}

void InvertClearBits(std::uint8_t* row, std::int32_t width, std::size_t rowBytes) {
    const auto whole = static_cast<std::size_t>(width / 8);
    for (std::size_t i = 0; i < whole; ++i) {
        row[i] = static_cast<std::uint8_t>(~row[i]);
    }
    if (whole < rowBytes) {
        row[whole] = static_cast<std::uint8_t>(~row[whole] & ~(0xFF >> width % 8));
        std::memset(row + whole + 1, 0, rowBytes - whole - 1);
    }
}

bool PclPage::RasterOfClearBits(std::uint8_t* bits, std::int32_t width, std::int32_t rows,
                                std::size_t rowBytes) {
    for (std::int32_t y = 0; y < rows; ++y) {
        std::uint8_t* const row = bits + static_cast<std::size_t>(y) * rowBytes;
        InvertClearBits(row, width, rowBytes);
        if (!RasterRow(row, rowBytes)) {
            return false;
        }
    }
    return true;
}

bool PclPage::RasterRow(const std::uint8_t* row, std::size_t rowBytes) {
    const std::size_t worst = PackBitsWorstCase(rowBytes);
    if (worst > packedSize_) {
        packed_.reset(new (std::nothrow) std::uint8_t[worst]);
        packedSize_ = packed_ == nullptr ? 0 : worst;
        if (packed_ == nullptr) {
            return false;
        }
    }
    const std::size_t length = PackBitsEncode(row, rowBytes, packed_.get());
    char text[32];
    if (!WriteText(sink_, text,
                   std::snprintf(text, sizeof text, "\x1B*b%uW", static_cast<unsigned>(length)))) {
        return false;
    }
    return length == 0 || sink_.Write(packed_.get(), static_cast<std::uint32_t>(length));
}

}  // namespace kx
