// Files of other kinds than WFDB: what an encoder makes of a recording is read back equal, whatever the layout; what is
// damaged opens nothing or the same.
#include "host/recording/aecg/aecg_writer.h"
#include "host/recording/ecg_block.h"
#include "host/recording/lead_names.h"
#include "host/recording/median_beat.h"
#include "host/recording/open_recording.h"
#include "host/recording/test_builder.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/recording/format_files.h"
#include "tests/unit/recording/record_files.h"

namespace kx::recording {
namespace {

constexpr std::size_t kSamples = 421;
const std::vector<std::size_t> kEight = {11, 10, 9, 8, 7, 6, 1, 0};
const std::vector<std::size_t> kWithoutOne = {3, 5, 6, 7, 8, 9, 10, 11};

Octets BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

// Whom the recording is of, and when it was made.
std::string Origin(const Recording& recording) {
    const auto [id, last, first, middle, birth, age, sex] = recording.patient;
    std::string text = recording.name + '|' + id + '|' + last + '|' + first;
    const KxDateTime& time = recording.acquisitionTime;
    for (const int number : {int{birth.year}, int{birth.month}, int{birth.day}, static_cast<int>(sex), int{time.year}, int{time.month},
                             int{time.day}, int{time.hour}, int{time.minute}, int{time.second}}) {
        text += ' ' + std::to_string(number);
    }
    return text;
}

void ExpectEqual(const Recording& original, const Octets& file, const std::string& name, double within = 1e-3) {
    std::string error;
    const auto read = ReadRecordingBytes(file, original.name, error);
    ASSERT_TRUE(read) << name << ": " << error;
    EXPECT_EQ(Origin(*read), Origin(original)) << name;
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

TEST(Formats, ScpIsReadBackWhateverItsCoding) {
    const Recording original = MakeLawfulRecording(kSamples);
    for (const auto coding : {ScpLayout::kPlain, ScpLayout::kDefaultTable, ScpLayout::kOwnTables}) {
        for (const unsigned order : {0u, 1u, 2u}) {
            const std::string name = "coding " + std::to_string(coding) + ", differences " + std::to_string(order);
            ExpectEqual(original, EncodeScp(original, {.coding = coding, .differences = order}), name);
            ExpectEqual(original, EncodeScp(original, {.coding = coding, .differences = order, .subtractBeat = true}), name);
        }
    }
    ExpectEqual(original, EncodeScp(original, {.leads = kEight, .backwards = true, .checksums = false}), "eight leads");
    ExpectEqual(original, EncodeScp(original, {.leads = kWithoutOne, .beatOnly = true}), "a beat alone, without I and II");
    // What lies between the QRS complexes is a mean of four samples; the recording changes slowly there.
    ExpectEqual(original, EncodeScp(original, {.decimation = 4}), "bimodal", 15);
}

TEST(Formats, DicomIsReadBackWhateverItsLayout) {
    const Recording original = MakeLawfulRecording(kSamples);
    for (const bool explicitTypes : {true, false}) {
        for (const bool undefined : {true, false}) {
            const std::string name = std::string(explicitTypes ? "explicit" : "implicit") + (undefined ? ", undefined" : "");
            const DicomLayout base{.explicitTypes = explicitTypes, .undefinedLengths = undefined};
            ExpectEqual(original, EncodeDicom(original, base), name);
            DicomLayout layout = base;
            layout.bits = 32, layout.scheme = "SCPECG", layout.baseline = 12.5, layout.leads = kEight;
            ExpectEqual(original, EncodeDicom(original, layout), name + ", 32 bits, a baseline, eight leads");
            layout = base, layout.unit = "mV", layout.sensitivity = 0.005, layout.correction = 0.5, layout.groups = 3;
            ExpectEqual(original, EncodeDicom(original, layout), name + ", millivolts, a correction, three groups");
            layout = base, layout.isSigned = false, layout.baseline = -81920, layout.scheme = "", layout.preamble = false;
            ExpectEqual(original, EncodeDicom(original, layout), name + ", unsigned, labels alone, no preamble");
            layout = base, layout.bits = 8, layout.sensitivity = 25;
            ExpectEqual(original, EncodeDicom(original, layout), name + ", 8 bits", 12.51);
        }
    }
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

TEST(Formats, WhatIsNoRecordingSaysWhyInOneLine) {
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
                {EncodeScp(original, {.leads = {1}}), "the leads I, III, aVR, aVL, aVF, V1, V2, V3, V4, V5, V6 are missing (it holds II)"},
                {EncodeScp(original, {.leads = {0, 1}}), "the leads V1, V2, V3, V4, V5, V6 are missing (it holds I, II)"},
                {EncodeScp(original, {.leads = {0, 1, 6, 6, 7, 8, 9, 10, 11, 0}}), ""},
                {EncodeDicom(original, {.unit = "mm[Hg]"}), "lead I is in 'mm[Hg]', which is no voltage"},
                {EncodeDicom(original, {.leads = {}}), "none of the twelve leads"}};
    for (const auto& row : rows) {
        std::string error;
        EXPECT_EQ(ReadRecordingBytes(row.file, "x", error).has_value(), *row.says == '\0') << row.says;
        EXPECT_NE(error.find(row.says), std::string::npos) << row.says << ": " << error;
        EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
    }
}

// A cut file, and with checksums one of which a byte was changed, is refused or read as it was.
TEST(Formats, DamagedFilesOpenNothingElse) {
    const Recording original = MakeLawfulRecording(60);
    const Octets scp = EncodeScp(original, {});
    const Octets files[] = {scp, EncodeDicom(original, {}), EncodeDicom(original, {.undefinedLengths = true}), BytesOf(AecgOf(original))};
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

TEST(LeadNames, AreKnownInEveryWayOfWriting) {
    const std::vector<const char*> ways[kLeadCount] = {{"I", "i", "DI", "MDC_ECG_LEAD_I"},
                                                       {"II", "Lead II (Einthoven)", "D2", " ii "},
                                                       {"III", "ECG III"},
                                                       {"aVR", "AVR", "-aVR"},
                                                       {"aVL", "MDC_ECG_LEAD_AVL"},
                                                       {"aVF", "avf"},
                                                       {"V1", "C1"},
                                                       {"V2"},
                                                       {"V3"},
                                                       {"V4", "MDC_ECG_ELEC_POTL_V4"},
                                                       {"V5"},
                                                       {"V6", "lead v6"}};
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (const std::string name : ways[lead]) {
            EXPECT_EQ(LeadOfName(name), (NamedLead{lead, name[0] == '-'})) << name;
        }
    }
    for (const char* other : {"vx", "V7", "", "-I", "MLII", "V3R", "lead", "MDC_ECG_LEAD_X"}) {
        EXPECT_FALSE(LeadOfName(other)) << other;
    }
}

}  // namespace
}  // namespace kx::recording
