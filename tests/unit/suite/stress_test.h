// A stress test on a treadmill, and the report that the shipped script makes of it.
#pragma once

namespace kx {
struct TestRecord;
}

namespace kx::test {

void FillTreadmillTest(TestRecord& test);

inline constexpr char kTreadmillReport[] =
    "Test da sforzo al tappeto rotante, durata 9:30 min.\r\n"
    "Livello massimo: 6.8 km/h, pendenza 14.0 %.\r\n"
    "\r\n"
    "Frequenza cardiaca massima 152 battiti/min (89 % della teorica, 170 battiti/min).\r\n"
    "Test massimale per frequenza cardiaca (almeno l'85 % della teorica).\r\n"
    "Pressione arteriosa al picco 180 / 90 mmHg (a riposo 120/80 mmHg).\r\n"
    "Doppio prodotto al picco 27360 mmHg/min.\r\n"
    "\r\n"
    "Sottoslivellamento del tratto ST: -1.5 mm @ 8:20 [V5]. Considerare ischemia inducibile.\r\n"
    "\r\n"
    "Interpretazione automatica: da confermare a cura del medico.";

}  // namespace kx::test
