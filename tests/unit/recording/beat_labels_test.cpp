#include "host/recording/beat_labels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "lib/annotation_store.h"
#include "lib/dbclient/test_record.h"

namespace {

using kx::recording::MedianBeat;

struct Row {
    const char* name;
    std::vector<int> intervals;
    std::string shapes;  // 'd' the dominant one
    std::vector<int> labels;
};

TEST(BeatLabels, FollowShapeAndTime) {
    for (const Row& row : {
             Row{"steady", {800, 800, 800}, "dddd", {1, 1, 1, 1}},
             Row{"early, same shape", {800, 600, 1000, 800, 800}, "dddddd", {1, 1, 9, 1, 1, 1}},
             Row{"just not early", {800, 640, 960, 800, 800}, "dddddd", {1, 1, 1, 1, 1, 1}},
             Row{"early, another shape", {800, 500, 1100, 800}, "ddxdd", {1, 1, 5, 1, 1}},
             Row{"late, another shape", {800, 1500, 800, 800}, "ddxdd", {1, 1, 13, 1, 1}},
             Row{"the first beat", {800, 800}, "xdd", {13, 1, 1}},
             Row{"bigeminy", {500, 1100, 500, 1100, 500}, "dxdxdx", {1, 5, 1, 5, 1, 5}},
             Row{"late at the end, another shape", {800, 800, 1100}, "dddx", {1, 1, 1, 13}},
             Row{"two beats", {500}, "dx", {1, 13}},
             Row{"irregular", {900, 500, 1200, 600, 850, 900, 640}, "dddddddd", {1, 1, 1, 1, 1, 1, 1, 1}},
             Row{"alone", {}, "d", {1}},
             Row{"none", {}, "", {}},
         }) {
        MedianBeat beat;
        std::vector<int> sorted = row.intervals;
        std::sort(sorted.begin(), sorted.end());
        beat.rrMs = sorted.empty() ? 0 : sorted[sorted.size() / 2];
        for (std::size_t i = 0; i < row.shapes.size(); ++i) {
            beat.beatsMs.push_back(i == 0 ? 300 : beat.beatsMs.back() + row.intervals[i - 1]);
            beat.dominant.push_back(row.shapes[i] == 'd');
            beat.kept.push_back(true);
        }
        kx::TestRecord test;
        ASSERT_TRUE(kx::recording::FillAnnotations(test, beat));
        const kx::AnnotationStore& store = *test.Annotations();
        std::vector<int> labels;
        for (std::uint32_t i = 0; i < store.Count(); ++i) {
            labels.push_back(store.Label(i));
            EXPECT_EQ(static_cast<std::uint32_t>(beat.beatsMs[i]), store.Time(i)) << row.name;
        }
        EXPECT_EQ(row.labels, labels) << row.name;
        EXPECT_FALSE(store.IsModified());
    }
}

TEST(BeatLabels, CarryTheHeartRate) {
    MedianBeat beat;
    beat.rrMs = 750;
    beat.beatsMs = {300, 1050, 1800};
    beat.dominant = beat.kept = {true, true, true};
    kx::TestRecord test;
    ASSERT_TRUE(kx::recording::FillAnnotations(test, beat));
    EXPECT_EQ(80, test.Annotations()->HeartRate(1));
}

}  // namespace
