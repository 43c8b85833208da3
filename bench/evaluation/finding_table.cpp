#include "bench/evaluation/finding_table.h"

namespace kx::evaluation {

namespace {

// Diagnoses in the words of the Lobachevsky database, codes as in dialogs/resources/statements.rc.
constexpr Finding kFindings[] = {
    {"sinus rhythm", {"Rhythm: Sinus rhythm"}, {30036}, 0, 0},
    {"sinus bradycardia", {"Rhythm: Sinus bradycardia"}, {30006}, 0, 0},
    {"sinus tachycardia", {"Rhythm: Sinus tachycardia"}, {30005}, 0, 0},
    {"irregular sinus rhythm", {"Rhythm: Sinus arrhythmia", "Rhythm: Irregular sinus"}, {30007, 30041}, 0, 0},
    {"atrial fibrillation", {"Rhythm: Atrial fibrillation"}, {30008, 30009, 30010}, 0, 0},
    {"atrial flutter", {"Rhythm: Atrial flutter"}, {30011}, 0, 0},
    // P-synchrony is a pacemaker's that follows the atria.
    {"pacing",
     {"UNIpolar", "BIpolar", "Biventricular pacing", "P-synchrony"},
     {30048, 30049, 30050, 30051},
     85,
     97},
    {"first-degree AV block", {"I degree AV"}, {30042}, 85, 97},
    {"third-degree AV block", {"III degree AV"}, {30046}, 0, 0},
    {"complete left bundle branch block", {"Complete left bundle"}, {30055}, 85, 97},
    {"incomplete left bundle branch block", {"Incomplete left bundle"}, {30057}, 0, 0},
    {"complete right bundle branch block", {"Complete right bundle"}, {30053}, 85, 97},
    {"incomplete right bundle branch block", {"Incomplete right bundle"}, {30054}, 0, 0},
    {"nonspecific conduction delay", {"Non-specific intravintricular"}, {30059}, 0, 0},
    {"left anterior hemiblock", {"Left anterior hemiblock"}, {30061}, 85, 97},
    {"left posterior hemiblock", {"Left posterior hemiblock"}, {30063}, 0, 0},
    {"ventricular extrasystoles", {"Ventricular extrasystole"}, {30019, 30020, 30039, 30040}, 90, 95},
    {"supraventricular extrasystoles", {"Atrial extrasystole"}, {30017, 30018}, 90, 95},
    {"left atrial enlargement", {"Left atrial"}, {30065, 30069}, 0, 0},
    {"right atrial enlargement", {"Right atrial"}, {30067, 30069}, 0, 0},
    {"left ventricular hypertrophy", {"Left ventricular hypertrophy"}, {30073, 30074, 30079, 30083}, 0, 0},
    {"left ventricular strain", {"Left ventricular overload"}, {30079}, 0, 0},
    {"right ventricular hypertrophy", {"Right ventricular hypertrophy"}, {30081, 30083}, 0, 0},
    {"early repolarisation", {"Early repolarization"}, {30197}, 0, 0},
    {"STEMI, anterior or septal", {"STEMI: anterior", "STEMI: septal", "STEMI: apical"}, {30190}, 0, 0},
    {"STEMI, lateral", {"STEMI: lateral"}, {30193}, 0, 0},
    {"STEMI, inferior", {"STEMI: inferior"}, {30191}, 0, 0},
    {"scar, anterior or septal",
     {"Scar formation: anterior", "Scar formation: septal", "Scar formation: apical"},
     {30087, 30088, 30089},
     0,
     0},
    {"scar, lateral", {"Scar formation: lateral"}, {30089, 30090, 30092}, 0, 0},
    {"scar, inferior or posterior",
     {"Scar formation: inferior", "Scar formation: posterior"},
     {30091, 30092, 30220},
     0,
     0},
};

constexpr Finding kRhythmClasses[] = {
    {"pacing", {"UNIpolar", "BIpolar", "Biventricular pacing", "P-synchrony"}, {30048}, 0, 0},
    {"flutter", {"Rhythm: Atrial flutter"}, {30011}, 0, 0},
    {"fibrillation", {"Rhythm: Atrial fibrillation"}, {30008, 30009, 30010}, 0, 0},
    {"sinus", {"Rhythm: Sinus", "Rhythm: Irregular sinus"}, {30036, 30005, 30006, 30007}, 0, 0},
};

constexpr Finding kAxisClasses[] = {
    {"left", {"Electric axis of the heart: left"}, {30026, 30028, 30061}, 0, 0},
    {"right", {"Electric axis of the heart: right"}, {30027, 30063}, 0, 0},
};

}  // namespace

std::span<const Finding> Findings() {
    return kFindings;
}

std::span<const Finding> RhythmClasses() {
    return kRhythmClasses;
}

std::span<const Finding> AxisClasses() {
    return kAxisClasses;
}

}  // namespace kx::evaluation
