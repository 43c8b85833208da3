#include "host/recording/aecg/aecg_annotations.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "host/recording/aecg/aecg_nodes.h"
#include "host/recording/record_text.h"
#include "host/recording/recording.h"
#include "lib/annotation_store.h"
#include "lib/beat_labels.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

using Node = pugi::xml_node;

Node AddAnnotation(Node parent, const char* code) {
    const Node annotation = AddPath(parent, {"component", "annotation"});
    AddCode(annotation, code, kMdc);
    return annotation;
}

Node AddCoded(Node parent, const char* code, const char* value) {
    const Node annotation = AddAnnotation(parent, code);
    Node typed = AddTyped(annotation, "CE");
    typed.append_attribute("code") = value;
    typed.append_attribute("codeSystem") = kMdc;
    typed.append_attribute("codeSystemName") = "MDC";
    return annotation;
}

void AddMeasured(Node parent, const char* code, int value, const char* unit) {
    Node typed = AddTyped(AddAnnotation(parent, code), "PQ");
    typed.append_attribute("value") = value;
    typed.append_attribute("unit") = unit;
}

Node AddRegion(Node annotation) {
    Node region = AddPath(annotation, {"support", "supportingROI"});
    region.append_attribute("classCode") = "ROIBND";
    AddCode(region, "ROIPS", kActCode);
    return region;
}

// From and to in ms of the median beat; 0: not there.
void AddSpan(Node region, unsigned fromMs, unsigned toMs) {
    const Node boundary = AddPath(region, {"component", "boundary"});
    AddCode(boundary, "TIME_RELATIVE", kActCode);
    const Node value = AddTyped(boundary, "IVL_PQ");
    if (fromMs != 0) {
        AddQuantity(value, "low", fromMs, "ms");
    }
    if (toMs != 0) {
        AddQuantity(value, "high", toMs, "ms");
    }
}

const char* BeatCode(unsigned label) {
    switch (label) {
        case kLabelNormalBeat:
            return "MDC_ECG_BEAT_NORMAL";
        case kLabelLeftBundleBranchBlock:
            return "MDC_ECG_BEAT_LBB_BLK_COMP";
        case kLabelRightBundleBranchBlock:
            return "MDC_ECG_BEAT_RBB_BLK_COMP";
        case kLabelAberratedAtrial:
            return "MDC_ECG_BEAT_ATR_P_C_ABERR";
        case kLabelVentricularEctopic:
            return "MDC_ECG_BEAT_V_P_C";
        case kLabelFusion:
            return "MDC_ECG_BEAT_V_P_C_FUSION";
        case kLabelJunctionalEctopic:
            return "MDC_ECG_BEAT_JUNC_P_C";
        case kLabelAtrialEctopic:
            return "MDC_ECG_BEAT_ATR_P_C";
        case kLabelSupraventricularEctopic:
            return "MDC_ECG_BEAT_SV_P_C";
        case kLabelVentricularEscape:
            return "MDC_ECG_BEAT_V_ESC";
        case kLabelJunctionalEscape:
            return "MDC_ECG_BEAT_JUNC_ESC";
        case kLabelPaced:
            return "MDC_ECG_BEAT_PACED";
        case kLabelUnclassifiedBeat:
            return "MDC_ECG_BEAT_UNKNOWN";
        default:
            return nullptr;  // no beat
    }
}

// A wave of the whole beat or of one lead, by its markers.
struct Wave {
    const char* code;
    unsigned fromMs, toMs;
    bool byHand;
};

// A component of a lead's wave: it ends where the next one that is there begins, the last at the wave's end.
struct Component {
    const char* code;
    std::uint16_t KxLeadMeasurements::*onset;
    std::int16_t KxLeadMeasurements::*amplitude;
    unsigned flag;
    std::uint16_t KxLeadMeasurements::*end;  // the wave's
    unsigned endFlag;
};
using Lead = KxLeadMeasurements;
constexpr Component kComponents[] = {{"MDC_ECG_WAVC_PWAVE", &Lead::pOnMarker, &Lead::aP1, KX_MANUAL_LEAD_P_ON,
                                      &Lead::pOffMarker, KX_MANUAL_LEAD_P_OFF},
                                     {"MDC_ECG_WAVC_PPWAVE", &Lead::pPrimeOnMarker, &Lead::aP2,
                                      KX_MANUAL_LEAD_P_PRIME_ON, &Lead::pOffMarker, KX_MANUAL_LEAD_P_OFF},
                                     {"MDC_ECG_WAVC_QWAVE", &Lead::qOnMarker, &Lead::aQ, KX_MANUAL_LEAD_Q_ON,
                                      &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                                     {"MDC_ECG_WAVC_RWAVE", &Lead::rOnMarker, &Lead::aR, KX_MANUAL_LEAD_R_ON,
                                      &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                                     {"MDC_ECG_WAVC_SWAVE", &Lead::sOnMarker, &Lead::aS, KX_MANUAL_LEAD_S_ON,
                                      &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                                     {"MDC_ECG_WAVC_RRWAVE", &Lead::rPrimeOnMarker, &Lead::aR1,
                                      KX_MANUAL_LEAD_R_PRIME_ON, &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                                     {"MDC_ECG_WAVC_SSWAVE", &Lead::sPrimeOnMarker, &Lead::aS1,
                                      KX_MANUAL_LEAD_S_PRIME_ON, &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                                     {"MDC_ECG_WAVC_TWAVE", &Lead::tOnMarker, &Lead::aT1, KX_MANUAL_LEAD_T_ON,
                                      &Lead::tOffMarker, KX_MANUAL_LEAD_T_OFF},
                                     {"MDC_ECG_WAVC_TTWAVE", &Lead::tPrimeOnMarker, &Lead::aT2,
                                      KX_MANUAL_LEAD_T_PRIME_ON, &Lead::tOffMarker, KX_MANUAL_LEAD_T_OFF}};

Wave WaveOf(const Lead& lead, const Component& component) {
    Wave wave{component.code, lead.*component.onset, lead.*component.end,
              (lead.markerFlags & (component.flag | component.endFlag)) != 0};
    for (const Component& next : kComponents) {
        const unsigned onset = lead.*next.onset;
        if (next.end == component.end && onset > wave.fromMs && onset < wave.toMs) {
            wave.toMs = onset;
        }
    }
    return wave;
}

Node AddWave(Node set, const Wave& wave, const char* lead) {
    const Node annotation = AddCoded(set, "MDC_ECG_WAVC", wave.code);
    const Node region = AddRegion(annotation);
    if (lead != nullptr) {
        AddCode(AddPath(region, {"component", "boundary"}), LeadCode(lead).c_str(), kMdc);
    }
    AddSpan(region, wave.fromMs, wave.toMs);
    return annotation;
}

void AddGlobalWaves(Node set, const KxMeasurementSet& measured, bool byHand) {
    const Lead& first = measured.leads[0];
    const unsigned flags = first.globalManualFlags;
    const Wave waves[] = {
        {"MDC_ECG_WAVC_PWAVE", first.pOn, first.pOff, (flags & (KX_MANUAL_P_ON | KX_MANUAL_P_OFF)) != 0},
        {"MDC_ECG_WAVC_QRSWAVE", first.qrsOn, first.qrsOff,
         (flags & (KX_MANUAL_QRS_ON | KX_MANUAL_QRS_OFF)) != 0},
        {"MDC_ECG_WAVC_TWAVE", 0, first.tOff, (flags & KX_MANUAL_T_OFF) != 0}};
    for (const Wave& wave : waves) {
        if (wave.byHand == byHand && (wave.fromMs != 0 || wave.toMs != 0)) {
            AddWave(set, wave, nullptr);
        }
    }
}

void AddLeadWaves(Node set, const KxMeasurementSet& measured, bool byHand) {
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        const Lead& block = measured.leads[lead];
        for (const Component& component : kComponents) {
            const Wave wave = WaveOf(block, component);
            if (wave.fromMs != 0 && wave.byHand == byHand) {
                const Node annotation = AddWave(set, wave, kLeadNames[lead]);
                AddMeasured(annotation, "MDC_ECG_AMPL", block.*component.amplitude, "uV");
            }
        }
    }
}

// Levels of the ST segment at 0, 20, 40, 60 and 80 ms, of each lead.
void AddStLevels(Node set, const KxMeasurementSet& measured) {
    constexpr const char* kCodes[] = {"MDC_ECG_AMPL_J", "MDC_ECG_ELEC_POTL_ST_20", "MDC_ECG_ELEC_POTL_ST_40",
                                      "MDC_ECG_ELEC_POTL_ST_60", "MDC_ECG_ELEC_POTL_ST_80"};
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t i = 0; i < std::size(kCodes); ++i) {
            const Node annotation = AddAnnotation(set, kCodes[i]);
            Node typed = AddTyped(annotation, "PQ");
            typed.append_attribute("value") = measured.leads[lead].stLevel[2 * i];
            typed.append_attribute("unit") = "uV";
            AddCode(AddPath(AddRegion(annotation), {"component", "boundary"}),
                    LeadCode(kLeadNames[lead]).c_str(), kMdc);
        }
    }
}

void AddIntervals(Node set, const KxMeasurementSet& measured) {
    struct Row {
        const char* code;
        int value;
        const char* unit;
        bool there;
    };
    // An axis of 0 degrees is one; it is there when its wave is.
    const Lead& first = measured.leads[0];
    const bool p = first.pOn != 0, qrs = first.qrsOn != 0, t = first.tOff != 0;
    const int rr = measured.rrInterval;
    const Row rows[] = {{"MDC_ECG_TIME_PD_RR", rr, "ms", rr != 0},
                        {"MDC_ECG_HEART_RATE", rr == 0 ? 0 : (60000 + rr / 2) / rr, "/min", rr != 0},
                        {"MDC_ECG_TIME_PD_P", measured.pDuration, "ms", p},
                        {"MDC_ECG_TIME_PD_PR", measured.prInterval, "ms", p},
                        {"MDC_ECG_TIME_PD_QRS", measured.qrsDuration, "ms", qrs},
                        {"MDC_ECG_TIME_PD_QT", measured.qtInterval, "ms", t},
                        {"MDC_ECG_TIME_PD_QTc", measured.qtc, "ms", t && measured.qtc != 0},
                        {"MDC_ECG_TIME_PD_QTcB", measured.qtcBazett, "ms", t && measured.qtcBazett != 0},
                        {"MDC_ECG_ANGLE_P_FRONT", measured.pAxis, "deg", p},
                        {"MDC_ECG_ANGLE_QRS_FRONT", measured.qrsAxis, "deg", qrs},
                        {"MDC_ECG_ANGLE_T_FRONT", measured.tAxis, "deg", t}};
    for (const Row& row : rows) {
        if (row.there) {
            AddMeasured(set, row.code, row.value, row.unit);
        }
    }
}

// A set by the analysis, or by a person.
Node AddSet(Node series, const std::string& author, bool person) {
    const Node set = AddPath(series, {"subjectOf", "annotationSet"});
    const Node type = AddPath(set, {"author", "assignedEntity", "assignedAuthorType"});
    if (person) {
        AddText(AddPath(type, {"assignedPerson"}), "name", author);
    } else {
        AddText(AddPath(type, {"assignedDevice"}), "manufacturerModelName", author);
    }
    return set;
}

void AddInterpretation(Node set, const TestRecord& test) {
    char text[sizeof test.interpretationText];
    test.InterpretationText(text, sizeof text);
    std::string_view rest = text;
    if (rest.empty()) {
        return;
    }
    const Node whole = AddAnnotation(set, "MDC_ECG_INTERPRETATION");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string line = TextOfField(FromRecordText(rest.substr(0, end)));
        if (!line.empty()) {
            AddTyped(AddAnnotation(whole, "MDC_ECG_INTERPRETATION_STATEMENT"), "ST").text() = line.c_str();
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    constexpr const char* kStates[] = {"original", "overread", "confirmed", "reviewed outside"};
    const char* state = kStates[std::min<std::size_t>(test.ReportState(), std::size(kStates) - 1)];
    AddTyped(AddAnnotation(whole, "MDC_ECG_INTERPRETATION_COMMENT"), "ST").text() = state;
}

bool AnyByHand(const KxMeasurementSet& measured) {
    constexpr unsigned kGlobalFlags = 0x1F, kLeadFlags = 0xFFF;
    unsigned flags = measured.leads[0].globalManualFlags & kGlobalFlags;
    for (const Lead& lead : measured.leads) {
        flags |= lead.markerFlags & kLeadFlags;
    }
    return flags != 0;
}

}  // namespace

std::string TimeText(const TestRecord& test, std::uint32_t ms) {
    DateTime time(test.acquisitionTime);
    if (!time.IsValid()) {
        return {};
    }
    // A time stamp has hundredths of a second.
    time.AddMilliseconds(ms - ms % 10);
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d.%03d", time.Year(), time.Month(), time.Day(),
                  time.Hour(), time.Minute(), time.Second(), time.Milliseconds() + static_cast<int>(ms % 10));
    return text;
}

void AddBeatAnnotations(Node series, const TestRecord& test) {
    const AnnotationStore* beats = test.Annotations();
    if (beats == nullptr || beats->Count() == 0) {
        return;
    }
    const Node set = AddSet(series, "kxanalyze", false);
    for (std::uint32_t i = 0; i < beats->Count(); ++i) {
        const char* code = BeatCode(beats->Label(i));
        if (code == nullptr) {
            continue;
        }
        const std::uint32_t ms = beats->Time(i);
        const std::string time = TimeText(test, ms);
        const Node region = AddRegion(AddCoded(set, "MDC_ECG_BEAT", code));
        if (time.empty()) {
            AddSpan(region, ms, ms);
            continue;
        }
        const Node boundary = AddPath(region, {"component", "boundary"});
        AddCode(boundary, "TIME_ABSOLUTE", kActCode);
        const Node value = AddTyped(boundary, "IVL_TS");
        AddValue(value, "low", time);
        AddValue(value, "high", time);
    }
}

void AddBeatMeasurements(Node series, const TestRecord& test) {
    const KxMeasurementSet& measured = test.Episode(0)->measurements;
    const bool reviewed = !test.IsOriginal();
    if (measured.measured != 0) {
        const Node analysis = AddSet(series, "kxanalyze", false);
        AddIntervals(analysis, measured);
        AddGlobalWaves(analysis, measured, false);
        AddLeadWaves(analysis, measured, false);
        AddStLevels(analysis, measured);
    }
    const bool byHand = measured.measured != 0 && AnyByHand(measured);
    if (byHand || reviewed) {
        const char* reviewer = test.IsConfirmed() ? test.ConfirmedBy() : test.OverreadBy();
        const Node person = AddSet(series, FromRecordText(reviewer), true);
        if (byHand) {
            AddGlobalWaves(person, measured, true);
            AddLeadWaves(person, measured, true);
        }
        if (reviewed) {
            AddInterpretation(person, test);
        }
    }
    if (!reviewed && test.interpretationText[0] != '\0') {
        AddInterpretation(AddSet(series, FromRecordText(test.OriginalBy()), false), test);
    }
}

}  // namespace kx::recording
