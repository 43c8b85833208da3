// Files of other kinds than WFDB. Those of files/ hold one recording, each in another layout that its format allows; what is
// damaged opens nothing or the same.
#include <sstream>

#include "host/recording/aecg/aecg_writer.h"
#include "host/recording/calendar_text.h"
#include "host/recording/ecg_block.h"
#include "host/recording/lead_names.h"
#include "host/recording/median_beat.h"
#include "host/recording/open_recording.h"
#include "host/recording/test_builder.h"
#include "host/recording/voltage_units.h"
#include "lib/dbclient/test_record.h"
#include "lib/timestmp.h"
#include "tests/unit/recording/replaced.h"

namespace kx::recording {
namespace {

using Octets = std::vector<std::uint8_t>;
constexpr std::size_t kSamples = 421, kFewSamples = 60;  // of the files and of those that are short

Octets BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

Octets FileOf(const std::string& name) {
    std::ifstream stream(KX_SOURCE_DIR "/tests/unit/recording/files/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// What the files hold: multiples of 5 uV in twelve leads that obey the laws of the limb leads, with beats, a wander and some noise.
Recording MakeLawfulRecording(std::size_t count) {
    Recording recording;
    recording.name = "lawful";
    recording.sampleRate = 500;
    recording.patient = {"A-17", "Rossi", "Zo\xC3\xA8", "", {1956, 29, 2}, -1, Sex::kFemale};
    recording.acquisitionTime = {2024, 5, 11, 7, 23, 0, 59};
    recording.filters = {50, true, false};
    std::uint32_t random = 1;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t i = 0; i < count; ++i) {
            random = random * 1664525u + 1013904223u;
            const double t = static_cast<double>(i % 400) - 150, height = 400 + 100 * static_cast<double>(lead);
            const double value = height * std::exp(-t * t / 60) + 50 * std::sin(static_cast<double>(i) / 300) + (random >> 29);
            recording.leads[lead].push_back(static_cast<float>(5 * std::round(value / 5)));
        }
    }
    recording.derived = {false, false, true, true, true, true};
    DeriveLeads(recording);
    recording.derived = {};
    recording.resolutionUv.fill(2.5);
    return recording;
}

void ExpectEqual(const Recording& original, const Octets& file, const std::string& name, double within = 1e-3) {
    std::string error;
    const auto read = ReadRecordingBytes(file, original.name, error);
    ASSERT_TRUE(read) << name << ": " << error;
    const Patient &is = read->patient, &was = original.patient;
    EXPECT_TRUE(read->name == original.name && is.id == was.id && is.lastName == was.lastName && is.firstName == was.firstName) << name;
    EXPECT_TRUE(std::memcmp(&is.birthDate, &was.birthDate, sizeof is.birthDate) == 0 && is.sex == was.sex) << name;
    EXPECT_LT(std::abs(DateTime(read->acquisitionTime).MillisecondsSince(DateTime(original.acquisitionTime))), 1000) << name;
    EXPECT_EQ(read->sampleRate, original.sampleRate) << name;
    EXPECT_TRUE(read->gaps.empty()) << name;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        ASSERT_EQ(read->leads[lead].size(), original.leads[lead].size()) << name;
        for (std::size_t i = 0; i < original.SampleCount(); ++i) {
            ASSERT_NEAR(read->leads[lead][i], original.leads[lead][i], within) << name << ": " << kLeadNames[lead] << i;
        }
    }
}

std::string AecgOf(const Recording& recording) {
    MedianBeat beat;
    beat.leads.fill(std::vector<std::int16_t>(kMedianBeatSamples, 7));
    beat.beatsMs = {401, 1203}, beat.dominant = {true, true}, beat.kept = {true, true};
    beat.rhythm.beats = {{401, 1, true}, {1203, 1, true}};
    TestRecord test;
    FillTestRecord(test, recording, beat);
    KxMeasurementSet& set = test.Episode(0)->measurements;
    set.measured = 1, set.prInterval = 163, set.qtInterval = 397;
    for (KxLeadMeasurements& lead : set.leads) {
        lead.pOn = 250, lead.qrsOn = 413, lead.tOff = 810, lead.rOnMarker = 431, lead.qrsOffMarker = 507, lead.aR = 1234;
    }
    set.leads[6].markerFlags = KX_MANUAL_LEAD_R_ON;
    test.SetOverreadBy("Bianchi");
    test.SetOverreadInterpretation(&test.acquisitionTime, "Ritmo < sinusale\r\nNei limiti");
    return WriteAecg(test, "0-1").value_or("");
}

TEST(Formats, HoldTheRecordingInEveryLayout) {
    const Recording original = MakeLawfulRecording(kSamples);
    for (const char* name :
         {"plain.scp", "plain_differences_beats_subtracted.scp", "default_table_second_differences.scp",
          "default_table_differences_beats_subtracted.scp", "own_tables_beats_subtracted.scp", "own_tables_second_differences.scp",
          "eight_leads_backwards_no_checksums.scp", "reference_beat_alone_without_I_II.scp", "explicit.dcm",
          "implicit_undefined_lengths_32_bits_baseline_eight_leads.dcm", "explicit_undefined_lengths_mV_correction_three_groups.dcm",
          "implicit_unsigned_labels_alone_no_preamble.dcm"}) {
        ExpectEqual(original, FileOf(name), name);
    }
    ExpectEqual(original, FileOf("bimodal.scp"), "bimodal.scp", 10);  // a mean of four samples where the recording changes slowly
    ExpectEqual(original, FileOf("explicit_8_bits.dcm"), "explicit_8_bits.dcm", 12.51);
}

TEST(Formats, AecgIsWrittenWithWhatWasFoundAndReadBackEqual) {
    const Recording original = MakeLawfulRecording(kSamples);
    const std::string text = AecgOf(original);
    ExpectEqual(original, BytesOf(text), "as written");
    std::string error;
    const auto read = ReadRecordingBytes(BytesOf(text), "", error);
    EXPECT_EQ(read->resolutionUv, original.resolutionUv);
    EXPECT_TRUE(read->filters.mainsHz == 50 && read->filters.baseline && !read->filters.artifact);
    EXPECT_EQ(read->diagnoses, (std::vector<std::string>{"Ritmo < sinusale", "Nei limiti", "overread"}));
    for (const char* part : {"MDC_ECG_TIME_PD_PR", "value=\"163\"", "value=\"397\"", "MDC_ECG_LEAD_V1", "value=\"431\"", "value=\"1234\"",
                             "MDC_ECG_BEAT_NORMAL", "20241105230800.203", "Bianchi"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
    std::string prefixed = Replaced(Replaced(text, "<", "<h:"), "<h:/", "</h:");
    prefixed = Replaced(Replaced(prefixed, "<h:?", "<?"), "xmlns=", "xmlns:h=");
    ExpectEqual(original, BytesOf(prefixed), "with a prefix");
    ExpectEqual(original, BytesOf(Replaced(text, "scale value=\"2.5\" unit=\"uV\"", "scale value=\"0.0025\" unit=\"mV\"")), "mV");
    ExpectEqual(original, BytesOf(Replaced(text, "0.002\" unit=\"s\"", "2\" unit=\"ms\"")), "ms");
}

// Two bytes a letter, with the mark of UTF-16 or without.
Octets Utf16(const std::string& text, bool bigEndian, bool marked) {
    Octets bytes;
    for (const char letter : (marked ? "\xFF" : "") + text) {
        const std::uint8_t first = letter == '\xFF' ? 0xFE : 0, second = static_cast<std::uint8_t>(letter);
        bytes.insert(bytes.end(), {bigEndian ? first : second, bigEndian ? second : first});
    }
    return bytes;
}

// Of the group that describes waveforms.
std::string Element(int number, const char* type, const std::string& value) {
    const std::string tag{'\x3A', '\0', static_cast<char>(number & 0xFF), static_cast<char>(number >> 8)};
    return tag + type + std::string{static_cast<char>(value.size()), '\0'} + value;
}

Octets DicomWith(const std::string& from, const std::string& to) {
    const Octets file = FileOf("short_undefined_lengths.dcm");
    return BytesOf(Replaced({file.begin(), file.end()}, from, to));
}

TEST(Formats, WhatIsNoRecordingSaysWhyInOneLine) {
    const std::string correction = Element(0x212, "DS", "1.000000"), count("\x3C\0\0\0", 4);
    const Recording original = MakeLawfulRecording(kSamples);
    const std::string text = AecgOf(original);
    const struct {
        Octets file;
        const char* says;
    } rows[] = {{BytesOf("hello"), "no kind that is read"},
                {BytesOf("<RestingECG/>"), "another kind ('RestingECG')"},
                {BytesOf(text.substr(0, text.size() / 2)), "no well-formed XML"},
                {BytesOf(Replaced(text, "<digits>", "<digits>x ")), "sample 1 of lead I is 'x'"},
                {BytesOf(Replaced(text, "unit=\"uV\"", "unit=\"mmHg\"")), "no voltage"},
                {BytesOf(Replaced(text, "increment", "decrement")), "sampling interval"},
                {BytesOf(Replaced(text, "MDC_ECG_LEAD_V2", "MDC_ECG_LEAD_V1")), "lead V1 is there twice"},
                {FileOf("II_alone.scp"), "the leads I, III, aVR, aVL, aVF, V1, V2, V3, V4, V5, V6 are missing (it holds II)"},
                {FileOf("I_II_alone.scp"), "the leads V1, V2, V3, V4, V5, V6 are missing (it holds I, II)"},
                {FileOf("twins.scp"), ""},
                {Utf16("<RestingECG/>", false, false), "another kind ('RestingECG')"},
                {Utf16("<RestingECG/>", true, false), "another kind ('RestingECG')"},
                {Utf16("<RestingECG/>", false, true), "another kind ('RestingECG')"},
                {Utf16("<RestingECG/>", true, true), "another kind ('RestingECG')"},
                {DicomWith(correction, Element(0x214, "DS", "0.000998")), ""},
                {DicomWith(correction, Element(0x214, "DS", "0.001000")), "lead I was not sampled at the same time as the others"},
                {DicomWith(correction, Element(0x215, "DS", "-0.49999")), ""},
                {DicomWith(correction, Element(0x215, "DS", "-0.50000")), "lead I was not sampled at the same time as the others"},
                {DicomWith(Element(0x10, "UL", count), Element(0x10, "UL", "\x3D" + count.substr(1))), "holds 60 of the 61 samples"},
                {FileOf("millimetres_of_mercury.dcm"), "lead I is in 'mm[Hg]', which is no voltage"},
                {FileOf("no_leads.dcm"), "none of the twelve leads"}};
    for (const auto& row : rows) {
        std::string error;
        EXPECT_EQ(ReadRecordingBytes(row.file, "x", error).has_value(), *row.says == '\0') << row.says;
        EXPECT_TRUE(error.find(row.says) != error.npos && error.find_first_of("\r\n") == error.npos) << row.says << ": " << error;
    }
}

// A cut file, and with checksums one of which a byte was changed, is refused or read as it was.
TEST(Formats, DamagedFilesOpenNothingElse) {
    const Recording original = MakeLawfulRecording(kFewSamples);
    const Octets scp = FileOf("short.scp");
    const Octets files[] = {scp, FileOf("short.dcm"), FileOf("short_undefined_lengths.dcm"), BytesOf(AecgOf(original))};
    const auto expectSame = [&](const Octets& file, std::size_t at) {
        std::string error;
        const auto read = ReadRecordingBytes(file, "x", error);
        EXPECT_TRUE(read ? read->leads == original.leads : !error.empty()) << at;
    };
    for (const Octets& file : files) {
        for (std::size_t size = 0; size < file.size(); size += 1 + file.size() / 400) {
            expectSame({file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)}, size);
        }
    }
    for (std::size_t at = 0; at < scp.size(); ++at) {
        Octets changed = scp;
        changed[at] = static_cast<std::uint8_t>(changed[at] ^ 1u << at % 8);
        expectSame(changed, at);
    }
}

TEST(CalendarText, IsReadAtItsLimitsAndRefusedBeyond) {
    const auto read = [](const char* text) {
        KxDateTime t{};
        char digits[40] = "";
        if (TakeDateTime(text, t)) {
            std::snprintf(digits, sizeof digits, "%d-%d-%d %d:%d:%d.%d", t.year, t.month, t.day, t.hour, t.minute, t.second, t.hundredths);
        }
        return std::string(digits);
    };
    EXPECT_EQ(read("18010101") + read("99991231235959"), "1801-1-1 0:0:0.09999-12-31 23:59:59.0");
    EXPECT_EQ(read("20240229") + read("20000229 "), "2024-2-29 0:0:0.02000-2-29 0:0:0.0");
    EXPECT_EQ(read("202405100709") + read("20240510235960.99Z"), "2024-5-10 7:9:0.02024-5-10 23:59:59.0") << "a leap second";
    EXPECT_EQ(read("20240510000001.259+0100") + read("20240510000001.29-0100"), "2024-5-10 0:0:1.252024-5-10 0:0:1.29");
    for (const char* none : {"18001231", "20230229", "19000229", "20240431", "20241301", "20240001", "20240100", "2024051024",
                             "202405102360", "20240510235961", "20240510235959.x", "2024051023595958.5", "202405102", "2024", "2o240510"}) {
        EXPECT_EQ(read(none), "") << none;
    }
    EXPECT_EQ(MillisecondsOfDay("20240510101112.123456+0100"), ((10 * 60 + 11) * 60 + 12.123456) * 1000);
    EXPECT_EQ(MillisecondsOfDay("20240510") + MillisecondsOfDay("2024051"), 0);
    for (const auto& [units, microvolts] : {std::pair{"uV|\xC2\xB5V|\xCE\xBCV|\xB5V| microvolt", 1.0},
                                            {"mV|millivolt", 1e3},
                                            {"V", 1e6},
                                            {"nv", 1e-3},
                                            {"kV|mm[Hg]|", 0.0}}) {
        std::istringstream names(units);
        for (std::string unit; std::getline(names, unit, '|');) {
            EXPECT_EQ(MicrovoltsOfUnit(unit).value_or(0), microvolts) << unit;
        }
    }
}

TEST(LeadNames, AreKnownInEveryWayOfWriting) {
    std::istringstream leads(
        "i|DI|MDC_ECG_LEAD_I\nLead II (Einthoven)|D2| ii \nECG III\nAVR|-aVR\nMDC_ECG_LEAD_AVL\navf\n"
        "C1\nv2\nV3\nMDC_ECG_ELEC_POTL_V4\nV5\nlead v6");
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        std::string ways;
        std::getline(leads, ways);
        std::istringstream names(ways);
        for (std::string name; std::getline(names, name, '|');) {
            EXPECT_EQ(LeadOfName(name), (NamedLead{lead, name[0] == '-'})) << name;
        }
    }
    for (const char* other : {"vx", "V7", "", "-I", "MLII", "V3R", "lead", "MDC_ECG_LEAD_X"}) {
        EXPECT_FALSE(LeadOfName(other)) << other;
    }
}

}  // namespace
}  // namespace kx::recording
