#include "host/report/measurement_listing.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <vector>

namespace kxhost {
namespace {

std::multimap<std::string, int> Parse(const std::string& text) {
    std::multimap<std::string, int> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t tab = line.find('\t');
        lines.emplace(line.substr(0, tab), std::stoi(line.substr(tab + 1)));
    }
    return lines;
}

TEST(MeasurementListing, GivesEveryValueItsOwnName) {
    KxMeasurementSet set{};
    set.pDuration = 104;
    set.prInterval = 162;
    set.qtInterval = 400;
    set.qtc = 412;
    set.qtcBazett = 421;
    set.qrsDuration = 92;
    set.rrInterval = 65535;
    set.pAxis = 55;
    set.qrsAxis = -30;
    set.tAxis = -32768;
    KxLeadMeasurements& first = set.leads[KX_LEAD_I];
    first.pOn = 1;
    first.pOff = 2;
    first.qrsOn = 3;
    first.qrsOff = 4;
    first.tOff = 5;
    // A different value in each field of one lead, none of them in any other.
    KxLeadMeasurements& lead = set.leads[KX_LEAD_AVL];
    lead.aP1 = 11;
    lead.aP2 = 12;
    lead.aQ = -13;
    lead.aR = 14;
    lead.aS = -15;
    lead.aR1 = 16;
    lead.aS1 = -17;
    lead.aT1 = 18;
    lead.aT2 = 19;
    lead.intrinsicoidDeflection = 20;
    lead.fieldValue251 = -21;
    lead.fieldValue263 = 22;
    lead.fieldValue275 = 60000;
    lead.pOnMarker = 24;
    lead.pPrimeOnMarker = 25;
    lead.pOffMarker = 26;
    lead.qOnMarker = 27;
    lead.rOnMarker = 28;
    lead.sOnMarker = 29;
    lead.rPrimeOnMarker = 30;
    lead.sPrimeOnMarker = 31;
    lead.qrsOffMarker = 32;
    lead.tOnMarker = 33;
    lead.tPrimeOnMarker = 34;
    lead.tOffMarker = 35;
    for (int k = 0; k < KX_ST_LEVELS; ++k)
        lead.stLevel[k] = static_cast<int16_t>(-100 - k);

    const std::vector<int> beats{350, 1350};
    const auto lines = Parse(ListMeasurements({"r", beats, 300, set}, false));

    const std::map<std::string, int> expected{
        {"rPeak", 300},
        {"pDuration", 104},
        {"prInterval", 162},
        {"qtInterval", 400},
        {"qtc", 412},
        {"qtcBazett", 421},
        {"qrsDuration", 92},
        {"rrInterval", 65535},
        {"pAxis", 55},
        {"qrsAxis", -30},
        {"tAxis", -32768},
        {"pOn", 1},
        {"pOff", 2},
        {"qrsOn", 3},
        {"qrsOff", 4},
        {"tOff", 5},
        {"aVL.aP1", 11},
        {"aVL.aP2", 12},
        {"aVL.aQ", -13},
        {"aVL.aR", 14},
        {"aVL.aS", -15},
        {"aVL.aR1", 16},
        {"aVL.aS1", -17},
        {"aVL.aT1", 18},
        {"aVL.aT2", 19},
        {"aVL.intrinsicoidDeflection", 20},
        {"aVL.fieldValue251", -21},
        {"aVL.fieldValue263", 22},
        {"aVL.fieldValue275", 60000},
        {"aVL.pOnMarker", 24},
        {"aVL.pPrimeOnMarker", 25},
        {"aVL.pOffMarker", 26},
        {"aVL.qOnMarker", 27},
        {"aVL.rOnMarker", 28},
        {"aVL.sOnMarker", 29},
        {"aVL.rPrimeOnMarker", 30},
        {"aVL.sPrimeOnMarker", 31},
        {"aVL.qrsOffMarker", 32},
        {"aVL.tOnMarker", 33},
        {"aVL.tPrimeOnMarker", 34},
        {"aVL.tOffMarker", 35},
        {"aVL.stLevel0", -100},
        {"aVL.stLevel9", -109},
        {"V6.aR", 0},
        {"aVR.stLevel3", 0},
    };
    for (const auto& [name, value] : expected) {
        ASSERT_EQ(lines.count(name), 1u) << name;
        EXPECT_EQ(lines.find(name)->second, value) << name;
    }
    ASSERT_EQ(lines.count("beat"), 2u);
    EXPECT_EQ(lines.find("beat")->second, 350);
    // Two beats, the alignment point, ten global values, five fiducial points, 25 values and ten ST levels a
    // lead.
    EXPECT_EQ(lines.size(), 2u + 1 + 10 + 5 + 12 * (25 + 10));
}

}  // namespace
}  // namespace kxhost
