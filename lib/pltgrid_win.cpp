// pltgrid: the paper in a bitmap.
#include <new>

#include "lib/pltgrid.h"
#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"

namespace kx {

namespace {

constexpr char kSource[] = "..\\..\\lib\\pltgrid";
constexpr std::uint32_t kNoFrameRectLine = 41;
constexpr std::uint32_t kNothingToRenderLine = 97;
constexpr std::uint32_t kNoBitmapLine = 203;

constexpr std::int32_t kMilPerInch = 1000;

class ContextSurface final : public GridSurface {
  public:
    explicit ContextSurface(DeviceContext& memory) : memory_(memory) {}

    void SetBrush(GridColour colour) override { memory_.SetSolidBrush(colour); }
    void Fill(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override {
        if (width > 0 && height > 0) {
            memory_.FillPattern(x, y, width, height);
        }
    }
    void CopyCorner(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override {
        if (width > 0 && height > 0) {
            memory_.CopyFrom(x, y, width, height, memory_, 0, 0);
        }
    }

  private:
    DeviceContext& memory_;
};

}  // namespace

PlotGrid::PlotGrid(Reporter& owner, std::int32_t pixelsPerInchX, std::int32_t pixelsPerInchY)
    : owner_(&owner), paper_(new (std::nothrow) PaperGrid{pixelsPerInchX, pixelsPerInchY}) {
    if (paper_ == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNoFrameRectLine);
    }
}

PlotGrid::~PlotGrid() = default;

void PlotGrid::SetFrameRect(const KxRect& area) {
    if (paper_ != nullptr) {
        paper_->frame = area;
    }
}

void PlotGrid::SetFrame(std::uint32_t style, std::int32_t width, GridColour colour) {
    if (paper_ != nullptr) {
        paper_->frameStyle = style;
        paper_->frameWidth = width;
        paper_->frameColour = colour;
    }
}

void PlotGrid::SetSpacing(std::int32_t majorHorizontal, std::int32_t minorHorizontal,
                          std::int32_t majorVertical, std::int32_t minorVertical) {
    if (paper_ != nullptr) {
        paper_->majorHorizontal = majorHorizontal;
        paper_->minorHorizontal = minorHorizontal;
        paper_->majorVertical = majorVertical;
        paper_->minorVertical = minorVertical;
    }
}

// A bitmap that could not be created is reported where it would be selected.
void PlotGrid::CreateBitmap(int bitsPerPixel, bool monochrome) {
    const auto size = paper_->BitmapPixels();
    bitmap_.reset(size ? new (std::nothrow) Bitmap : nullptr);
    if (bitmap_ == nullptr) {
        return;
    }
    if (monochrome) {
        bitmap_->Create(size->width, size->height, 1, 1, nullptr);
    } else {
        bitmap_->CreateDibSection(size->width, size->height, static_cast<WORD>(bitsPerPixel));
    }
}

bool PlotGrid::Render(DeviceContext& memory, GridColour background, GridColour major, GridColour minor,
                      int bitsPerPixel, bool monochrome) {
    bitmap_.reset();
    if (paper_ == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNothingToRenderLine);
        return false;
    }
    CreateBitmap(bitsPerPixel, monochrome);
    if (!Select(memory)) {
        return false;
    }
    memory.SetPixelMapping();
    ContextSurface surface(memory);
    paper_->Draw(surface, {background, major, minor});
    Unlock(memory);
    return true;
}

bool PlotGrid::Select(DeviceContext& memory) {
    if (bitmap_ == nullptr || !*bitmap_ || memory.SelectBitmap(*bitmap_) == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNoBitmapLine);
        return false;
    }
    memory.SetPixelMapping();
    memory.SetMultipliers(paper_->pixelsPerInchX, paper_->pixelsPerInchY);
    memory.SetDivisors(kMilPerInch, kMilPerInch);
    return true;
}

DeviceContext* PlotGrid::Lock(DeviceContext& memory) {
    return Select(memory) ? &memory : nullptr;
}

void PlotGrid::Unlock(DeviceContext& memory) {
    memory.RestoreBitmap();
    memory.SetPixelMapping();
}

}  // namespace kx
