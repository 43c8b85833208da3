// Records as files: what becomes of their samples, and that a broken one opens nothing.
#include "host/recording/wfdb/wfdb_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>

#include "host/recording/open_recording.h"
#include "host/recording/wfdb/wfdb_samples.h"
#include "tests/unit/recording/record_files.h"

namespace kx::recording {
namespace {

Recording Opened(const RecordFolder& folder, const std::string& name, const ReadOptions& options = {}) {
    std::string error;
    auto recording = ReadWfdb(folder.Header(), options, error);
    EXPECT_TRUE(recording) << name << ": " << error;
    return recording ? std::move(*recording) : Recording{};
}

struct Row {
    const char* name;
    Layout layout;
    double microvoltsPerUnit;
    double baseline;
};

TEST(WfdbReader, GivesTheSamplesInMicrovoltsWhateverTheLayout) {
    const std::vector<std::string> odd = {"I",  "II", "III", "aVR", "aVL", "aVF", "V1",
                                          "V2", "V3", "V4",  "V5",  "V6",  "vx"};
    const std::vector<std::string> backwards = {"v6",  "V5", "resp", "V4",  "V3",  "V2", "V1",
                                                "AVF", "vz", "aVL",  "avr", "iii", "II", "I"};
    const Row kRows[] = {
        {"format 16", {}, 1, 0},
        {"format 212", {.format = 212}, 1, 0},
        {"format 212, an odd number of samples", {.names = odd, .format = 212, .count = 61}, 1, 0},
        {"24 bytes before the samples", {.formatSuffix = "+24", .byteOffset = 24}, 1, 0},
        {"2000 units", {.gain = "2000"}, 0.5, 0},
        {"baseline", {.gain = "1716(-6)/mV"}, 1000.0 / 1716, -6},
        {"microvolts", {.gain = "0.5/uV"}, 2, 0},
        {"the micro sign", {.gain = "0.5/\xC2\xB5V"}, 2, 0},
        {"volts", {.gain = "1000000/V"}, 1, 0},
        {"no gain stated", {.gain = "0"}, 5, 0},
        {"a file for every lead", {.signalsPerFile = 1}, 1, 0},
        {"three files", {.signalsPerFile = 5}, 1, 0},
        {"backwards in any letter case, other signals between", {.names = backwards}, 1, 0},
    };
    for (const Row& row : kRows) {
        const Layout& layout = row.layout;
        const RecordFolder folder;
        folder.Write(layout);
        const Recording recording = Opened(folder, row.name);
        ASSERT_EQ(recording.SampleCount(), layout.count) << row.name;
        EXPECT_EQ(recording.sampleRate, 500) << row.name;
        EXPECT_TRUE(recording.gaps.empty()) << row.name;
        EXPECT_EQ(recording.remarks.empty(), layout.gain != "0") << row.name;
        for (std::size_t signal = 0; signal < layout.names.size(); ++signal) {
            for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
                std::string wanted = kLeadNames[lead], written = layout.names[signal];
                std::transform(wanted.begin(), wanted.end(), wanted.begin(), ::tolower);
                std::transform(written.begin(), written.end(), written.begin(), ::tolower);
                if (wanted != written) {
                    continue;
                }
                EXPECT_FALSE(recording.derived[lead]) << row.name;
                for (std::size_t i = 0; i < layout.count; ++i) {
                    ASSERT_NEAR(recording.leads[lead][i],
                                (SampleOf(signal, i) - row.baseline) * row.microvoltsPerUnit, 1e-3)
                        << row.name << ", " << written << "[" << i << "]";
                }
            }
        }
    }
}

TEST(WfdbReader, TakesStatedUnitsInPlaceOfAGain) {
    const RecordFolder folder;
    Layout layout;
    layout.gain = "1716(6)/mV";
    folder.Write(layout);
    const Recording recording = Opened(folder, "units", {.unitsPerMv = 1000});
    EXPECT_NEAR(recording.leads[kLeadII][9], SampleOf(1, 9) - 6, 1e-3);
}

// Lead II misses 10 to 13, V6 12 to 15 and its end.
bool IsMissing(std::size_t signal, std::size_t i) {
    return (signal == 1 && i >= 10 && i < 14) || (signal == 11 && ((i >= 12 && i < 16) || i >= 58));
}

TEST(WfdbReader, BridgesMissingSamplesAndListsThem) {
    for (const int format : {16, 212}) {
        Layout layout;
        layout.format = format;
        layout.sample = [](std::size_t signal, std::size_t i) {
            return IsMissing(signal, i) ? std::int16_t{-32768} : SampleOf(signal, i);
        };
        if (format == 212) {
            layout.sample = [](std::size_t signal, std::size_t i) {
                return IsMissing(signal, i) ? std::int16_t{-2048} : SampleOf(signal, i);
            };
        }
        const RecordFolder folder;
        folder.Write(layout);
        const Recording recording = Opened(folder, "gaps");
        ASSERT_EQ(recording.gaps.size(), 2u) << format;
        EXPECT_EQ(recording.gaps[0].first, 10u);
        EXPECT_EQ(recording.gaps[0].end, 16u);
        EXPECT_EQ(recording.gaps[1].first, 58u);
        EXPECT_EQ(recording.gaps[1].end, 60u);
        EXPECT_FALSE(recording.remarks.empty());
        const double from = SampleOf(1, 9), to = SampleOf(1, 14);
        EXPECT_NEAR(recording.leads[kLeadII][11], from + (to - from) * 2 / 5, 0.01) << format;
        EXPECT_NEAR(recording.leads[11][59], SampleOf(11, 57), 0.01) << format;
    }
}

using Harm = std::function<void(const RecordFolder&)>;

struct Broken {
    const char* name;
    Layout layout;
    Harm harm;
    const char* says;
};

void Nothing(const RecordFolder&) {}

// In the header, `from` for `to`.
Harm InHeader(const std::string& from, const std::string& to) {
    return [=](const RecordFolder& folder) {
        folder.WriteText("r.hea", Replaced(folder.Text("r.hea"), from, to));
    };
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
// Two samples less of half the leads: their sums stay even with the checksum less one.
void ShortenHalfTheLeads(const RecordFolder& folder) {
    std::string text = Replaced(folder.Text("r.hea"), "r 12 500 60", "r 12 500");
    text = Replaced(text, "r1.dat 16 1000/mV 16 0 0 30", "r1.dat 16 1000/mV 16 0 0 29");
    folder.WriteText("r.hea", text);
    folder.Resize("r1.dat", 6 * 2 * 58);
}
void MixFiles(const RecordFolder& folder) {
    const std::string seventh = "16 1000/mV 16 0 " + std::to_string(SampleOf(6, 0));
    const std::string third = "16 1000/mV 16 0 " + std::to_string(SampleOf(2, 0));
    std::string text = Replaced(folder.Text("r.hea"), "r1.dat " + seventh, "rx.dat " + seventh);
    folder.WriteText("r.hea", Replaced(text, "r0.dat " + third, "r1.dat " + third));
}
std::int16_t OneAndZero(std::size_t, std::size_t i) {
    return static_cast<std::int16_t>(i % 2);
}
std::int16_t NoFourthLead(std::size_t signal, std::size_t i) {
    return signal == 3 ? std::int16_t{-32768} : SampleOf(signal, i);
}

TEST(WfdbReader, OpensNothingOfABrokenRecord) {
    std::vector<std::string> twice = Layout().names, missing = twice;
    twice[7] = "v1";
    missing[7] = "vx";
    const Broken kRows[] = {
        {"no header", {}, Without("r.hea"), "r.hea"},
        {"empty header", {}, Cut("r.hea", 0), "no record line"},
        {"cut header", {}, Cut("r.hea", 200), "r.hea"},
        {"no signal file", {}, Without("r.dat"), "r.dat"},
        {"one sample short", {}, Cut("r.dat", 1439), "holds 59 of the 60 samples"},
        {"empty signal file", {}, Cut("r.dat", 0), "r.dat"},
        {"one sample short, 212", {.format = 212}, Cut("r.dat", 12 * 60 * 3 / 2 - 1), "samples per signal"},
        {"offset behind the end", {}, InHeader(" 16 1000", " 16+99999 1000"), "byte offset"},
        {"lead missing", {.names = missing}, Nothing, "lead V2 is missing"},
        {"lead twice", {.names = twice}, Nothing, "lead V1 is there twice"},
        {"another format", {}, InHeader(" 16 1000", " 80 1000"), "signal format 80 is not read"},
        {"several samples a frame", {.formatSuffix = "x2"}, Nothing, "per frame"},
        {"skew", {.formatSuffix = ":2"}, Nothing, "skewed"},
        {"a pressure", {.gain = "10/mmHg"}, Nothing, "no voltage"},
        {"a gain of nearly nothing", {.gain = "1e-9/mV"}, Nothing, "out of range"},
        {"another first sample", {}, InHeader("16 0 -900 ", "16 0 -901 "), "first sample of I is -900"},
        {"damaged samples", {}, DamageASample, "checksum"},
        {"too long", {}, InHeader("r 12 500 60", "r 12 500 1000001"), "longer than"},
        {"hours at a low rate", {.rate = "50", .count = 100'001}, Nothing, "longer than half an hour"},
        {"a rate too low", {.rate = "0.02"}, Nothing, "sampling rate is too low"},
        {"longer than its file", {}, InHeader("r 12 500 60", "r 12 500 999999"), "holds 60 of the"},
        {"leads of different lengths",
         {.sample = OneAndZero, .signalsPerFile = 6},
         ShortenHalfTheLeads,
         "same length"},
        {"a lead without any value", {.sample = NoFourthLead}, Nothing, "holds no value"},
        {"a file's signals apart", {.signalsPerFile = 6}, MixFiles, "do not stand together"},
    };
    for (const Broken& row : kRows) {
        const RecordFolder folder;
        folder.Write(row.layout);
        row.harm(folder);
        std::string error;
        EXPECT_FALSE(ReadWfdb(folder.Header(), {}, error)) << row.name;
        EXPECT_NE(error.find(row.says), std::string::npos) << row.name << ": " << error;
        EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << row.name << ": " << error;
        EXPECT_NE(error.find(": "), std::string::npos) << row.name << ": " << error;
    }
}

TEST(WfdbReader, TakesPathsWithAndWithoutTheExtension) {
    const RecordFolder folder;
    folder.Write({});
    const std::string with = folder.Header().string();
    for (const std::string& path : {with, with.substr(0, with.size() - 4)}) {
        std::string error;
        EXPECT_TRUE(OpenRecording(path, {}, error)) << path << ": " << error;
    }
    std::string error;
    EXPECT_FALSE(OpenRecording("", {}, error));
    EXPECT_FALSE(error.empty());
}

TEST(WfdbReader, Decodes212AtItsEdges) {
    EXPECT_EQ(Decode212(std::vector<std::uint8_t>{0xFF, 0xF7, 0x00}, 2),
              (std::vector<std::int16_t>{2047, -256}));
    EXPECT_EQ(Decode212(std::vector<std::uint8_t>{0x00, 0x78, 0xFF}, 2),
              (std::vector<std::int16_t>{-2048, 2047}));
    EXPECT_EQ(Decode212(std::vector<std::uint8_t>{0xFF, 0xFF, 0xFF, 0x01, 0x00}, 5).size(), 3u);
    EXPECT_TRUE(Decode212({}, 7).empty());
}

}  // namespace
}  // namespace kx::recording
