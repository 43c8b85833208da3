#include "suite/kxdb/staff_list.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/unit/collected_reports.h"

namespace {

using kx::db::ParseStaff;
using kx::db::StaffList;
using kx::test::CollectedReports;

constexpr char kFile[] = "staff.csv";

// "last|first|initial|title" of everybody, technicians before physicians.
std::string Names(const StaffList& staff) {
    std::string names;
    for (const auto& person : staff.technicians) {
        names += std::string("t ") + person.lastName + "|" + person.firstName + "|" + person.initial + "\n";
    }
    for (const auto& person : staff.physicians) {
        names += std::string("m ") + person.lastName + "|" + person.firstName + "|" + person.initial + "|" +
                 person.title + "\n";
    }
    return names;
}

TEST(StaffList, ReadsOnePersonALine) {
    struct Row {
        const char* line;
        const char* names;
    };
    for (const Row& row : {
             Row{"tecnico;Bassi;Elena;G.;", "t Bassi|Elena|G.\n"},
             Row{"medico;Bassi;Elena;G.;Cardiologo", "m Bassi|Elena|G.|Cardiologo\n"},
             Row{"MEDICO;Bassi", "m Bassi|||\n"},
             Row{"  Tecnico ;\t De Santis ; Elena ", "t De Santis|Elena|\n"},
             Row{"medico;\"Bassi; detto \"\"Nino\"\"\"; Elena;;", "m Bassi; detto \"Nino\"|Elena||\n"},
             Row{"medico; \" Bassi \" ;\"\";G.", "m Bassi||G.|\n"},
             Row{"medico;Bassi;Elena;G.;Cardiologo;;;", "m Bassi|Elena|G.|Cardiologo\n"},
             Row{"medico;D'Andr\xC3\xA8;Gios\xC3\xB9\xE2\x80\x99", "m D'Andr\xE8|Gios\xF9\x92||\n"},
             Row{"tecnico;Bassi\r\n\r\n# tecnico;Forti\r\n  \nmedico;Forti", "t Bassi||\nm Forti|||\n"},
             Row{"ruolo;cognome;nome;iniziale;titolo\ntecnico;Bassi", "t Bassi||\n"},
             Row{"\xEF\xBB\xBFruolo;cognome\ntecnico;Bassi", "t Bassi||\n"},
             Row{"tecnico;1234567890123456789012345678901;x;123",
                 "t 1234567890123456789012345678901|x|123\n"},
         }) {
        CollectedReports reports;
        EXPECT_EQ(row.names, Names(ParseStaff(row.line, kFile, reports))) << row.line;
        EXPECT_EQ(std::vector<std::string>(), reports.texts) << row.line;
    }
}

TEST(StaffList, LeavesABrokenLineOutAndSaysSo) {
    struct Row {
        const char* line;
        const char* report;
    };
    for (const Row& row : {
             Row{"infermiere;Bassi;Elena", "ruolo sconosciuto"},
             Row{"tecnico,Bassi,Elena", "ruolo sconosciuto"},
             Row{"tecnico", "cognome mancante"},
             Row{"medico; ;Elena", "cognome mancante"},
             Row{"medico;12345678901234567890123456789012", "campo troppo lungo"},
             Row{"medico;Bassi;12345678901234567890123456789012", "campo troppo lungo"},
             Row{"tecnico;Bassi;Elena;G.;Dottoressa", "un tecnico non ha titolo"},
             Row{"medico;Bassi;Elena;G.;Cardiologo;Roma", "troppi campi"},
             Row{"medico;\"Bassi;Elena", "virgolette non chiuse"},
             Row{"medico;\"Bassi\" G.;Elena", "virgolette non chiuse"},
             Row{"medico;Ba\tssi;Elena", "carattere non ammesso"},
             Row{"medico;\xCE\xB1\xCE\xB2;Elena", "carattere non ammesso"},
         }) {
        CollectedReports reports;
        const std::string file = std::string("tecnico;Prima\n") + row.line + "\ntecnico;Dopo\n";
        EXPECT_EQ("t Prima||\nt Dopo||\n", Names(ParseStaff(file, kFile, reports))) << row.line;
        EXPECT_EQ(std::vector<std::string>{std::string("staff.csv: ") + row.report + ", riga ignorata"},
                  reports.texts)
            << row.line;
    }
}

TEST(StaffList, AcceptsTheExampleThatIsShipped) {
    std::ifstream stream(KX_SOURCE_DIR "/suite/kxdb/staff.csv", std::ios::binary);
    const std::string file((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    CollectedReports reports;
    const StaffList staff = ParseStaff(file, kFile, reports);
    EXPECT_EQ(std::vector<std::string>(), reports.texts);
    ASSERT_EQ(5u, staff.technicians.size());
    ASSERT_EQ(5u, staff.physicians.size());
    EXPECT_STREQ("Nicol\xF2", staff.technicians[0].lastName);
    EXPECT_STREQ("Specialista in cardiologia", staff.physicians[1].title);
}

TEST(StaffList, ListsNeverMoreThanThereIsRoomFor) {
    std::vector<kx::TechnicianRecord> records(3);
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].lastName[0] = static_cast<char>('A' + i);
    }
    struct Row {
        std::uint32_t first, capacity, written;
        char firstName;
    };
    for (const Row& row : {Row{0, 0, 0, '-'}, Row{0, 2, 2, 'A'}, Row{0, 3, 3, 'A'}, Row{0, 1024, 3, 'A'},
                           Row{2, 5, 1, 'C'}, Row{3, 5, 0, '-'}, Row{UINT32_MAX, UINT32_MAX, 0, '-'}}) {
        std::vector<kx::TechnicianRecord> buffer(row.written + 1);
        buffer[0].lastName[0] = buffer[row.written].lastName[0] = '-';
        EXPECT_EQ(row.written, kx::db::ListRecords(records, row.first, buffer.data(), row.capacity))
            << row.first;
        EXPECT_EQ(row.firstName, buffer[0].lastName[0]) << row.first;
        EXPECT_EQ('-', buffer[row.written].lastName[0]) << row.first;
    }
    EXPECT_EQ(0u, kx::db::ListRecords(records, 0, static_cast<kx::TechnicianRecord*>(nullptr), 9));
}

}  // namespace
