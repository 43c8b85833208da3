#include "host/recording/beat_kinds.h"

namespace kx::recording {
namespace {

// 'd' the dominant shape, 'b' a broad other one, 'n' a narrow other one, 'e' one cut by the end, 'p' paced.
BeatSigns SignsOf(char shape, int ms) {
    switch (shape) {
        case 'b': return {ms, false, 0.4, 140, true, false};
        case 'n': return {ms, false, 0.6, 99, true, false};
        case 'e': return {ms, false, 0.1, 140, false, false};
        case 'p': return {ms, true, 1, 0, true, true};
        default: return {ms, true, 1, 0, true, false};
    }
}

TEST(BeatKinds, FollowShapeAndTime) {
    const auto kindsOf = [](const std::vector<int>& intervals, const std::string& shapes, bool atriaLead) {
        std::vector<BeatSigns> beats;
        int ms = 300;
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            ms += i == 0 ? 0 : intervals[i - 1];
            beats.push_back(SignsOf(shapes[i], ms));
        }
        return KindsOfBeats(beats, atriaLead);
    };
    const std::tuple<const char*, std::vector<int>, const char*, std::vector<std::uint8_t>> rows[] = {
        {"steady", {800, 800, 800}, "dddd", {1, 1, 1, 1}},
        {"early", {800, 680, 800, 800}, "ddddd", {1, 1, 9, 1, 1}},
        {"just not early", {800, 681, 810, 800}, "ddddd", {1, 1, 1, 1, 1}},
        {"no return", {800, 680, 799, 800}, "ddddd", {1, 1, 1, 1, 1}},
        {"early at the end", {800, 800, 800, 640}, "ddddd", {1, 1, 1, 1, 9}},
        {"early at the start, then steady", {600, 900, 800, 800}, "ddddd", {1, 9, 1, 1, 1}},
        {"the same, then not steady", {600, 900, 800, 1001}, "ddddd", {1, 1, 1, 1, 1}},
        {"atrial bigeminy", {800, 1150, 800, 1150, 800, 1150}, "ddddddd", {1, 1, 1, 9, 1, 9, 1}},
        {"early, broad", {800, 500, 1100, 800}, "ddbdd", {1, 1, 5, 1, 1}},
        {"early, narrow", {800, 500, 1100, 800}, "ddndd", {1, 1, 4, 1, 1}},
        {"late, broad", {800, 1500, 800, 800}, "ddbdd", {1, 1, 13, 1, 1}},
        {"the first beat", {800, 800}, "bdd", {13, 1, 1}},
        {"ventricular bigeminy", {500, 1100, 500, 1100, 500}, "dbdbdb", {1, 5, 1, 5, 1, 5}},
        {"cut at the end", {800, 800, 500}, "ddde", {1, 1, 1, 13}},
        {"two beats", {500}, "db", {1, 13}},
        {"paced", {500, 1100, 800}, "pbpp", {12, 5, 12, 12}},
        {"alone", {}, "d", {1}},
        {"none", {}, "", {}}};
    for (const auto& [name, intervals, shapes, kinds] : rows) {
        EXPECT_EQ(kinds, kindsOf(intervals, shapes, true)) << name;
    }
    EXPECT_EQ(kindsOf({800, 600, 1000, 800}, "ddndd", false), (std::vector<std::uint8_t>{1, 1, 13, 1, 1}));
    EXPECT_EQ(kindsOf({800, 600, 1000, 800}, "ddddd", false), (std::vector<std::uint8_t>{1, 1, 1, 1, 1}));
}

}  // namespace
}  // namespace kx::recording
