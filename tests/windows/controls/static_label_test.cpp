#include "lib/windows/static_label.h"

#include "dialogs/hypertrophy/range_color_label.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::RangeColorLabel;
using kx::StaticLabel;

class StaticLabelTest : public kx::test::ControlTest {};

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
