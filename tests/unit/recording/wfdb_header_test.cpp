// The text of a WFDB header: what is taken from it, and what is refused in one line.
#include "host/recording/wfdb/wfdb_header.h"

#include <gtest/gtest.h>

#include <cstring>

#include "lib/timestmp.h"

namespace kx::recording {
namespace {

WfdbHeader Parsed(const std::string& text) {
    std::string error;
    const auto header = ParseWfdbHeader(text, error);
    EXPECT_TRUE(header) << text << ": " << error;
    return header.value_or(WfdbHeader{});
}

TEST(WfdbHeader, ReadsAGainInEveryForm) {
    struct Row {
        const char* fields;  // after the format
        double gain, baseline;
        const char* units;
    };
    constexpr Row kRows[] = {
        {"", 0, 0, "mV"},
        {"2000", 2000, 0, "mV"},
        {"1000/mV", 1000, 0, "mV"},
        {"1716(-6)/mV 16 0", 1716, -6, "mV"},
        {"200/uV 12 1024", 200, 1024, "uV"},    // the converter's zero stands in for the baseline
        {"200(512)/V 12 1024", 200, 512, "V"},  // but a baseline goes before it
        {"1e3", 1000, 0, "mV"},
        {"-500(+3)", -500, 3, "mV"},
        {"0", 0, 0, "mV"},
    };
    for (const Row& row : kRows) {
        const WfdbHeader header = Parsed(std::string("r 1\nr.dat 16 ") + row.fields + "\n");
        ASSERT_EQ(header.signals.size(), 1u) << row.fields;
        EXPECT_EQ(header.signals[0].gain, row.gain) << row.fields;
        EXPECT_EQ(header.signals[0].baseline, row.baseline) << row.fields;
        EXPECT_EQ(header.signals[0].units, row.units) << row.fields;
    }
}

TEST(WfdbHeader, ReadsFormatsWithTheirSuffixes) {
    struct Row {
        const char* field;
        int format, samplesPerFrame, skew;
        std::uint64_t byteOffset;
    };
    constexpr Row kRows[] = {{"16", 16, 1, 0, 0},     {"212", 212, 1, 0, 0}, {"16+24", 16, 1, 0, 24},
                             {"212x4", 212, 4, 0, 0}, {"16:7", 16, 1, 7, 0}, {"212x2:3+512", 212, 2, 3, 512}};
    for (const Row& row : kRows) {
        const WfdbSignal signal = Parsed(std::string("r 1\nr.dat ") + row.field + "\n").signals.at(0);
        EXPECT_EQ(signal.format, row.format) << row.field;
        EXPECT_EQ(signal.samplesPerFrame, row.samplesPerFrame) << row.field;
        EXPECT_EQ(signal.skew, row.skew) << row.field;
        EXPECT_EQ(signal.byteOffset, row.byteOffset) << row.field;
    }
}

TEST(WfdbHeader, TakesDefaultsTimesAndDescriptions) {
    const WfdbHeader bare = Parsed("# before the record line\r\n\r\nr 1\r\nr.dat 16\r\n");
    EXPECT_EQ(bare.name, "r");
    EXPECT_EQ(bare.sampleRate, 250);
    EXPECT_EQ(bare.sampleCount, 0u);
    EXPECT_EQ(bare.baseTime.year, 0);
    EXPECT_EQ(bare.signals[0].description, "");
    EXPECT_FALSE(bare.signals[0].initialValue || bare.signals[0].checksum);

    const WfdbHeader full = Parsed(
        "s_1-2.a 1 999.5/500(0) 4000 9:05:07.25 29/02/2024\nd.mat 16+24 1000/mV 16 -3 -115 65100 0 lead  aVR "
        "\n");
    EXPECT_EQ(full.name, "s_1-2.a");
    EXPECT_EQ(full.sampleRate, 999.5);
    EXPECT_EQ(full.sampleCount, 4000u);
    const DateTime time(2024, 2, 29, 9, 5, 7, 25);
    EXPECT_EQ(std::memcmp(&full.baseTime, static_cast<const KxDateTime*>(&time), sizeof(KxDateTime)), 0);
    EXPECT_EQ(full.signals[0].initialValue, -115);
    EXPECT_EQ(full.signals[0].checksum, 65100);
    EXPECT_EQ(full.signals[0].description, "lead  aVR");
}

TEST(WfdbHeader, ReadsPatientsInTheStylesOfTheCollections) {
    struct Row {
        const char* comments;
        int age;
        Sex sex;
        std::vector<std::string> diagnoses;
        int year;
    };
    const Row kRows[] = {
        {"#<age>: 51\n#<sex>: F\n#<diagnoses>:\n#Rhythm: Sinus bradycardia.\n#Left axis. \n",
         51,
         Sex::kFemale,
         {"Rhythm: Sinus bradycardia.", "Left axis."},
         0},
        {"# age: 81\n# sex: female\n# ECG date: 01/10/1990\n# Diagnose:\n# Reason: infarction\n#\n# other\n",
         81,
         Sex::kFemale,
         {"Reason: infarction"},
         1990},
        {"#Age: 85\n#Sex: Male\n#Dx: 164889003, 59118001,164934002\n#Rx: Unknown\n",
         85,
         Sex::kMale,
         {"164889003", "59118001", "164934002"},
         0},
        {"#Age: NaN\n#Sex: Unknown\n", -1, Sex::kUnknown, {}, 0},
        {"#Age: 300\n# age: 3 months\n# ECG date: 31/02/1990\n", -1, Sex::kUnknown, {}, 0},
    };
    for (const Row& row : kRows) {
        const WfdbHeader header = Parsed(std::string("r 1\nr.dat 16\n") + row.comments);
        EXPECT_EQ(header.ageYears, row.age) << row.comments;
        EXPECT_EQ(header.sex, row.sex) << row.comments;
        EXPECT_EQ(header.diagnoses, row.diagnoses) << row.comments;
        EXPECT_EQ(header.baseTime.year, row.year) << row.comments;
    }
}

TEST(WfdbHeader, RefusesWhatItDoesNotUnderstandInOneLine) {
    struct Row {
        const char* text;
        const char* says;
    };
    const Row kRows[] = {
        {"", "no record line"},
        {"# only a comment\n", "no record line"},
        {"r\nr.dat 16\n", "line 1: the number of signals is missing"},
        {"r/3 1\n", "several segments"},
        {"..\\r 1\n", "no record name"},
        {"r x\n", "line 1: the number of signals 'x' is no number"},
        {"r 0\n", "out of range"},
        {"r 99999999999999999999\n", "is no number"},
        {"r 1 0\nr.dat 16\n", "the sampling rate '0' is out of range"},
        {"r 1 nan\nr.dat 16\n", "sampling rate"},
        {"r 1 500 many\nr.dat 16\n", "number of samples 'many'"},
        {"r 1 500 10 25:00:00\nr.dat 16\n", "the time '25:00:00' is none"},
        {"r 1 500 10 10:00:00 30/02/2000\nr.dat 16\n", "the date '30/02/2000' is none"},
        {"r 2 500\nr.dat 16\n", "1 of the 2 signal lines"},
        {"r 1\nr.dat 16\nr.dat 16\n", "line 3: more signal lines"},
        {"r 1\nr.dat\n", "format is missing"},
        {"r 1\nr.dat sixteen\n", "the format 'sixteen' is not understood"},
        {"r 1\nr.dat 16x0\n", "format"},
        {"r 1\nr.dat 16+-4\n", "format"},
        {"r 1\n../r.dat 16\n", "is not a name in the header's folder"},
        {"r 1\nC:r.dat 16\n", "is not a name in the header's folder"},
        {"r 1\nr.dat 16 inf/mV\n", "the gain 'inf/mV' is not understood"},
        {"r 1\nr.dat 16 1000(0/mV\n", "gain"},
        {"r 1\nr.dat 16 1000/\n", "gain"},
        {"r 1\nr.dat 16 1000 bits\n", "line 2: the resolution 'bits' is no number"},
        {"r 1\nr.dat 16 1000 16 0 1.5\n", "first sample"},
        {"r 1\nr.dat 16 1000 16 0 1 4294967296\n", "checksum"},
    };
    for (const Row& row : kRows) {
        std::string error;
        EXPECT_FALSE(ParseWfdbHeader(row.text, error)) << row.text;
        EXPECT_NE(error.find(row.says), std::string::npos) << row.text << ": " << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << row.text;
    }
}

}  // namespace
}  // namespace kx::recording
