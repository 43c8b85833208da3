// The compression of raster rows against libtiff's encoder of the same format, natively and both 64-bit: on
// the page that the workstation prints, and on noise, which cannot be compressed.
//
// packbits_bench PAGE.bmp: the page as the workstation saves it, one bit a dot.
#include <tiffio.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/ratio.h"
#include "lib/packbits.h"
#include "lib/spooler.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Raster {
    std::size_t rowBytes = 0;
    std::size_t rows = 0;
    Bytes bytes;
};

// ---- the page

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

Bytes ReadFile(const char* path) {
    Bytes content;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path, "rb"));
    for (std::uint8_t buffer[1 << 16]; file != nullptr;) {
        const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get());
        if (count == 0) {
            break;
        }
        content.insert(content.end(), buffer, buffer + count);
    }
    return content;
}

std::uint32_t Word32(const Bytes& bytes, std::size_t at) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

// The rows from the top as a printer is sent them. Empty: not such a file.
Raster ReadPage(const char* path) {
    constexpr std::size_t kOffset = 10, kWidth = 18, kHeight = 22, kBitsAndPlanes = 26, kHeaders = 54;
    Raster page;
    const Bytes file = ReadFile(path);
    if (file.size() < kHeaders || file[0] != 'B' || Word32(file, kBitsAndPlanes) != (1u << 16 | 1)) {
        return page;
    }
    const std::size_t offset = Word32(file, kOffset);
    const std::uint32_t width = Word32(file, kWidth);
    const std::size_t height = Word32(file, kHeight);
    const std::size_t stride = (width + 31) / 32 * 4;
    if (file.size() < offset + stride * height) {
        return page;
    }
    page.rowBytes = (width + 7) / 8;
    page.rows = height;
    page.bytes.resize(page.rowBytes * page.rows);
    for (std::size_t y = 0; y < height; ++y) {
        std::uint8_t* const row = page.bytes.data() + y * page.rowBytes;
        std::memcpy(row, file.data() + offset + (height - 1 - y) * stride, page.rowBytes);
        kx::InvertClearBits(row, static_cast<std::int32_t>(width), page.rowBytes);
    }
    return page;
}

Raster Noise(const Raster& like) {
    Raster noise{like.rowBytes, like.rows, Bytes(like.bytes.size())};
    std::mt19937 random(1);
    for (std::uint8_t& byte : noise.bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return noise;
}

// ---- libtiff, writing into memory

struct Memory {
    Bytes bytes;
    std::size_t position = 0;
};

tmsize_t ReadNothing(thandle_t, void*, tmsize_t) {
    return 0;
}

tmsize_t WriteMemory(thandle_t handle, void* data, tmsize_t size) {
    auto& memory = *static_cast<Memory*>(handle);
    const std::size_t end = memory.position + static_cast<std::size_t>(size);
    if (memory.bytes.size() < end) {
        memory.bytes.resize(end);
    }
    std::memcpy(memory.bytes.data() + memory.position, data, static_cast<std::size_t>(size));
    memory.position = end;
    return size;
}

toff_t SeekMemory(thandle_t handle, toff_t offset, int whence) {
    auto& memory = *static_cast<Memory*>(handle);
    memory.position = whence == SEEK_END ? memory.bytes.size() : static_cast<std::size_t>(offset);
    return memory.position;
}

int CloseMemory(thandle_t) {
    return 0;
}

toff_t SizeOfMemory(thandle_t handle) {
    return static_cast<Memory*>(handle)->bytes.size();
}

// All rows as one strip. Its compressed bytes; 0 when libtiff fails.
std::size_t EncodeByLibtiff(const Raster& raster, Memory& memory) {
    memory.position = 0;
    TIFF* const tiff = TIFFClientOpen("page", "wm", &memory, ReadNothing, WriteMemory, SeekMemory,
                                      CloseMemory, SizeOfMemory, nullptr, nullptr);
    if (tiff == nullptr) {
        return 0;
    }
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(raster.rowBytes * 8));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(raster.rows));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(raster.rows));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
    // libtiff takes the data as its own to change, which this compression does not do.
    const bool written = TIFFWriteEncodedStrip(tiff, 0, const_cast<std::uint8_t*>(raster.bytes.data()),
                                               static_cast<tmsize_t>(raster.bytes.size())) > 0;
    const std::size_t size = written ? TIFFGetStrileByteCount(tiff, 0) : 0;
    // Without a directory behind the strip.
    TIFFCleanup(tiff);
    return size;
}

// ---- the subject

std::size_t Encode(const Raster& raster, Bytes& packed) {
    std::uint8_t* out = packed.data();
    for (std::size_t y = 0; y < raster.rows; ++y) {
        out += kx::PackBitsEncode(raster.bytes.data() + y * raster.rowBytes, raster.rowBytes, out);
    }
    return static_cast<std::size_t>(out - packed.data());
}

bool Measure(const Raster& raster, const std::string& name) {
    Memory memory;
    Bytes packed(raster.rows * kx::PackBitsWorstCase(raster.rowBytes));
    const std::size_t floorSize = EncodeByLibtiff(raster, memory);
    const std::size_t size = Encode(raster, packed);
    if (floorSize == 0 || size == 0) {
        return false;
    }
    kx::bench::Run(("packbits_" + name).c_str(), 1.0,
                   [&] { kx::bench::Keep(static_cast<double>(EncodeByLibtiff(raster, memory))); },
                   [&] { kx::bench::Keep(static_cast<double>(Encode(raster, packed))); });
    // In bytes and not in nanoseconds.
    kx::bench::PrintLine(("packbits_bytes_of_" + name).c_str(),
                         {static_cast<double>(floorSize), static_cast<double>(size)}, 1.0);
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    const Raster page = count == 2 ? ReadPage(arguments[1]) : Raster{};
    if (page.rows == 0) {
        std::fprintf(stderr, "packbits_bench PAGE.bmp: no page of one bit a dot\n");
        return 1;
    }
    return Measure(page, "page") && Measure(Noise(page), "noise") ? 0 : 1;
}
