// The hypertrophy pane's template: room for every text at three screen scalings.
#include <gtest/gtest.h>

#include "dialogs/resources/resource_ids.h"
#include "tests/rig/template_layout.h"

namespace {

using kx::test::DialogTemplate;
using kx::test::ShownText;
using kx::test::TemplateItem;

class HypertrophyTemplate : public testing::Test {
  protected:
    void SetUp() override {
        // Tests run in the build folder.
        module_ = LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(module_, nullptr);
        dialog_ = kx::test::ReadDialogTemplate(module_, IDD_HYPERTROPHY);
        ASSERT_FALSE(dialog_.items.empty());
    }
    void TearDown() override { FreeLibrary(module_); }

    HMODULE module_ = nullptr;
    DialogTemplate dialog_;
};

TEST_F(HypertrophyTemplate, CutsNoTextAtThreeScalings) {
    // The largest values that 16-bit amplitudes give.
    const ShownText amplitude{{L"-32768"}, L""};
    const ShownText sum{{L"-65536"}, L"Arial"};
    const ShownText points{{L"13"}, L""};
    const std::map<DWORD, ShownText> shown = {
        {IDC_HYP_R_V5, amplitude},
        {IDC_HYP_R_V6, amplitude},
        {IDC_HYP_S_V1, amplitude},
        {IDC_HYP_R_AVL, amplitude},
        {IDC_HYP_S_V3, amplitude},
        {IDC_HYP_SOKOLOW_LYON, sum},
        {IDC_HYP_CORNELL, sum},
        {IDC_HYP_AMPLITUDE_POINTS, points},
        {IDC_HYP_ST_POINTS, points},
        {IDC_HYP_AXIS_POINTS, points},
        {IDC_HYP_DURATION_POINTS, points},
        {IDC_HYP_ATRIUM_POINTS, points},
        {IDC_HYP_TOTAL_POINTS, {{L"13"}, L"Arial"}},
        {IDC_HYP_SEX, {{L"...", L"Uomo", L"Donna"}, L""}},
    };
    for (const int dpi : {96, 120, 144}) {
        for (const std::string& fault : kx::test::LayoutFaults(dialog_, dpi, shown)) {
            ADD_FAILURE() << fault;
        }
    }
}

// The check itself must see a cut text: the same template with one rectangle too small.
TEST_F(HypertrophyTemplate, LayoutCheckSeesCutAndCoveredTexts) {
    for (TemplateItem& item : dialog_.items) {
        if (item.id == IDC_HYP_LONG_QRS) {
            item.units.right = item.units.left + 40;
        }
        if (item.id == IDC_HYP_OPPOSED_ST) {
            item.units.bottom = item.units.top + 8;
        }
        if (item.id == IDC_HYP_R_V6) {
            item.units.right += 20;
        }
    }
    EXPECT_EQ(kx::test::LayoutFaults(dialog_, 96).size(), 3u);
}

}  // namespace
