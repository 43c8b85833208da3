// The templates of the four morphology dialogs: every number with the label before it, and room for every
// text at three screen scalings.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "dialogs/resources/morphology_ids.h"
#include "tests/rig/template_layout.h"

namespace {

using kx::test::DialogTemplate;
using kx::test::ShownText;
using kx::test::TemplateItem;

struct Control {
    DWORD id;
    const wchar_t* text;  // its own, or its label's
};

struct Pane {
    WORD id;
    std::vector<Control> numbers;
    std::vector<Control> boxes;
};

const Pane kPanes[] = {
    {20540,
     {{31308, L"Intervallo PR (ms)"},
      {31312, L"Durata P (ms)"},
      {31310, L"Durata QRS (ms)"},
      {31307, L"Intervallo QT (ms)"},
      {31313, L"FC (/min)"},
      {31314, L"QRS Axis (\u00B0)"},
      {31309, L"QTc (ms)"},
      {31317, L"QTc Bassett (ms)"},
      {31311, L"Pon"},
      {31315, L"Poff"},
      {31318, L"QRSon"},
      {31316, L"QRSoff"},
      {31319, L"Toff"}},
     {{33242, L"Assenza di onda P"}}},
    {20544,
     {{31291, L"QRS Inizio (ms)"},
      {31278, L"QRS Fine (ms)"},
      {31296, L"Ampiezza Q (uV)"},
      {31297, L"Ampiezza R (uV)"},
      {31298, L"Ampiezza S (uV)"},
      {31299, L"Ampiezza R' (uV)"},
      {31301, L"Ampiezza S' (uV)"},
      {31310, L"Durata QRS (ms)"},
      {31248, L"Qon"},
      {31249, L"Ron"},
      {31252, L"Son"},
      {31253, L"R'on"},
      {31255, L"S'on"},
      {31316, L"QRSoff"}},
     {{33244, L"No Q wave"},
      {33245, L"No R wave"},
      {33246, L"No S wave"},
      {33247, L"No R' wave"},
      {33248, L"No S' wave"}}},
    {20547,
     {{31291, L"QRS Inizio (ms)"},
      {31279, L"Fine T (ms)"},
      {31292, L"Inizio P (ms)"},
      {31293, L"Fine P (ms)"},
      {31287, L"Ampiezza P1 (uV)"},
      {31289, L"Ampiezza P2 (uV)"},
      {31308, L"Intervallo PR (ms)"},
      {31314, L"Intervallo RR (ms)"},
      {31294, L"Pon"},
      {31273, L"P'on"},
      {31315, L"Poff"}},
     {{33242, L"Assenza di onda P"}, {33243, L"No P' wave"}}},
    {20546,
     {{31278, L"QRS Fine (ms)"},
      {31279, L"Fine T (ms)"},
      {31280, L"Ampiezza T1 (uV)"},
      {31281, L"Ampiezza T2 (uV)"},
      {31307, L"Intervallo QT (ms)"},
      {31314, L"Intervallo RR (ms)"},
      {31309, L"QTc (ms)"},
      {31317, L"QTc Bazett (ms)"},
      {31269, L"Ton"},
      {31270, L"T'on"},
      {31319, L"Toff"}},
     {{33249, L"No T wave"}, {33289, L"No T' wave"}}},
};

// The library's resources, read without running it. Tests run in the build folder.
class Resources {
  public:
    Resources() : module(LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~Resources() { FreeLibrary(module); }
    Resources(const Resources&) = delete;
    Resources& operator=(const Resources&) = delete;

    std::wstring Text(UINT id) const {
        wchar_t text[512] = {};
        LoadStringW(module, id, text, 512);
        return text;
    }

    const HMODULE module;
};

// Every second piece of a pick list.
std::vector<std::wstring> Choices(const std::wstring& list) {
    std::vector<std::wstring> pieces(1);
    for (const wchar_t c : list) {
        if (c == L'^') {
            pieces.emplace_back();
        } else {
            pieces.back().push_back(c);
        }
    }
    std::vector<std::wstring> choices;
    for (std::size_t i = 1; i < pieces.size(); i += 2) {
        choices.push_back(pieces[i]);
    }
    return choices;
}

class MorphologyTemplate : public testing::TestWithParam<Pane> {
  protected:
    MorphologyTemplate() : dialog_(kx::test::ReadDialogTemplate(resources_.module, GetParam().id)) {}

    // The one control of an id with its place in the template, which is its place in the tab order.
    std::size_t PlaceOf(DWORD id) const {
        const auto same = [id](const TemplateItem& item) { return item.id == id; };
        EXPECT_EQ(std::count_if(dialog_.items.begin(), dialog_.items.end(), same), 1) << id;
        const auto found = std::find_if(dialog_.items.begin(), dialog_.items.end(), same);
        return found == dialog_.items.end() ? 1 : static_cast<std::size_t>(found - dialog_.items.begin());
    }
    const TemplateItem& ItemOf(DWORD id) const { return dialog_.items[PlaceOf(id)]; }

    Resources resources_;
    DialogTemplate dialog_;
};

TEST_P(MorphologyTemplate, NamesEveryNumberAsWhatItIs) {
    ASSERT_GT(dialog_.items.size(), 1u);
    for (const Control& number : GetParam().numbers) {
        EXPECT_EQ(ItemOf(number.id).windowClass, L"Edit") << number.id;
        EXPECT_NE(ItemOf(number.id).style & ES_READONLY, 0u) << number.id;
        EXPECT_EQ(dialog_.items[PlaceOf(number.id) - 1].text, number.text) << number.id;
    }
    for (const Control& box : GetParam().boxes) {
        EXPECT_EQ(ItemOf(box.id).text, box.text);
    }
}

TEST_P(MorphologyTemplate, CutsNoTextAtThreeScalings) {
    const std::map<DWORD, ShownText> shown = {
        {31254, {Choices(resources_.Text(IDS_LEAD_PICK_LIST)), L""}},
        {31242, {Choices(resources_.Text(IDS_GAIN_PICK_LIST)), L""}},
        {31240, {Choices(resources_.Text(IDS_SPEED_PICK_LIST)), L""}},
        {31282, {Choices(resources_.Text(IDS_MAINS_PICK_LIST)), L""}},
        {31256, {Choices(resources_.Text(IDS_FILTER_EDGE_PICK_LIST)), L""}},
        {31257, {Choices(resources_.Text(IDS_FILTER_EDGE_PICK_LIST)), L""}},
    };
    for (const int dpi : {96, 120, 144}) {
        for (const std::string& fault : kx::test::LayoutFaults(dialog_, dpi, shown)) {
            ADD_FAILURE() << fault;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Panes, MorphologyTemplate, testing::ValuesIn(kPanes),
                         [](const auto& row) { return std::to_string(row.param.id); });

}  // namespace
