// The hypertrophy pane as a host meets it: opened through the export on a record, read through its window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "dialogs/resources/resource_ids.h"
#include "lib/dbclient/test_record.h"
#include "tests/rig/gui_objects.h"
#include "tests/windows/dialogs/library_under_test.h"
#include "tests/windows/dialogs/pane_reader.h"

namespace {

using kx::test::AskColours;
using kx::test::ControlColours;

using kx::test::ItemText;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr COLORREF kRed = 0x0000FF;
constexpr COLORREF kOlive = 0x008080;
constexpr COLORREF kGreen = 0x008000;

constexpr std::uint32_t kLabels[] = {59000, 59001, 59006, 59002, 59003, 59004, 59007,
                                     59011, 59012, 59016, 59018, 59021, 59022};
constexpr std::uint32_t kBoxes[] = {59008, 59009, 59010, 59013, 59014, 59015, 59017, 59019, 59020};

// A record with one median beat, made by the library's own operations.
std::unique_ptr<kx::TestRecord> NewRecord() {
    auto test = std::make_unique<kx::TestRecord>();
    test->SetTestType(KX_TEST_RESTING);
    test->AddEpisode(kx::kTwelveLeadConfiguration, 12, 600, 1000, 1000);
    return test;
}

class HypertrophyPane : public testing::Test {
  protected:
    HypertrophyPane() : library_(kx::test::SystemModule::kCurrent) {
        library_->start();
        parent_.handle = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 900, 500, nullptr, nullptr,
                                         GetModuleHandleA(nullptr), nullptr);
        library_.TakeLog();
    }
    ~HypertrophyPane() override {
        DestroyWindow(Parent());
        library_->stop();
    }

    HWND Parent() const { return static_cast<HWND>(parent_.handle); }

    // The pane's window; null when there is none.
    HWND Open(KxTestRecord* test) {
        const std::uint32_t handle = library_->hypertrophy(&parent_, test);
        EXPECT_NE(handle, 0u);
        return handle == 0
                   ? nullptr
                   : static_cast<HWND>(
                         reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
    }

    kx::test::LibraryUnderTest library_;
    KxHostWindow parent_{};
};

struct Shown {
    std::uint32_t id;
    const char* text;
    COLORREF color;
};

// What stands in the record, and what the pane must show for it. Boxes that are not named are clear, points
// that are not named 0 and green.
struct Row {
    const char* name;
    std::function<void(KxMeasurementSet&)> fill;
    std::uint32_t sex;
    std::vector<Shown> labels;
    std::set<std::uint32_t> checked;
    const char* sexText = "...";
};

KxLeadMeasurements& Lead(KxMeasurementSet& set, int lead) {
    return set.leads[lead];
}

std::function<void(KxMeasurementSet&)> Axes(std::int16_t qrs, std::int16_t t) {
    return [=](KxMeasurementSet& set) {
        set.qrsAxis = qrs;
        set.tAxis = t;
    };
}

std::function<void(KxMeasurementSet&)> TerminalP(std::int16_t aP1, std::int16_t aP2, std::uint16_t duration) {
    return [=](KxMeasurementSet& set) {
        Lead(set, KX_LEAD_V1).aP1 = aP1;
        Lead(set, KX_LEAD_V1).aP2 = aP2;
        set.pDuration = duration;
    };
}

void FillCornell(KxMeasurementSet& set) {
    Lead(set, KX_LEAD_AVL).aR = 1200;
    Lead(set, KX_LEAD_V3).aS = -1300;
}

std::vector<Row> Rows() {
    const std::vector<Shown> cornellMan = {
        {59003, "1200", kOlive}, {59004, "1300", kOlive}, {59007, "2500", kOlive}};
    const std::vector<Shown> cornellWoman = {
        {59003, "1200", kOlive}, {59004, "1300", kOlive}, {59007, "2500", kRed}};
    return {
        {"bounds of the bands",
         [](KxMeasurementSet& set) {
             Lead(set, KX_LEAD_V5).aR = 1000;
             Lead(set, KX_LEAD_V6).aR1 = 2000;
             Lead(set, KX_LEAD_V1).aS1 = -1500;
             Lead(set, KX_LEAD_AVL).aR1 = 1001;
             Lead(set, KX_LEAD_V3).aS1 = -2001;
         },
         KX_SEX_UNKNOWN,
         {{59000, "1000", kGreen},
          {59001, "2000", kOlive},
          {59002, "3500", kOlive},
          {59003, "1001", kOlive},
          {59004, "2001", kRed},
          {59007, "3002", kRed}},
         {}},
        {"largest amplitudes",
         [](KxMeasurementSet& set) {
             Lead(set, KX_LEAD_V5).aR = 32767;
             Lead(set, KX_LEAD_V1).aS = -32768;
             Lead(set, KX_LEAD_AVL).aR = 32767;
             Lead(set, KX_LEAD_V3).aS = -32768;
         },
         KX_SEX_UNKNOWN,
         {{59000, "32767", kRed},
          {59006, "32768", kRed},
          {59002, "65535", kRed},
          {59003, "32767", kRed},
          {59004, "32768", kRed},
          {59007, "65535", kRed},
          {59011, "3", kRed},
          {59022, "3", kGreen}},
         {59008, 59009, 59010}},
        {"Cornell of a man", FillCornell, KX_SEX_MALE, cornellMan, {}, "Uomo"},
        {"Cornell of a woman", FillCornell, KX_SEX_FEMALE, cornellWoman, {}, "Donna"},
        {"axis -30", Axes(-30, -30), 0, {{59016, "2", kRed}, {59022, "2", kGreen}}, {59015}},
        {"axis -29", Axes(-29, -29), 0, {{59016, "0", kGreen}}, {}},
        {"axes 91 apart", Axes(60, -31), 0, {{59012, "3", kRed}, {59022, "3", kGreen}}, {59013}},
        {"axes 90 apart", Axes(60, -30), 0, {{59012, "0", kGreen}}, {}},
        {"single P of 40 ms",
         TerminalP(-2200, 0, 40),
         0,
         {{59021, "3", kRed}, {59022, "3", kGreen}},
         {59020}},
        {"total of 5",
         [](KxMeasurementSet& set) {
             Axes(-60, -60)(set);
             Lead(set, KX_LEAD_V2).aS = -3000;
         },
         0,
         {{59011, "3", kRed}, {59016, "2", kRed}, {59022, "5", kOlive}},
         {59009, 59015}},
        {"total of 6",
         [](KxMeasurementSet& set) {
             Axes(-60, -60)(set);
             Lead(set, KX_LEAD_V2).aS = -3000;
             set.qrsDuration = 200;
         },
         0,
         {{59011, "3", kRed}, {59016, "2", kRed}, {59018, "1", kOlive}, {59022, "6", kRed}},
         {59009, 59015, 59017}},
        {"everything met",
         [](KxMeasurementSet& set) {
             Axes(-60, 60)(set);
             TerminalP(0, -2101, 300)(set);
             set.qrsDuration = 140;
             Lead(set, KX_LEAD_V3).intrinsicoidDeflection = 65535;
             Lead(set, KX_LEAD_I).aR = 2500;
             Lead(set, KX_LEAD_V2).aS = -3100;
             Lead(set, KX_LEAD_V5).aR = 3200;
         },
         KX_SEX_FEMALE,
         {{59000, "3200", kRed},
          {59002, "3200", kOlive},
          {59011, "3", kRed},
          {59012, "3", kRed},
          {59016, "2", kRed},
          {59018, "2", kRed},
          {59021, "3", kRed},
          {59022, "13", kRed}},
         {59008, 59009, 59010, 59013, 59015, 59017, 59019, 59020},
         "Donna"},
    };
}

void ExpectShown(HWND pane, const Row& row) {
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    std::set<std::uint32_t> unnamed(std::begin(kLabels) + 7, std::end(kLabels));
    for (const Shown& shown : row.labels) {
        unnamed.erase(shown.id);
        EXPECT_EQ(ItemText(pane, shown.id), shown.text) << row.name << ": " << shown.id;
        EXPECT_EQ(AskColours(pane, shown.id).text, shown.color) << row.name << ": " << shown.id;
    }
    for (const std::uint32_t id : unnamed) {
        EXPECT_EQ(ItemText(pane, id), "0") << row.name << ": " << id;
        EXPECT_EQ(AskColours(pane, id).text, kGreen) << row.name << ": " << id;
    }
    for (const std::uint32_t id : kLabels) {
        const ControlColours colours = AskColours(pane, id);
        EXPECT_TRUE(colours.answered && colours.background == face && colours.brush == face)
            << row.name << ": " << id;
    }
    for (const std::uint32_t id : kBoxes) {
        EXPECT_EQ(kx::test::IsItemChecked(pane, id), row.checked.count(id) != 0) << row.name << ": " << id;
    }
    EXPECT_EQ(ItemText(pane, 59005), row.sexText) << row.name;
}

TEST_F(HypertrophyPane, ShowsEveryCriterion) {
    for (const Row& row : Rows()) {
        const auto test = NewRecord();
        test->SetSex(row.sex);
        row.fill(test->Episode(0)->measurements);
        const HWND pane = Open(test.get());
        ASSERT_NE(pane, nullptr) << row.name;
        ExpectShown(pane, row);
        DestroyWindow(pane);
    }
    EXPECT_THAT(library_.TakeLog(), IsEmpty());
}

// A record as a host in another language puts it into its own memory: 8-bit stores at the documented places,
// the episode of 3176 bytes without a sample behind it.
class HostMemory {
  public:
    HostMemory() {
        const auto address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(episode_.data()));
        Store(test_.data() + 7556, KX_TEST_RESTING, 4);
        Store(test_.data() + 7608, 1, 4);
        Store(test_.data() + 7612, address, 4);
        Store(episode_.data(), 3176, 4);
        Store(episode_.data() + 6, 5, 2);
        Store(episode_.data() + kSet, 1872, 4);
        Store(episode_.data() + kSet + 4, 1, 4);
    }

    void StoreSex(unsigned sex) { Store(test_.data() + 258, sex, 2); }
    void StoreGlobal(std::size_t offset, int value) { Store(episode_.data() + kSet + offset, value, 2); }
    void StoreLead(std::size_t lead, std::size_t offset, int value) {
        StoreGlobal(42 + 122 * lead + offset, value);
    }

    KxTestRecord* Record() { return reinterpret_cast<KxTestRecord*>(test_.data()); }
    std::vector<std::uint8_t> Bytes() const {
        std::vector<std::uint8_t> all(test_.begin(), test_.end());
        all.insert(all.end(), episode_.begin(), episode_.end());
        return all;
    }

  private:
    static constexpr std::size_t kSet = 260;

    template <class Value>
    static void Store(std::uint8_t* place, Value value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            place[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
        }
    }

    alignas(4) std::array<std::uint8_t, 13932> test_{};
    alignas(4) std::array<std::uint8_t, 3176> episode_{};
};

TEST_F(HypertrophyPane, ReadsRecordThatHostStoredByteByByte) {
    const auto host = std::make_unique<HostMemory>();
    host->StoreSex(2);
    host->StoreGlobal(8, 120);      // P duration, ms
    host->StoreGlobal(20, 104);     // QRS duration, ms
    host->StoreGlobal(30, -45);     // QRS axis, degrees
    host->StoreGlobal(36, 30);      // T axis
    host->StoreLead(10, 4, 2710);   // R of V5, µV
    host->StoreLead(11, 6, 1990);   // R' of V6
    host->StoreLead(6, 18, -1234);  // S of V1
    host->StoreLead(6, 0, -2150);   // P of V1
    host->StoreLead(4, 4, 1111);    // R of aVL
    host->StoreLead(8, 20, -777);   // S' of V3
    host->StoreLead(1, 10, -2345);  // Q of II
    host->StoreLead(8, 32, 51);     // intrinsicoid deflection of V3, ms
    const std::vector<std::uint8_t> before = host->Bytes();
    const HWND pane = Open(host->Record());
    ASSERT_NE(pane, nullptr);
    ExpectShown(pane, {"host's memory",
                       {},
                       2,
                       {{59000, "2710", kRed},
                        {59001, "1990", kOlive},
                        {59006, "1234", kOlive},
                        {59002, "3944", kRed},
                        {59003, "1111", kOlive},
                        {59004, "777", kGreen},
                        {59007, "1888", kOlive},
                        {59011, "3", kRed},
                        {59012, "0", kGreen},
                        {59016, "2", kRed},
                        {59018, "2", kRed},
                        {59021, "3", kRed},
                        {59022, "10", kRed}},
                       {59008, 59015, 59017, 59019, 59020},
                       "Donna"});
    DestroyWindow(pane);
    EXPECT_EQ(host->Bytes(), before);  // the pane only reads
}

TEST_F(HypertrophyPane, HasNoWindowWithoutMedianBeat) {
    const auto noEpisode = std::make_unique<kx::TestRecord>();
    EXPECT_EQ(Open(noEpisode.get()), nullptr);
    EXPECT_THAT(library_.TakeLog(), ElementsAre("LOGMEMORYERROR \"hyptrphy\" 60"));
    const auto nullEpisode = std::make_unique<KxTestRecord>();
    nullEpisode->episodeCount = 1;
    EXPECT_EQ(Open(nullEpisode.get()), nullptr);
    EXPECT_THAT(library_.TakeLog(), ElementsAre("LOGMEMORYERROR \"hyptrphy\" 60"));
    EXPECT_EQ(GetWindow(Parent(), GW_CHILD), nullptr);
}

TEST_F(HypertrophyPane, LeavesNothingBehindWhenOpenedAgainAndAgain) {
    const auto test = NewRecord();
    kx::test::GuiObjects before{};
    for (int i = 0; i < 50; ++i) {
        if (i == 10) {
            before = kx::test::CountGuiObjects();
        }
        const HWND pane = Open(test.get());
        ASSERT_NE(pane, nullptr) << i;
        // Also by the end of the window that it stands in.
        if (i % 2 == 0) {
            DestroyWindow(pane);
        } else {
            DestroyWindow(Parent());
            parent_.handle = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 900, 500, nullptr, nullptr,
                                             GetModuleHandleA(nullptr), nullptr);
        }
        EXPECT_FALSE(IsWindow(pane));
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
}

}  // namespace
