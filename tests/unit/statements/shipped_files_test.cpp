// The statement files that come with the library: well-formed, and their codes can be typed without getting
// in the way.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "tests/rig/memory_file.h"

namespace {

using kx::StatementLibrary;

// What cardiologists write, in reports and in the margin: none of it may turn into a statement while it is
// typed. A number stands where one is often written without a blank.
constexpr std::string_view kWritten[] = {
    "AAA",       "AAI",       "ACE",     "ADx",   "AFL",          "AI1",   "AL",       "AMI",     "ARVC",     "AS",      "ASA",
    "ASx",       "AT1",       "AT2",     "ATP",   "AVA",          "AVK",   "AVM",      "AVN",     "AVNRT",    "AVR",     "AVRT",
    "aVF",       "aVL",       "aVR",     "B1",    "B12",          "BAV1",  "BAV2",     "BB",      "BBD",      "BBDI",    "BBS",
    "BBSI",      "BDC",       "BDP",     "BDT",   "BE1",          "BE2",   "BESV",     "BEV",     "BEVF",     "BMI30",   "BNP",
    "BP120",     "BPAC",      "BPCO",    "BPM",   "BRS",          "BSA",   "BSC",      "BSV",     "BVP",      "CABG",    "CAD",
    "CD4",       "CDI",       "CF",      "CFX",   "CHA2DS2-VASc", "CHF",   "CK200",    "CKMB",    "CMD",      "CMI",     "CMPD",
    "CMPI",      "CNR",       "CO2",     "COPD",  "CPAP",         "CRT",   "CRTD",     "CRTP",    "CT",       "CV1",     "CVC",
    "CVE",       "CVP",       "CX1",     "D1",    "D2",           "D3",    "DAP",      "DAPT",    "DCO",      "DDD",     "DDDR",
    "DDT",       "DIA",       "DLCO",    "DM1",   "DM2",          "DN4",   "DO2",      "DPN",     "DPR",      "DSVD",    "DT180",
    "DTD",       "DTDVS",     "DTS",     "DVI",   "Dx",           "EAS",   "ECG",      "ECO",     "EDP",      "EF55",    "EFO",
    "EGA",       "EI",        "EO",      "EP",    "EPS",          "ES1",   "ESV",      "ET1",     "EV1",      "FA",      "FAP",
    "FAV",       "FC70",      "FCmax",   "FCM",   "FCR",          "FCT",   "FE55",     "FEV1",    "FEVS",     "FFR",     "FiO2",
    "FOP",       "FR16",      "FRC",     "FV",    "FVC",          "GH",    "GLP1",     "GLS",     "GOLD",     "H2FPEF",  "Hb12",
    "HCM",       "HDL",       "HF",      "HFpEF", "HFrEF",        "HR70",  "HRmax",    "HRpeak",  "HRV",      "IA1",     "IAD",
    "IAS",       "ICD",       "ICR",     "IL6",   "IM1",          "IMA",   "IMC28",    "INR",     "IP1",      "IP3",     "IRC",
    "ISA",       "IT1",       "IV",      "IVA",   "IVD",          "IVR",   "IVS",      "JT",      "K4",       "LAD",     "LAS",
    "LBBB",      "LDL",       "LGL",     "LP",    "LSD",          "LVEF",  "LVH",      "MAV",     "MET",      "METs",    "MG",
    "Mg2+",      "MI",        "MMII",    "MR1",   "MSC",          "NA1",   "Na140",    "NAO",     "NDN",      "NDR",     "NSTEMI",
    "NSVT",      "NT-proBNP", "NYHA",    "O2",    "OSAS",         "P2Y12", "PA120",    "PAC",     "PAD",      "PaO2",    "PAPs",
    "PAS",       "PAT",       "PCR",     "PCWP",  "PD1",          "PDA",   "PDF",      "PDL1",    "PE",       "PEA",     "PEF",
    "PFO",       "PGE1",      "PI1",     "PLT",   "PM",           "PMD",   "PMK",      "PM10",    "PP",       "PQ160",   "PR160",
    "PRN",       "PS1",       "PSAP",    "PSV",   "PSVT",         "PT100", "PTA",      "PTCA",    "PTP",      "PTT",     "PTX",
    "PVA",       "PVC",       "PVI",     "PZ",    "QRS",          "QS2",   "QT400",    "QTB",     "QTc",      "QTcB",    "QTcF",
    "RAE",       "RBBB",      "RCP",     "RCV",   "RER",          "RFA",   "RMN",      "RMS",     "ROS",      "RPA",     "RPP",
    "RQ1",       "RR800",     "RS",      "RSA",   "RSR'",         "rSR'",  "RSS",      "RV5",     "RV6",      "RVH",     "RX",
    "S1Q3T3",    "SA",        "SAM",     "SC",    "SCA",          "SCD",   "SD1",      "SD2",     "SDNN",     "SEF",     "SGLT2",
    "SIA",       "SIV",       "SL1",     "SNC",   "SO2",          "SpO2",  "SR",       "SSS",     "ST1",      "ST2",     "STE",
    "STEMI",     "STS",       "STV",     "SV1",   "SV2",          "SVE",   "SVPB",     "SVR",     "SVT",      "Sx",      "T1",
    "TA130",     "TAC",       "TAVI",    "TC",    "TEA",          "TEE",   "TEP",      "TG150",   "TIA",      "TnI",     "TnT",
    "TNF",       "TNT",       "TPSV",    "TR1",   "TS",           "TSH",   "TSV",      "TTE",     "TV",       "TVNS",    "TVP",
    "TVS",       "TVV",       "UI",      "V1",    "V6",           "VAS",   "VC1",      "VCI",     "VCS",      "VD",      "VDD",
    "VE",        "VEMS",      "VES",     "VF",    "VO2max",       "VPB",   "VPN",      "VPP",     "VS",       "VT1",     "VT2",
    "VTD",       "VTS",       "VVI",     "VVIR",  "WPW",          "XL",    "asse",     "battito", "bradi",    "buona",   "cardio",
    "complesso", "controllo", "da",      "del",   "destra",       "dopo",  "esame",    "esiti",   "fase",     "flutter", "il",
    "in",        "la",        "lieve",   "media", "nella",        "non",   "nota",     "onda",    "paziente", "per",     "prova",
    "quadro",    "re",        "reperto", "ritmo", "segni",        "si",    "sinistra", "sotto",   "tachi",    "terapia", "un",
    "valori",    "verosimile"};

struct Statement {
    std::string file;
    std::string text;
    std::string code;
};

std::vector<Statement> Statements(const std::string& file, const StatementLibrary& library) {
    std::vector<Statement> statements;
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            if (!kx::IsHidden(library.Text(section, entry))) {
                statements.push_back({file, library.Text(section, entry), library.Code(section, entry)});
            }
        }
    }
    return statements;
}

class ShippedFiles : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"resting", "stress", "hires", "holter", "abpm", "spiro"}) {
            std::ifstream stream(std::string(KX_SOURCE_DIR "/dialogs/statements/files/") + name + ".htm", std::ios::binary);
            kx::test::MemoryFile file(std::string(std::istreambuf_iterator<char>(stream), {}));
            StatementLibrary library;
            ASSERT_TRUE(kx::StatementReader(nullptr).Read(file, library));
            const std::vector<Statement> read = Statements(name, library);
            ASSERT_GE(read.size(), 15u) << name;
            all.insert(all.end(), read.begin(), read.end());
            kx::test::MemoryFile written;
            kx::WriteStatements(library, written);
            EXPECT_EQ(written.bytes, file.bytes);  // so no text was cut and nothing stands outside the format
        }
    }

    std::vector<Statement> all;
};

TEST_F(ShippedFiles, HoldSentencesOfWindows1252) {
    for (const Statement& statement : all) {
        EXPECT_EQ(statement.text.back(), '.') << statement.text;
        // A "[" would cut the text when it is inserted from the library's tree.
        EXPECT_EQ(statement.text.find_first_of("[^<>\r\n\t"), std::string::npos) << statement.text;
        EXPECT_EQ(statement.text.find("  "), std::string::npos) << statement.text;
        // Two-byte sequences of UTF-8 show as these.
        EXPECT_EQ(statement.text.find_first_of("\xC2\xC3\xE2"), std::string::npos) << statement.text;
    }
}

TEST_F(ShippedFiles, HaveOneCodeForOneStatement) {
    for (const Statement& statement : all) {
        EXPECT_EQ(statement.code.size(), 3u) << statement.text;  // no shorter one begins a longer one
        for (const Statement& other : all) {
            EXPECT_EQ(statement.code == other.code, statement.text == other.text) << statement.text << other.text;
            EXPECT_TRUE(&statement == &other || statement.file != other.file || statement.code != other.code)
                << statement.code << " twice in " << statement.file;
        }
    }
}

TEST_F(ShippedFiles, HaveCodesThatBeginNothingThatIsWritten) {
    std::vector<std::string> words(std::begin(kWritten), std::end(kWritten));
    for (const Statement& statement : all) {
        for (std::size_t at = 0; at < statement.text.size(); at = statement.text.find(' ', at)) {
            at += at > 0 ? 1 : 0;
            words.push_back(statement.text.substr(at));
        }
    }
    for (const Statement& statement : all) {
        for (const std::string& word : words) {
            EXPECT_FALSE(kx::BeginsWithFolded(word, statement.code)) << statement.code << " in " << word;
        }
    }
}

TEST_F(ShippedFiles, GiveEachStatementByItsCode) {
    for (const std::string line : {"", "Quadro invariato; "}) {
        StatementLibrary library;
        std::string file;
        kx::StatementMatcher matcher;
        for (const Statement& statement : all) {
            if (statement.file != file) {
                file = statement.file;
                matcher = {};
                for (const Statement& other : all) {
                    if (other.file == file) {
                        matcher.Add(other.text, other.code);
                    }
                }
            }
            ASSERT_EQ(matcher.Start(0, line + statement.code.substr(0, 1)), true) << statement.code;
            matcher.Extend(line.size() + 1, statement.code[1]);
            ASSERT_TRUE(matcher.Extend(line.size() + 2, statement.code[2])) << statement.code;
            EXPECT_TRUE(matcher.IsExactCode()) << statement.code;
            EXPECT_EQ(matcher.Match(0).text, statement.text);
        }
    }
}

}  // namespace
