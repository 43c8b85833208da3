// Texts that the suite's modules read and write: the staff file, encodings, lines of the log, versions.
#include <iterator>

#include "lib/packed_version.h"
#include "suite/kxdb/staff_list.h"
#include "suite/kxsys/report_line.h"
#include "suite/text_encoding.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using namespace std::string_literals;
using db::ParseStaff;
using db::StaffList;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

// "last|first|initial|title" of everybody, technicians before physicians.
std::string Names(const StaffList& staff) {
    std::string names;
    for (const auto& person : staff.technicians) {
        names += std::string("t ") + person.lastName + "|" + person.firstName + "|" + person.initial + "\n";
    }
    for (const auto& person : staff.physicians) {
        names += std::string("m ") + person.lastName + "|" + person.firstName + "|" + person.initial + "|" + person.title + "\n";
    }
    return names;
}

TEST(StaffList, ReadsOnePersonALine) {
    const std::pair<const char*, const char*> rows[] = {
        {"tecnico;Bassi;Elena;G.;", "t Bassi|Elena|G.\n"},
        {"MEDICO;Bassi;Elena;G.;Cardiologo;;;", "m Bassi|Elena|G.|Cardiologo\n"},
        {"  Tecnico ;\t De Santis ; Elena ", "t De Santis|Elena|\n"},
        {"medico;\"Bassi; detto \"\"Nino\"\"\"; Elena;;", "m Bassi; detto \"Nino\"|Elena||\n"},
        {"medico; \" Bassi \" ;\"\";G.", "m Bassi||G.|\n"},
        {"tecnico;Bassi\r\n\r\n# tecnico;Forti\r\n  \nmedico;Forti", "t Bassi||\nm Forti|||\n"},
        {"\xEF\xBB\xBFruolo;cognome;nome;iniziale;titolo\ntecnico;D'Andr\xC3\xA8", "t D'Andr\xE8||\n"},
        {"tecnico;1234567890123456789012345678901;x;123", "t 1234567890123456789012345678901|x|123\n"}};
    for (const auto& [line, names] : rows) {
        RecordedReports reports;
        EXPECT_EQ(names, Names(ParseStaff(line, "staff.csv", reports))) << line;
        EXPECT_THAT(reports.Take(), IsEmpty()) << line;
    }
    std::ifstream stream(KX_SOURCE_DIR "/suite/kxdb/staff.csv", std::ios::binary);
    const std::string shipped((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    RecordedReports reports;
    const StaffList staff = ParseStaff(shipped, "staff.csv", reports);
    EXPECT_THAT(reports.Take(), IsEmpty());
    EXPECT_TRUE(staff.technicians.size() == 5 && staff.physicians.size() == 5 && std::string(staff.technicians[0].lastName) == "Nicol\xF2");
}

TEST(StaffList, LeavesABrokenLineOutAndSaysSo) {
    const std::pair<const char*, const char*> rows[] = {{"infermiere;Bassi;Elena", "ruolo sconosciuto"},
                                                        {"tecnico", "cognome mancante"},
                                                        {"medico; ;Elena", "cognome mancante"},
                                                        {"medico;Bassi;12345678901234567890123456789012", "campo troppo lungo"},
                                                        {"tecnico;Bassi;Elena;G.;Dottoressa", "un tecnico non ha titolo"},
                                                        {"medico;Bassi;Elena;G.;Cardiologo;Roma", "troppi campi"},
                                                        {"medico;\"Bassi;Elena", "virgolette non chiuse"},
                                                        {"medico;\"Bassi\" G.;Elena", "virgolette non chiuse"},
                                                        {"medico;Ba\tssi;Elena", "carattere non ammesso"},
                                                        {"medico;\xCE\xB1\xCE\xB2;Elena", "carattere non ammesso"}};
    for (const auto& [line, report] : rows) {
        RecordedReports reports;
        EXPECT_EQ("t Prima||\nt Dopo||\n",
                  Names(ParseStaff(std::string("tecnico;Prima\n") + line + "\ntecnico;Dopo\n", "staff.csv", reports)))
            << line;
        EXPECT_THAT(reports.Take(), ElementsAre(std::string("oem staff.csv 2 ") + report + ", riga ignorata")) << line;
    }
}

TEST(StaffList, ListsNeverMoreThanThereIsRoomFor) {
    std::vector<TechnicianRecord> records(3);
    for (std::uint32_t first = 0; first <= 4; ++first) {
        for (std::uint32_t capacity = 0; capacity <= 4; ++capacity) {
            std::vector<TechnicianRecord> buffer(5);
            std::memset(static_cast<void*>(buffer.data()), '-', 5 * sizeof buffer[0]);
            const std::uint32_t expected = first >= 3 ? 0 : std::min(capacity, 3 - first);
            EXPECT_EQ(expected, db::ListRecords(records, first, buffer.data(), capacity)) << first << ' ' << capacity;
            EXPECT_EQ('-', buffer[expected].lastName[0]) << first << ' ' << capacity;
        }
    }
    EXPECT_EQ(0u, db::ListRecords(records, UINT32_MAX, static_cast<TechnicianRecord*>(nullptr), UINT32_MAX));
}

TEST(TextEncoding, TellsUtf8FromWindows1252) {
    const std::pair<std::string, std::string> rows[] = {
        {"Rossi;Nicol\xC3\xB2", "Rossi;Nicol\xF2"},                  // UTF-8
        {"Nicol\xF2", "Nicol\xF2"},                                  // Windows-1252 already
        {"Nicol\xC3\xB2 e Nicol\xF2", "Nicol\xC3\xB2 e Nicol\xF2"},  // no UTF-8 throughout
        {"\xEF\xBB\xBFNicol\xC3\xB2", "Nicol\xF2"},                  // with a mark
        {"\xE2\x82\xAC \xE2\x80\x99 \xC5\xB8 \xC2\xA0\xC3\xBF", "\x80 \x92 \x9F \xA0\xFF"},
        {"\xC2\x81 \xCE\xB1 \xF0\x9F\xAB\x80", "? ? ?"},  // nothing for U+0081, a letter alpha, a heart
        {"\xC3", "\xC3"},                                 // cut short
        {"\xC0\x80", "\xC0\x80"},                         // longer than it needs to be
        {"\xE0\x80\x80", "\xE0\x80\x80"},
        {"\xED\xA0\x80", "\xED\xA0\x80"},          // half a pair
        {"\xF4\x90\x80\x80", "\xF4\x90\x80\x80"},  // beyond the last character
        {"a\0b"s, "a\0b"s}};
    for (const auto& [file, text] : rows) {
        EXPECT_EQ(text, suite::ToWindows1252(file)) << file;
    }
}

TEST(ReportLine, HasTimeKindAndATextMadeFitForOneLine) {
    const std::pair<std::string, const char*> rows[] = {
        {"", ""}, {"  a b  ", "a b"}, {"\r\n\t ", ""}, {"a\tb\x7F", "a b"}, {"a\r\nb.\r\n", "a  b."}, {"\xE0 perch\xE9", "\xE0 perch\xE9"}};
    for (const auto& [text, tidy] : rows) {
        std::string tidied = text;
        sys::TidyText(tidied.data());
        EXPECT_STREQ(tidied.c_str(), tidy);
    }
    char line[sys::kLineSize];
    const std::size_t length = sys::ComposeLine(line, {2024, 5, 3, 4, 6, 7, 8}, "Sistema", "testo 100%");
    EXPECT_EQ(length, std::strlen(line));
    EXPECT_STREQ(line, "2024-05-03 04:06:07.008\tSistema\ttesto 100%");
    EXPECT_EQ(sys::ComposeLine(line, {2024, 5, 3, 4, 6, 7, 8}, "Sistema", std::string(2 * sys::kLineSize, 'x').c_str()),
              sys::kLineSize - 1);
    EXPECT_EQ(std::strlen(line), sys::kLineSize - 1);
}

TEST(PackVersion, PacksAByteForEachPartAndCarriesWhatIsMore) {
    const struct {
        std::uint32_t most, least, packed;
    } rows[] = {{0x00000004, 0x00000006, kMinimumModuleVersion},
                {0x00010002, 0x00030004, 0x01020304},
                {0x00000004, 0x00000200, 0x00040200},
                {0x000000FF, 0x00FF0100, 0x01000000},
                {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFEFF}};
    for (const auto& row : rows) {
        EXPECT_EQ(PackVersion(row.most, row.least), row.packed) << std::hex << "of " << row.most << " " << row.least;
    }
}

}  // namespace
}  // namespace kx::test
