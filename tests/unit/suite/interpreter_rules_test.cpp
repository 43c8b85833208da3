// What each statement needs: on the limit it is made, just short of it, it is not.
#include <map>
#include <sstream>

#include "suite/kxinterp/rules.h"
#include "tests/unit/suite/ecg_cases.h"

namespace kx::test {
namespace {

struct Row {
    int code;
    std::vector<std::string> made, notMade;  // changes of the normal ECG with which it is made, and with which it is not
};

const std::string kRight = "V1=0,200,500,99 I=0,700,200 V6=0,900,200 all.end=";
const std::string kLeft = "I+V5+V6=0,1200,0 I+V5+V6.peak=61 all.end=";
const std::string kScarred = "I+V6=40,1200,0 V5=0,1200,0 I+V5+V6.peak=61 all.end=";
const std::string kAnterior = "axis=-10 aVL=40,600,0 III=0,100,500 aVF=0,100,300 II=0,500,200 ";
const std::string kPosterior = "I=0,100,500 aVL=0,100,600 III=80,900,0 aVF=80,900,0 axis=";
const std::string kRightHypertrophy = "axis=91 V1=0,800,200 V6=0,500,251 ";
const std::string kStrain = "V1=0,100,1800 V5=0,2000,0 V5+V6.t=-100 V5.st=-1 ";
const std::string kEarly = "V5+V6.st=100 V5+V6.t=400 ";
const std::string kPTerminal = "V1.p2=-100 V1.p2on=300 V1.poff=";

const Row kRows[] = {
    // conduction
    {30042, {"pr=201"}, {"pr=200"}},
    {30047, {"pr=119"}, {"pr=120"}},
    {30052, {"pr=119 qrs=120"}, {"pr=119 qrs=119", "pr=120 qrs=120"}},
    {30053, {kRight + "520"}, {kRight + "519", kRight + "520 V6=0,900,0"}},
    {30054, {"V1=0,200,500,100", "V1=100,100,0"}, {"V1=0,200,500,99", "V1=100,99,0"}},
    {30133, {"V1=0,200,500,100 all.end=510", "axis=-31"}, {"V1=0,200,500,100 all.end=509", "axis=-30"}},
    {30055,
     {kLeft + "520", kLeft + "520 I=40,1200,0 V6=39,1200,0", kScarred + "540"},
     {kLeft + "519", kLeft + "520 I+V6=40,1200,0", kScarred + "539"}},
    {30057, {kLeft + "510"}, {kLeft + "509"}},
    {30059, {"all.end=520", kLeft + "520 I+V5+V6.peak=60"}, {"all.end=519", "qrs=150"}},
    {30059, {kScarred + "540 V2=0,900,900", kScarred + "540 V5+V6.peak=60"}, {kScarred + "540"}},
    {30061, {kAnterior}, {kAnterior + "axis=-9", kAnterior + "aVL=39,600,0", kAnterior + "II=0,500,199", kAnterior + "III=0,500,500"}},
    {30063, {kPosterior + "90"}, {kPosterior + "89", kPosterior + "90 I=0,0,500", kPosterior + "90 I=0,500,500"}},
    // axis and voltage
    {30026, {"axis=29", "axis=-30", "axis=-89"}, {"axis=30", "axis=-90", kAnterior}},
    {30027, {"axis=91", "axis=180"}, {"axis=90", "axis=-179"}},
    {30028, {"axis=-90", "axis=-180"}, {"axis=-89", "axis=180"}},
    {30029, {"I=0,500,370 aVF=0,400,400"}, {"I=0,500,369 aVF=0,400,400"}},
    {30034, {"I+II+III+aVR+aVL+aVF=0,250,249"}, {"I+II+III+aVR+aVL+aVF=0,250,250"}},
    {30035, {"V1+V2+V3+V4+V5+V6=0,499,500"}, {"V1+V2+V3+V4+V5+V6=0,500,500"}},
    {30032, {"V3=0,300,900 V4=0,500,501"}, {"V3=0,300,900 V4=0,500,500"}},
    {30033, {"V2=0,700,700"}, {"V2=0,700,701"}},
    // chambers
    {30065, {kPTerminal + "340"}, {kPTerminal + "339"}},
    {30067, {"II.p=251", "V1.p=151"}, {"II.p=250", "V1.p=150", kPTerminal + "340 II.p=251"}},
    {30069, {kPTerminal + "340 II.p=251"}, {kPTerminal + "339 II.p=251"}},
    {30073,
     {"V1=0,100,1500 V5=0,2000,0", "V1=1500,0,0 V6=0,2000,0"},
     {"V1=0,100,1499 V5=0,2000,0", kLeft + "520 V1=0,100,3000 V1.end=520"}},
    {30074, {"aVL=0,801,0 V3=0,900,2000"}, {"aVL=0,800,0 V3=0,900,2000"}},
    {30079, {kStrain}, {kStrain + "V5.t=-99"}},
    {30081, {kRightHypertrophy}, {kRightHypertrophy + "axis=90", kRightHypertrophy + "V6=0,500,250"}},
    {30083, {kRightHypertrophy + "aVL=0,801,0 V3=0,900,2000"}, {kRightHypertrophy}},
    {30085, {"I=0,700,150 III=150,500,0 III.t=-51"}, {"I=0,700,149 III=150,500,0 III.t=-51"}},
    // infarction
    {30087, {"V1=900,0,0 V2=1400,0,0"}, {"V1=900,0,0"}},
    {30088, {"V3+V4=300,800,0"}, {"V3+V4+V5+V6=300,800,0"}},
    {30089, {"V3+V4+V5+V6=300,800,0"}, {"V5+V6=300,800,0"}},
    {30090, {"I+aVL=300,800,0"}, {"aVL=300,800,0"}},
    {30091, {"II+aVF=200,800,0", "II+aVF=300,800,0 II+aVF.r=430"}, {"II+aVF=199,800,0", "II+aVF=300,800,0 II+aVF.r=429"}},
    {30091, {}, {kLeft + "520 II+aVF=300,800,0 II+aVF.end=520"}},
    {30092, {"II+aVF+V5+V6=300,800,0"}, {"II+aVF=300,800,0"}},
    {30220, {"V1+V2=0,700,700 V1+V2.s=440"}, {"V1+V2=0,700,700 V1+V2.s=439"}},
    // ST segment, T wave, QT interval
    {30190, {"V2+V3.st=200"}, {"V2+V3.st=199", "V2.st=200"}},
    {30191, {"III+aVF.st=100"}, {"III+aVF.st=99"}},
    {30193, {"I+aVL.st=100", kEarly + "III.st=-50"}, {"I+aVL.st0=100", kEarly}},
    {30197, {kEarly}, {kEarly + "V5.t=399"}},
    {30195, {"V5+V6.st=-50", "V5+V6.st=-90 V5+V6.st60=-70"}, {"V5+V6.st=-49", "V5+V6.st=-90 V5+V6.st60=-69", kStrain + "V5+V6.st=-60"}},
    {30208, {"V3+V4.t=-101"}, {"V3+V4.t=-100", "V1+V2+V3.t=-200"}},
    {30210, {"II+aVF.t=-101"}, {"II+aVF.t=-100"}},
    {30212, {"V5+V6.t=-101"}, {kLeft + "520 V5+V6.t=-150"}},
    {30214, {"V5+V6.t=99"}, {"V5.t=129 V6.t=100"}},
    {30076, {"qtc=471", "qtc=0 bazett=471"}, {"qtc=470", kLeft + "550 qtc=520"}},
    {30077, {"qtc=339"}, {"qtc=340", "qtc=0 bazett=0"}},
    // why nothing can be said
    {30004, {"V1+V2=0,0,0"}, {"V1=0,0,0"}}};

TEST(InterpreterRules, AreMadeAtTheirLimits) {
    const auto beats = SteadyBeats();
    EXPECT_EQ((std::set<int>{30036, 30132}), CodesOf(EcgWith(""), &beats));
    for (const Row& row : kRows) {
        for (const std::string& changes : row.made) {
            const std::set<int> made = CodesOf(EcgWith(changes), &beats);
            EXPECT_TRUE(made.contains(row.code)) << row.code << " of " << changes << ": " << testing::PrintToString(made);
        }
        for (const std::string& changes : row.notMade) {
            EXPECT_FALSE(CodesOf(EcgWith(changes), &beats).contains(row.code)) << row.code << " of " << changes;
        }
    }
}

// Without the classification and a slow conduction.
std::set<int> RhythmOf(const char* kinds, const std::vector<std::uint32_t>& intervals, const std::string& changes) {
    const auto beats = Beats(kinds, intervals);
    std::set<int> codes = CodesOf(EcgWith(changes), &beats);
    codes.erase(codes.lower_bound(30132), codes.upper_bound(30134));
    codes.erase(30059);
    return codes;
}

TEST(InterpreterRules, TellTheRhythm) {
    const std::pair<const char*, std::vector<std::pair<std::uint32_t, int>>> steady[] = {
        {"", {{600, 30036}, {597, 30005}, {1000, 30036}, {1009, 30006}}},
        {"p=0", {{594, 30012}, {600, 30037}, {990, 30037}, {1000, 30015}, {1500, 30015}, {1520, 30037}}},
        {"p=0 all.end=520", {{350, 30013}, {1475, 30037}, {1500, 30016}}},
        {"paxis=-30", {{800, 30036}}},
        {"paxis=-31", {{800, 30014}}},
        {"paxis=111", {{800, 30014}}},
        {"paxis=-31 I+aVF.p=49", {{800, 30036}}}};
    for (const auto& [changes, rates] : steady) {
        for (const auto& [interval, made] : rates) {
            EXPECT_EQ(std::set{made}, RhythmOf("NNNNNNNN", {interval}, changes)) << interval << ' ' << changes;
        }
    }
    const std::vector<std::uint32_t> slow{1100, 1600, 1250, 1900, 1000}, irregular{700, 900, 600, 1100, 800, 650, 950};
    const std::tuple<const char*, std::vector<std::uint32_t>, const char*, std::set<int>> rows[] = {
        {"NNNNNNNN", {800, 961}, "", {30036, 30007}},
        {"NNNNNNNN", {800, 960}, "", {30036}},
        {"NNNNNNNN", {800, 800, 800, 2001}, "", {30036, 30041}},
        {"NNNNNNNN", {800, 800, 800, 2000}, "", {30036, 30007}},
        {"NNNNNNNNN", {759, 841}, "p=0", {30008}},
        {"NNNNNNNNN", {760, 840}, "p=0", {30037}},
        {"NNNNNNNN", {400, 600, 350, 500, 650, 420}, "p=0", {30009}},
        {"NNNNNNNN", slow, "p=0", {30010}},
        {"NNNNNNSN", irregular, "p=0", {30008}},
        {"NNNNNNNN", slow, "p=0 all.end=520", {30038}},
        {"PPNNPPNN", {800}, "p=0", {30048}},
        {"PPNNPNNN", {800}, "", {30036}},
        {"NNN", {800}, "p=0", {}},
        {"NNNNSNNNNN", {800}, "", {30036, 30017}},
        {"NSNNSNNSNN", {800}, "", {30036, 30018}},
        {"NNNNVNNNNN", {800}, "", {30036, 30019}},
        {"NVNNVNNVNN", {800}, "", {30036, 30020}},
        {"NNNNVVNNNN", {800}, "", {30036, 30019, 30040}},
        {"NVNVNVNVN", {500, 1100}, "", {30036, 30020, 30039}},
        {"NVSVSVSVN", {800}, "", {30036, 30018, 30020, 30039}},
        {"NVuVuVuVN", {800}, "", {30036, 30020}},
        {"NNNNNNNNu", {800, 800, 800, 800, 800, 800, 800, 200}, "", {30036}},
        {"NxNxNxNxNxNx", {400}, "", {30036}}};
    for (const auto& [kinds, intervals, changes, made] : rows) {
        EXPECT_EQ(made, RhythmOf(kinds, intervals, changes)) << kinds << " every " << intervals[0];
    }
    KxMeasurementSet unmeasured{};
    const auto two = Beats("NN", {800});
    EXPECT_EQ(std::set<int>{30002}, CodesOf(unmeasured, &two));
    EXPECT_EQ(std::set<int>{30003}, CodesOf(unmeasured, nullptr));
}

// "N500 V1200 p340 i450": beats by kind, P waves and impulses at their times.
interp::Annotated AnnotatedAs(const std::string& text) {
    interp::Annotated annotated;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const auto ms = static_cast<std::uint32_t>(std::stoul(word.substr(1)));
        const std::size_t kind = std::string_view("NSVPu").find(word[0]);
        if (kind != std::string_view::npos) {
            annotated.beats.push_back({ms, static_cast<interp::BeatKind>(kind)});
        } else {
            (word[0] == 'p' ? annotated.waves : annotated.impulses).push_back(ms);
        }
    }
    return annotated;
}

TEST(RhythmFigures, AreCountedAtTheirLimits) {
    // What is annotated, and its interval (! regular), beats with a wave near enough and at the same distance, blocked waves and
    // the longest run of them (+ with lengthening), beats that an impulse of the ventricles, of the atria, of both made.
    const std::pair<const char*, const char*> rows[] = {{"p100 p900 p1700", "0 0/0 0:0 0,0,0"},
                                                        {"p100 p900 p1700 p2500", "800! 0/0 0:0 0,0,0"},
                                                        {"N1000 p500 N1600 p1099 N2200 p2140 N2800 p2741", "599 2/1 0:0 0,0,0"},
                                                        {"N1000 p940 N1800 p1700 N2600 p2460 N3400 p3259", "760! 4/3 0:0 0,0,0"},
                                                        {"N1000 p840 N1800 p1640 p2440 N3400 p3240", "800! 3/3 1:1 0,0,0"},
                                                        {"N1000 p840 N1800 p1640 p2440 p3240 N4200 p4040", "800! 3/3 2:2 0,0,0"},
                                                        {"N1000 p840 N1800 p1640 p2440 V2600 N3400 p3240", "800! 3/3 0:0 0,0,0"},
                                                        {"N1000 p840 N1840 p1640 p2440 N3400 p3240", "800! 3/3 1:1+ 0,0,0"},
                                                        {"N1000 p840 N1839 p1640 p2440 N3400 p3240", "800! 3/3 1:1 0,0,0"},
                                                        {"P1000 i870 P1800 i1669 P2600 i2250 P3400 i3049", "0 0/0 0:0 1,2,0"},
                                                        {"P1000 i700 i950 P1800 i1800 P1900", "0 0/0 0:0 2,1,1"}};
    for (const auto& [text, expected] : rows) {
        const interp::AtrialFigures atria = AtrialFiguresOf(AnnotatedAs(text));
        const interp::PacingFigures pacing = PacingFiguresOf(AnnotatedAs(text));
        std::ostringstream figures;
        figures << atria.intervalMs << (atria.regular ? "! " : " ") << atria.distances << '/' << atria.led << ' ' << atria.blocked << ':'
                << atria.longestRun << (atria.lengthening ? "+ " : " ") << pacing.ventricular << ',' << pacing.atrial << ',' << pacing.both;
        EXPECT_EQ(figures.str(), expected) << text;
    }
    // Of one beat of each label.
    const std::pair<std::vector<std::uint8_t>, std::array<std::uint32_t, 4>> kinds[] = {
        {{1, 2, 3, 10, 11}, {5, 0, 0, 0}}, {{4, 7, 8, 9}, {4, 0, 0, 4}}, {{5, 6}, {2, 0, 2, 0}}, {{12}, {1, 1, 0, 0}}, {{13, 24}, {}}};
    for (const auto& [labels, expected] : kinds) {
        AnnotationStore store(9, true);
        for (const std::uint8_t label : labels) {
            store.Append(label, 800u * store.Count());
        }
        const interp::Annotated annotated = interp::ReadAnnotations(reinterpret_cast<const KxAnnotationStore*>(&store));
        const interp::BeatFigures figures = interp::BeatFiguresOf(annotated.beats);
        EXPECT_EQ((std::array{figures.beats, figures.paced, figures.ventricular, figures.supraventricular}), expected) << int{labels[0]};
    }
}

// The statements with numbers: "code:number,number ".
std::string NumbersOf(const char* kinds, const std::vector<std::uint32_t>& intervals, const std::string& changes) {
    const auto beats = Beats(kinds, intervals);
    const KxMeasurementSet set = EcgWith(changes);
    const interp::Ecg ecg(set, reinterpret_cast<const KxAnnotationStore*>(&beats));
    std::string text;
    for (const interp::Rule& rule : interp::Rules()) {
        if (rule.values != nullptr && rule.applies(ecg)) {
            const interp::Values values = rule.values(ecg);
            text += std::to_string(rule.code) + ":" + std::to_string(values.numbers[0]) +
                    (values.count > 1 ? "," + std::to_string(values.numbers[1]) : "") + " ";
        }
    }
    return text;
}

TEST(InterpreterRules, GiveTheNumbersOfTheirStatements) {
    const std::tuple<const char*, std::vector<std::uint32_t>, std::string, const char*> rows[] = {
        {"NNNNNNNN", {597}, "pr=214 axis=-40 V1=0,200,2250", "30005:100 30042:214 30026:-40 30073:3,6 "},
        {"NNNNNNNN", {1009}, "pr=119 axis=100", "30006:60 30047:119 30027:100 "},
        {"NNNNNNNN", {1200}, "", "30006:60 "},
        {"NNNNNNNN", {1300}, "axis=-100 qtc=471", "30006:50 30028:-100 "},
        {"NNNNNNNN", {594}, "p=0 qtc=339", "30012:100 "},
        {"NNNNNNNN", {350}, "p=0 all.end=520", "30013:100 30059:90 "},
        {"NNNNNNNN", {400, 600, 350, 500, 650, 420}, "p=0", "30009:100 "},
        {"NNNNNNNN", {1100, 1600, 1250, 1900, 1000}, "p=0", "30010:50 "},
        {"NNNNNNNN", {800, 800, 800, 2001}, kRight + "520", "30041:2,0 30053:90 "},
        {"NSNNSNNSNN", {800}, kLeft + "520", "30018:6 30055:90 "},
        {"NVNNVNNVNN", {800}, kLeft + "510", "30020:6 30057:90 "},
        {"NNNNNNNN", {800}, "aVL=0,801,0 V3=0,900,2049", "30074:2,9 "},
        {"NNNNNNNN", {800}, "V2+V3.st=249 III+aVF.st=150 I+aVL.st=150", "30190:0,2 30191:0,2 30193:0,2 "},
        {"NNNNNNNN", {800}, "V5+V6.st=-50", "30195:0,1 "}};
    for (const auto& [kinds, intervals, changes, numbers] : rows) {
        EXPECT_EQ(NumbersOf(kinds, intervals, changes), numbers) << changes;
    }
}

TEST(InterpreterRules, NameStatementsThatExistAndTakeTheirNumbers) {
    std::map<int, std::string> statements;
    std::ifstream file(KX_SOURCE_DIR "/dialogs/resources/statements.rc");
    for (std::string line; std::getline(file, line);) {
        const std::size_t quote = line.find('"');
        if (line.find("30") < quote && quote != line.npos) {
            statements[std::stoi(line)] = line.substr(quote + 1);
        }
    }
    EXPECT_EQ(85u, statements.size());
    const KxMeasurementSet set = EcgWith("");
    const interp::Ecg ecg(set, nullptr);
    for (const interp::Rule& rule : interp::Rules()) {
        ASSERT_TRUE(statements.contains(rule.code)) << rule.code;
        const std::string& text = statements[rule.code];
        int placeholders = 0;
        for (std::size_t at = text.find("%d"); at != text.npos; at = text.find("%d", at + 2)) {
            ++placeholders;
        }
        EXPECT_EQ(placeholders, rule.values != nullptr ? rule.values(ecg).count : 0) << text;
    }
}

}  // namespace
}  // namespace kx::test
