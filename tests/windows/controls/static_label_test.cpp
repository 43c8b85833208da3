#include "lib/windows/static_label.h"

#include "dialogs/hypertrophy/range_color_label.h"
#include "tests/support/gui_objects.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::LabelKind;
using kx::RangeColorLabel;
using kx::StaticLabel;

class StaticLabelTest : public kx::test::ControlTest {};

TEST_F(StaticLabelTest, IsCreatedWithTheStyleOfItsKind) {
    const struct {
        LabelKind kind;
        DWORD style;
    } rows[] = {{LabelKind::kCentered, 0x50000001},
                {LabelKind::kCenteredBordered, 0x50800001},
                {LabelKind::kOwnerDrawn, 0x5000000D},
                {LabelKind::kOwnerDrawnBordered, 0x5080000D}};
    for (const auto& row : rows) {
        const StaticLabel label(module_, &parent_, 12, 3, 4, 50, 60, row.kind);
        EXPECT_EQ(kx::test::StyleOf(label.Handle()), row.style);
        EXPECT_EQ(kx::test::ClassOf(label.Handle()), "Static");
        EXPECT_EQ(kx::test::TextOf(label.Handle()), "");
        EXPECT_EQ(GetDlgCtrlID(label.Handle()), 12);
        const RECT place = kx::test::PlaceOf(label.Handle());
        EXPECT_EQ(place.left, 3);
        EXPECT_EQ(place.bottom, 64);
    }
}

TEST_F(StaticLabelTest, ShowsImageThatStaysTheCallers) {
    const BYTE bits[32] = {};
    const HICON icon = CreateIcon(nullptr, 16, 16, 1, 1, bits, bits);
    const HBITMAP bitmap = CreateBitmap(8, 8, 1, 1, nullptr);
    {
        const StaticLabel iconLabel(module_, &parent_, 1, 0, 0, 16, 16, icon);
        const StaticLabel bitmapLabel(module_, &parent_, 2, 20, 0, 16, 16, bitmap);
        const StaticLabel noIcon(module_, &parent_, 3, 40, 0, 16, 16, HICON{});
        const StaticLabel noBitmap(module_, &parent_, 4, 60, 0, 16, 16, HBITMAP{});
        EXPECT_EQ(kx::test::StyleOf(iconLabel.Handle()), 0x50000003u);
        EXPECT_EQ(kx::test::StyleOf(bitmapLabel.Handle()), 0x5000000Eu);
        EXPECT_EQ(kx::test::StyleOf(noIcon.Handle()), 0x50000000u);
        EXPECT_EQ(kx::test::StyleOf(noBitmap.Handle()), 0x50000000u);
        EXPECT_EQ(reinterpret_cast<HICON>(iconLabel.SendMsg(STM_GETIMAGE, IMAGE_ICON)), icon);
        EXPECT_EQ(reinterpret_cast<HBITMAP>(bitmapLabel.SendMsg(STM_GETIMAGE, IMAGE_BITMAP)), bitmap);
    }
    EXPECT_TRUE(DestroyIcon(icon));
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST_F(StaticLabelTest, EndsItsControlAndItsBrush) {
    const HWND item = NewItem("STATIC", 0, 9);
    HBRUSH brush = nullptr;
    {
        StaticLabel label(&parent_, 9);
        ASSERT_EQ(label.Handle(), item);
        label.SetBackground(0x00FF00);
        const HDC dc = GetDC(item);
        brush = label.OnCtlColor(dc, item);
        EXPECT_EQ(GetObjectType(brush), static_cast<DWORD>(OBJ_BRUSH));
        EXPECT_EQ(label.OnCtlColor(dc, parent_.Handle()), nullptr);
        ReleaseDC(item, dc);
    }
    EXPECT_FALSE(IsWindow(item));
    EXPECT_EQ(GetObjectType(brush), 0u);
    {
        StaticLabel missing(&parent_, 9);
        EXPECT_EQ(missing.Handle(), nullptr);
        EXPECT_FALSE(missing.SetText("nowhere"));
    }
    EXPECT_TRUE(parent_.IsValid());
}

TEST_F(StaticLabelTest, LeavesNoObjectsBehind) {
    kx::test::GuiObjects before{};
    for (int i = 0; i < 300; ++i) {
        StaticLabel label(module_, &parent_, 5, 0, 0, 10, 10, LabelKind::kCentered);
        label.SetBackground(1);
        label.SetBackground(2);
        if (i == 20) {
            before = kx::test::CountGuiObjects();
        }
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
}

TEST_F(StaticLabelTest, ColoursValueByItsBand) {
    const HWND item = NewItem("STATIC", 0, 9, "...");
    // Bounds that no pane uses: each belongs to the band it closes.
    RangeColorLabel label(&parent_, 9, {0x0000FF, 0x008080, 0x008000, -100, -10, 10, 100});
    EXPECT_EQ(kx::test::TextOf(item), "...");
    const HDC dc = GetDC(item);
    const struct {
        std::int32_t value;
        const char* text;
        COLORREF color;
    } rows[] = {
        {0, "0", 0x008000},       {10, "10", 0x008000},
        {11, "11", 0x008080},     {100, "100", 0x008080},
        {101, "101", 0x0000FF},   {-10, "-10", 0x008000},
        {-11, "-11", 0x008080},   {-100, "-100", 0x008080},
        {-101, "-101", 0x0000FF}, {2147483647, "2147483647", 0x0000FF},
    };
    for (const auto& row : rows) {
        label.SetValue(row.value);
        label.OnCtlColor(dc, item);
        EXPECT_EQ(kx::test::TextOf(item), row.text);
        EXPECT_EQ(GetTextColor(dc), row.color) << row.value;
    }
    ReleaseDC(item, dc);
}

}  // namespace
