// Records as files: header, samples and wave marks; a broken one opens nothing and says why in one line.
#include <cctype>
#include <map>

#include "host/recording/open_recording.h"
#include "host/recording/wfdb/annotations.h"
#include "host/recording/wfdb/wfdb_header.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "host/recording/wfdb/wfdb_samples.h"
#include "lib/timestmp.h"
#include "tests/unit/recording/replaced.h"

namespace kx::recording {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

WfdbHeader Parsed(const std::string& text) {
    std::string error;
    const auto header = ParseWfdbHeader(text, error);
    EXPECT_TRUE(header) << text << ": " << error;
    return header.value_or(WfdbHeader{});
}

TEST(WfdbHeader, ReadsASignalLineInEveryForm) {
    const struct {
        const char* fields;
        int format, samplesPerFrame, skew, byteOffset;
        double gain, baseline;
        const char* units = "mV";
    } rows[] = {{"16", 16, 1, 0, 0, 0, 0},
                {"212 2000", 212, 1, 0, 0, 2000, 0},
                {"16+24 1716(-6)/mV 16 0", 16, 1, 0, 24, 1716, -6},
                {"212x4 200/uV 12 1024", 212, 4, 0, 0, 200, 1024, "uV"},  // the converter's zero stands in for the baseline
                {"16:7 200(512)/V 12 1024", 16, 1, 7, 0, 200, 512, "V"},  // but a baseline goes before it
                {"212x2:3+512 1e3", 212, 2, 3, 512, 1000, 0},
                {"16 200 16 7 -5 9 0", 16, 1, 0, 0, 200, 7}};
    for (const auto& row : rows) {
        const WfdbSignal s = Parsed(std::string("r 1\nr.dat ") + row.fields + "\n").signals.at(0);
        EXPECT_TRUE(s.format == row.format && s.samplesPerFrame == row.samplesPerFrame && s.skew == row.skew) << row.fields;
        EXPECT_TRUE(static_cast<int>(s.byteOffset) == row.byteOffset && s.gain == row.gain && s.baseline == row.baseline) << row.fields;
        EXPECT_EQ(s.units, row.units);
    }
}

TEST(WfdbHeader, TakesDefaultsTimesAndDescriptions) {
    const WfdbHeader bare = Parsed("# before the record line\r\n\r\nr 1\r\nr.dat 16\r\n");
    EXPECT_TRUE(bare.name == "r" && bare.sampleRate == 250 && bare.sampleCount == 0 && bare.baseTime.year == 0);
    EXPECT_FALSE(bare.signals[0].initialValue || bare.signals[0].checksum || bare.signals[0].description != "");
    const WfdbHeader full =
        Parsed("s_1-2.a 1 999.5/500(0) 4000 9:05:07.25 29/02/2024\nd.mat 16+24 1000/mV 16 -3 -115 65100 0 lead  aVR \n");
    EXPECT_TRUE(full.name == "s_1-2.a" && full.sampleRate == 999.5 && full.sampleCount == 4000);
    EXPECT_EQ(DateTime(full.baseTime).MillisecondsSince(DateTime(2024, 2, 29, 9, 5, 7, 25)), 0);
    EXPECT_TRUE(full.signals[0].initialValue == -115 && full.signals[0].checksum == 65100 && full.signals[0].description == "lead  aVR");
}

TEST(WfdbHeader, ReadsPatientsInTheStylesOfTheCollections) {
    const std::tuple<const char*, int, Sex, std::vector<std::string>, int> rows[] = {
        {"#<age>: 51\n#<sex>: F\n#<diagnoses>:\n#Rhythm: Sinus.\n#Left axis. \n", 51, Sex::kFemale, {"Rhythm: Sinus.", "Left axis."}, 0},
        {"# age: 81\n# sex: female\n# ECG date: 01/10/1990\n# Diagnose:\n# Reason: x\n#\n# other\n", 81, Sex::kFemale, {"Reason: x"}, 1990},
        {"#Age: 85\n#Sex: Male\n#Dx: 164889003, 59118001,164934002\n#Rx: no\n", 85, Sex::kMale, {"164889003", "59118001", "164934002"}, 0},
        {"#Age: NaN\n#Sex: Unknown\n", -1, Sex::kUnknown, {}, 0},
        {"#Age: 300\n# age: 3 months\n# ECG date: 31/02/1990\n", -1, Sex::kUnknown, {}, 0}};
    for (const auto& [comments, age, sex, diagnoses, year] : rows) {
        const WfdbHeader header = Parsed(std::string("r 1\nr.dat 16\n") + comments);
        EXPECT_TRUE(header.ageYears == age && header.sex == sex && header.baseTime.year == year) << comments;
        EXPECT_EQ(header.diagnoses, diagnoses) << comments;
    }
}

TEST(WfdbHeader, RefusesWhatItDoesNotUnderstandInOneLine) {
    const std::pair<const char*, const char*> rows[] = {{"# only a comment\n", "no record line"},
                                                        {"r\nr.dat 16\n", "line 1: the number of signals is missing"},
                                                        {"r/3 1\n", "several segments"},
                                                        {"..\\r 1\n", "no record name"},
                                                        {"r x\n", "line 1: the number of signals 'x' is no number"},
                                                        {"r 1 0\nr.dat 16\n", "the sampling rate '0' is out of range"},
                                                        {"r 1 500 10 25:00:00\nr.dat 16\n", "the time '25:00:00' is none"},
                                                        {"r 1 500 10 10:00:00 30/02/2000\nr.dat 16\n", "the date '30/02/2000' is none"},
                                                        {"r 2 500\nr.dat 16\n", "1 of the 2 signal lines"},
                                                        {"r 1\nr.dat 16\nr.dat 16\n", "line 3: more signal lines"},
                                                        {"r 1\nr.dat\n", "format is missing"},
                                                        {"r 1\nr.dat 16x0\n", "format"},
                                                        {"r 1\n../r.dat 16\n", "is not a name in the header's folder"},
                                                        {"r 1\nC:r.dat 16\n", "is not a name in the header's folder"},
                                                        {"r 1\nr.dat 16 inf/mV\n", "the gain 'inf/mV' is not understood"},
                                                        {"r 1\nr.dat 16 1000(0/mV\n", "gain"},
                                                        {"r 1\nr.dat 16 1000 16 0 1 4294967296\n", "checksum"}};
    for (const auto& [text, says] : rows) {
        std::string error;
        EXPECT_FALSE(ParseWfdbHeader(text, error)) << text;
        EXPECT_THAT(error, AllOf(HasSubstr(says), Not(HasSubstr("\n")))) << text;
    }
}

// Sample i of the n-th signal that is written; fits 12 bits.
std::int16_t SampleOf(std::size_t signal, std::size_t i) {
    return static_cast<std::int16_t>((static_cast<int>(i * (signal + 3)) * 37 + static_cast<int>(signal) * 91) % 1800 - 900);
}

// How a record of 500 samples a second, 1000 units a millivolt, is written.
struct Layout {
    std::vector<std::string> names = {"I", "II", "III", "aVR", "aVL", "aVF", "V1", "V2", "V3", "V4", "V5", "V6"};
    int format = 16;
    std::size_t count = 60;  // samples a signal
    std::int16_t (*sample)(std::size_t signal, std::size_t i) = SampleOf;
    std::size_t signalsPerFile = 99;
};

// Two of format 212: the low bytes around one of both high halves.
std::string Encoded(std::vector<std::int16_t> samples, int format) {
    const std::size_t size = format == 16 ? 2 * samples.size() : (3 * samples.size() + 1) / 2;
    samples.push_back(0);
    std::string bytes;
    for (std::size_t i = 0; bytes.size() < size; i += format == 16 ? 1 : 2) {
        const unsigned a = static_cast<std::uint16_t>(samples[i]), b = static_cast<std::uint16_t>(samples[i + 1]);
        bytes += static_cast<char>(a);
        bytes += static_cast<char>(format == 16 ? a >> 8 : (a >> 8 & 0xF) | (b >> 4 & 0xF0));
        bytes.append(format == 16 ? 0 : 1, static_cast<char>(b));
    }
    return bytes.substr(0, size);
}

// r.hea with r0.dat, r1.dat, ...
using Files = std::map<std::string, std::string>;
Files Written(const Layout& layout) {
    const std::size_t signals = layout.names.size();
    Files files;
    std::string header = "r " + std::to_string(signals) + " 500 " + std::to_string(layout.count) + "\n";
    for (std::size_t first = 0; first < signals; first += layout.signalsPerFile) {
        const std::size_t here = std::min(layout.signalsPerFile, signals - first);
        const std::string file = "r" + std::to_string(first / layout.signalsPerFile) + ".dat";
        std::vector<std::int16_t> samples, sums(here);
        for (std::size_t i = 0; i < layout.count * here; ++i) {
            samples.push_back(layout.sample(first + i % here, i / here));
            sums[i % here] = static_cast<std::int16_t>(sums[i % here] + samples.back());
        }
        files[file] = Encoded(samples, layout.format);
        for (std::size_t i = 0; i < here; ++i) {
            header += file + " " + std::to_string(layout.format) + " 1000/mV 16 0 " + std::to_string(samples[i]) + " " +
                      std::to_string(sums[i]) + " 0 " + layout.names[first + i] + "\n";
        }
    }
    files["r.hea"] = header;
    return files;
}

std::optional<Recording> Read(const Files& files, std::string& error, const ReadOptions& options = {}) {
    const auto bytes = [&](const std::filesystem::path& file, std::uint64_t, std::string& why) -> std::optional<std::vector<std::uint8_t>> {
        const auto found = files.find(file.string());
        if (found == files.end()) {
            why = file.string() + ": is not there";
            return std::nullopt;
        }
        return std::vector<std::uint8_t>(found->second.begin(), found->second.end());
    };
    return ReadWfdb("r.hea", options, bytes, error);
}

using Change = std::function<void(Files&)>;
Change InHeader(const std::string& from, const std::string& to) {
    return [=](Files& files) { files["r.hea"] = Replaced(files["r.hea"], from, to); };
}
void AsItIs(Files&) {}

TEST(WfdbReader, GivesTheSamplesInMicrovoltsWhateverTheLayout) {
    const std::vector<std::string> odd = {"I", "II", "III", "aVR", "aVL", "aVF", "V1", "V2", "V3", "V4", "V5", "V6", "vx"};
    const std::vector<std::string> backwards = {"v6", "V5", "resp", "V4", "V3", "V2", "V1", "AVF", "vz", "aVL", "avr", "iii", "II", "I"};
    const auto sameLead = [](std::string_view a, std::string_view b) { return std::ranges::equal(a, b, {}, ::tolower, ::tolower); };
    const Change offset = [](Files& files) {
        InHeader(" 16 1000", " 16+24 1000")(files);
        files["r0.dat"].insert(0, 24, '\xA5');
    };
    const struct {
        const char* name;
        Layout layout;
        Change change;
        double microvoltsPerUnit = 1, baseline = 0;
    } rows[] = {{"format 16", {}, AsItIs},
                {"format 212, an odd number of samples", {.names = odd, .format = 212, .count = 61}, AsItIs},
                {"24 bytes before the samples", {}, offset},
                {"baseline", {}, InHeader("1000/mV", "1716(-6)/mV"), 1000.0 / 1716, -6},
                {"the micro sign", {}, InHeader("1000/mV", "0.5/\xC2\xB5V"), 2},
                {"volts", {}, InHeader("1000/mV", "1000000/V")},
                {"no gain stated", {}, InHeader("1000/mV", "0"), 5},
                {"three files", {.signalsPerFile = 5}, AsItIs},
                {"backwards in any letter case, other signals between", {.names = backwards}, AsItIs}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Files files = Written(row.layout);
        row.change(files);
        std::string error;
        const Recording recording = Read(files, error).value();
        ASSERT_EQ(recording.SampleCount(), row.layout.count);
        EXPECT_TRUE(recording.sampleRate == 500 && recording.gaps.empty() && recording.remarks.empty() == (row.microvoltsPerUnit != 5));
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            std::size_t place = 0;
            while (!sameLead(row.layout.names[place], kLeadNames[lead])) {
                ++place;
            }
            for (std::size_t i = 0; i < row.layout.count; ++i) {
                ASSERT_NEAR(recording.leads[lead][i], (SampleOf(place, i) - row.baseline) * row.microvoltsPerUnit, 1e-3)
                    << lead << " " << i;
            }
        }
    }
    Files files = Written({});
    InHeader("1000/mV", "1716(6)/mV")(files);
    std::string error;
    EXPECT_NEAR(Read(files, error, {.unitsPerMv = 1000}).value().leads[kLeadII][9], SampleOf(1, 9) - 6, 1e-3);
}

// Lead II misses 10 to 13, V6 12 to 15 and its end.
template <int kMissing>
std::int16_t WithGaps(std::size_t signal, std::size_t i) {
    const bool missing = (signal == 1 && i >= 10 && i < 14) || (signal == 11 && ((i >= 12 && i < 16) || i >= 58));
    return missing ? std::int16_t{kMissing} : SampleOf(signal, i);
}

TEST(WfdbReader, BridgesMissingSamplesAndListsThem) {
    for (const auto& layout : {Layout{.sample = WithGaps<-32768>}, Layout{.format = 212, .sample = WithGaps<-2048>}}) {
        std::string error;
        const Recording recording = Read(Written(layout), error).value();
        const auto& gaps = recording.gaps;
        ASSERT_EQ(gaps.size(), 2u);
        EXPECT_TRUE(gaps[0].first == 10 && gaps[0].end == 16 && gaps[1].first == 58 && gaps[1].end == 60 && !recording.remarks.empty());
        EXPECT_NEAR(recording.leads[kLeadII][11], SampleOf(1, 9) + (SampleOf(1, 14) - SampleOf(1, 9)) * 2 / 5.0, 0.01);
        EXPECT_NEAR(recording.leads[11][59], SampleOf(11, 57), 0.01);
    }
    const struct {
        int format;
        std::vector<std::uint8_t> bytes;
        std::vector<std::int32_t> samples;
    } rows[] = {{24, {0xFE, 0xFF, 0xFF, 0}, {-2}},
                {32, {0xFE, 0xFF, 0xFF, 0xFF}, {-2}},
                {61, {0x80, 1}, {-32767}},
                {80, {0, 0x81}, {-128, 1}},
                {160, {0xFF, 0x7F}, {-1}},
                {212, {0xFF, 0xF7, 0, 0, 0x78, 0xFF}, {2047, -256, -2048, 2047}},
                {310, {0xFE, 7, 2, 0x80, 4, 0}, {-1, 1, -512, 2}},
                {311, {0xFF, 7, 0, 0x20, 4, 0}, {-1, 1, -512, 4}}};
    for (const auto& row : rows) {
        EXPECT_EQ(DecodeSamples(row.format, row.bytes, 9), row.samples) << row.format;
    }
}

Change Cut(const char* file, std::size_t size) {
    return [=](Files& files) { files[file].resize(size); };
}
Change Without(const char* file) {
    return [=](Files& files) { files.erase(file); };
}
void DamageASample(Files& files) { files["r0.dat"][700] ^= 0x10; }
void MixFiles(Files& files) {
    std::string& header = files["r.hea"];
    const std::size_t third = header.find("r0.dat", header.find("r0.dat", header.find("r0.dat") + 1) + 1);
    header[third + 1] = '1';
}
std::int16_t NoFourthLead(std::size_t signal, std::size_t i) { return signal == 3 ? std::int16_t{-32768} : SampleOf(signal, i); }

TEST(WfdbReader, OpensNothingOfABrokenRecord) {
    const struct {
        Layout layout;
        Change harm;
        const char* says;
    } rows[] = {{{}, Without("r.hea"), "r.hea"},
                {{}, Cut("r.hea", 200), "r.hea"},
                {{}, Without("r0.dat"), "r0.dat"},
                {{}, Cut("r0.dat", 12 * 60 * 2 - 1), "holds 59 of the 60 samples"},
                {{.format = 212}, Cut("r0.dat", 12 * 60 * 3 / 2 - 1), "samples per signal"},
                {{}, InHeader(" 16 1000", " 16+99999 1000"), "byte offset"},
                {{}, InHeader(" V2\n", " vx\n"), "lead V2 is missing"},
                {{}, InHeader(" V2\n", " v1\n"), "lead V1 is there twice"},
                {{}, InHeader(" 16 1000", " 81 1000"), "signal format 81 is not read"},
                {{}, InHeader(" 16 1000", " 16x2 1000"), "per frame"},
                {{}, InHeader(" 16 1000", " 16:2 1000"), "skewed"},
                {{}, InHeader("1000/mV", "10/mmHg"), "no voltage"},
                {{}, InHeader("1000/mV", "1e-9/mV"), "out of range"},
                {{}, InHeader("16 0 -900 ", "16 0 -901 "), "first sample of I is -900"},
                {{}, DamageASample, "checksum"},
                {{}, InHeader("r 12 500 60", "r 12 500 1000001"), "longer than"},
                {{.count = 100'001}, InHeader("r 12 500", "r 12 50"), "longer than half an hour"},
                {{}, InHeader("r 12 500", "r 12 0.02"), "sampling rate is too low"},
                {{}, InHeader("r 12 500 60", "r 12 500 999999"), "holds 60 of the"},
                {{.sample = NoFourthLead}, AsItIs, "holds no value"},
                {{.signalsPerFile = 6}, MixFiles, "do not stand together"}};
    for (const auto& row : rows) {
        Files files = Written(row.layout);
        row.harm(files);
        std::string error;
        EXPECT_FALSE(Read(files, error)) << row.says;
        EXPECT_THAT(error, AllOf(HasSubstr(row.says), HasSubstr(": "), Not(HasSubstr("\n"))));
    }
    std::string error;
    EXPECT_FALSE(ReadWfdb("no/such/record", {}, error));
    EXPECT_THAT(error, AllOf(HasSubstr("record.hea"), Not(HasSubstr("\n"))));
}

constexpr unsigned Mark(unsigned code, unsigned interval) { return code << 10 | interval; }

std::string Marks(std::initializer_list<unsigned> words) {
    std::vector<std::uint8_t> bytes;
    for (const unsigned word : words) {
        bytes.insert(bytes.end(), {static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>(word >> 8)});
    }
    bool truncated = false;
    std::string text;
    for (const auto& mark : ParseAnnotations(bytes, &truncated)) {
        text += std::to_string(mark.code) + "@" + std::to_string(mark.sample) + "," + std::to_string(mark.number) + "," +
                std::to_string(mark.subtype) + "," + std::to_string(mark.channel) + mark.text + " ";
    }
    return text + (truncated ? "cut" : "");
}

TEST(Annotations, CountSamplesFromOneToTheNextAndFollowTheEscapes) {
    EXPECT_EQ(Marks({Mark(kWaveOnset, 100), Mark(kNormalBeat, 20), Mark(kTWavePeak, 1023), 0, Mark(kNormalBeat, 1)}),
              "39@100,0,0,0 1@120,0,0,0 27@1143,0,0,0 ");
    EXPECT_EQ(Marks({Mark(59, 0), 0x0001, 0x86A0,                    // 100000 samples on, the high word first
                     Mark(kNormalBeat, 5),                           //
                     Mark(60, 0xFF), Mark(61, 3),                    // number -1, subtype 3
                     Mark(62, 2), Mark(63, 3), 'a' | 'b' << 8, 'c',  // channel 2, text "abc", padded
                     Mark(kTWavePeak, 10),                           // number and channel hold on
                     Mark(59, 0), 0xFFFF, 0xFFF6,                    // 10 samples back
                     Mark(kWaveOffset, 0), Mark(0, 7), Mark(55, 3),  // codes that are no marks only move on
                     Mark(kPWavePeak, 0), 0}),
              "1@100005,-1,3,2abc 27@100015,-1,0,2 40@100005,-1,0,2 24@100015,-1,0,2 ");
    EXPECT_EQ(Marks({Mark(kNormalBeat, 9), Mark(63, 4), 'a' | 'b' << 8}), "1@9,0,0,0ab cut");
    EXPECT_EQ(Marks({Mark(60, 1), Mark(61, 1), Mark(63, 2), 'x', 0}), "") << "escapes before any mark belong to none";
}

}  // namespace
}  // namespace kx::recording
