// The reference that a measurement is judged by, on marks whose sense is known.
#include <gtest/gtest.h>

#include "tests/evaluation/boundaries.h"
#include "tests/evaluation/error_table.h"
#include "tests/evaluation/marked_beats.h"

namespace kx::evaluation {
namespace {

using recording::Annotation;
using recording::kNormalBeat;
using recording::kPWavePeak;
using recording::kTWavePeak;
using recording::kWaveOffset;
using recording::kWaveOnset;

Annotation Mark(std::int64_t sample, std::uint8_t code) {
    return {sample, code, 0, 0, 0, {}};
}

TEST(MarkedBeats, AreJoinedFromTripletsWholeAndBroken) {
    // At 500 a second. T of a beat before the record; P without offset; QRS whole; T without onset; a P that
    // is not conducted and one that is; a T too far away to belong to its beat.
    const std::vector<Annotation> marks = {
        Mark(10, kTWavePeak),   Mark(20, kWaveOffset),  Mark(100, kWaveOnset),  Mark(110, kPWavePeak),
        Mark(150, kWaveOnset),  Mark(160, kNormalBeat), Mark(180, kWaveOffset), Mark(260, kTWavePeak),
        Mark(280, kWaveOffset), Mark(400, kWaveOnset),  Mark(420, kPWavePeak),  Mark(440, kWaveOffset),
        Mark(500, kPWavePeak),  Mark(510, kWaveOffset), Mark(560, kNormalBeat), Mark(950, kTWavePeak)};
    const auto beats = JoinMarks(marks, 500);
    ASSERT_EQ(beats.size(), 2u);
    ASSERT_TRUE(beats[0].p && beats[0].t && beats[1].p);
    EXPECT_EQ(beats[0].p->on, 200);
    EXPECT_FALSE(beats[0].p->off);
    EXPECT_EQ(beats[0].qrs.on, 300);
    EXPECT_EQ(beats[0].qrs.off, 360);
    EXPECT_FALSE(beats[0].t->on);
    EXPECT_EQ(beats[0].t->off, 560);
    EXPECT_EQ(beats[1].p->peak, 1000);
    EXPECT_FALSE(beats[1].qrs.on || beats[1].t);
}

MarkedBeat Beat(double peak, double on, double off) {
    return {.qrs = {.peak = peak, .on = peak + on, .off = peak + off}, .p = {}, .t = {}};
}

TEST(Reference, IsTheMedianOverTheBeatsInTheMedianBeat) {
    // Two leads; the second beat is not in the median beat, the last is not marked in lead 1.
    const std::vector<std::vector<MarkedBeat>> leads = {
        {Beat(1000, -40, 50), Beat(2000, -400, 400), Beat(3000, -44, 60), Beat(4000, -30, 52),
         Beat(5000, -38, 40)},
        {Beat(1004, -52, 40), Beat(3004, -90, 38), Beat(4004, -54, 44)}};
    const Reference reference = MakeReference(leads, {1000, 3000, 4000, 5000}, 450);
    EXPECT_EQ(reference.places.leads[0][kQrsOn], 450 - 39);
    EXPECT_EQ(reference.places.leads[0][kQrsOff], 450 + 51);
    EXPECT_EQ(reference.places.leads[1][kQrsOn], 450 - 50);
    // The earliest of the leads; the median of each beat's earliest: 48, 86, 50, 38.
    EXPECT_EQ(reference.places.global[kQrsOn], 450 - 50);
    EXPECT_EQ(reference.widestOfBeats[kQrsOn], 450 - 49);
    EXPECT_EQ(reference.places.global[kQrsOff], 450 + 51);
    // No P anywhere: a measured one is invented. In leads without marks nothing is.
    EXPECT_TRUE(reference.absent[0][kPOn] && reference.absentGlobal[kPOff]);
    EXPECT_FALSE(reference.absent[0][kQrsOn]);
}

TEST(Reference, CountsMissedAndInventedWaves) {
    Reference reference;
    reference.places.global[kPOn] = 200.0;
    reference.places.global[kQrsOn] = 400.0;
    reference.absentGlobal[kTOff] = true;
    BeatPlaces measured;
    measured.global[kQrsOn] = 397.0;
    measured.global[kTOff] = 700.0;
    measured.global[kPOff] = 300.0;  // neither marked nor marked absent
    const RecordErrors errors = Compare(reference, measured);
    EXPECT_EQ(errors.global[kPOn].missed, 1);
    EXPECT_EQ(errors.global[kTOff].invented, 1);
    EXPECT_EQ(errors.global[kPOff].missed + errors.global[kPOff].invented, 0);
    EXPECT_EQ(errors.global[kQrsOn].values, std::vector<double>{-3});
}

TEST(Errors, AreSummedUpByTheirUsualFigures) {
    const Errors errors{.values = {-4, 2, 8, 2}};
    EXPECT_EQ(errors.Mean(), 2);
    EXPECT_NEAR(errors.Deviation(), 4.899, 0.001);
    EXPECT_EQ(errors.Percentile95(), 8);
    EXPECT_EQ(Errors{}.Mean(), 0);
    EXPECT_EQ(Errors{}.Deviation(), 0);
}

}  // namespace
}  // namespace kx::evaluation
