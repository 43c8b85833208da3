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
// and ticking a box changes no score.
class HypertrophyDialog final : public Pane {
  public:
    // Record and parent outlive the pane; neither is owned.
    HypertrophyDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                      SystemServices* services);

    // A record without a median beat (or none) gets no window.
    void Open() override;
    // False, reported, when the pane could not be filled.
    bool OnInitDialog() override;
    // The colours of the value labels.
    HBRUSH OnCtlColorStatic(HDC dc, HWND control) override;
    const char* ReportName() const noexcept override { return "HypertrophyDialog"; }

  private:
    friend struct HypertrophyDialogLayout;

    // Of the labels in the order of their fields. Null: the label could not be made.
    using ValueLabels = std::array<RangeColorLabel*, 13>;
    ValueLabels Labels() const;

    void MakeBoldFont();
    void HoldVoltages(const ValueRange& cornell);
    void HoldPointScore();
    void DressLabels();
    void ShowVoltages(const HypertrophyScore& score);
    void ShowPointScore(const HypertrophyScore& score);

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
    std::unique_ptr<ComboBox> sex_;
    // The five groups of the point score.
    std::unique_ptr<RangeColorLabel> amplitudePoints_;
    std::unique_ptr<CheckBox> limbAmplitude_;
    std::unique_ptr<CheckBox> precordialS_;
    std::unique_ptr<CheckBox> precordialR_;
    std::unique_ptr<RangeColorLabel> stPoints_;
    std::unique_ptr<CheckBox> opposedSt_;
    std::unique_ptr<CheckBox> strainDigitalis_;
    std::unique_ptr<RangeColorLabel> axisPoints_;
    std::unique_ptr<CheckBox> leftAxis_;
    std::unique_ptr<RangeColorLabel> durationPoints_;
    std::unique_ptr<CheckBox> longQrs_;
    std::unique_ptr<CheckBox> lateIntrinsicoid_;
    std::unique_ptr<RangeColorLabel> atriumPoints_;
    std::unique_ptr<CheckBox> leftAtrium_;
    std::unique_ptr<RangeColorLabel> totalPoints_;
};

}  // namespace kx
