// The templates of the four morphology dialogs: every control with the label before it, room for every text
// at three screen scalings, the order in which the keyboard reaches the controls; and the texts and pictures
// they show.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/template_layout.h"

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
    const wchar_t* title;
    const wchar_t* group;
    std::vector<Control> measurements;
    std::vector<Control> markers;
    std::vector<DWORD> manualBoxes;
    std::vector<Control> waveBoxes;
};

const Pane kPanes[] = {
    {20540,
     L"Morfologia Generale",
     L"Morfologia Generale Misurazione",
     {{31308, L"Intervallo PR (ms)"},
      {31312, L"Durata P (ms)"},
      {31310, L"Durata QRS (ms)"},
      {31307, L"Intervallo QT (ms)"},
      {31313, L"FC (/min)"},
      {31314, L"QRS Axis (\u00B0)"},
      {31309, L"QTc (ms)"},
      {31317, L"QTc Bassett (ms)"}},
     {{31311, L"Pon"}, {31315, L"Poff"}, {31318, L"QRSon"}, {31316, L"QRSoff"}, {31319, L"Toff"}},
     {31243, 31244, 31245, 31246, 31247},
     {{33242, L"Assenza di onda P"}}},
    {20544,
     L"Morfologia QRS",
     L"Misure morfologiche del QRS",
     {{31291, L"QRS Inizio (ms)"},
      {31278, L"QRS Fine (ms)"},
      {31296, L"Ampiezza Q (uV)"},
      {31297, L"Ampiezza R (uV)"},
      {31298, L"Ampiezza S (uV)"},
      {31299, L"Ampiezza R' (uV)"},
      {31301, L"Ampiezza S' (uV)"},
      {31310, L"Durata QRS (ms)"}},
     {{31248, L"Qon"},
      {31249, L"Ron"},
      {31252, L"Son"},
      {31253, L"R'on"},
      {31255, L"S'on"},
      {31316, L"QRSoff"}},
     {31250, 31251, 31304, 31305, 31306, 31246},
     {{33244, L"No Q wave"},
      {33245, L"No R wave"},
      {33246, L"No S wave"},
      {33247, L"No R' wave"},
      {33248, L"No S' wave"}}},
    {20547,
     L"Morfologia Onda P",
     L"Misure morfologhce della P",
     {{31291, L"QRS Inizio (ms)"},
      {31279, L"Fine T (ms)"},
      {31292, L"Inizio P (ms)"},
      {31293, L"Fine P (ms)"},
      {31287, L"Ampiezza P1 (uV)"},
      {31289, L"Ampiezza P2 (uV)"},
      {31308, L"Intervallo PR (ms)"},
      {31314, L"Intervallo RR (ms)"}},
     {{31294, L"Pon"}, {31273, L"P'on"}, {31315, L"Poff"}},
     {31295, 31276, 31244},
     {{33242, L"Assenza di onda P"}, {33243, L"No P' wave"}}},
    {20546,
     L"Morfologia Onda T",
     L"Misure morfologiche della T ",
     {{31278, L"QRS Fine (ms)"},
      {31279, L"Fine T (ms)"},
      {31280, L"Ampiezza T1 (uV)"},
      {31281, L"Ampiezza T2 (uV)"},
      {31307, L"Intervallo QT (ms)"},
      {31314, L"Intervallo RR (ms)"},
      {31309, L"QTc (ms)"},
      {31317, L"QTc Bazett (ms)"}},
     {{31269, L"Ton"}, {31270, L"T'on"}, {31319, L"Toff"}},
     {31271, 31272, 31247},
     {{33249, L"No T wave"}, {33289, L"No T' wave"}}},
};

const wchar_t* const kLeads = L"4^aVL^0^I^3^-aVR^1^II^5^aVF^2^III^6^V1^7^V2^8^V3^9^V4^10^V5^11^V6";
const wchar_t* const kGains =
    L"10^10 / mV^20^20 / mV^50^50 / mV^100^100 / mV^200^200 / mV^500^500 / mV^1000^1000 / mV";
const wchar_t* const kSpeeds = L"25^25 / s^50^50 / s^100^100 / s^250^250 / s^500^500 / s^1000^1000 / s";
const wchar_t* const kMains = L"0^No BRF^50^50 Hz^60^60 Hz";
const wchar_t* const kEdges =
    L"10^0.010^16^0.016^25^0.025^40^0.040^63^0.063^100^0.10^160^0.16^250^0.25^400^0.40^630^0.63^1000^1.0^"
    L"1600^1.6"
    L"^2500^2.5^4000^4.0^6300^6.3^10000^10^16000^16^25000^25^40000^40^63000^63^100000^100";

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

TEST_P(MorphologyTemplate, HasEveryControlWithItsText) {
    ASSERT_GT(dialog_.items.size(), 1u);
    EXPECT_EQ(dialog_.title, GetParam().title);
    const Control texts[] = {{31275, L"BPF"}, {31274, L"f'(t)"}, {31262, L"Visualizza"}, {31264, L"&Reset"}};
    for (const Control& control : texts) {
        EXPECT_EQ(ItemOf(control.id).text, control.text);
    }
    for (const DWORD combo : {31254u, 31242u, 31240u, 31282u, 31256u, 31257u}) {
        EXPECT_EQ(ItemOf(combo).windowClass, L"ComboBox") << combo;
        EXPECT_EQ(ItemOf(combo).style & 3, static_cast<DWORD>(CBS_DROPDOWNLIST)) << combo;
    }
    for (const auto& edits : {GetParam().measurements, GetParam().markers}) {
        for (const Control& control : edits) {
            EXPECT_EQ(ItemOf(control.id).windowClass, L"Edit") << control.id;
            EXPECT_NE(ItemOf(control.id).style & ES_READONLY, 0u) << control.id;
            EXPECT_EQ(dialog_.items[PlaceOf(control.id) - 1].text, control.text) << control.id;
        }
    }
    for (const Control& box : GetParam().waveBoxes) {
        EXPECT_EQ(ItemOf(box.id).text, box.text);
        EXPECT_EQ(ItemOf(box.id).style & BS_TYPEMASK, static_cast<DWORD>(BS_AUTOCHECKBOX));
    }
    for (std::size_t i = 0; i < GetParam().markers.size(); ++i) {
        const TemplateItem& box = ItemOf(GetParam().manualBoxes[i]);
        EXPECT_EQ(box.text, L"man.");
        EXPECT_NE(box.style & WS_DISABLED, 0u) << box.id;
        EXPECT_EQ(PlaceOf(box.id), PlaceOf(GetParam().markers[i].id) + 1);
    }
    EXPECT_EQ(ItemOf(59023).style & (ES_MULTILINE | ES_READONLY),
              static_cast<DWORD>(ES_MULTILINE | ES_READONLY));
    std::vector<std::wstring> groups;
    for (const TemplateItem& item : dialog_.items) {
        if (item.windowClass == L"Button" && (item.style & BS_TYPEMASK) == BS_GROUPBOX) {
            groups.push_back(item.text);
        }
    }
    EXPECT_EQ(groups, (std::vector<std::wstring>{GetParam().group, L"Markers (ms)"}));
}

TEST_P(MorphologyTemplate, HasTheView) {
    const TemplateItem& view = ItemOf(31283);
    // The resource compiler writes the name in capitals; the window manager does not mind.
    EXPECT_EQ(lstrcmpiW(view.windowClass.c_str(), L"MarkerView"), 0);
    const DWORD tabStop = GetParam().id == 20540 ? WS_TABSTOP : 0;
    EXPECT_EQ(view.style, WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL | tabStop);
}

TEST_P(MorphologyTemplate, LeadsTheKeyboardFromTheToolbarToTheBoxesToReset) {
    std::vector<DWORD> stops;
    for (const TemplateItem& item : dialog_.items) {
        if ((item.style & WS_TABSTOP) != 0 && (item.style & WS_DISABLED) == 0) {
            stops.push_back(item.id);
        }
    }
    std::vector<DWORD> expected = {31254, 31242, 31240, 31282, 31275, 31256, 31257, 31274};
    if (GetParam().id == 20540) {
        expected.push_back(31283);
    }
    std::vector<Control> boxes = GetParam().waveBoxes;
    std::sort(boxes.begin(), boxes.end(),
              [this](const Control& a, const Control& b) { return PlaceOf(a.id) < PlaceOf(b.id); });
    for (const Control& box : boxes) {
        expected.push_back(box.id);
    }
    expected.insert(expected.end(), {31264, 31262});
    EXPECT_EQ(stops, expected);
}

TEST_P(MorphologyTemplate, CutsNoTextAtThreeScalings) {
    const std::map<DWORD, ShownText> shown = {
        {31254, {Choices(kLeads), L""}}, {31242, {Choices(kGains), L""}}, {31240, {Choices(kSpeeds), L""}},
        {31282, {Choices(kMains), L""}}, {31256, {Choices(kEdges), L""}}, {31257, {Choices(kEdges), L""}},
    };
    for (const int dpi : {96, 120, 144}) {
        for (const std::string& fault : kx::test::LayoutFaults(dialog_, dpi, shown)) {
            ADD_FAILURE() << fault;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Panes, MorphologyTemplate, testing::ValuesIn(kPanes),
                         [](const auto& row) { return std::to_string(row.param.id); });

TEST(MorphologyResources, PickLists) {
    const Resources resources;
    const struct {
        UINT id;
        const wchar_t* text;
    } rows[] = {{4113, kLeads}, {4101, kGains}, {4100, kSpeeds}, {4112, kMains}, {4114, kEdges}};
    for (const auto& row : rows) {
        EXPECT_EQ(resources.Text(row.id), row.text) << row.id;
    }
}

TEST(MorphologyResources, BadgesHaveSixteenColoursAndTheirSize) {
    const Resources resources;
    for (WORD id = 20520; id <= 20534; ++id) {
        const HRSRC found =
            FindResourceW(resources.module, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_BITMAP));
        ASSERT_NE(found, nullptr) << id;
        const auto* header =
            static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(resources.module, found)));
        EXPECT_EQ(header->biBitCount, 4) << id;
        EXPECT_EQ(header->biWidth, id <= 20521 ? 40 : 24) << id;
        EXPECT_EQ(header->biHeight, 20) << id;
    }
}

// A group icon lists its pictures: reserved, type, count, then 14 bytes each that begin with width and
// height.
TEST(MorphologyResources, IconsHoldTheirSizes) {
    const Resources resources;
    for (WORD id = 20500; id <= 20514; ++id) {
        const HRSRC found =
            FindResourceW(resources.module, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_GROUP_ICON));
        ASSERT_NE(found, nullptr) << id;
        const auto* group = static_cast<const BYTE*>(LockResource(LoadResource(resources.module, found)));
        std::vector<int> sizes;
        for (int i = 0; i < group[4]; ++i) {
            sizes.push_back(group[6 + 14 * i]);
        }
        EXPECT_EQ(sizes, (id < 20512 ? std::vector<int>{16, 32} : std::vector<int>{16, 24, 32})) << id;
    }
}

}  // namespace
