// Records as files: header, samples and wave marks; a broken one opens nothing and says why in one line.
#include <cctype>

#include "host/recording/open_recording.h"
#include "host/recording/wfdb/annotations.h"
#include "host/recording/wfdb/wfdb_header.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "host/recording/wfdb/wfdb_samples.h"
#include "lib/timestmp.h"
#include "tests/unit/recording/record_files.h"

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
        int format, samplesPerFrame, skew;
        std::uint64_t byteOffset;
        double gain, baseline;
        const char* units = "mV";
    } rows[] = {{"16", 16, 1, 0, 0, 0, 0},
                {"212 2000", 212, 1, 0, 0, 2000, 0},
                {"16+24 1716(-6)/mV 16 0", 16, 1, 0, 24, 1716, -6},
                {"212x4 200/uV 12 1024", 212, 4, 0, 0, 200, 1024, "uV"},  // the converter's zero stands in for the baseline
                {"16:7 200(512)/V 12 1024", 16, 1, 7, 0, 200, 512, "V"},  // but a baseline goes before it
                {"212x2:3+512 1e3", 212, 2, 3, 512, 1000, 0},
                {"16 -500(+3)", 16, 1, 0, 0, -500, 3}};
    for (const auto& row : rows) {
        const WfdbSignal s = Parsed(std::string("r 1\nr.dat ") + row.fields + "\n").signals.at(0);
        EXPECT_TRUE(s.format == row.format && s.samplesPerFrame == row.samplesPerFrame && s.skew == row.skew) << row.fields;
        EXPECT_TRUE(s.byteOffset == row.byteOffset && s.gain == row.gain && s.baseline == row.baseline && s.units == row.units)
            << row.fields;
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
    const struct {
        const char* comments;
        int age;
        Sex sex;
        std::vector<std::string> diagnoses;
        int year;
    } rows[] = {
        {"#<age>: 51\n#<sex>: F\n#<diagnoses>:\n#Rhythm: Sinus.\n#Left axis. \n", 51, Sex::kFemale, {"Rhythm: Sinus.", "Left axis."}, 0},
        {"# age: 81\n# sex: female\n# ECG date: 01/10/1990\n# Diagnose:\n# Reason: x\n#\n# other\n", 81, Sex::kFemale, {"Reason: x"}, 1990},
        {"#Age: 85\n#Sex: Male\n#Dx: 164889003, 59118001,164934002\n#Rx: no\n", 85, Sex::kMale, {"164889003", "59118001", "164934002"}, 0},
        {"#Age: NaN\n#Sex: Unknown\n", -1, Sex::kUnknown, {}, 0},
        {"#Age: 300\n# age: 3 months\n# ECG date: 31/02/1990\n", -1, Sex::kUnknown, {}, 0}};
    for (const auto& row : rows) {
        const WfdbHeader header = Parsed(std::string("r 1\nr.dat 16\n") + row.comments);
        EXPECT_TRUE(header.ageYears == row.age && header.sex == row.sex && header.baseTime.year == row.year) << row.comments;
        EXPECT_EQ(header.diagnoses, row.diagnoses) << row.comments;
    }
}

TEST(WfdbHeader, RefusesWhatItDoesNotUnderstandInOneLine) {
    const std::pair<const char*, const char*> rows[] = {{"# only a comment\n", "no record line"},
                                                        {"r\nr.dat 16\n", "line 1: the number of signals is missing"},
                                                        {"r/3 1\n", "several segments"},
                                                        {"..\\r 1\n", "no record name"},
                                                        {"r x\n", "line 1: the number of signals 'x' is no number"},
                                                        {"r 0\n", "out of range"},
                                                        {"r 1 0\nr.dat 16\n", "the sampling rate '0' is out of range"},
                                                        {"r 1 500 many\nr.dat 16\n", "number of samples 'many'"},
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
                                                        {"r 1\nr.dat 16 1000 bits\n", "line 2: the resolution 'bits' is no number"},
                                                        {"r 1\nr.dat 16 1000 16 0 1.5\n", "first sample"},
                                                        {"r 1\nr.dat 16 1000 16 0 1 4294967296\n", "checksum"}};
    for (const auto& [text, says] : rows) {
        std::string error;
        EXPECT_FALSE(ParseWfdbHeader(text, error)) << text;
        EXPECT_THAT(error, AllOf(HasSubstr(says), Not(HasSubstr("\n")))) << text;
    }
}

Recording Opened(const RecordFolder& folder, const ReadOptions& options = {}) {
    std::string error;
    auto recording = ReadWfdb(folder.Header(), options, error);
    EXPECT_TRUE(recording) << error;
    return recording ? std::move(*recording) : Recording{};
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), ::tolower);
    return text;
}

TEST(WfdbReader, GivesTheSamplesInMicrovoltsWhateverTheLayout) {
    const std::vector<std::string> odd = {"I", "II", "III", "aVR", "aVL", "aVF", "V1", "V2", "V3", "V4", "V5", "V6", "vx"};
    const std::vector<std::string> backwards = {"v6", "V5", "resp", "V4", "V3", "V2", "V1", "AVF", "vz", "aVL", "avr", "iii", "II", "I"};
    const struct {
        const char* name;
        Layout layout;
        double microvoltsPerUnit, baseline;
    } rows[] = {{"format 16", {}, 1, 0},
                {"format 212, an odd number of samples", {.names = odd, .format = 212, .count = 61}, 1, 0},
                {"24 bytes before the samples", {.formatSuffix = "+24", .byteOffset = 24}, 1, 0},
                {"baseline", {.gain = "1716(-6)/mV"}, 1000.0 / 1716, -6},
                {"the micro sign", {.gain = "0.5/\xC2\xB5V"}, 2, 0},
                {"volts", {.gain = "1000000/V"}, 1, 0},
                {"no gain stated", {.gain = "0"}, 5, 0},
                {"three files", {.signalsPerFile = 5}, 1, 0},
                {"backwards in any letter case, other signals between", {.names = backwards}, 1, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Layout& layout = row.layout;
        const RecordFolder folder;
        folder.Write(layout);
        const Recording recording = Opened(folder);
        ASSERT_EQ(recording.SampleCount(), layout.count);
        EXPECT_TRUE(recording.sampleRate == 500 && recording.gaps.empty() && recording.remarks.empty() == (layout.gain != "0"));
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            const auto signal = std::find_if(layout.names.begin(), layout.names.end(),
                                             [lead](const auto& name) { return Lower(name) == Lower(kLeadNames[lead]); });
            for (std::size_t i = 0; i < layout.count; ++i) {
                const auto place = static_cast<std::size_t>(signal - layout.names.begin());
                ASSERT_NEAR(recording.leads[lead][i], (SampleOf(place, i) - row.baseline) * row.microvoltsPerUnit, 1e-3)
                    << *signal << " " << i;
            }
        }
    }
    const RecordFolder folder;
    folder.Write({.gain = "1716(6)/mV"});
    EXPECT_NEAR(Opened(folder, {.unitsPerMv = 1000}).leads[kLeadII][9], SampleOf(1, 9) - 6, 1e-3);
}

// Lead II misses 10 to 13, V6 12 to 15 and its end.
template <int kMissing>
std::int16_t WithGaps(std::size_t signal, std::size_t i) {
    const bool missing = (signal == 1 && i >= 10 && i < 14) || (signal == 11 && ((i >= 12 && i < 16) || i >= 58));
    return missing ? std::int16_t{kMissing} : SampleOf(signal, i);
}

TEST(WfdbReader, BridgesMissingSamplesAndListsThem) {
    for (const bool wide : {true, false}) {
        const RecordFolder folder;
        folder.Write({.format = wide ? 16 : 212, .sample = wide ? WithGaps<-32768> : WithGaps<-2048>});
        const Recording recording = Opened(folder);
        ASSERT_EQ(recording.gaps.size(), 2u);
        EXPECT_TRUE(recording.gaps[0].first == 10 && recording.gaps[0].end == 16 && recording.gaps[1].first == 58 &&
                    recording.gaps[1].end == 60);
        EXPECT_FALSE(recording.remarks.empty());
        EXPECT_NEAR(recording.leads[kLeadII][11], SampleOf(1, 9) + (SampleOf(1, 14) - SampleOf(1, 9)) * 2 / 5.0, 0.01);
        EXPECT_NEAR(recording.leads[11][59], SampleOf(11, 57), 0.01);
    }
    EXPECT_EQ(Decode212(std::vector<std::uint8_t>{0xFF, 0xF7, 0x00, 0x00, 0x78, 0xFF}, 4),
              (std::vector<std::int16_t>{2047, -256, -2048, 2047}));
}

using Harm = std::function<void(const RecordFolder&)>;
Harm InHeader(const std::string& from, const std::string& to) {
    return [=](const RecordFolder& folder) { folder.WriteText("r.hea", Replaced(folder.Text("r.hea"), from, to)); };
}
Harm Cut(const char* file, std::uint64_t size) {
    return [=](const RecordFolder& folder) { folder.Resize(file, size); };
}
Harm Without(const char* file) {
    return [=](const RecordFolder& folder) { std::filesystem::remove(folder.Header().parent_path() / file); };
}
void DamageASample(const RecordFolder& folder) {
    std::string data = folder.Text("r.dat");
    data[700] = static_cast<char>(data[700] ^ 0x10);
    folder.WriteText("r.dat", data);
}
void MixFiles(const RecordFolder& folder) {
    const std::string third = "16 1000/mV 16 0 " + std::to_string(SampleOf(2, 0)),
                      seventh = "16 1000/mV 16 0 " + std::to_string(SampleOf(6, 0));
    const std::string text = Replaced(folder.Text("r.hea"), "r1.dat " + seventh, "rx.dat " + seventh);
    folder.WriteText("r.hea", Replaced(text, "r0.dat " + third, "r1.dat " + third));
}
std::int16_t NoFourthLead(std::size_t signal, std::size_t i) { return signal == 3 ? std::int16_t{-32768} : SampleOf(signal, i); }

TEST(WfdbReader, OpensNothingOfABrokenRecord) {
    std::vector<std::string> twice = Layout().names, missing = twice;
    twice[7] = "v1";
    missing[7] = "vx";
    const Harm none = [](const RecordFolder&) {};
    const struct {
        Layout layout;
        Harm harm;
        const char* says;
    } rows[] = {{{}, Without("r.hea"), "r.hea"},
                {{}, Cut("r.hea", 200), "r.hea"},
                {{}, Without("r.dat"), "r.dat"},
                {{}, Cut("r.dat", 12 * 60 * 2 - 1), "holds 59 of the 60 samples"},
                {{.format = 212}, Cut("r.dat", 12 * 60 * 3 / 2 - 1), "samples per signal"},
                {{}, InHeader(" 16 1000", " 16+99999 1000"), "byte offset"},
                {{.names = missing}, none, "lead V2 is missing"},
                {{.names = twice}, none, "lead V1 is there twice"},
                {{}, InHeader(" 16 1000", " 80 1000"), "signal format 80 is not read"},
                {{.formatSuffix = "x2"}, none, "per frame"},
                {{.formatSuffix = ":2"}, none, "skewed"},
                {{.gain = "10/mmHg"}, none, "no voltage"},
                {{.gain = "1e-9/mV"}, none, "out of range"},
                {{}, InHeader("16 0 -900 ", "16 0 -901 "), "first sample of I is -900"},
                {{}, DamageASample, "checksum"},
                {{}, InHeader("r 12 500 60", "r 12 500 1000001"), "longer than"},
                {{.rate = "50", .count = 100'001}, none, "longer than half an hour"},
                {{.rate = "0.02"}, none, "sampling rate is too low"},
                {{}, InHeader("r 12 500 60", "r 12 500 999999"), "holds 60 of the"},
                {{.sample = NoFourthLead}, none, "holds no value"},
                {{.signalsPerFile = 6}, MixFiles, "do not stand together"}};
    for (const auto& row : rows) {
        const RecordFolder folder;
        folder.Write(row.layout);
        row.harm(folder);
        std::string error;
        EXPECT_FALSE(ReadWfdb(folder.Header(), {}, error)) << row.says;
        EXPECT_THAT(error, AllOf(HasSubstr(row.says), HasSubstr(": "), Not(HasSubstr("\n"))));
    }
}

constexpr unsigned Mark(unsigned code, unsigned interval) { return code << 10 | interval; }

std::string Marks(std::initializer_list<unsigned> words, std::size_t bytesLeftOut = 0) {
    std::vector<std::uint8_t> bytes;
    for (const unsigned word : words) {
        bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    bytes.resize(bytes.size() - bytesLeftOut);
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
    EXPECT_EQ(Marks({Mark(60, 1), Mark(61, 1), Mark(63, 2), 'x', 0}), "") << "escapes before any mark belong to none";
}

TEST(Annotations, KeepWhatACutFileHoldsInWhole) {
    for (std::size_t left = 1; left <= 18; ++left) {
        const std::string kept =
            Marks({Mark(kNormalBeat, 9), Mark(63, 4), 'a' | 'b' << 8, 'c' | 'd' << 8, Mark(59, 0), 1, 1, Mark(kTWavePeak, 1), 0}, left);
        EXPECT_EQ(std::count(kept.begin(), kept.end(), '@'), left > 16 ? 0 : left > 2 ? 1 : 2) << left;
        EXPECT_THAT(kept, testing::EndsWith("cut")) << left;
    }
    std::string error;
    EXPECT_FALSE(ReadAnnotations("no/such/file.ii", error));
    EXPECT_THAT(error, AllOf(HasSubstr("file.ii"), Not(HasSubstr("\n"))));
}

}  // namespace
}  // namespace kx::recording
