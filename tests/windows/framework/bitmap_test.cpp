// Bitmaps, their files and their hatches.
#include "lib/windows/bitmap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "lib/bmp_format.h"
#include "lib/modules/module_instance.h"
#include "tests/rig/gui_objects.h"
#include "tests/rig/recorded_reports.h"
#include "tests/windows/framework/canvas.h"

namespace kx::test {
namespace {

using Bytes = std::vector<unsigned char>;
using Lines = std::vector<std::string>;

const std::string kSource = "oem ..\\..\\lib\\windows\\bitmap ";

class BitmapFile : public testing::Test {
  protected:
    BitmapFile() {
        char folder[MAX_PATH] = "";
        GetTempPathA(sizeof folder, folder);
        char name[MAX_PATH] = "";
        GetTempFileNameA(folder, "kxb", 0, name);
        path_ = name;
    }
    ~BitmapFile() override { DeleteFileA(path_.c_str()); }

    void Write(const Bytes& bytes) const {
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    Bytes Read() const {
        std::ifstream stream(path_, std::ios::binary);
        return Bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    }

    std::string path_;
    RecordedReports reports_;
    ModuleInstance module_;
};

Bytes File(int width, int height, std::uint16_t bits, const Bytes& pixels) {
    BmpHead head;
    MakeBmpHead(width, height, bits, static_cast<std::uint32_t>(BmpRowSize(width, bits)), head);
    Bytes file;
    for (const std::byte value : head) {
        file.push_back(std::to_integer<unsigned char>(value));
    }
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

Bytes Bits(const Bitmap& bitmap) {
    Bytes bits(static_cast<std::size_t>(bitmap.WidthBytes() * bitmap.Height()));
    EXPECT_EQ(bitmap.GetBits(bits.data(), static_cast<LONG>(bits.size())), static_cast<LONG>(bits.size()));
    return bits;
}

TEST_F(BitmapFile, LoadsMonochromeRowsTheRightWayUp) {
    Write(File(16, 2, 1, {0x0F, 0xF0, 0, 0, 0xAA, 0x55, 0, 0}));
    const Bitmap bitmap = Bitmap::LoadBmpFile(&module_, path_.c_str(), reports_);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap.Width(), 16);
    EXPECT_EQ(bitmap.Height(), 2);
    EXPECT_EQ(bitmap.BitsPerPixel(), 1);
    EXPECT_EQ(Bits(bitmap), (Bytes{0xAA, 0x55, 0x0F, 0xF0}));
    EXPECT_EQ(reports_.Take(), Lines());
}

TEST_F(BitmapFile, LoadsColoursInTheDepthOfTheScreen) {
    Write(File(2, 2, 24, {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0}));
    const Bitmap bitmap = Bitmap::LoadBmpFile(&module_, path_.c_str(), reports_);
    ASSERT_TRUE(bitmap);
    EXPECT_GT(bitmap.BitsPerPixel(), 1);
    MemoryContext memory;
    memory.SelectBitmap(bitmap);
    EXPECT_EQ(GetPixel(memory.Handle(), 0, 1), RGB(3, 2, 1));
    EXPECT_EQ(GetPixel(memory.Handle(), 1, 0), RGB(12, 11, 10));
}

TEST_F(BitmapFile, EachFaultIsReportedOnce) {
    const Bytes good = File(16, 1, 1, {0, 0, 0, 0});
    const auto with = [&](std::size_t at, unsigned char value) {
        Bytes file = good;
        file[at] = value;
        return file;
    };
    const struct {
        Bytes file;
        const char* report;
    } rows[] = {
        {{}, "132 no bmp file buf"},
        {Bytes(good.begin(), good.begin() + 57), "132 no bmp file buf"},
        {with(0, 'X'), "131 not bmp file"},
        {with(34, 200), "130 bmp file small"},
        {with(30, 1), "129 no compression required"},
        {with(28, 4), "128 Color issue"},
        {with(18, 12), "104 Width must be divisable by 16"},
        {with(22, 9), "103 Invalid bitmap"},
    };
    for (const auto& row : rows) {
        Write(row.file);
        EXPECT_FALSE(Bitmap::LoadBmpFile(&module_, path_.c_str(), reports_)) << row.report;
        EXPECT_EQ(reports_.Take(), Lines{kSource + row.report});
    }
    for (const char* name : {static_cast<const char*>(nullptr), "", "Z:\\no\\such\\folder\\x.bmp", "C:\\"}) {
        EXPECT_FALSE(Bitmap::LoadBmpFile(&module_, name, reports_));
        EXPECT_EQ(reports_.Take(), Lines{kSource + "133 no bmp file"}) << (name != nullptr ? name : "null");
    }
}

TEST_F(BitmapFile, SavesWhatItLoadsAgain) {
    const Bytes file = File(24, 3, 1, {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0});
    Write(file);
    const Bitmap bitmap = Bitmap::LoadBmpFile(nullptr, path_.c_str(), reports_);
    ASSERT_TRUE(bitmap);
    DeleteFileA(path_.c_str());
    EXPECT_TRUE(bitmap.SaveBmpFile(path_.c_str(), reports_));
    EXPECT_EQ(Read(), file);
    EXPECT_EQ(reports_.Take(), Lines());
}

TEST_F(BitmapFile, WhatCannotBeSavedIsReported) {
    EXPECT_FALSE(Bitmap().SaveBmpFile(path_.c_str(), reports_));
    EXPECT_EQ(reports_.Take(), Lines{kSource + "355 Invalid hbm"});
    Bitmap bitmap;
    bitmap.Create(8, 8, 1, 1, nullptr);
    EXPECT_FALSE(bitmap.SaveBmpFile("Z:\\no\\such\\folder\\x.bmp", reports_));
    EXPECT_FALSE(bitmap.SaveBmpFile(nullptr, reports_));
    HBITMAP gone = CreateBitmap(8, 8, 1, 1, nullptr);
    Bitmap stale(gone);
    DeleteObject(gone);
    reports_.Take();
    EXPECT_FALSE(stale.SaveBmpFile(path_.c_str(), reports_));
    EXPECT_EQ(reports_.Take(), Lines{kSource + "351 Invalid byte width"});
    EXPECT_EQ(GetFileAttributesA(path_.c_str()), INVALID_FILE_ATTRIBUTES) << "nothing half written stays";
}

TEST(Bitmap, HatchesRepeatTheirPatternAtAScale) {
    const struct {
        int pattern, scale, side;
        Bytes row;    // the first bytes of the first row
        Bytes below;  // of the row one pattern row further down
    } rows[] = {
        {0, 1, 16, {0x77, 0x77}, {0xBB, 0xBB}},
        {1, 1, 16, {0xEE, 0xEE}, {0xDD, 0xDD}},
        {2, 1, 16, {0xAA, 0xAA}, {0xAA, 0xAA}},
        {9, 0, 16, {0x77, 0x77}, {0xBB, 0xBB}},
        {-1, -3, 16, {0x77, 0x77}, {0xBB, 0xBB}},
        {0, 2, 32, {0x3F, 0x3F, 0x3F, 0x3F}, {0xCF, 0xCF, 0xCF, 0xCF}},
        {2, 40, 256, {0xFF, 0xFF, 0x00, 0x00}, {0xFF, 0xFF, 0x00, 0x00}},
    };
    for (const auto& row : rows) {
        const Bitmap hatch = Bitmap::MakeHatch(row.pattern, row.scale);
        ASSERT_TRUE(hatch);
        EXPECT_EQ(hatch.Width(), row.side) << row.pattern;
        EXPECT_EQ(hatch.Height(), row.side);
        const Bytes bits = Bits(hatch);
        const auto at = [&](int y) {
            const auto from = bits.begin() + y * hatch.WidthBytes();
            return Bytes(from, from + static_cast<std::ptrdiff_t>(row.row.size()));
        };
        EXPECT_EQ(at(0), row.row) << row.pattern << " at " << row.scale;
        EXPECT_EQ(at(row.side / 16), row.below) << row.pattern << " at " << row.scale;
    }
}

}  // namespace
}  // namespace kx::test
