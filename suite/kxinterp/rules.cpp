#include "suite/kxinterp/rules.h"

#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

constexpr Values One(int number) {
    return {1, {number, 0}};
}

// Millivolts with one decimal, rounded.
constexpr Values Millivolts(int microvolts) {
    const int tenths = (microvolts + 50) / 100;
    return {2, {tenths / 10, tenths % 10}};
}

template <int number>
Values Fixed(const Ecg&) {
    return One(number);
}
Values Pr(const Ecg& ecg) {
    return One(ecg.Set().prInterval);
}
Values Qrs(const Ecg& ecg) {
    return One(ecg.Set().qrsDuration);
}
Values QrsAxis(const Ecg& ecg) {
    return One(ecg.Set().qrsAxis);
}

template <Origin origin>
bool Is(const Ecg& ecg) {
    return OriginOf(ecg) == origin;
}
template <Conduction conduction>
bool Is(const Ecg& ecg) {
    return ConductionOf(ecg) == conduction && OriginOf(ecg) != Origin::kPaced;
}

bool HasOwnRhythm(const Ecg& ecg) {
    return OriginOf(ecg) != Origin::kPaced;
}
int Rate(const Ecg& ecg) {
    return static_cast<int>(ecg.HeartRate());
}
// The sinus node's own rate, of which beats tell only where all its waves are conducted; 0: not known, or no
// sinus rhythm.
int SinusRate(const Ecg& ecg) {
    if (OriginOf(ecg) != Origin::kSinus) {
        return 0;
    }
    const std::uint32_t interval = ecg.Atria().intervalMs;
    return SecondDegreeOf(ecg) == SecondDegree::kNone ? Rate(ecg)
                                                      : static_cast<int>((60000 + interval / 2) / interval);
}

// An early beat means nothing where every beat comes as it likes.
std::uint32_t SupraventricularBeats(const Ecg& ecg) {
    return OriginOf(ecg) == Origin::kAtrialFibrillation ? 0 : ecg.Beats().supraventricular;
}

// Ectopic beats from six a minute on, and more than two of them, are frequent.
constexpr std::uint32_t kFrequentPerMinute = 6;
bool AreFrequent(const Ecg& ecg, std::uint32_t beats) {
    return beats > 2 && ecg.Beats().PerMinute(beats) > kFrequentPerMinute;
}

bool IsAxisBetween(const Ecg& ecg, int low, int high) {
    const int axis = ecg.Set().qrsAxis;
    return HasOwnRhythm(ecg) && !IsAxisIndeterminate(ecg) && low < axis && axis < high;
}

// Q waves, displaced segments and T waves that only follow from how the ventricles are activated are left
// alone.
bool MayJudgeIschemia(const Ecg& ecg) {
    return IsLeftActivationNormal(ecg);
}
bool MayJudgeRepolarisation(const Ecg& ecg) {
    return IsLeftActivationNormal(ecg) && !HasLeftStrain(ecg);
}
bool HasElevation(const Ecg& ecg) {
    return AnteriorElevation(ecg) != 0 || InferiorElevation(ecg) != 0 || LateralElevation(ecg) != 0;
}
bool IsLesion(const Ecg& ecg, int elevation) {
    return elevation != 0 && MayJudgeIschemia(ecg) && !IsEarlyRepolarisation(ecg);
}
bool HasTInversion(const Ecg& ecg) {
    return HasAnteriorTInversion(ecg) || HasInferiorTInversion(ecg) || HasLateralTInversion(ecg);
}
Infarction Infarcted(const Ecg& ecg) {
    return MayJudgeIschemia(ecg) ? InfarctionOf(ecg) : Infarction{};
}

constexpr Weight kNote = Weight::kNote;
constexpr Weight kBorderline = Weight::kBorderline;
constexpr Weight kAbnormal = Weight::kAbnormal;

// Sources stand with the criteria (criteria.h); limits that stand here are those that the statements print.
const Rule kRules[] = {
    // ---- rhythm and rate. Bradycardia below 60 a minute by tradition, below 50 what is not normal any more
    // (ACC 2018).
    {30048, kAbnormal, Is<Origin::kPaced>, nullptr},
    {30049, kAbnormal, [](const Ecg& e) { return PacingOf(e) == Pacing::kAtrial; }, nullptr},
    {30050, kAbnormal, [](const Ecg& e) { return PacingOf(e) == Pacing::kVentricular; }, nullptr},
    {30051, kAbnormal, [](const Ecg& e) { return PacingOf(e) == Pacing::kSequential; }, nullptr},
    {30036, kNote, [](const Ecg& e) { return SinusRate(e) >= 60 && SinusRate(e) <= 100; }, nullptr},
    {30005, kBorderline, [](const Ecg& e) { return SinusRate(e) > 100; }, Fixed<100>},
    {30006, kNote, [](const Ecg& e) { return SinusRate(e) < 60 && SinusRate(e) >= 50; }, Fixed<60>},
    {30006, kBorderline, [](const Ecg& e) { return SinusRate(e) < 50 && SinusRate(e) > 0; }, Fixed<50>},
    {30007, kNote, [](const Ecg& e) { return HasSinusArrhythmia(e) && !HasPause(e); }, nullptr},
    {30041, kAbnormal, HasPause,
     [](const Ecg&) {
         return Values{2, {2, 0}};
     }},
    {30008, kAbnormal,
     [](const Ecg& e) { return Is<Origin::kAtrialFibrillation>(e) && Rate(e) >= 50 && Rate(e) <= 100; },
     nullptr},
    {30009, kAbnormal, [](const Ecg& e) { return Is<Origin::kAtrialFibrillation>(e) && Rate(e) > 100; },
     Fixed<100>},
    {30010, kAbnormal, [](const Ecg& e) { return Is<Origin::kAtrialFibrillation>(e) && Rate(e) < 50; },
     Fixed<50>},
    {30011, kAbnormal, Is<Origin::kAtrialFlutter>, nullptr},
    {30012, kAbnormal, Is<Origin::kSupraventricularTachycardia>, Fixed<100>},
    {30013, kAbnormal, Is<Origin::kWideTachycardia>, Fixed<100>},
    {30014, kBorderline, Is<Origin::kEctopicAtrial>, nullptr},
    {30015, kAbnormal, Is<Origin::kJunctional>, nullptr},
    {30016, kAbnormal, Is<Origin::kIdioventricular>, nullptr},
    {30037, kBorderline, Is<Origin::kRegular>, nullptr},
    {30038, kAbnormal, Is<Origin::kIrregular>, nullptr},

    // ---- ectopic beats, as the annotations label them
    {30017, kBorderline,
     [](const Ecg& e) { return SupraventricularBeats(e) > 0 && !AreFrequent(e, SupraventricularBeats(e)); },
     nullptr},
    {30018, kAbnormal, [](const Ecg& e) { return AreFrequent(e, SupraventricularBeats(e)); },
     Fixed<kFrequentPerMinute>},
    {30019, kBorderline,
     [](const Ecg& e) { return e.Beats().ventricular > 0 && !AreFrequent(e, e.Beats().ventricular); },
     nullptr},
    {30020, kAbnormal, [](const Ecg& e) { return AreFrequent(e, e.Beats().ventricular); },
     Fixed<kFrequentPerMinute>},
    {30039, kAbnormal, HasBigeminy, nullptr},
    {30040, kAbnormal, [](const Ecg& e) { return e.Beats().ventricularPairs > 0; }, nullptr},

    // ---- atrioventricular conduction. PR above 200 ms: ACC 2018; below 120 ms: AHA III.
    {30042, kBorderline, [](const Ecg& e) { return HasOwnRhythm(e) && e.HasP() && e.Set().prInterval > 200; },
     Pr},
    {30043, kAbnormal, [](const Ecg& e) { return SecondDegreeOf(e) == SecondDegree::kWenckebach; }, nullptr},
    {30044, kAbnormal, [](const Ecg& e) { return SecondDegreeOf(e) == SecondDegree::kMobitz; }, nullptr},
    {30045, kAbnormal, [](const Ecg& e) { return SecondDegreeOf(e) == SecondDegree::kTwoToOne; }, nullptr},
    {30046, kAbnormal, HasCompleteBlock, [](const Ecg& e) { return One(Rate(e)); }},
    {30047, kBorderline,
     [](const Ecg& e) {
         return HasOwnRhythm(e) && e.HasP() && e.Set().prInterval < 120 && !Is<Conduction::kPreexcitation>(e);
     },
     Pr},
    {30052, kAbnormal, Is<Conduction::kPreexcitation>, nullptr},

    // ---- intraventricular conduction
    {30053, kAbnormal, Is<Conduction::kRightBundleBlock>, Qrs},
    {30054, kNote,
     [](const Ecg& e) { return Is<Conduction::kIncompleteRightBundleBlock>(e) && !IsBroaderThanNormal(e); },
     Qrs},
    {30054, kBorderline,
     [](const Ecg& e) { return Is<Conduction::kIncompleteRightBundleBlock>(e) && IsBroaderThanNormal(e); },
     Qrs},
    {30055, kAbnormal, Is<Conduction::kLeftBundleBlock>, Qrs},
    {30057, kBorderline, Is<Conduction::kIncompleteLeftBundleBlock>, Qrs},
    {30059, kAbnormal, Is<Conduction::kNonspecificDelay>, Qrs},
    {30061, kAbnormal, [](const Ecg& e) { return HasOwnRhythm(e) && HasAnteriorHemiblock(e); }, nullptr},
    {30063, kAbnormal, [](const Ecg& e) { return HasOwnRhythm(e) && HasPosteriorHemiblock(e); }, nullptr},

    // ---- axis and voltage. Axis from -30 to 90 degrees: AHA III. Left of 30 degrees, where lead III points
    // down, is left
    // deviation as the limb leads show it and as readers say it, and normal all the same.
    {30026, kNote, [](const Ecg& e) { return IsAxisBetween(e, -31, 30) && !HasAnteriorHemiblock(e); },
     QrsAxis},
    {30026, kBorderline, [](const Ecg& e) { return IsAxisBetween(e, -90, -30) && !HasAnteriorHemiblock(e); },
     QrsAxis},
    {30027, kBorderline, [](const Ecg& e) { return IsAxisBetween(e, 90, 181) && !HasPosteriorHemiblock(e); },
     QrsAxis},
    {30028, kAbnormal, [](const Ecg& e) { return IsAxisBetween(e, -181, -89); }, QrsAxis},
    {30029, kNote, [](const Ecg& e) { return HasOwnRhythm(e) && IsAxisIndeterminate(e); }, nullptr},
    {30034, kBorderline,
     [](const Ecg& e) { return HasOwnRhythm(e) && HasLowVoltage(e, KX_LEAD_I, KX_LEAD_AVF, 500); }, nullptr},
    {30035, kBorderline,
     [](const Ecg& e) { return HasOwnRhythm(e) && HasLowVoltage(e, KX_LEAD_V1, KX_LEAD_V6, 1000); }, nullptr},
    {30032, kNote,
     [](const Ecg& e) { return IsLeftActivationNormal(e) && !HasRightDelay(e) && TransitionLead(e) > 4; },
     nullptr},
    {30033, kNote,
     [](const Ecg& e) { return IsLeftActivationNormal(e) && !HasRightDelay(e) && TransitionLead(e) < 3; },
     nullptr},

    // ---- atria
    {30065, kBorderline,
     [](const Ecg& e) { return HasLeftAtrialEnlargement(e) && !HasRightAtrialEnlargement(e); }, nullptr},
    {30067, kBorderline,
     [](const Ecg& e) { return HasRightAtrialEnlargement(e) && !HasLeftAtrialEnlargement(e); }, nullptr},
    {30069, kAbnormal,
     [](const Ecg& e) { return HasRightAtrialEnlargement(e) && HasLeftAtrialEnlargement(e); }, nullptr},

    // ---- ventricles
    {30073, kBorderline, [](const Ecg& e) { return IsLeftActivationNormal(e) && SokolowLyon(e) >= 3500; },
     [](const Ecg& e) { return Millivolts(SokolowLyon(e)); }},
    {30074, kBorderline, [](const Ecg& e) { return IsLeftActivationNormal(e) && Cornell(e) > 2800; },
     [](const Ecg& e) { return Millivolts(Cornell(e)); }},
    {30079, kAbnormal, [](const Ecg& e) { return IsLeftActivationNormal(e) && HasLeftStrain(e); }, nullptr},
    {30081, kAbnormal,
     [](const Ecg& e) { return IsLeftActivationNormal(e) && HasRightHypertrophy(e) && !HasLeftVoltage(e); },
     nullptr},
    {30083, kAbnormal,
     [](const Ecg& e) { return IsLeftActivationNormal(e) && HasRightHypertrophy(e) && HasLeftVoltage(e); },
     nullptr},
    {30085, kBorderline,
     [](const Ecg& e) { return MayJudgeIschemia(e) && HasS1Q3T3(e) && !Infarcted(e).inferior; }, nullptr},

    // ---- infarction, each place named once
    {30087, kAbnormal, [](const Ecg& e) { return Infarcted(e).septal && !Infarcted(e).anterior; }, nullptr},
    {30088, kAbnormal, [](const Ecg& e) { return Infarcted(e).anterior && !Infarcted(e).lateral; }, nullptr},
    {30089, kAbnormal, [](const Ecg& e) { return Infarcted(e).anterior && Infarcted(e).lateral; }, nullptr},
    {30090, kAbnormal,
     [](const Ecg& e) { return Infarcted(e).lateral && !Infarcted(e).anterior && !Infarcted(e).inferior; },
     nullptr},
    {30091, kAbnormal,
     [](const Ecg& e) { return Infarcted(e).inferior && (!Infarcted(e).lateral || Infarcted(e).anterior); },
     nullptr},
    {30092, kAbnormal,
     [](const Ecg& e) { return Infarcted(e).inferior && Infarcted(e).lateral && !Infarcted(e).anterior; },
     nullptr},
    {30220, kAbnormal, [](const Ecg& e) { return Infarcted(e).posterior; }, nullptr},

    // ---- ST segment
    {30190, kAbnormal, [](const Ecg& e) { return IsLesion(e, AnteriorElevation(e)); },
     [](const Ecg& e) { return Millivolts(AnteriorElevation(e)); }},
    {30191, kAbnormal, [](const Ecg& e) { return IsLesion(e, InferiorElevation(e)); },
     [](const Ecg& e) { return Millivolts(InferiorElevation(e)); }},
    {30193, kAbnormal, [](const Ecg& e) { return IsLesion(e, LateralElevation(e)); },
     [](const Ecg& e) { return Millivolts(LateralElevation(e)); }},
    {30197, kBorderline,
     [](const Ecg& e) { return HasElevation(e) && MayJudgeIschemia(e) && IsEarlyRepolarisation(e); },
     nullptr},
    {30195, kAbnormal, [](const Ecg& e) { return MayJudgeRepolarisation(e) && StDepression(e) != 0; },
     [](const Ecg& e) { return Millivolts(StDepression(e)); }},

    // ---- T wave
    {30208, kAbnormal, [](const Ecg& e) { return MayJudgeRepolarisation(e) && HasAnteriorTInversion(e); },
     nullptr},
    {30210, kAbnormal, [](const Ecg& e) { return MayJudgeRepolarisation(e) && HasInferiorTInversion(e); },
     nullptr},
    {30212, kAbnormal, [](const Ecg& e) { return MayJudgeRepolarisation(e) && HasLateralTInversion(e); },
     nullptr},
    {30214, kBorderline,
     [](const Ecg& e) {
         return MayJudgeRepolarisation(e) && HasFlatT(e) && !HasTInversion(e) && StDepression(e) == 0 &&
                !HasElevation(e);
     },
     nullptr},

    // ---- QT interval, against the limits that the statements print
    {30076, kAbnormal, [](const Ecg& e) { return HasOwnRhythm(e) && CorrectedQt(e) > 470; }, nullptr},
    {30077, kBorderline,
     [](const Ecg& e) { return HasOwnRhythm(e) && CorrectedQt(e) > 0 && CorrectedQt(e) < 340; }, nullptr},
};

constexpr std::uint16_t kTooManyArtifacts = 30002;
constexpr std::uint16_t kTooFewBeats = 30003;
constexpr std::uint16_t kMissingLeads = 30004;

constexpr std::uint16_t kClassifications[] = {30132, 30133, 30134};

}  // namespace

std::span<const Rule> Rules() {
    return kRules;
}

std::uint16_t ReasonNotToInterpret(const Ecg& ecg) {
    if (ecg.Set().measured == 0) {
        return ecg.Beats().beats < 2 ? kTooFewBeats : kTooManyArtifacts;
    }
    // The other limb leads follow from I and II, and one of the leads may be without a wave by chance.
    int missing = 0;
    for (const int lead :
         {KX_LEAD_I, KX_LEAD_II, KX_LEAD_V1, KX_LEAD_V2, KX_LEAD_V3, KX_LEAD_V4, KX_LEAD_V5, KX_LEAD_V6}) {
        missing += !ecg.HasQrs(lead);
    }
    return missing > 1 ? kMissingLeads : std::uint16_t{0};
}

std::uint16_t ClassificationOf(Weight heaviest) {
    return kClassifications[static_cast<int>(heaviest)];
}

}  // namespace kx::interp
