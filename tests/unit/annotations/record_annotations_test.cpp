#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lib/annotation_store.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/collected_reports.h"

namespace {

using kx::AnnotationStore;
using kx::TestRecord;

// The sanitizer sees a store that is freed twice or never.
TEST(RecordAnnotations, AreMadeReplacedAndFreedWithTheRecord) {
    TestRecord test;
    EXPECT_EQ(nullptr, test.Annotations());
    EXPECT_EQ(nullptr, test.Annotations2());

    AnnotationStore* first = test.CreateAnnotations(4);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(first, test.Annotations());
    EXPECT_TRUE(first->AppendBeat(0, 1, 100, 0b111));

    ASSERT_NE(nullptr, test.CreateAnnotations2(2, false));
    EXPECT_EQ(1u, test.Annotations()->Count());

    EXPECT_EQ(0u, test.CreateAnnotations(3, true)->Count());
    EXPECT_EQ(0u, test.CreateAnnotations2(3)->Count());
    auto made = std::make_unique<AnnotationStore>(9);
    AnnotationStore* const address = made.get();
    EXPECT_EQ(address, test.ReplaceAnnotations(std::move(made)));
    EXPECT_EQ(9u, test.Annotations()->Capacity());
    EXPECT_EQ(nullptr, test.ReplaceAnnotations2(nullptr));
    EXPECT_EQ(nullptr, test.Annotations2());
}

TEST(RecordAnnotations, CurrentOneMustExist) {
    TestRecord test;
    kx::test::CollectedReports reports;
    EXPECT_FALSE(test.SetCurrentAnnotation(0, reports));
    test.CreateAnnotations(4);
    EXPECT_TRUE(test.SetCurrentAnnotation(0, reports)) << "also of an empty store";
    EXPECT_FALSE(test.IsModified());
    test.Annotations()->Append(1, 100);
    test.Annotations()->Append(1, 200);
    EXPECT_TRUE(test.SetCurrentAnnotation(1, reports));
    EXPECT_TRUE(test.IsModified());
    for (const std::uint32_t index : {2u, 4u, UINT32_MAX}) {
        EXPECT_FALSE(test.SetCurrentAnnotation(index, reports)) << index;
    }
    EXPECT_EQ(1u, test.currentAnnotation);
    EXPECT_EQ((std::vector<std::string>{
                  "..\\lib\\dbclient\\c_test: ann NULL", "..\\lib\\dbclient\\c_test: ann too large",
                  "..\\lib\\dbclient\\c_test: ann too large", "..\\lib\\dbclient\\c_test: ann too large"}),
              reports.texts);
}

}  // namespace
