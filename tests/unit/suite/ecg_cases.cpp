#include "tests/unit/suite/ecg_cases.h"

#include <cstddef>
#include <map>
#include <sstream>

#include "lib/beat_labels.h"
#include "suite/kxinterp/interpreter.h"

namespace kx::test {

namespace {

constexpr int kQrsOn = 400;
constexpr std::string_view kNormal =
    "p=100 pr=160 qrs=90 qtc=410 bazett=425 paxis=50 axis=50 I=0,700,100 II=50,1100,100 III=40,500,80 aVR=800,100,0 "
    "aVL=0,300,100 aVF=40,800,90 V1=0,200,900 V2=0,500,1400 V3=0,800,900 V4=0,1300,500 V5=40,1300,200 V6=50,1000,60 I.t=250 "
    "II.t=350 III.t=120 aVR.t=-280 aVL.t=80 aVF.t=220 V1.t=50 V2+V3.t=500 V4.t=450 V5.t=400 V6.t=300 all.p=80 aVR.p=-80 ";

// The values of 16 bits by name: of the whole, of a lead.
using Set = KxMeasurementSet;
using Lead = KxLeadMeasurements;
const std::map<std::string, std::size_t> kSetFields = {{"p", offsetof(Set, pDuration)},      {"pr", offsetof(Set, prInterval)},
                                                       {"qrs", offsetof(Set, qrsDuration)},  {"qtc", offsetof(Set, qtc)},
                                                       {"bazett", offsetof(Set, qtcBazett)}, {"axis", offsetof(Set, qrsAxis)},
                                                       {"paxis", offsetof(Set, pAxis)}};
const std::map<std::string, std::size_t> kLeadFields = {{"t", offsetof(Lead, aT1)},
                                                        {"p", offsetof(Lead, aP1)},
                                                        {"p2", offsetof(Lead, aP2)},
                                                        {"r", offsetof(Lead, rOnMarker)},
                                                        {"s", offsetof(Lead, sOnMarker)},
                                                        {"end", offsetof(Lead, qrsOffMarker)},
                                                        {"p2on", offsetof(Lead, pPrimeOnMarker)},
                                                        {"poff", offsetof(Lead, pOffMarker)},
                                                        {"peak", offsetof(Lead, intrinsicoidDeflection)}};

void Store(void* record, std::size_t place, int value) {
    const auto stored = static_cast<std::int16_t>(value);
    std::memcpy(static_cast<char*>(record) + place, &stored, sizeof stored);
}

void PutLead(Set& set, int lead, const std::string& name, const std::string& text) {
    Lead& values = set.leads[lead];
    const int value = std::atoi(text.c_str());
    if (name.starts_with("st")) {  // all levels, or the one at a time
        const int first = std::atoi(name.c_str() + 2) / 10;
        std::fill(values.stLevel + first, values.stLevel + (name.size() > 2 ? first + 1 : 10), static_cast<std::int16_t>(value));
    } else if (name.empty()) {
        int q = 0, r = 0, s = 0, rPrime = 0;
        std::sscanf(text.c_str(), "%d,%d,%d,%d", &q, &r, &s, &rPrime);
        SetQrs(set, lead, q, r, s, rPrime);
    } else {
        Store(&values, kLeadFields.at(name), value);
    }
}

void Apply(Set& set, const std::string& change) {
    constexpr std::string_view kNames[] = {"I", "II", "III", "aVR", "aVL", "aVF", "V1", "V2", "V3", "V4", "V5", "V6"};
    const std::string name = change.substr(0, change.find('=')), text = change.substr(name.size() + 1);
    if (kSetFields.contains(name)) {
        return Store(&set, kSetFields.at(name), std::atoi(text.c_str()));
    }
    const std::size_t dot = std::min(name.find('.'), name.size());
    const std::string leads = '+' + name.substr(0, dot) + '+';
    for (int lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        if (leads == "+all+" || leads.find('+' + std::string(kNames[lead]) + '+') != leads.npos) {
            PutLead(set, lead, dot == name.size() ? "" : name.substr(dot + 1), text);
        }
    }
}

}  // namespace

void SetQrs(Set& set, int lead, int q, int r, int s, int rPrime) {
    Lead& values = set.leads[lead];
    int end = kQrsOn;
    const auto place = [&end](int amplitude) {
        end += amplitude == 0 ? 0 : 30;
        return static_cast<std::uint16_t>(amplitude == 0 ? 0 : end - 30);
    };
    values.aQ = static_cast<std::int16_t>(-q), values.qOnMarker = place(q);
    values.aR = static_cast<std::int16_t>(r), values.rOnMarker = place(r);
    values.aS = static_cast<std::int16_t>(-s), values.sOnMarker = place(s);
    values.aR1 = static_cast<std::int16_t>(rPrime), values.rPrimeOnMarker = place(rPrime);
    values.qrsOffMarker = static_cast<std::uint16_t>(std::max(end, kQrsOn + 80));
    values.intrinsicoidDeflection = 35;
}

Set EcgWith(const std::string& changes) {
    Set set{};
    set.size = sizeof set;
    set.measured = 1;
    set.rrInterval = 800;
    set.episodeTime = 10000;
    std::istringstream words(std::string(kNormal) + changes);
    for (std::string change; words >> change;) {
        Apply(set, change);
    }
    return set;
}

AnnotationStore Beats(const std::string& kinds, const std::vector<std::uint32_t>& intervals) {
    constexpr std::string_view kKinds = "NSVPu";
    constexpr std::uint8_t kLabels[] = {kLabelNormalBeat, kLabelSupraventricularEctopic, kLabelVentricularEctopic,
                                        kLabelPaced,      kLabelUnclassifiedBeat,        kLabelSegment};
    AnnotationStore store(static_cast<std::uint32_t>(kinds.size()), true);
    std::uint32_t t = 500;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        store.Append(kLabels[std::min(kKinds.find(kinds[i]), kKinds.size())], t);
        t += intervals[i % intervals.size()];
    }
    return store;
}

std::set<int> CodesOf(const Set& set, const AnnotationStore* beats) {
    // Modules of the suite know a store by what it begins with.
    const auto codes = interp::StatementCodes(set, reinterpret_cast<const KxAnnotationStore*>(beats));
    return {codes.begin(), codes.end()};
}

}  // namespace kx::test
