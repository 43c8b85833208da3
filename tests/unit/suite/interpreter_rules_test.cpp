// What each statement needs: on the limit it is made, just short of it, it is not.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "suite/kxinterp/rules.h"
#include "tests/unit/suite/ecg_cases.h"

namespace {

using kx::test::Beats;
using kx::test::CodesOf;
using kx::test::NormalEcg;
using kx::test::SetQrs;
using kx::test::SteadyBeats;
using Set = KxMeasurementSet;
using Change = std::function<void(Set&)>;

constexpr int kI = KX_LEAD_I, kII = KX_LEAD_II, kIII = KX_LEAD_III, kAvl = KX_LEAD_AVL, kAvf = KX_LEAD_AVF,
              kV1 = KX_LEAD_V1, kV2 = KX_LEAD_V2, kV3 = KX_LEAD_V3, kV4 = KX_LEAD_V4, kV5 = KX_LEAD_V5,
              kV6 = KX_LEAD_V6;

std::int16_t Word(int value) {
    return static_cast<std::int16_t>(value);
}
std::uint16_t Time(int value) {
    return static_cast<std::uint16_t>(value);
}

// Every lead's complex lasts `ms`, and so does the whole.
void Broaden(Set& set, int ms) {
    set.qrsDuration = Time(ms);
    for (int lead = kI; lead <= kV6; ++lead) {
        set.leads[lead].qrsOffMarker = Time(400 + ms);
    }
}
void LiftSt(Set& set, int lead, int microvolts) {
    for (std::int16_t& level : set.leads[lead].stLevel) {
        level = Word(microvolts);
    }
}
void SetT(Set& set, const std::vector<int>& leads, int microvolts) {
    for (const int lead : leads) {
        set.leads[lead].aT1 = Word(microvolts);
    }
}
void MakeRightBlock(Set& s, int ms) {
    Broaden(s, ms);
    SetQrs(s, kV1, 0, 200, 500, 700);
    SetQrs(s, kI, 0, 700, 200);
    SetQrs(s, kV6, 0, 900, 200);
    for (const int lead : {kV1, kI, kV6}) {
        s.leads[lead].qrsOffMarker = Time(400 + ms);
    }
}
void MakeLeftBlock(Set& s, int ms) {
    Broaden(s, ms);
    for (const int lead : {kI, kV5, kV6}) {
        SetQrs(s, lead, 0, 1200, 0);
        s.leads[lead].intrinsicoidDeflection = 70;
        s.leads[lead].qrsOffMarker = Time(400 + ms);
    }
}

// A deep Q wave, a lifted ST segment, a T wave in each of the leads.
Change Q(std::vector<int> leads) {
    return [=](Set& s) {
        for (const int lead : leads) {
            SetQrs(s, lead, 300, 800, 0);
        }
    };
}
Change St(std::vector<int> leads, int microvolts) {
    return [=](Set& s) {
        for (const int lead : leads) {
            LiftSt(s, lead, microvolts);
        }
    };
}
Change T(std::vector<int> leads, int microvolts) {
    return [=](Set& s) { SetT(s, leads, microvolts); };
}
Change LeftBlock(int ms) {
    return [=](Set& s) { MakeLeftBlock(s, ms); };
}
Change Axis(int degrees) {
    return [=](Set& s) { s.qrsAxis = Word(degrees); };
}
// The small Q and the late peak of aVL that go with an anterior hemiblock.
void DelayAvl(Set& s) {
    SetQrs(s, kAvl, 60, 600, 0);
    s.leads[kAvl].intrinsicoidDeflection = 45;
}
void MakeSokolow(Set& s, int depth, int height) {
    SetQrs(s, kV1, 0, 100, depth);
    SetQrs(s, kV5, 0, height, 0);
}
void MakeStrain(Set& s) {
    MakeSokolow(s, 1800, 2000);
    SetT(s, {kV5, kV6}, -200);
    LiftSt(s, kV5, -60);
}
void MakeRightHypertrophy(Set& s) {
    s.qrsAxis = 110;
    SetQrs(s, kV1, 0, 800, 200);
    SetQrs(s, kV6, 0, 500, 300);
}
void MakeCornell(Set& s, int avl) {
    SetQrs(s, kAvl, 0, avl, 0);
    SetQrs(s, kV3, 0, 900, 2000);
}
// One change after another.
Change Both(Change first, Change second) {
    return [=](Set& s) { first(s), second(s); };
}

struct Row {
    const char* name;
    Change change;
    int code;
    bool made;
};

void CheckRows(const std::vector<Row>& rows, const kx::AnnotationStore& beats) {
    for (const Row& row : rows) {
        Set set = NormalEcg();
        row.change(set);
        const std::set<int> codes = CodesOf(set, &beats);
        EXPECT_EQ(row.made, codes.contains(row.code)) << row.name << ": " << testing::PrintToString(codes);
    }
}

TEST(InterpreterRules, FindNothingInANormalEcg) {
    const auto beats = SteadyBeats();
    EXPECT_EQ((std::set<int>{30036, 30132}), CodesOf(NormalEcg(), &beats));
    EXPECT_EQ((std::set<int>{30036, 30132}), CodesOf(NormalEcg(), nullptr)) << "without beats";
}

TEST(InterpreterRules, JudgeConductionAndAxis) {
    CheckRows(
        {
            {"PR 201", [](Set& s) { s.prInterval = 201; }, 30042, true},
            {"PR 200", [](Set& s) { s.prInterval = 200; }, 30042, false},
            {"PR 119", [](Set& s) { s.prInterval = 119; }, 30047, true},
            {"PR 120", [](Set& s) { s.prInterval = 120; }, 30047, false},
            {"PR 110, QRS 120", [](Set& s) { s.prInterval = 110, Broaden(s, 120); }, 30052, true},
            {"PR 110, QRS 119", [](Set& s) { s.prInterval = 110, Broaden(s, 119); }, 30052, false},
            {"right block", [](Set& s) { MakeRightBlock(s, 120); }, 30053, true},
            {"right block, 119 ms", [](Set& s) { MakeRightBlock(s, 119); }, 30053, false},
            {"incomplete right block", [](Set& s) { MakeRightBlock(s, 119); }, 30054, true},
            {"right pattern, narrow", [](Set& s) { MakeRightBlock(s, 109); }, 30054, false},
            {"right block without S", [](Set& s) { MakeRightBlock(s, 130), SetQrs(s, kV6, 0, 900, 0); },
             30053, false},
            {"left block", LeftBlock(120), 30055, true},
            {"incomplete left block", LeftBlock(119), 30057, true},
            {"left block with Q", [](Set& s) { MakeLeftBlock(s, 130), s.leads[kV6].aQ = -40; }, 30055, false},
            {"left block, early peak",
             [](Set& s) {
                 MakeLeftBlock(s, 130);
                 s.leads[kV5].intrinsicoidDeflection = s.leads[kV6].intrinsicoidDeflection = 60;
             },
             30055, false},
            {"broad, no pattern", [](Set& s) { Broaden(s, 120); }, 30059, true},
            {"one lead ends late", [](Set& s) { s.qrsDuration = 140; }, 30059, false},
            {"axis -31", Axis(-31), 30026, true},
            {"axis -30", Axis(-30), 30026, false},
            {"axis 91", Axis(91), 30027, true},
            {"axis 90", Axis(90), 30027, false},
            {"axis 180", Axis(180), 30027, true},
            {"axis -90", Axis(-90), 30028, true},
            {"axis -179", Axis(-179), 30028, true},
            {"balanced leads", [](Set& s) { SetQrs(s, kI, 0, 500, 450), SetQrs(s, kAvf, 0, 400, 400); },
             30029, true},
            {"one balanced lead", [](Set& s) { SetQrs(s, kI, 0, 500, 450); }, 30029, false},
            {"anterior hemiblock", Both(Axis(-45), DelayAvl), 30061, true},
            {"axis -44", Both(Axis(-44), DelayAvl), 30061, false},
            {"its axis is not told twice", Both(Axis(-60), DelayAvl), 30026, false},
            {"posterior hemiblock",
             [](Set& s) {
                 s.qrsAxis = 110;
                 SetQrs(s, kI, 0, 100, 500), SetQrs(s, kAvl, 0, 100, 600);
                 SetQrs(s, kIII, 80, 900, 0), SetQrs(s, kAvf, 80, 900, 0);
             },
             30063, true},
        },
        SteadyBeats());
}

TEST(InterpreterRules, JudgeChambersAndVoltage) {
    const auto scaleLimbs = [](Set& s, int largest) {
        for (int lead = kI; lead <= kAvf; ++lead) {
            SetQrs(s, lead, 0, lead == kII ? largest - 100 : 200, 100);
        }
    };
    const auto pTerminal = [](Set& s, int depth, int ms) {
        s.leads[kV1].aP2 = Word(-depth);
        s.leads[kV1].pPrimeOnMarker = 300;
        s.leads[kV1].pOffMarker = Time(300 + ms);
    };
    CheckRows(
        {
            {"limb leads 499", [&](Set& s) { scaleLimbs(s, 499); }, 30034, true},
            {"limb leads 500", [&](Set& s) { scaleLimbs(s, 500); }, 30034, false},
            {"chest leads 999",
             [](Set& s) {
                 for (int lead = kV1; lead <= kV6; ++lead) {
                     SetQrs(s, lead, 0, 499, 500);
                 }
             },
             30035, true},
            {"transition in V4", [](Set&) {}, 30032, false},
            {"transition behind V4", [](Set& s) { SetQrs(s, kV3, 0, 300, 900), SetQrs(s, kV4, 0, 500, 600); },
             30032, true},
            {"R in V2", [](Set& s) { SetQrs(s, kV2, 0, 800, 700); }, 30033, true},
            {"P terminal force", [&](Set& s) { pTerminal(s, 100, 40); }, 30065, true},
            {"a little less", [&](Set& s) { pTerminal(s, 100, 39); }, 30065, false},
            {"P of 251 in II", [](Set& s) { s.leads[kII].aP1 = 251; }, 30067, true},
            {"P of 250 in II", [](Set& s) { s.leads[kII].aP1 = 250; }, 30067, false},
            {"both atria", [&](Set& s) { pTerminal(s, 150, 40), s.leads[kII].aP1 = 300; }, 30069, true},
            {"both atria, said once", [&](Set& s) { pTerminal(s, 150, 40), s.leads[kII].aP1 = 300; }, 30067,
             false},
            {"Sokolow 3500", [](Set& s) { MakeSokolow(s, 1500, 2000); }, 30073, true},
            {"Sokolow 3499", [](Set& s) { MakeSokolow(s, 1499, 2000); }, 30073, false},
            {"Sokolow with QS in V1", [](Set& s) { SetQrs(s, kV1, 1500, 0, 0), SetQrs(s, kV6, 0, 2000, 0); },
             30073, true},
            {"Cornell 2801", [](Set& s) { MakeCornell(s, 801); }, 30074, true},
            {"Cornell 2800", [](Set& s) { MakeCornell(s, 800); }, 30074, false},
            {"in left block", [](Set& s) { MakeLeftBlock(s, 130), SetQrs(s, kV1, 0, 100, 3000); }, 30073,
             false},
            {"strain", MakeStrain, 30079, true},
            {"strain is no ischemia", Both(MakeStrain, St({kV6}, -60)), 30195, false},
            {"right hypertrophy", MakeRightHypertrophy, 30081, true},
            {"both ventricles", [](Set& s) { MakeRightHypertrophy(s), MakeCornell(s, 1000); }, 30083, true},
            {"S1Q3T3",
             [](Set& s) { SetQrs(s, kI, 0, 700, 150), SetQrs(s, kIII, 150, 500, 0), SetT(s, {kIII}, -60); },
             30085, true},
        },
        SteadyBeats());
}

TEST(InterpreterRules, JudgeInfarctionAndIschemia) {
    const Change shortQ = [](Set& s) { s.leads[kII].rOnMarker = s.leads[kAvf].rOnMarker = 429; };
    const Change tallR = [](Set& s) { SetQrs(s, kV2, 0, 800, 700), s.leads[kV2].sOnMarker = 440; };
    const Change tallRs = [&](Set& s) { tallR(s), s.leads[kV1] = s.leads[kV2]; };
    const Change upwards = [](Set& s) { s.leads[kV5].stLevel[6] = s.leads[kV6].stLevel[6] = -60; };
    const Change early = Both(St({kV5, kV6}, 110), T({kV5, kV6}, 500));
    CheckRows(
        {
            {"QS in V1 and V2", [](Set& s) { SetQrs(s, kV1, 900, 0, 0), SetQrs(s, kV2, 1400, 0, 0); }, 30087,
             true},
            {"QS in V1 alone", [](Set& s) { SetQrs(s, kV1, 900, 0, 0); }, 30087, false},
            {"Q in V3 and V4", Q({kV3, kV4}), 30088, true},
            {"Q in V3 to V6", Q({kV3, kV4, kV5, kV6}), 30089, true},
            {"Q in I and aVL", Q({kI, kAvl}), 30090, true},
            {"Q in II and aVF", Q({kII, kAvf}), 30091, true},
            {"Q in III alone", Q({kIII}), 30091, false},
            {"Q below and at the side", Q({kII, kAvf, kV5, kV6}), 30092, true},
            {"short Q", Both(Q({kII, kAvf}), shortQ), 30091, false},
            {"shallow Q", [](Set& s) { SetQrs(s, kII, 199, 800, 0), SetQrs(s, kAvf, 199, 800, 0); }, 30091,
             false},
            {"Q in left block", Both(LeftBlock(130), Q({kII, kAvf})), 30091, false},
            {"tall R in V1 and V2", tallRs, 30220, true},
            {"tall R in V2", tallR, 30220, false},
            {"ST 200 in V2 and V3", St({kV2, kV3}, 200), 30190, true},
            {"ST 199 in V2 and V3", St({kV2, kV3}, 199), 30190, false},
            {"ST 200 in V2 alone", St({kV2}, 200), 30190, false},
            {"ST 100 in III and aVF", St({kIII, kAvf}, 100), 30191, true},
            {"ST 99 in III and aVF", St({kIII, kAvf}, 99), 30191, false},
            {"ST 150 in I and aVL", St({kI, kAvl}, 150), 30193, true},
            {"only the end of the complex",
             [](Set& s) { s.leads[kI].stLevel[0] = s.leads[kAvl].stLevel[0] = 150; }, 30193, false},
            {"early repolarisation", early, 30197, true},
            {"then it is no lesion", early, 30193, false},
            {"with a mirror it is one", Both(early, St({kIII}, -60)), 30193, true},
            {"ST -50 in V5 and V6", St({kV5, kV6}, -50), 30195, true},
            {"ST -49 in V5 and V6", St({kV5, kV6}, -49), 30195, false},
            {"upsloping", Both(St({kV5, kV6}, -90), upwards), 30195, false},
            {"T in V3 and V4", T({kV3, kV4}, -101), 30208, true},
            {"T in V1 to V3", T({kV1, kV2, kV3}, -200), 30208, false},
            {"T in II and aVF", T({kII, kAvf}, -101), 30210, true},
            {"T -100 in II and aVF", T({kII, kAvf}, -100), 30210, false},
            {"T in V5 and V6", T({kV5, kV6}, -150), 30212, true},
            {"T in left block", Both(LeftBlock(130), T({kV5, kV6}, -150)), 30212, false},
            {"flat T", T({kV5, kV6}, 90), 30214, true},
            {"flat T in one lead", T({kV5}, 90), 30214, false},
            {"QTc 471", [](Set& s) { s.qtc = 471; }, 30076, true},
            {"QTc 470", [](Set& s) { s.qtc = 470; }, 30076, false},
            {"only Bazett", [](Set& s) { s.qtc = 0, s.qtcBazett = 480; }, 30076, true},
            {"long by a broad complex", [](Set& s) { MakeLeftBlock(s, 150), s.qtc = 515; }, 30076, false},
            {"QTc 339", [](Set& s) { s.qtc = 339; }, 30077, true},
            {"QTc not known", [](Set& s) { s.qtc = s.qtcBazett = 0; }, 30077, false},
        },
        SteadyBeats());
}

TEST(InterpreterRules, TellTheRhythm) {
    const Change noP = [](Set& s) { s.pDuration = s.prInterval = 0; };
    const Change noPBroad = [&](Set& s) { noP(s), Broaden(s, 130); };
    const Change none = [](Set&) {};
    const std::vector<std::uint32_t> slow{1100, 1600, 1250, 1900, 1000};
    const std::vector<std::uint32_t> irregular{700, 900, 600, 1100, 800, 650, 950};
    struct Rhythm {
        const char* name;
        const char* kinds;
        std::vector<std::uint32_t> intervals;
        Change change;
        std::set<int> made;
    };
    for (const Rhythm& row : {
             Rhythm{"rate 100", "NNNNNNNN", {600}, none, {30036}},
             Rhythm{"rate 101", "NNNNNNNN", {594}, none, {30005}},
             Rhythm{"rate 50", "NNNNNNNN", {1200}, none, {30036}},
             Rhythm{"rate 49", "NNNNNNNN", {1230}, none, {30006}},
             Rhythm{"sinus arrhythmia", "NNNNNNNN", {800, 820, 900, 990, 900, 850}, none, {30036, 30007}},
             Rhythm{"pause", "NNNNNNNN", {800, 800, 800, 2010}, none, {30036, 30041}},
             Rhythm{"fibrillation", "NNNNNNNN", irregular, noP, {30008}},
             Rhythm{"fast fibrillation", "NNNNNNNN", {400, 600, 350, 500, 650, 420}, noP, {30009}},
             Rhythm{"slow fibrillation", "NNNNNNNN", slow, noP, {30010}},
             Rhythm{"its early beats", "NNNNNNSN", irregular, noP, {30008}},
             Rhythm{"supraventricular tachycardia", "NNNNNNNN", {350}, noP, {30012}},
             Rhythm{"broad tachycardia", "NNNNNNNN", {350}, noPBroad, {30013, 30059}},
             Rhythm{"ectopic atrial", "NNNNNNNN", {800}, [](Set& s) { s.pAxis = -60; }, {30014}},
             Rhythm{"junctional", "NNNNNNNN", {1200}, noP, {30015}},
             Rhythm{"idioventricular", "NNNNNNNN", {1600}, noPBroad, {30016, 30059}},
             Rhythm{"of unknown origin", "NNNNNNNN", {800}, noP, {30037}},
             Rhythm{"irregular, of unknown origin", "NNNNNNNN", slow, noPBroad, {30038, 30059}},
             Rhythm{"paced", "PPPPNPPP", {800}, noPBroad, {30048}},
             Rhythm{"some paced", "NPNNNPNN", {800}, none, {30036}},
             Rhythm{"too few beats", "NNN", {800}, noP, {}},
             Rhythm{"atrial ectopic", "NNNNSNNNNN", {800}, none, {30036, 30017}},
             Rhythm{"frequent", "NSNNSNNSNN", {800}, none, {30036, 30018}},
             Rhythm{"ventricular ectopic", "NNNNVNNNNN", {800}, none, {30036, 30019}},
             Rhythm{"frequent ventricular", "NVNNVNNVNN", {800}, none, {30036, 30020}},
             Rhythm{"a pair", "NNNNVVNNNN", {800}, none, {30036, 30019, 30040}},
             Rhythm{"bigeminy", "NVNVNVNVN", {500, 1100}, none, {30036, 30020, 30039}},
             Rhythm{"no beats between", "NxNxNxNxNxNx", {400}, none, {30036}},
         }) {
        Set set = NormalEcg();
        row.change(set);
        const auto beats = Beats(row.kinds, row.intervals);
        std::set<int> codes = CodesOf(set, &beats);
        codes.erase(codes.lower_bound(30132), codes.upper_bound(30134));
        EXPECT_EQ(row.made, codes) << row.name;
    }
}

TEST(InterpreterRules, SayWhyNothingCanBeSaid) {
    const auto beats = SteadyBeats();
    Set set = NormalEcg();
    set.measured = 0;
    EXPECT_EQ(std::set<int>{30002}, CodesOf(set, &beats));
    const auto one = Beats("N", {800});
    EXPECT_EQ(std::set<int>{30003}, CodesOf(set, &one));
    EXPECT_EQ(std::set<int>{30003}, CodesOf(set, nullptr));
    set = NormalEcg();
    SetQrs(set, kV1, 0, 0, 0);
    EXPECT_FALSE(CodesOf(set, &beats).contains(30004)) << "one lead may be without a wave";
    SetQrs(set, kV2, 0, 0, 0);
    EXPECT_EQ(std::set<int>{30004}, CodesOf(set, &beats));
}

// The statements of the library, as its resources spell them.
std::map<int, std::string> Statements() {
    std::map<int, std::string> statements;
    std::ifstream file(KX_SOURCE_DIR "/dialogs/resources/statements.rc");
    for (std::string line; std::getline(file, line);) {
        const std::size_t quote = line.find('"');
        if (line.find("30") < quote && quote != line.npos) {
            statements[std::stoi(line)] = line.substr(quote + 1, line.rfind('"') - quote - 1);
        }
    }
    return statements;
}

TEST(InterpreterRules, NameStatementsThatExistAndTakeTheirNumbers) {
    const std::map<int, std::string> statements = Statements();
    EXPECT_EQ(85u, statements.size());
    const Set set = NormalEcg();
    const kx::interp::Ecg ecg(set, nullptr);
    for (const kx::interp::Rule& rule : kx::interp::Rules()) {
        const auto found = statements.find(rule.code);
        ASSERT_NE(statements.end(), found) << rule.code;
        int placeholders = 0;
        for (std::size_t at = found->second.find("%d"); at != std::string::npos;
             at = found->second.find("%d", at + 2)) {
            ++placeholders;
        }
        EXPECT_EQ(placeholders, rule.values != nullptr ? rule.values(ecg).count : 0) << found->second;
    }
}

}  // namespace
