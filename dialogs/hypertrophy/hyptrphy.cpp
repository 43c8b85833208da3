#include "dialogs/hypertrophy/hyptrphy.h"

#include <cstddef>
#include <new>

#include "dialogs/resources/resource_ids.h"
#include "lib/dbclient/episode_record.h"
#include "lib/windows/device_context.h"
#include "lib/windows/subclassed_control.h"

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

// A wrapper that there was no memory for ends the filling of the pane.
template <class Wrapper>
Wrapper& Made(Wrapper* wrapper) {
    if (wrapper == nullptr) {
        throw std::bad_alloc();
    }
    return *wrapper;
}

template <class Wrapper>
Wrapper& Made(const std::unique_ptr<Wrapper>& wrapper) {
    return Made(wrapper.get());
}

}  // namespace

HypertrophyDialog::HypertrophyDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                                     SystemServices* services)
    : Dialog(library, parent, nullptr, services),
      test_(test),
      episode_(test == nullptr ? nullptr : test->Episode(0)) {
    if (episode_ == nullptr) {
        Reports().LOGMEMORYERROR(kSource, kNothingToShowLine);
        return;
    }
    CreateModeless(IDD_HYPERTROPHY, this);
}

bool HypertrophyDialog::OnInitDialog() {
    try {
        MakeBoldFont();
        WrapVoltages();
        WrapPointScore();
        DressLabels();
        const HypertrophyScore score = ScoreHypertrophy(episode_->measurements);
        ShowVoltages(score);
        ShowPointScore(score);
        Show();
        return true;
    } catch (...) {
        // The window stays, without this object: what it holds of the controls would be lost.
        ReleaseControls();
        Reports().LOGMEMORYERROR(kSource, kNotFilledLine);
        return false;
    }
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

void HypertrophyDialog::OnDestroy() {
    ReleaseControls();
    Dialog::OnDestroy();
    delete this;
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

std::unique_ptr<RangeColorLabel> HypertrophyDialog::NewLabel(std::uint32_t id, const ValueRange& range) {
    return std::unique_ptr<RangeColorLabel>(new (std::nothrow) RangeColorLabel(this, id, range));
}

CheckBox* HypertrophyDialog::NewCheckBox(std::uint32_t id) {
    return new (std::nothrow) CheckBox(this, id);
}

void HypertrophyDialog::WrapVoltages() {
    rV5_ = NewLabel(IDC_HYP_R_V5, kSingleAmplitudeRange);
    rV6_ = NewLabel(IDC_HYP_R_V6, kSingleAmplitudeRange);
    sV1_ = NewLabel(IDC_HYP_S_V1, kSingleAmplitudeRange);
    sokolowLyon_ = NewLabel(IDC_HYP_SOKOLOW_LYON, kSokolowLyonRange);
    rAvl_ = NewLabel(IDC_HYP_R_AVL, kSingleAmplitudeRange);
    sV3_ = NewLabel(IDC_HYP_S_V3, kSingleAmplitudeRange);
    sex_ = Library() == nullptr ? nullptr : new (std::nothrow) ComboBox(*Library(), this, IDC_HYP_SEX);
    cornell_ = NewLabel(IDC_HYP_CORNELL, CornellRange(test_->Sex()));
}

void HypertrophyDialog::WrapPointScore() {
    amplitudePoints_ = NewLabel(IDC_HYP_AMPLITUDE_POINTS, kCriterionPointsRange);
    limbAmplitude_ = NewCheckBox(IDC_HYP_LIMB_AMPLITUDE);
    precordialS_ = NewCheckBox(IDC_HYP_PRECORDIAL_S);
    precordialR_ = NewCheckBox(IDC_HYP_PRECORDIAL_R);
    stPoints_ = NewLabel(IDC_HYP_ST_POINTS, kCriterionPointsRange);
    opposedSt_ = NewCheckBox(IDC_HYP_OPPOSED_ST);
    strainDigitalis_ = NewCheckBox(IDC_HYP_STRAIN_DIGITALIS);
    axisPoints_ = NewLabel(IDC_HYP_AXIS_POINTS, kCriterionPointsRange);
    leftAxis_ = NewCheckBox(IDC_HYP_LEFT_AXIS);
    durationPoints_ = NewLabel(IDC_HYP_DURATION_POINTS, kCriterionPointsRange);
    longQrs_ = NewCheckBox(IDC_HYP_LONG_QRS);
    lateIntrinsicoid_ = NewCheckBox(IDC_HYP_LATE_INTRINSICOID);
    atriumPoints_ = NewLabel(IDC_HYP_ATRIUM_POINTS, kCriterionPointsRange);
    leftAtrium_ = NewCheckBox(IDC_HYP_LEFT_ATRIUM);
    totalPoints_ = NewLabel(IDC_HYP_TOTAL_POINTS, kTotalPointsRange);
}

void HypertrophyDialog::DressLabels() {
    const COLORREF background = GetSysColor(COLOR_BTNFACE);
    for (RangeColorLabel* label : Labels()) {
        Made(label).SetBackground(background);
    }
    for (RangeColorLabel* label : {sokolowLyon_.get(), cornell_.get(), totalPoints_.get()}) {
        Made(label).SetFont(boldFont_.get(), true);
    }
}

void HypertrophyDialog::ShowVoltages(const HypertrophyScore& score) {
    Made(rV5_).SetValue(score.rV5);
    Made(rV6_).SetValue(score.rV6);
    Made(sV1_).SetValue(score.sV1);
    Made(sokolowLyon_).SetValue(score.sokolowLyon);
    Made(rAvl_).SetValue(score.rAvl);
    Made(sV3_).SetValue(score.sV3);
    Made(sex_).FillPickList(IDS_SEX_PICK_LIST, static_cast<std::int32_t>(test_->Sex()));
    Made(cornell_).SetValue(score.cornell);
}

void HypertrophyDialog::ShowPointScore(const HypertrophyScore& score) {
    Made(limbAmplitude_).SetChecked(score.limbAmplitude);
    Made(precordialS_).SetChecked(score.precordialS);
    Made(precordialR_).SetChecked(score.precordialR);
    Made(amplitudePoints_).SetValue(score.amplitudePoints);

    // The record does not tell digitalis: the criterion without it is the one that is judged.
    Made(opposedSt_).Enable(true);
    Made(opposedSt_).SetChecked(score.opposedStT);
    Made(strainDigitalis_).Enable(false);
    Made(strainDigitalis_).Uncheck();
    Made(stPoints_).SetValue(score.stPoints);

    Made(leftAxis_).SetChecked(score.leftAxisDeviation);
    Made(axisPoints_).SetValue(score.axisPoints);

    Made(longQrs_).SetChecked(score.longQrs);
    Made(lateIntrinsicoid_).SetChecked(score.lateIntrinsicoid);
    Made(durationPoints_).SetValue(score.durationPoints);

    Made(leftAtrium_).SetChecked(score.leftAtrium);
    Made(atriumPoints_).SetValue(score.atriumPoints);

    Made(totalPoints_).SetValue(score.totalPoints);
}

void HypertrophyDialog::ReleaseControls() {
    for (std::unique_ptr<RangeColorLabel>* label :
         {&rV5_, &rV6_, &sV1_, &sokolowLyon_, &rAvl_, &sV3_, &cornell_, &amplitudePoints_, &stPoints_,
          &axisPoints_, &durationPoints_, &atriumPoints_, &totalPoints_}) {
        label->reset();
    }
    ReleaseSubclassed(sex_);
    for (CheckBox** box : {&limbAmplitude_, &precordialS_, &precordialR_, &opposedSt_, &strainDigitalis_,
                           &leftAxis_, &longQrs_, &lateIntrinsicoid_, &leftAtrium_}) {
        ReleaseSubclassed(*box);
    }
}

}  // namespace kx
