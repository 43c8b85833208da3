// Wave marks in the MIT annotation format.
#include "host/recording/wfdb/annotations.h"

#include <gtest/gtest.h>

namespace kx::recording {
namespace {

std::vector<std::uint8_t> Words(std::initializer_list<unsigned> words) {
    std::vector<std::uint8_t> bytes;
    for (const unsigned word : words) {
        bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    return bytes;
}

constexpr unsigned Mark(unsigned code, unsigned interval) {
    return code << 10 | interval;
}

TEST(Annotations, CountSamplesFromOneToTheNext) {
    bool truncated = true;
    const auto marks =
        ParseAnnotations(Words({Mark(kWaveOnset, 100), Mark(kNormalBeat, 20), Mark(kWaveOffset, 25),
                                Mark(kTWavePeak, 1023), 0, Mark(kNormalBeat, 1)}),
                         &truncated);
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_FALSE(truncated);
    EXPECT_EQ(marks[0].sample, 100);
    EXPECT_EQ(marks[0].code, kWaveOnset);
    EXPECT_EQ(marks[2].sample, 145);
    EXPECT_EQ(marks[3].sample, 1168);
}

TEST(Annotations, FollowTheEscapes) {
    const auto marks = ParseAnnotations(
        Words({Mark(59, 0), 0x0001, 0x86A0,                    // 100000 samples on, the high word first
               Mark(kNormalBeat, 5),                           //
               Mark(60, 0xFF), Mark(61, 3),                    // number -1, subtype 3
               Mark(62, 2), Mark(63, 3), 'a' | 'b' << 8, 'c',  // channel 2, text "abc", padded
               Mark(kTWavePeak, 10),                           // number and channel hold on
               Mark(59, 0), 0xFFFF, 0xFFF6,                    // 10 samples back
               Mark(kWaveOffset, 0), Mark(0, 7), Mark(55, 3),  // codes that are no marks only move on
               Mark(kPWavePeak, 0), 0}));
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_EQ(marks[0].sample, 100005);
    EXPECT_EQ(marks[0].number, -1);
    EXPECT_EQ(marks[0].subtype, 3);
    EXPECT_EQ(marks[0].channel, 2);
    EXPECT_EQ(marks[0].text, "abc");
    EXPECT_EQ(marks[1].sample, 100015);
    EXPECT_EQ(marks[1].number, -1);
    EXPECT_EQ(marks[1].channel, 2);
    EXPECT_EQ(marks[1].subtype, 0);
    EXPECT_EQ(marks[1].text, "");
    EXPECT_EQ(marks[2].sample, 100005);
    EXPECT_EQ(marks[3].sample, 100015);
}

TEST(Annotations, KeepWhatACutFileHoldsInWhole) {
    const std::vector<std::uint8_t> whole =
        Words({Mark(kNormalBeat, 9), Mark(63, 4), 'a' | 'b' << 8, 'c' | 'd' << 8, Mark(59, 0), 1, 1,
               Mark(kTWavePeak, 1), 0});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<std::uint8_t> bytes(whole.begin(),
                                              whole.begin() + static_cast<std::ptrdiff_t>(size));
        bool truncated = false;
        const auto marks = ParseAnnotations(bytes, &truncated);
        EXPECT_TRUE(truncated) << size;
        EXPECT_EQ(marks.size(), size < 2 ? 0u : size < 16 ? 1u : 2u) << size;
    }
    // Escapes before any mark belong to none.
    EXPECT_TRUE(ParseAnnotations(Words({Mark(60, 1), Mark(61, 1), Mark(63, 2), 'x', 0})).empty());
}

TEST(Annotations, AFileThatIsNotThereIsOneLine) {
    std::string error;
    EXPECT_FALSE(ReadAnnotations("no/such/file.ii", error));
    EXPECT_NE(error.find("file.ii"), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

}  // namespace
}  // namespace kx::recording
