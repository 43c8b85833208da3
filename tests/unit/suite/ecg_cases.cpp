#include "tests/unit/suite/ecg_cases.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "lib/beat_labels.h"
#include "suite/kxinterp/interpreter.h"

namespace kx::test {

namespace {

constexpr int kQrsOn = 400;

std::uint8_t LabelOf(char kind) {
    switch (kind) {
        case 'N':
            return kLabelNormalBeat;
        case 'S':
            return kLabelSupraventricularEctopic;
        case 'V':
            return kLabelVentricularEctopic;
        case 'P':
            return kLabelPaced;
        case 'u':
            return kLabelUnclassifiedBeat;
        default:
            return kLabelSegment;
    }
}

std::int16_t Word(int value) {
    return static_cast<std::int16_t>(value);
}

}  // namespace

std::size_t CodeTexts::LoadText(std::uint32_t id, char* buffer, std::size_t size) const {
    return static_cast<std::size_t>(std::snprintf(buffer, size, "<%u> %%d.%%d", id));
}

// Every component lasts 30 ms.
void SetQrs(KxMeasurementSet& set, int lead, int q, int r, int s, int rPrime) {
    KxLeadMeasurements& values = set.leads[lead];
    int end = kQrsOn;
    const auto place = [&end](int amplitude) {
        if (amplitude == 0) {
            return std::uint16_t{0};
        }
        end += 30;
        return static_cast<std::uint16_t>(end - 30);
    };
    values.aQ = Word(-q);
    values.aR = Word(r);
    values.aS = Word(-s);
    values.aR1 = Word(rPrime);
    values.aS1 = 0;
    values.qOnMarker = place(q);
    values.rOnMarker = place(r);
    values.sOnMarker = place(s);
    values.rPrimeOnMarker = place(rPrime);
    values.sPrimeOnMarker = 0;
    values.qrsOffMarker = static_cast<std::uint16_t>(std::max(end, kQrsOn + 80));
    values.intrinsicoidDeflection = 35;
}

KxMeasurementSet NormalEcg() {
    KxMeasurementSet set{};
    set.size = sizeof set;
    set.measured = 1;
    set.pDuration = 100;
    set.prInterval = 160;
    set.qrsDuration = 90;
    set.qtInterval = 380;
    set.qtc = 410;
    set.qtcBazett = 425;
    set.rrInterval = 800;
    set.episodeTime = 10000;
    set.pAxis = 50;
    set.qrsAxis = 50;
    set.tAxis = 40;
    struct Row {
        int lead, q, r, s, t;
    };
    for (const Row& row : {Row{KX_LEAD_I, 0, 700, 100, 250}, Row{KX_LEAD_II, 50, 1100, 100, 350},
                           Row{KX_LEAD_III, 40, 500, 80, 120}, Row{KX_LEAD_AVR, 800, 100, 0, -280},
                           Row{KX_LEAD_AVL, 0, 300, 100, 80}, Row{KX_LEAD_AVF, 40, 800, 90, 220},
                           Row{KX_LEAD_V1, 0, 200, 900, 50}, Row{KX_LEAD_V2, 0, 500, 1400, 500},
                           Row{KX_LEAD_V3, 0, 800, 900, 500}, Row{KX_LEAD_V4, 0, 1300, 500, 450},
                           Row{KX_LEAD_V5, 40, 1300, 200, 400}, Row{KX_LEAD_V6, 50, 1000, 60, 300}}) {
        SetQrs(set, row.lead, row.q, row.r, row.s);
        set.leads[row.lead].aT1 = Word(row.t);
        set.leads[row.lead].aP1 = row.lead == KX_LEAD_AVR ? Word(-80) : Word(80);
    }
    return set;
}

AnnotationStore Beats(const std::string& kinds, const std::vector<std::uint32_t>& intervals) {
    AnnotationStore store(static_cast<std::uint32_t>(kinds.size()), true);
    std::uint32_t t = 500;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        store.Append(LabelOf(kinds[i]), t);
        t += intervals[i % intervals.size()];
    }
    return store;
}

AnnotationStore SteadyBeats() {
    return Beats("NNNNNNNNNN", {800});
}

std::set<int> CodesOf(const KxMeasurementSet& set, const AnnotationStore* beats) {
    KxInterpretationResult result{};
    SilentReporter log;
    // Modules of the suite know a store by what it begins with.
    interp::Interpret(&set, reinterpret_cast<const KxAnnotationStore*>(beats), CodeTexts(), &result, log);
    std::set<int> codes;
    const std::string text = result.text;
    for (std::size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
        codes.insert(std::stoi(text.substr(at + 1)));
    }
    return codes;
}

}  // namespace kx::test
