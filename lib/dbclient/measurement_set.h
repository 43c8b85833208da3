// The measurements of one median beat.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// A KxMeasurementSet with its operations; no data added and no pointers, so a byte copy is a complete copy.
// Intervals, durations and times in ms (times from the start of the median beat, 0 = absent), amplitudes in
// microvolts, axes in degrees; unsigned and signed 16-bit fields are widened to 32 bits. Lead indices are 0
// to 14 (I, II, III, aVR, aVL, aVF, V1 to V6, then the lead codes 12 to 14) and are not range-checked.
// Reserved words and bits are never changed but by Clear.
struct MeasurementSet : KxMeasurementSet {
    MeasurementSet() { Clear(); }

    // The operations on a set that stands in a record.
    static MeasurementSet& Of(KxMeasurementSet& set) { return static_cast<MeasurementSet&>(set); }
    static const MeasurementSet& Of(const KxMeasurementSet& set) {
        return static_cast<const MeasurementSet&>(set);
    }

    // All 1872 bytes zero but the size.
    void Clear();

    // ---- the whole beat
    std::uint32_t PDuration() const { return pDuration; }
    std::uint32_t PrInterval() const { return prInterval; }
    std::uint32_t QtInterval() const { return qtInterval; }
    std::uint32_t Qtc() const { return qtc; }
    std::uint32_t QtcBazett() const { return qtcBazett; }
    std::uint32_t QrsDuration() const { return qrsDuration; }
    std::uint32_t RrInterval() const { return rrInterval; }
    std::int32_t QrsAxis() const { return qrsAxis; }
    // 60000 / RR interval in beats per minute, halves rounded away from zero; 0 without an RR interval.
    std::int32_t HeartRate() const;

    // The five global fiducial points stand in every lead block. They are read from block 0.
    std::uint32_t POn() const { return leads[0].pOn; }
    std::uint32_t POff() const { return leads[0].pOff; }
    std::uint32_t QrsOn() const { return leads[0].qrsOn; }
    std::uint32_t QrsOff() const { return leads[0].qrsOff; }
    std::uint32_t TOff() const { return leads[0].tOff; }

    // ---- one lead: amplitudes
    std::int32_t LeadAP1(int lead) const { return leads[lead].aP1; }
    std::int32_t LeadAP2(int lead) const { return leads[lead].aP2; }
    std::int32_t LeadAQ(int lead) const { return leads[lead].aQ; }
    std::int32_t LeadAR(int lead) const { return leads[lead].aR; }
    std::int32_t LeadAS(int lead) const { return leads[lead].aS; }
    std::int32_t LeadAR1(int lead) const { return leads[lead].aR1; }
    std::int32_t LeadAS1(int lead) const { return leads[lead].aS1; }
    std::int32_t LeadAT1(int lead) const { return leads[lead].aT1; }
    std::int32_t LeadAT2(int lead) const { return leads[lead].aT2; }

    // ---- what the suite's other programs ask for, and no pane of this library; the dialogs' tables know
    // the markers by their members

    // Nonzero: the set holds measurements.
    std::uint32_t IsMeasured() const { return measured; }
    std::int32_t PAxis() const { return pAxis; }
    std::int32_t TAxis() const { return tAxis; }

    // The setters write block 0 alone; EpisodeRecord writes all blocks.
    void SetPOn(std::uint16_t ms) { leads[0].pOn = ms; }
    void SetPOff(std::uint16_t ms) { leads[0].pOff = ms; }
    void SetQrsOn(std::uint16_t ms) { leads[0].qrsOn = ms; }
    void SetQrsOff(std::uint16_t ms) { leads[0].qrsOff = ms; }
    void SetTOff(std::uint16_t ms) { leads[0].tOff = ms; }

    // Whether the reviewer placed a global point by hand.
    bool IsPOnManual() const { return IsGlobalFlag(KX_MANUAL_P_ON); }
    bool IsPOffManual() const { return IsGlobalFlag(KX_MANUAL_P_OFF); }
    bool IsQrsOnManual() const { return IsGlobalFlag(KX_MANUAL_QRS_ON); }
    bool IsQrsOffManual() const { return IsGlobalFlag(KX_MANUAL_QRS_OFF); }
    bool IsTOffManual() const { return IsGlobalFlag(KX_MANUAL_T_OFF); }
    void SetPOnManual(bool on) { SetGlobalFlag(KX_MANUAL_P_ON, on); }
    void SetPOffManual(bool on) { SetGlobalFlag(KX_MANUAL_P_OFF, on); }
    void SetQrsOnManual(bool on) { SetGlobalFlag(KX_MANUAL_QRS_ON, on); }
    void SetQrsOffManual(bool on) { SetGlobalFlag(KX_MANUAL_QRS_OFF, on); }
    void SetTOffManual(bool on) { SetGlobalFlag(KX_MANUAL_T_OFF, on); }

    // One lead: values.
    std::uint32_t LeadIntrinsicoidDeflection(int lead) const { return leads[lead].intrinsicoidDeflection; }
    std::int32_t LeadFieldValue251(int lead) const { return leads[lead].fieldValue251; }
    std::uint32_t LeadFieldValue263(int lead) const { return leads[lead].fieldValue263; }
    std::uint32_t LeadFieldValue275(int lead) const { return leads[lead].fieldValue275; }
    // The ST level nearest to `ms` (every 10 ms from 0 to 90, halves away from zero); 0 outside the table.
    std::int32_t LeadStLevel(int lead, std::int32_t ms) const;
    KxLeadMeasurements& LeadBlock(int lead) { return leads[lead]; }
    const KxLeadMeasurements& LeadBlock(int lead) const { return leads[lead]; }

    // One lead: markers.
    std::uint32_t LeadPOnMarker(int lead) const { return leads[lead].pOnMarker; }
    std::uint32_t LeadPPrimeOnMarker(int lead) const { return leads[lead].pPrimeOnMarker; }
    std::uint32_t LeadPOffMarker(int lead) const { return leads[lead].pOffMarker; }
    std::uint32_t LeadQOnMarker(int lead) const { return leads[lead].qOnMarker; }
    std::uint32_t LeadROnMarker(int lead) const { return leads[lead].rOnMarker; }
    std::uint32_t LeadSOnMarker(int lead) const { return leads[lead].sOnMarker; }
    std::uint32_t LeadRPrimeOnMarker(int lead) const { return leads[lead].rPrimeOnMarker; }
    std::uint32_t LeadSPrimeOnMarker(int lead) const { return leads[lead].sPrimeOnMarker; }
    std::uint32_t LeadQrsOffMarker(int lead) const { return leads[lead].qrsOffMarker; }
    std::uint32_t LeadTOnMarker(int lead) const { return leads[lead].tOnMarker; }
    std::uint32_t LeadTPrimeOnMarker(int lead) const { return leads[lead].tPrimeOnMarker; }
    std::uint32_t LeadTOffMarker(int lead) const { return leads[lead].tOffMarker; }
    void SetLeadPOnMarker(int lead, std::uint16_t ms) { leads[lead].pOnMarker = ms; }
    void SetLeadPPrimeOnMarker(int lead, std::uint16_t ms) { leads[lead].pPrimeOnMarker = ms; }
    void SetLeadPOffMarker(int lead, std::uint16_t ms) { leads[lead].pOffMarker = ms; }
    void SetLeadQOnMarker(int lead, std::uint16_t ms) { leads[lead].qOnMarker = ms; }
    void SetLeadROnMarker(int lead, std::uint16_t ms) { leads[lead].rOnMarker = ms; }
    void SetLeadSOnMarker(int lead, std::uint16_t ms) { leads[lead].sOnMarker = ms; }
    void SetLeadRPrimeOnMarker(int lead, std::uint16_t ms) { leads[lead].rPrimeOnMarker = ms; }
    void SetLeadSPrimeOnMarker(int lead, std::uint16_t ms) { leads[lead].sPrimeOnMarker = ms; }
    void SetLeadQrsOffMarker(int lead, std::uint16_t ms) { leads[lead].qrsOffMarker = ms; }
    void SetLeadTOnMarker(int lead, std::uint16_t ms) { leads[lead].tOnMarker = ms; }
    void SetLeadTPrimeOnMarker(int lead, std::uint16_t ms) { leads[lead].tPrimeOnMarker = ms; }
    void SetLeadTOffMarker(int lead, std::uint16_t ms) { leads[lead].tOffMarker = ms; }

    // Whether the reviewer placed a marker of this lead by hand.
    bool IsLeadPOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_P_ON); }
    bool IsLeadPPrimeOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_P_PRIME_ON); }
    bool IsLeadPOffManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_P_OFF); }
    bool IsLeadQOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_Q_ON); }
    bool IsLeadROnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_R_ON); }
    bool IsLeadSOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_S_ON); }
    bool IsLeadRPrimeOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_R_PRIME_ON); }
    bool IsLeadSPrimeOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_S_PRIME_ON); }
    bool IsLeadQrsOffManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_QRS_OFF); }
    bool IsLeadTOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_T_ON); }
    bool IsLeadTPrimeOnManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_T_PRIME_ON); }
    bool IsLeadTOffManual(int lead) const { return IsLeadFlag(lead, KX_MANUAL_LEAD_T_OFF); }
    void SetLeadPOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_P_ON, on); }
    void SetLeadPPrimeOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_P_PRIME_ON, on); }
    void SetLeadPOffManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_P_OFF, on); }
    void SetLeadQOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_Q_ON, on); }
    void SetLeadROnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_R_ON, on); }
    void SetLeadSOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_S_ON, on); }
    void SetLeadRPrimeOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_R_PRIME_ON, on); }
    void SetLeadSPrimeOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_S_PRIME_ON, on); }
    void SetLeadQrsOffManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_QRS_OFF, on); }
    void SetLeadTOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_T_ON, on); }
    void SetLeadTPrimeOnManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_T_PRIME_ON, on); }
    void SetLeadTOffManual(int lead, bool on) { SetLeadFlag(lead, KX_MANUAL_LEAD_T_OFF, on); }

  private:
    static std::uint16_t WithFlag(std::uint16_t flags, std::uint16_t bit, bool on) {
        return static_cast<std::uint16_t>(on ? flags | bit : flags & ~bit);
    }
    bool IsGlobalFlag(std::uint16_t bit) const { return (leads[0].globalManualFlags & bit) != 0; }
    void SetGlobalFlag(std::uint16_t bit, bool on) {
        leads[0].globalManualFlags = WithFlag(leads[0].globalManualFlags, bit, on);
    }
    bool IsLeadFlag(int lead, std::uint16_t bit) const { return (leads[lead].markerFlags & bit) != 0; }
    void SetLeadFlag(int lead, std::uint16_t bit, bool on) {
        leads[lead].markerFlags = WithFlag(leads[lead].markerFlags, bit, on);
    }
};

static_assert(sizeof(MeasurementSet) == KX_MEASUREMENT_SET_SIZE);

}  // namespace kx
