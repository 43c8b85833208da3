#include "host/report/report_fields.h"

#include <algorithm>

#include "lib/measurement_table.h"

namespace kxhost {
namespace {

// What a row's name is completed by, code after code.
enum class Family {
    kOne,            // nothing: the row is one code
    kStandardLeads,  // the twelve leads
    kMeasuredLeads,  // these and the three further ones that a measurement set has room for
    kNumbers,        // the numbers from the row's first on, for as many codes as it says
    kHolterGroups    // four codes a group: first value, second value, range, empty
};

struct Row {
    int code;
    const wchar_t* name;
    Family family = Family::kOne;
    int count = 1;
    int firstNumber = 1;
};

constexpr int kHolterCodes = 48;
constexpr int kSpirometryValuesBefore = 31;
constexpr int kSpirometryValuesBehind = 11;

// A name with a number is that of a record's field whose meaning the suite leaves to its user.
constexpr Row kRows[] = {
    {1, L"Nome completo"},
    {2, L"Codice del paziente"},
    {3, L"Sesso"},
    {4, L"Età"},
    {5, L"Peso"},
    {6, L"Altezza"},
    {7, L"Medico che conferma"},
    {8, L"Medico e sede, testo 6160"},
    {9, L"Data e ora della registrazione"},
    {12, L"FC obiettivo"},
    {15, L"Etnia"},
    {16, L"Apparecchio da sforzo"},
    {17, L"Intervallo PR dell'evento"},
    {18, L"Durata QRS dell'evento"},
    {19, L"QT / QTc dell'evento"},
    {20, L"Intervallo PR"},
    {21, L"Durata QRS"},
    {22, L"QT / QTc"},
    {33, L"Filtri"},
    {34, L"Frequenza cardiaca"},
    {35, L"Pressione arteriosa"},
    {42, L"Data di nascita"},
    {43, L"Nome"},
    {44, L"Cognome"},
    {45, L"Articolo o possessivo, maiuscolo"},
    {48, L"Livello ST", Family::kMeasuredLeads},
    {63, L"Condizione clinica", Family::kNumbers, 4},
    {67, L"Paziente, testo 844"},
    {68, L"Registratore"},
    {69, L"Paziente, testo 332"},
    {70, L"Interpretazione"},
    {71, L"Stato del report"},
    {75, L"Articolo o possessivo, minuscolo"},
    {76, L"Pronome, minuscolo"},
    {77, L"Pronome, maiuscolo"},
    {78, L"Titolo del paziente"},
    {80, L"Livello ST dello stadio"},
    {81, L"Tempo del livello ST dello stadio"},
    {86, L"FC dello stadio"},
    {87, L"Durata dello stadio"},
    {88, L"Inizio dello stadio"},
    {89, L"Velocità dello stadio"},
    {90, L"Pendenza o carico dello stadio"},
    {95, L"FC al tempo"},
    {96, L"Pressione al tempo"},
    {97, L"Pressione al tempo (secondo campo)"},
    {100, L"Prova da sforzo, valore 7480", Family::kNumbers, 3},
    {103, L"Pressione sistolica al tempo"},
    {105, L"Asse P"},
    {106, L"Asse QRS"},
    {107, L"Asse T"},
    {108, L"Pendenza o carico di picco"},
    {109, L"FC massima"},
    {110, L"Pressione di picco"},
    {111, L"Durata dell'esercizio"},
    {112, L"FC massima in percentuale dell'obiettivo"},
    {125, L"Data, ora e tempo del tratto"},
    {126, L"Secondo nome"},
    {127, L"Via"},
    {128, L"Città"},
    {129, L"Provincia"},
    {130, L"CAP"},
    {131, L"Condizione clinica 5"},
    {135, L"Durata P"},
    {136, L"Intervallo QT"},
    {137, L"QTc"},
    {138, L"QTc secondo Bazett"},
    {139, L"Intervallo RR"},
    {141, L"Doppio prodotto di picco"},
    {142, L"Stato del report con autore"},
    {143, L"Ampiezza P (aP1, µV)", Family::kStandardLeads},
    {155, L"Ampiezza P' (aP2, µV)", Family::kStandardLeads},
    {167, L"Ampiezza R (aR, µV)", Family::kStandardLeads},
    {179, L"Ampiezza R' (aR1, µV)", Family::kStandardLeads},
    {191, L"Ampiezza Q (aQ, µV)", Family::kStandardLeads},
    {206, L"Indirizzo"},
    {207, L"Paziente, testo 186"},
    {208, L"Medico e sede, testo 6192"},
    {209, L"Medico e sede, testo 6224"},
    {210, L"Medico e sede, testo 6288"},
    {213, L"Revisore"},
    {214, L"Autore del report originale"},
    {215, L"Ampiezza T (aT1, µV)", Family::kStandardLeads},
    {227, L"Ampiezza T' (aT2, µV)", Family::kStandardLeads},
    {239, L"Ampiezza S (aS, µV)", Family::kStandardLeads},
    {251, L"Derivazione, valore 251", Family::kStandardLeads},
    {263, L"Derivazione, valore 263", Family::kStandardLeads},
    {275, L"Derivazione, valore 275", Family::kStandardLeads},
    {335, L"Pendenza ST (mV/s)", Family::kStandardLeads},
    {347, L"Deflessione intrinsecoide (ms)", Family::kStandardLeads},
    {359, L"Velocità di picco"},
    {360, L"Livello ST massimo della prova"},
    {361, L"Tempo del livello ST massimo"},
    {362, L"Titolo di colonna: pendenza o carico, con unità"},
    {363, L"Titolo di colonna: velocità, con unità"},
    {364, L"Titolo di colonna: pendenza o carico"},
    {365, L"Titolo di colonna: velocità"},
    {366, L"Titolo di colonna: unità di pendenza o carico"},
    {367, L"Titolo di colonna: unità di velocità"},
    {368, L"Testo vuoto"},
    {371, L"Indice di Sokolow-Lyon (µV)"},
    {372, L"Indice di Cornell (µV)"},
    {373, L"Punteggio di ipertrofia ventricolare sinistra"},
    {374, L"Holter, gruppo", Family::kHolterGroups, kHolterCodes},
    {440, L"Livello ST dello stadio, con tempo e derivazione"},
    {448, L"Medico e sede, testo 6320"},
    {452, L"Tempo nella registrazione"},
    {453, L"Classe dell'evento"},
    {489, L"METs dello stadio"},
    {490, L"Velocità e carico dello stadio"},
    {491, L"FC massima e obiettivo"},
    {492, L"Prova da sforzo, valore 7416"},
    {493, L"Durata della registrazione"},
    {494, L"Livello ST massimo, con tempo e derivazione"},
    {495, L"Stadio di picco"},
    {498, L"Ora del giorno"},
    {499, L"FC dell'evento"},
    {579, L"Spirometria, valore", Family::kNumbers, kSpirometryValuesBefore},
    {610, L"Spirometria, valori teorici"},
    {611, L"Spirometria, valore", Family::kNumbers, kSpirometryValuesBehind, kSpirometryValuesBefore + 1},
    {640, L"Data clinica"},
    {649, L"Data della conferma"},
    {700, L"Holter, FC media"},
    {701, L"Holter, FC minima"},
    {702, L"Holter, ora della FC minima"},
    {703, L"Holter, FC massima"},
    {704, L"Holter, ora della FC massima"},
    {720, L"ABPM, pressione media"},
    {721, L"ABPM, pressione al tempo"},
    {722, L"ABPM, FC al tempo"},
};

std::wstring LeadText(int lead) {
    if (lead >= KX_STANDARD_LEADS) {
        return L"derivazione " + std::to_wstring(lead + 1);
    }
    const std::string name = kx::StandardLeadName(static_cast<std::uint32_t>(lead));
    return {name.begin(), name.end()};
}

std::wstring NameOf(const Row& row, int place) {
    constexpr const wchar_t* kHolterItems[] = {L", primo valore", L", secondo valore", L", intervallo",
                                               L", testo vuoto"};
    switch (row.family) {
        case Family::kStandardLeads:
        case Family::kMeasuredLeads:
            return std::wstring(row.name) + L", " + LeadText(place);
        case Family::kNumbers:
            return std::wstring(row.name) + L' ' + std::to_wstring(row.firstNumber + place);
        case Family::kHolterGroups:
            return std::wstring(row.name) + L' ' + std::to_wstring(place / 4 + 1) + kHolterItems[place % 4];
        default:
            return row.name;
    }
}

int CountOf(const Row& row) {
    switch (row.family) {
        case Family::kStandardLeads:
            return KX_STANDARD_LEADS;
        case Family::kMeasuredLeads:
            return KX_MEASURED_LEADS;
        default:
            return row.count;
    }
}

}  // namespace

const std::vector<ReportField>& ReportFields() {
    static const std::vector<ReportField> fields = [] {
        std::vector<ReportField> made;
        for (const Row& row : kRows) {
            for (int place = 0; place < CountOf(row); ++place) {
                made.push_back({row.code + place, NameOf(row, place)});
            }
        }
        std::sort(made.begin(), made.end(),
                  [](const ReportField& a, const ReportField& b) { return a.code < b.code; });
        return made;
    }();
    return fields;
}

}  // namespace kxhost
