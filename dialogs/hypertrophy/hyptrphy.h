// The pane of the voltage criteria and the point score for left ventricular hypertrophy (HYPERTROPHYDIALOG).
#pragma once

#include <windows.h>

#include <array>
#include <memory>

#include "dialogs/dialog_library.h"
#include "dialogs/hypertrophy/range_color_label.h"
#include "lib/dbclient/test_record.h"
#include "lib/hypertrophy_score.h"
#include "lib/windows/check_box.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/dialog.h"
#include "lib/windows/gdi_handles.h"

namespace kx {

// Shows what ScoreHypertrophy makes of the measurements of the record's first median beat, computed once when
// the pane opens, whether or not the set is marked as measured. It changes nothing: the sex cannot be chosen,
// and ticking a box changes no score. The object belongs to its window and is deleted in its WM_DESTROY.
class HypertrophyDialog final : public Dialog {
  public:
    // Creates the pane in the parent's window. A record without a median beat (or none) is reported, and
    // there is no window. Record and parent outlive the pane; neither is owned.
    HypertrophyDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                      SystemServices* services);

    // False, reported, when the pane could not be filled; its value labels and what they show are gone then.
    bool OnInitDialog() override;
    // The colours of the value labels.
    HBRUSH OnCtlColorStatic(HDC dc, HWND control) override;
    // Deletes the value labels and this object. The check boxes and the combo box go with their controls.
    void OnDestroy() override;

  private:
    friend struct HypertrophyDialogLayout;

    ~HypertrophyDialog() = default;

    // Of the labels in the order of their fields. Null: the label could not be made.
    using ValueLabels = std::array<RangeColorLabel*, 13>;
    ValueLabels Labels() const;

    void MakeBoldFont();
    void WrapVoltages();
    void WrapPointScore();
    void DressLabels();
    void ShowVoltages(const HypertrophyScore& score);
    void ShowPointScore(const HypertrophyScore& score);
    void ReleaseControls();

    std::unique_ptr<RangeColorLabel> NewLabel(std::uint32_t id, const ValueRange& range);
    CheckBox* NewCheckBox(std::uint32_t id);

    TestRecord* test_;
    EpisodeRecord* episode_;
    UniqueFont boldFont_;

    // Sokolow-Lyon and Cornell, µV.
    std::unique_ptr<RangeColorLabel> rV5_;
    std::unique_ptr<RangeColorLabel> rV6_;
    std::unique_ptr<RangeColorLabel> sV1_;
    std::unique_ptr<RangeColorLabel> sokolowLyon_;
    std::unique_ptr<RangeColorLabel> rAvl_;
    std::unique_ptr<RangeColorLabel> sV3_;
    std::unique_ptr<RangeColorLabel> cornell_;
    ComboBox* sex_ = nullptr;
    // The five groups of the point score. The boxes delete themselves (see subclassed_control.h).
    std::unique_ptr<RangeColorLabel> amplitudePoints_;
    CheckBox* limbAmplitude_ = nullptr;
    CheckBox* precordialS_ = nullptr;
    CheckBox* precordialR_ = nullptr;
    std::unique_ptr<RangeColorLabel> stPoints_;
    CheckBox* opposedSt_ = nullptr;
    CheckBox* strainDigitalis_ = nullptr;
    std::unique_ptr<RangeColorLabel> axisPoints_;
    CheckBox* leftAxis_ = nullptr;
    std::unique_ptr<RangeColorLabel> durationPoints_;
    CheckBox* longQrs_ = nullptr;
    CheckBox* lateIntrinsicoid_ = nullptr;
    std::unique_ptr<RangeColorLabel> atriumPoints_;
    CheckBox* leftAtrium_ = nullptr;
    std::unique_ptr<RangeColorLabel> totalPoints_;
};

}  // namespace kx
