// The string tables of the library as the suite reads them.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "dialogs/resources/resource_ids.h"
#include "lib/pick_list.h"

namespace {

class StringTables : public testing::Test {
  protected:
    StringTables() : module_(LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~StringTables() override { FreeLibrary(module_); }
    void SetUp() override { ASSERT_NE(module_, nullptr); }

    // Empty when there is no such string.
    std::string Text(UINT id) const {
        char text[1024];
        const int length = LoadStringA(module_, id, text, sizeof text);
        return {text, static_cast<std::size_t>(length)};
    }

  private:
    HMODULE module_;
};

bool IsStatementCode(UINT code) {
    constexpr struct {
        UINT first, last;
    } kRanges[] = {{30000, 30020}, {30026, 30055}, {30057, 30057}, {30059, 30059}, {30061, 30061},
                   {30063, 30063}, {30065, 30065}, {30067, 30067}, {30069, 30069}, {30073, 30074},
                   {30076, 30077}, {30079, 30079}, {30081, 30081}, {30083, 30083}, {30085, 30085},
                   {30087, 30092}, {30132, 30134}, {30190, 30191}, {30193, 30193}, {30195, 30195},
                   {30197, 30197}, {30208, 30208}, {30210, 30210}, {30212, 30212}, {30214, 30214},
                   {30220, 30220}};
    for (const auto& range : kRanges) {
        if (code >= range.first && code <= range.last) {
            return true;
        }
    }
    return false;
}

TEST_F(StringTables, HoldTheStatementsOfTheirCodesAndNoOthers) {
    int count = 0;
    for (UINT code = 29900; code <= 30400; ++code) {
        const std::string text = Text(code);
        EXPECT_EQ(!text.empty(), IsStatementCode(code)) << code << " " << text;
        count += text.empty() ? 0 : 1;
    }
    EXPECT_EQ(count, 85);
}

TEST_F(StringTables, KeepTheStatementsThatReportsWerePrintedWith) {
    const struct {
        UINT code;
        const char* text;
    } rows[] = {
        {30000, "RISERVATO"},
        {30002, "Could not interpret ECG because of excessive artifacts."},
        {30005, "Sinus tachycardia ( > %d beats per minute)."},
        {30006, "Sinus bradycardia ( < %d beats per minute)."},
        {30034, "Low voltage in extremity leads (QRS < 0.5 mV)."},
        {30035, "Low voltage in precordial leads (QRS < 1.0 mV)."},
        {30036, "Sinus rhythm."},
        {30041, "Sinus arrest or pause (RR > %d.%d s)."},
        {30048, "Paced rhythm detected"},
        {30076, "Q-T interval prolonged ( > 470 ms)"},
        {30132, "ECG Nomale"},
        {30133, "ECG Boderline"},
        {30134, "ECG non nomale"},
        {30220, "Non si puo escludere Infarto Miocardico Posterioe"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Text(row.code), row.text) << row.code;
    }
}

TEST_F(StringTables, HoldStatementsThatCanBeFormatted) {
    for (UINT code = 30000; code <= 30220; ++code) {
        const std::string text = Text(code);
        // "%d" is the one placeholder, at most two, and the text still fits a report line of 255 characters.
        int placeholders = 0;
        for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 2)) {
            EXPECT_EQ(text.substr(at, 2), "%d") << text;
            ++placeholders;
        }
        EXPECT_LE(placeholders, 2) << text;
        EXPECT_LT(text.size(), 230u) << text;
        EXPECT_EQ(text.find_first_of("\r\n\t"), std::string::npos) << text;
        if (!text.empty()) {
            EXPECT_NE(text.front(), ' ') << text;
            EXPECT_NE(text.back(), ' ') << text;
        }
    }
}

TEST_F(StringTables, HoldPickListsOfDigits) {
    for (const UINT id : {IDS_SEX_PICK_LIST, IDS_CLINICAL_FLAG_1, IDS_CLINICAL_FLAG_2, IDS_CLINICAL_FLAG_3,
                          IDS_CLINICAL_FLAG_4, IDS_RACE_PICK_LIST, IDS_CLINICAL_FLAG_5}) {
        const std::string list = Text(id);
        EXPECT_LT(list.size(), kx::kPickListSize) << id;
        kx::PickList choices(list);
        kx::PickListItem item;
        int expected = 0;
        while (choices.Next(item)) {
            EXPECT_EQ(item.codeText, std::to_string(expected)) << list;
            EXPECT_FALSE(item.text.empty()) << list;
            ++expected;
        }
        EXPECT_GE(expected, 3) << list;
        EXPECT_LE(expected, 10) << list;
    }
    EXPECT_EQ(Text(IDS_SEX_PICK_LIST), "0^...^1^Uomo^2^Donna");
    EXPECT_EQ(Text(IDS_REPORT_STATES),
              "Original Report (not overread)^Overread Report (not confirmed)^Confirmed Report");
    EXPECT_EQ(
        Text(IDS_MEASUREMENT_COLUMNS),
        "70^Deriv^70^aP1 (uV)^70^aP2 (uV)^70^aQ (uV)^70^aR (uV)^70^aS (uV)^70^aR1 (uV)^70^aS1 (uV)^70^aT1 "
        "(uV)^70^aT2 (uV)");
}

}  // namespace
