#include "lib/dbclient/test_list_entry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"

namespace kx {
namespace {

std::unique_ptr<TestListEntry> Entry() { return std::make_unique<TestListEntry>(); }

TEST(TestListEntry, SumsUpATest) {
    TestRecord test;
    test.acquisitionTime = DateTime(2013, 11, 5, 14, 5, 9);
    test.SetPatientId("A-1");
    test.SetPatientName("Anna", "Maria", "Rossi");
    std::memset(test.text6570, 'x', sizeof test.text6570);
    test.SetTestType(2);
    test.AddHistoryEntry(1, DateTime(2013, 12, 1), "x");
    const auto entry = std::make_unique<TestListEntry>(test);
    EXPECT_EQ(DateTime(entry->acquisitionTime).MillisecondsSince(test.acquisitionTime), 0);
    EXPECT_EQ(DateTime(entry->lastChangeTime).MillisecondsSince(DateTime(2013, 12, 1)), 0);
    EXPECT_EQ(std::strlen(entry->text6570), 503u);
    EXPECT_STREQ(entry->patientId, "A-1");
    EXPECT_EQ(entry->testType, 2u);
    char text[40];
    entry->SortName(text, sizeof text);
    EXPECT_STREQ(text, "Rossi, Anna Maria");
    EXPECT_TRUE(entry->AcquisitionText(text, sizeof text, test::Italian()));
    EXPECT_STREQ(text, "05/11/2013, 14:05");
    EXPECT_FALSE(entry->AcquisitionText(text, 5, test::Italian()));
}

TEST(TestListEntry, FlagsFollowTheReportState) {
    const std::pair<std::uint8_t, std::uint32_t> rows[] = {{0, 0}, {1, 1}, {2, 2}, {3, 4}, {9, 0}};
    for (const auto& [state, flags] : rows) {
        TestRecord test;
        test.reportState = state;
        EXPECT_EQ(std::make_unique<TestListEntry>(test)->stateFlags, flags) << int{state};
    }
    const std::pair<const char*, std::uint32_t> texts[] = {{"1", 1}, {"8x", 8}, {"0", 0}, {"9", 0}, {"", 0}, {"x", 0}};
    for (const auto& [text, flags] : texts) {
        const auto entry = Entry();
        entry->stateFlags = 77;
        entry->SetStateFlags(text);
        EXPECT_EQ(entry->stateFlags, flags) << text;
    }
    const auto entry = Entry();
    entry->stateFlags = 77;
    entry->SetStateFlags(nullptr);
    EXPECT_EQ(entry->stateFlags, 0u);
}

TEST(TestListEntry, IsComparedToTheSecond) {
    const auto entry = Entry();
    std::strcpy(entry->patientId, "A");
    entry->acquisitionTime = entry->lastChangeTime = DateTime(2013, 11, 5, 14, 5, 9, 50);
    const struct {
        const char* id;
        DateTime time;
        bool same;
        bool newer;
    } rows[] = {
        {"A", {2013, 11, 5, 14, 5, 9, 99}, true, false},
        {"B", {2013, 11, 5, 14, 5, 9}, false, false},
        {"A", {2013, 11, 5, 14, 5, 8}, false, true},
        {"A", {2013, 11, 5, 14, 6, 0}, false, false},
        {"A", {2013, 10, 31, 23, 59, 59}, false, true},
        {"A", {2013, 11, 6}, false, false},
        {"A", {2012, 12, 31}, false, true},
    };
    for (const auto& row : rows) {
        const auto other = Entry();
        std::strcpy(other->patientId, row.id);
        other->acquisitionTime = other->lastChangeTime = row.time;
        EXPECT_EQ(entry->SameTest(other.get()), row.same) << row.id << ' ' << row.time.Month();
        EXPECT_EQ(entry->IsNewerThan(other.get()), row.newer) << row.id << ' ' << row.time.Month();
    }
    EXPECT_FALSE(entry->SameTest(nullptr));
    EXPECT_FALSE(entry->IsNewerThan(nullptr));
}

}  // namespace
}  // namespace kx
