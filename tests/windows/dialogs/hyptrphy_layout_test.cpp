// The hypertrophy pane's template: its controls, their places, and room for every text at three screen
// scalings.
#include <gtest/gtest.h>

#include "dialogs/resources/resource_ids.h"
#include "tests/support/template_layout.h"

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

TEST_F(HypertrophyTemplate, HasEveryControlAtItsPlace) {
    const struct {
        DWORD id;
        LONG x;
        LONG y;
        const wchar_t* text;
    } rows[] = {
        {0, 7, 7, L"Sokolow Lyon"},
        {0, 19, 21, L"V5 aR (uV)"},
        {59000, 59, 21, L"..."},
        {0, 90, 21, L"V6 aR (uV)"},
        {59001, 130, 21, L"..."},
        {0, 160, 21, L"V1 aS (uV)"},
        {59006, 200, 21, L"..."},
        {0, 51, 43, L"Maximum:  V5 aR or V6 aR (uV)"},
        {59002, 159, 42, L"..."},
        {0, 276, 7, L"Cornell"},
        {0, 284, 21, L"aVL aR (uV)"},
        {59003, 328, 21, L"..."},
        {0, 369, 21, L"V3 aS (uV)"},
        {59004, 408, 21, L"..."},
        {59005, 284, 42, L""},
        {0, 344, 43, L"aVL aR + V3 aS (uV)"},
        {59007, 414, 42, L"..."},
        {0, 7, 67, L"Estes"},
        {0, 19, 81, L"1.Ampiezza (Presenza di almeno uno dei seguenti)"},
        {59008, 29, 91, L"La pi\u00F9 ampia onda R o S nelle deriv degli arti >= 2 mV"},
        {59009, 29, 99, L"La pi\u00F9 ampia onda S in V1 o V2 >= 3 mV"},
        {59010, 29, 107, L"La pi\u00F9 ampia onda R in V5 o V6 >= 3 mV"},
        {59011, 205, 81, L"..."},
        {0, 19, 123, L"2. Criteri ST"},
        {59012, 205, 123, L"..."},
        {59013, 29, 133,
         L"Ogni variazione del segmento ST con direzione vettoriale opposta al QRS medio (senza digitale)"},
        {59014, 29, 157,
         L"Tratto ST-T tipico per sovraccarico ventricolare sinistro (Curvatura ST e vettore T opposti al "
         L"vettore "
         L"QRS medio (con digitale)"},
        {0, 240, 81, L"3. Criterio asse"},
        {59015, 250, 91, L"Deviazione assiale sinistra (asse R tra -30\u00B0 e -90\u00B0)"},
        {59016, 426, 81, L"..."},
        {0, 240, 107, L"4. Criteri di Durata ( 1 putno per ciascuno dei seguenti)"},
        {59017, 250, 118, L"Durata QRS >= 90 ms"},
        {59018, 426, 107, L"..."},
        {59019, 250, 127, L"Deflezione intrinscecoide in V3 o V6 >= 50 ms"},
        {0, 240, 143, L"5. Atrio sinistro"},
        {59020, 250, 153,
         L"Componente negativa terminale della P  V1 2.1 mV in profondit\u00E0 con durata >= 40 ms."},
        {59021, 426, 143, L"..."},
        {0, 240, 179, L"Punteggio complessivo"},
        {59022, 426, 179, L"..."},
    };
    for (const auto& row : rows) {
        int found = 0;
        for (const TemplateItem& item : dialog_.items) {
            const bool sameId = row.id == 0 ? static_cast<WORD>(item.id) == 0xFFFF : item.id == row.id;
            found += sameId && item.units.left == row.x && item.units.top == row.y && item.text == row.text;
        }
        EXPECT_EQ(found, 1) << "control " << row.id << " at " << row.x << ", " << row.y;
    }
    int lines = 0;
    for (const TemplateItem& item : dialog_.items) {
        lines += item.windowClass == L"Static" && (item.style & SS_TYPEMASK) == SS_ETCHEDHORZ;
    }
    EXPECT_EQ(lines, 5);
    EXPECT_EQ(dialog_.items.size(), std::size(rows) + 5);
}

TEST_F(HypertrophyTemplate, IsDisabledChildWithCaption) {
    EXPECT_EQ(dialog_.title, L"Hypertrophy");
    EXPECT_EQ(dialog_.style & (WS_CHILD | WS_CAPTION | WS_DISABLED | WS_VISIBLE | WS_POPUP),
              static_cast<DWORD>(WS_CHILD | WS_CAPTION | WS_DISABLED));
    for (const TemplateItem& item : dialog_.items) {
        EXPECT_EQ((item.style & WS_DISABLED) != 0, item.id == IDC_HYP_SEX) << item.id;
        if (item.id == IDC_HYP_SOKOLOW_LYON || item.id == IDC_HYP_CORNELL) {
            EXPECT_EQ(item.style & SS_TYPEMASK, static_cast<DWORD>(SS_CENTER)) << item.id;
        }
        if (item.id == IDC_HYP_OPPOSED_ST || item.id == IDC_HYP_STRAIN_DIGITALIS ||
            item.id == IDC_HYP_LEFT_ATRIUM) {
            EXPECT_NE(item.style & BS_MULTILINE, 0u) << item.id;
        }
    }
}

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
