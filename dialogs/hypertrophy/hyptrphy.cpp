#include "dialogs/hypertrophy/hyptrphy.h"

#include <cstddef>

#include "dialogs/resources/resource_ids.h"
#include "lib/dbclient/episode_record.h"
#include "lib/windows/device_context.h"
#include "lib/windows/held_control.h"

namespace kx {

// The host reads the window handle of a pane; a debugger reads the rest.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct HypertrophyDialogLayout {
    static constexpr std::size_t kWord = 4;
    static constexpr std::size_t kFirst = sizeof(Dialog);
    static_assert(offsetof(HypertrophyDialog, test_) == kFirst);
    static_assert(offsetof(HypertrophyDialog, episode_) == kFirst + 1 * kWord);
    static_assert(offsetof(HypertrophyDialog, boldFont_) == kFirst + 2 * kWord);
    static_assert(offsetof(HypertrophyDialog, rV5_) == kFirst + 3 * kWord);
    static_assert(offsetof(HypertrophyDialog, sex_) == kFirst + 10 * kWord);
    static_assert(offsetof(HypertrophyDialog, totalPoints_) == kFirst + 25 * kWord);
    static_assert(sizeof(HypertrophyDialog) == kFirst + 26 * kWord);
};
#pragma GCC diagnostic pop

namespace {

constexpr char kSource[] = "hyptrphy";
constexpr std::uint32_t kNothingToShowLine = 60;
constexpr std::uint32_t kNotFilledLine = 273;

constexpr int kBoldFontPoints = 8;
constexpr int kBoldFontWeight = 800;
constexpr int kPointsPerInch = 72;

}  // namespace

HypertrophyDialog::HypertrophyDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                                     SystemServices* services)
    : Pane(library, parent, nullptr, services),
      test_(test),
      episode_(test == nullptr ? nullptr : test->Episode(0)) {}

void HypertrophyDialog::Open() {
    if (episode_ != nullptr) {
        CreateModeless(IDD_HYPERTROPHY, this);
    }
    if (Handle() == nullptr) {
        Reports().LOGMEMORYERROR(kSource, kNothingToShowLine);
    }
}

bool HypertrophyDialog::OnInitDialog() {
    try {
        // What the record says is taken before the first message to a control.
        const HypertrophyScore score = ScoreHypertrophy(episode_->measurements);
        const auto sex = static_cast<std::int32_t>(test_->Sex());
        MakeBoldFont();
        HoldVoltages(CornellRange(test_->Sex()));
        HoldPointScore();
        DressLabels();
        sex_->FillPickList(IDS_SEX_PICK_LIST, sex);
        ShowVoltages(score);
        ShowPointScore(score);
        Show();
        return true;
    } catch (...) {
        // Reported below.
    }
    if (!HasEnded()) {
        Reports().LOGMEMORYERROR(kSource, kNotFilledLine);
    }
    return false;
}

HBRUSH HypertrophyDialog::OnCtlColorStatic(HDC dc, HWND control) {
    for (const RangeColorLabel* label : Labels()) {
        const HBRUSH brush = label == nullptr ? nullptr : label->OnCtlColor(dc, control);
        if (brush != nullptr) {
            return brush;
        }
    }
    return nullptr;
}

HypertrophyDialog::ValueLabels HypertrophyDialog::Labels() const {
    return {rV5_.get(),
            rV6_.get(),
            sV1_.get(),
            sokolowLyon_.get(),
            rAvl_.get(),
            sV3_.get(),
            cornell_.get(),
            amplitudePoints_.get(),
            stPoints_.get(),
            axisPoints_.get(),
            durationPoints_.get(),
            atriumPoints_.get(),
            totalPoints_.get()};
}

void HypertrophyDialog::MakeBoldFont() {
    const WindowContext screen(nullptr);
    boldFont_.reset(CreateFontA(MulDiv(-kBoldFontPoints, screen.PixelsPerInchY(), kPointsPerInch), 0, 0, 0,
                                kBoldFontWeight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, VARIABLE_PITCH | FF_SWISS,
                                "Arial"));
}

void HypertrophyDialog::HoldVoltages(const ValueRange& cornell) {
    Hold(rV5_, this, IDC_HYP_R_V5, kSingleAmplitudeRange);
    Hold(rV6_, this, IDC_HYP_R_V6, kSingleAmplitudeRange);
    Hold(sV1_, this, IDC_HYP_S_V1, kSingleAmplitudeRange);
    Hold(sokolowLyon_, this, IDC_HYP_SOKOLOW_LYON, kSokolowLyonRange);
    Hold(rAvl_, this, IDC_HYP_R_AVL, kSingleAmplitudeRange);
    Hold(sV3_, this, IDC_HYP_S_V3, kSingleAmplitudeRange);
    Hold(sex_, *Library(), this, IDC_HYP_SEX, kHeld);
    Hold(cornell_, this, IDC_HYP_CORNELL, cornell);
}

void HypertrophyDialog::HoldPointScore() {
    Hold(amplitudePoints_, this, IDC_HYP_AMPLITUDE_POINTS, kCriterionPointsRange);
    Hold(limbAmplitude_, this, IDC_HYP_LIMB_AMPLITUDE, kHeld);
    Hold(precordialS_, this, IDC_HYP_PRECORDIAL_S, kHeld);
    Hold(precordialR_, this, IDC_HYP_PRECORDIAL_R, kHeld);
    Hold(stPoints_, this, IDC_HYP_ST_POINTS, kCriterionPointsRange);
    Hold(opposedSt_, this, IDC_HYP_OPPOSED_ST, kHeld);
    Hold(strainDigitalis_, this, IDC_HYP_STRAIN_DIGITALIS, kHeld);
    Hold(axisPoints_, this, IDC_HYP_AXIS_POINTS, kCriterionPointsRange);
    Hold(leftAxis_, this, IDC_HYP_LEFT_AXIS, kHeld);
    Hold(durationPoints_, this, IDC_HYP_DURATION_POINTS, kCriterionPointsRange);
    Hold(longQrs_, this, IDC_HYP_LONG_QRS, kHeld);
    Hold(lateIntrinsicoid_, this, IDC_HYP_LATE_INTRINSICOID, kHeld);
    Hold(atriumPoints_, this, IDC_HYP_ATRIUM_POINTS, kCriterionPointsRange);
    Hold(leftAtrium_, this, IDC_HYP_LEFT_ATRIUM, kHeld);
    Hold(totalPoints_, this, IDC_HYP_TOTAL_POINTS, kTotalPointsRange);
}

void HypertrophyDialog::DressLabels() {
    const COLORREF background = GetSysColor(COLOR_BTNFACE);
    for (RangeColorLabel* label : Labels()) {
        label->SetBackground(background);
    }
    for (RangeColorLabel* label : {sokolowLyon_.get(), cornell_.get(), totalPoints_.get()}) {
        label->SetFont(boldFont_.get(), true);
    }
}

void HypertrophyDialog::ShowVoltages(const HypertrophyScore& score) {
    rV5_->SetValue(score.rV5);
    rV6_->SetValue(score.rV6);
    sV1_->SetValue(score.sV1);
    sokolowLyon_->SetValue(score.sokolowLyon);
    rAvl_->SetValue(score.rAvl);
    sV3_->SetValue(score.sV3);
    cornell_->SetValue(score.cornell);
}

void HypertrophyDialog::ShowPointScore(const HypertrophyScore& score) {
    limbAmplitude_->SetChecked(score.limbAmplitude);
    precordialS_->SetChecked(score.precordialS);
    precordialR_->SetChecked(score.precordialR);
    amplitudePoints_->SetValue(score.amplitudePoints);

    // The record does not tell digitalis: the criterion without it is the one that is judged.
    opposedSt_->Enable(true);
    opposedSt_->SetChecked(score.opposedStT);
    strainDigitalis_->Enable(false);
    strainDigitalis_->Uncheck();
    stPoints_->SetValue(score.stPoints);

    leftAxis_->SetChecked(score.leftAxisDeviation);
    axisPoints_->SetValue(score.axisPoints);

    longQrs_->SetChecked(score.longQrs);
    lateIntrinsicoid_->SetChecked(score.lateIntrinsicoid);
    durationPoints_->SetValue(score.durationPoints);

    leftAtrium_->SetChecked(score.leftAtrium);
    atriumPoints_->SetValue(score.atriumPoints);

    totalPoints_->SetValue(score.totalPoints);
}

}  // namespace kx
