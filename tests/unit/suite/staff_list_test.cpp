// The staff file.
#include "suite/kxdb/staff_list.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using db::ParseStaff;
using db::StaffList;
using testing::ElementsAre;
using testing::IsEmpty;

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
}

TEST(StaffList, LeavesABrokenLineOutAndSaysSo) {
    const std::pair<const char*, const char*> rows[] = {{"infermiere;Bassi;Elena", "ruolo sconosciuto"},
                                                        {"medico; ;Elena", "cognome mancante"},
                                                        {"medico;Bassi;12345678901234567890123456789012", "campo troppo lungo"},
                                                        {"tecnico;Bassi;Elena;G.;Dottoressa", "un tecnico non ha titolo"},
                                                        {"medico;Bassi;Elena;G.;Cardiologo;Roma", "troppi campi"},
                                                        {"medico;\"Bassi\" G.;Elena", "virgolette non chiuse"},
                                                        {"medico;\xCE\xB1\xCE\xB2;Elena", "carattere non ammesso"}};
    for (const auto& [line, report] : rows) {
        RecordedReports reports;
        const std::string file = std::string("tecnico;Prima\n") + line + "\ntecnico;Dopo\n";
        EXPECT_EQ("t Prima||\nt Dopo||\n", Names(ParseStaff(file, "staff.csv", reports))) << line;
        EXPECT_THAT(reports.Take(), ElementsAre(std::string("oem staff.csv 2 ") + report + ", riga ignorata")) << line;
    }
}

}  // namespace
}  // namespace kx::test
