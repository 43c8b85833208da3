// One ECG test: the patient, the report and its state, the settings of the recording and what the recorders
// and the analysis produced.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "include/kxdialogs.h"
#include "lib/dbclient/episode_record.h"
#include "lib/dbclient/history.h"
#include "lib/dbclient/sub_records.h"
#include "lib/reporter.h"
#include "lib/resource_text.h"
#include "lib/text_field.h"
#include "lib/timestmp.h"

namespace kx {

class AnnotationStore;

inline constexpr std::uint32_t kEpisodeCapacity = 256;
inline constexpr std::uint32_t kStageCapacity = 256;
inline constexpr std::uint32_t kRawBlockCapacity = 256;
inline constexpr std::uint32_t kPressureCapacity = 512;
inline constexpr int kFirstSeriesCode = -7;
inline constexpr int kLastSeriesCode = 24;

// A KxTestRecord with its operations; no data added.
//
// Ownership: a TestRecord made by its constructor owns every sub-object, all made by this class; its
// destructor and the operations that replace a sub-object free it. A KxTestRecord that a host filled is used
// through Of(): operations that read or write in place work on it and free nothing of the host's. Operations
// that create, replace or release sub-objects are for records made here.
//
// Reading is bounded by the fields: a text without terminator ends with its field, a count beyond its array
// with the array, and a null sub-object is absent. Text getters copy at most min(size, field size) - 1
// characters and always terminate; without a buffer, or with size 0, they do nothing. A setter that changes a
// value sets `modified`, where nothing else is said.
struct TestRecord : KxTestRecord {
    // All zeros but testType KX_TEST_NEW, an empty history and a default current stage.
    TestRecord() noexcept;
    ~TestRecord();
    TestRecord(const TestRecord&) = delete;
    TestRecord& operator=(const TestRecord&) = delete;

    // The operations on a record of the host's. Null stays null.
    static TestRecord* Of(KxTestRecord* test) { return static_cast<TestRecord*>(test); }
    static const TestRecord* Of(const KxTestRecord* test) { return static_cast<const TestRecord*>(test); }

    // ---- type and state
    std::uint32_t TestType() const { return testType; }  // KX_TEST_...
    void SetTestType(std::uint32_t type) { Set(testType, type); }
    bool IsModified() const { return modified != 0; }
    void ClearModified() { modified = 0; }

    // ---- episodes
    std::uint32_t EpisodeCount() const { return std::min(episodeCount, kEpisodeCapacity); }
    // Null when there is no such episode.
    EpisodeRecord* Episode(std::uint32_t index);
    const EpisodeRecord* Episode(std::uint32_t index) const;
    // Appends a median beat (see EpisodeRecord) and returns it, still the record's. Null, and nothing added,
    // when 256 are held or memory for the episode itself is short.
    EpisodeRecord* AddEpisode(std::uint32_t configuration, std::uint32_t leadCount,
                              std::uint32_t samplesPerLead, std::uint32_t sampleRate,
                              std::uint32_t resolutionNv);
    // From a serialized episode of which size bytes may be read; a refused block adds an episode without
    // samples.
    EpisodeRecord* AddEpisode(const void* block, std::size_t size);
    // From the last to the first.
    void ReleaseEpisodes();
    // The episode that covers most of the time from fromMs to toMs, in whole seconds; the search ends at the
    // first later one that does not improve on the best so far. Null when none ends after fromMs.
    EpisodeRecord* LongestEpisodeBetween(std::int64_t fromMs, std::int64_t toMs);
    const EpisodeRecord* LongestEpisodeBetween(std::int64_t fromMs, std::int64_t toMs) const;

    // ---- patient
    void PatientId(char* buffer, std::size_t size) const { CopyField(patientId, buffer, size); }
    void SetPatientId(const char* text) { SetText(patientId, text); }
    // Stored as "last^first^middle^"; a '^' inside a name becomes '_'. Null names are empty. A name that does
    // not fit ends the text.
    void SetPatientName(const char* first, const char* middle, const char* last);
    // The parts between separators; consecutive separators count as one, so an empty first name leaves the
    // middle name in its place.
    void LastName(char* buffer, std::size_t size) const;
    void FirstName(char* buffer, std::size_t size) const;
    void MiddleName(char* buffer, std::size_t size) const;
    void FullName(char* buffer, std::size_t size) const;  // "first middle last"
    void SortName(char* buffer, std::size_t size) const;  // "last, first middle"
    // "street CR LF city, state postal code"; each part only while the whole still fits.
    void Address(char* buffer, std::size_t size) const;

    std::uint32_t Sex() const { return sex; }  // KX_SEX_...
    void SetSex(std::uint32_t code) { Set(sex, code); }
    DateTime BirthDate() const { return {birthDate.year, birthDate.month, birthDate.day}; }
    bool HasBirthDate() const { return birthDate.year > kLastUnknownYear; }
    // A changed date also sets the age at the acquisition, where both years are known (0 when not positive,
    // at most 65535 days).
    void SetBirthDate(const KxDate& date);

    std::uint32_t AgeDays() const { return ageDays; }
    // Nothing while the record has a valid birth date.
    void SetAgeDays(std::uint16_t days);
    // "NG", "29 d", "12 m" or "1 y".
    void AgeText(char* buffer, std::size_t size) const;
    std::uint32_t Weight() const { return weight; }         // hundredths of a pound
    void WeightText(char* buffer, std::size_t size) const;  // "NG", "70 kg" or "154 lbs"
    std::uint32_t Height() const { return height; }         // hundredths of an inch
    void HeightText(char* buffer, std::size_t size) const;  // "NG", "175 cm" or "69 in"

    // The text of a code by a pick list of the resources: "*" when the list cannot be loaded; the buffer is
    // left as it was when no code matches. listId 0 stands for the record's own list.
    void SexText(const ResourceTexts& texts, char* buffer, std::size_t size, std::uint32_t listId = 0) const;
    void RaceText(const ResourceTexts& texts, char* buffer, std::size_t size, std::uint32_t listId = 0) const;
    // flag: 0 to 4; nothing for any other.
    void ClinicalFlagText(const ResourceTexts& texts, int flag, char* buffer, std::size_t size,
                          std::uint32_t listId = 0) const;
    // Short date, or "NG" when it is not valid.
    void ClinicalDateText(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    void BloodPressureText(char* buffer, std::size_t size) const;  // "120/80", or "..." when not given

    // ---- report
    std::uint32_t ReportState() const { return reportState; }  // KX_REPORT_...
    bool IsOriginal() const { return reportState == KX_REPORT_ORIGINAL; }
    bool IsOverread() const { return reportState == KX_REPORT_OVERREAD; }
    bool IsConfirmed() const { return reportState == KX_REPORT_CONFIRMED; }
    bool IsReviewedOutside() const { return reportState == KX_REPORT_REVIEWED_OUTSIDE; }
    // Copies into the buffer and returns it; without a buffer, or with size 0, the record's own text (a copy
    // in one shared buffer when the field has no terminator).
    const char* InterpretationText(char* buffer, std::size_t size) const;
    // State, time (null: zeros for original and confirmed, unchanged for overread) and text; null keeps the
    // text. State and time of original and confirmed are stored without setting `modified`, which the text
    // then does where it differs.
    void SetOriginalInterpretation(const KxDateTime* time, const char* text);
    void SetOverreadInterpretation(const KxDateTime* time, const char* text);
    void SetConfirmedInterpretation(const KxDateTime* time, const char* text);
    DateTime OriginalTime() const { return originalTime; }
    DateTime OverreadTime() const { return overreadTime; }
    DateTime ConfirmedTime() const { return confirmedTime; }
    // Each returns a copy in a static buffer that its next call overwrites.
    const char* OriginalBy() const;
    const char* OverreadBy() const;
    const char* ConfirmedBy() const;
    void SetOriginalBy(const char* name) { StoreModified(originalBy, name); }
    // Without setting `modified`: a host that asks whether a report has changed compares the name as well.
    void SetOverreadBy(const char* name) { StoreField(overreadBy, name); }
    void SetConfirmedBy(const char* name) { SetText(confirmedBy, name); }
    // The state by the resources' list of report states; with its author, "state - <author>" or
    // "state (physician)". "*" in the state's place when the list cannot be loaded. A state without a name
    // gives an empty text, and leaves the buffer as it was where the author is asked for.
    void ReportStateText(const ResourceTexts& texts, char* buffer, std::size_t size) const;
    void ReportStateAndAuthorText(const ResourceTexts& texts, char* buffer, std::size_t size) const;

    // ---- settings
    bool MetricUnits() const { return metricUnits == 1; }
    std::uint32_t MainsFrequency() const;  // 50, 60 or 0
    void SetMainsFrequency(std::uint32_t hz);
    std::uint32_t ArtifactFilter() const;  // 0 off, 1, 2 or 3
    void SetArtifactFilter(bool on, bool variant2, bool variant3);
    bool BaselineFilter() const;
    void SetBaselineFilter(bool on);
    // The recorder; without setting `modified`. Null keeps a field.
    void SetDevice(const char* name, const char* serial, const char* revision);
    void DeviceText(char* buffer, std::size_t size) const;  // "name (SN: serial) rev revision"

    // ---- sub-objects. Getters give null where there is none.
    const void* Ecg() const { return ecg; }
    // Copies the signal, which must not lie in the old one: that is destroyed first. False, and nothing
    // changed, without data; false and no signal when there is no memory.
    bool SetEcg(const void* data, std::size_t size);
    // The same for two objects that this library only keeps, of 12 and of 24 bytes.
    bool SetObject7600(const std::array<std::uint8_t, 12>& object);
    bool SetObject7604(const std::array<std::uint8_t, 24>& object);

    // A store made here; a host's is for the suite's modules, and its beginning alone is read.
    AnnotationStore* Annotations();
    const AnnotationStore* Annotations() const;
    // Each destroys the previous store and installs the new one; the three-channel form, the twelve-lead form
    // (or entries alone), or one made before. The new store, null when there was no memory for it.
    AnnotationStore* CreateAnnotations(std::uint32_t capacity);
    AnnotationStore* CreateAnnotations(std::uint32_t capacity, bool entriesOnly);
    AnnotationStore* ReplaceAnnotations(std::unique_ptr<AnnotationStore> store);
    // Likewise the second store.
    AnnotationStore* ReplaceAnnotations2(std::unique_ptr<AnnotationStore> store);

    // What this library does not understand (sub_records.h) counts as not there. Each Set destroys the
    // previous object; the Add operations give false, and change nothing, for a full array or a null object.
    // The value series of a code from -7 to 24.
    KxValueSeries* Series(int code) const {
        return IsSeriesCode(code) ? Understood(series[code - kFirstSeriesCode]) : nullptr;
    }
    bool SetSeries(int code, std::unique_ptr<ValueSeries> newSeries);
    void SetSeries9796(std::unique_ptr<ValueSeries> newSeries) { Replace(series9796, std::move(newSeries)); }
    std::uint32_t StageCount() const { return std::min(stageCount, kStageCapacity); }
    // -1: the current stage.
    KxStressStage* Stage(int index) const {
        return Understood(index == -1 ? currentStage : At(stages, stageCount, index));
    }
    bool AddStage(std::unique_ptr<KxStressStage> stage) {
        return AppendTo(stages, stageCount, std::move(stage));
    }
    void SetCurrentStage(std::unique_ptr<KxStressStage> stage) { Replace(currentStage, std::move(stage)); }
    std::uint32_t PressureCount() const { return std::min(pressureCount, kPressureCapacity); }
    // -1: the summary.
    KxPressureReading* Pressure(int index) const {
        return Understood(index == -1 ? pressureSummary : At(pressures, pressureCount, index));
    }
    bool AddPressure(std::unique_ptr<KxPressureReading> reading) {
        return AppendTo(pressures, pressureCount, std::move(reading));
    }
    void SetPressureSummary(std::unique_ptr<KxPressureReading> reading) {
        Replace(pressureSummary, std::move(reading));
    }
    std::uint32_t RawBlockCount() const { return std::min(rawBlockCount, kRawBlockCapacity); }
    const KxRawBlock* RawBlock(int index) const { return At(rawBlocks, rawBlockCount, index); }
    bool AddRawBlock(const KxRawBlock& block);
    KxHolterSummary* HolterSummary() const { return Understood(holterSummary); }
    void SetHolterSummary(std::unique_ptr<KxHolterSummary> summary) {
        Replace(holterSummary, std::move(summary));
    }
    KxHolterData* HolterData() const { return Understood(holterData); }
    void SetHolterData(std::unique_ptr<KxHolterData> data) { Replace(holterData, std::move(data)); }
    KxSpirometry* Spirometry() const { return Understood(spirometry); }
    void SetSpirometry(std::unique_ptr<KxSpirometry> block) { Replace(spirometry, std::move(block)); }

    // ---- history. Nothing, and false, without a history (see History::Add).
    bool AddHistoryEntry(std::uint32_t action, const KxDateTime& time, const char* user);
    // lastChangeTime; while its year is 0, filled first from the last entry of the history.
    DateTime LastChangeTime();

    // ---- what the suite's other programs do, and no pane of this library

    // The texts read a number at their start. False, and nothing changed, when the value does not fit its
    // field or there is no text.
    // "NG" is 0; days with a D, months (30 days) with an M, else years (365 days).
    bool SetAgeText(const char* text);
    // Kilograms with metricUnits or with "KG" or "kg", else pounds.
    bool SetWeightText(const char* text);
    // Centimetres with metricUnits or with "CM" or "cm", else inches.
    bool SetHeightText(const char* text);

    void SetWeight(std::uint16_t hundredthsOfPound) { Set(weight, hundredthsOfPound); }
    void SetHeight(std::uint16_t hundredthsOfInch) { Set(height, hundredthsOfInch); }
    std::uint32_t Race() const { return race; }
    void SetRace(std::uint32_t code) { Set(race, code); }
    // 0 when there is no such flag.
    std::uint32_t ClinicalFlag(int flag) const;
    void SetClinicalFlag(int flag, std::uint32_t code);
    // A date that is not valid clears it.
    void SetClinicalDate(const KxDate& date);
    std::uint32_t RatePressureProduct() const {
        return (bloodPressure >> 16) * heartRate;
    }  // systolic x heartRate
    // An original report becomes reviewed outside when the history tells so.
    void CheckExternalReview();

    void SetMetricUnits(bool on) { Set(metricUnits, on ? 1 : 0); }
    // Values above 65535 are stored as 0.
    void SetValue6118(std::uint32_t value) { Set(value6118, value > 0xFFFF ? 0 : value); }
    // Always sets `modified`; null keeps the field.
    void SetText7146(const char* text) { StoreModified(text7146, text); }
    // Without setting `modified`; null keeps the field. index: 0 to 2, nothing for any other.
    void SetText7189(int index, const char* text);
    void SetText6570(const char* text) { StoreField(text6570, text); }
    // 0 treadmill, 1 ergometer, and whether treadmill speeds are shown in km/h.
    void SetExerciseDevice(std::uint32_t device, bool inKilometres);
    // One bit, 0 to 31, of the two bit sets among values7444; nothing for any other.
    void SetBit7460(int bit, bool on) { SetBit(values7444[4], bit, on); }
    void SetBit7476(int bit, bool on) { SetBit(values7444[8], bit, on); }
    // As SetEcg: a buffer that this library only keeps.
    bool SetBuffer7584(const void* data, std::size_t size);

    // The second annotation store, as the first.
    AnnotationStore* Annotations2();
    const AnnotationStore* Annotations2() const;
    AnnotationStore* CreateAnnotations2(std::uint32_t capacity);
    AnnotationStore* CreateAnnotations2(std::uint32_t capacity, bool entriesOnly);
    // Makes an entry of the first store the current one; reports and refuses an index that it does not have.
    bool SetCurrentAnnotation(std::uint32_t index, Reporter& log);

  private:
    // How values are stored, with `modified` where they differ.
    template <class Field, class Value>
    void Set(Field& field, Value value) {
        const auto stored = static_cast<Field>(value);
        if (field != stored) {
            field = stored;
            modified = 1;
        }
    }
    template <std::size_t N>
    void SetText(char (&field)[N], const char* text) {
        modified = StoreField(field, text) ? std::uint8_t{1} : modified;
    }
    // Stored, and `modified` set, without a look at what stood there.
    template <std::size_t N>
    void StoreModified(char (&field)[N], const char* text) {
        StoreField(field, text);
        modified = text != nullptr ? std::uint8_t{1} : modified;
    }
    void SetBit(std::uint32_t& field, int bit, bool on);
    void SetFilterBits(std::uint32_t mask, std::uint32_t bits) {
        Set(filterFlags, (filterFlags & ~mask) | bits);
    }
    bool SetMeasure(std::uint16_t& field, const char* text, bool metric, const std::int32_t (&perUnit)[2]);

    // How sub-objects are kept: a Made is a slot's type or derived from it.
    template <class Made, class T>
    static void Replace(T*& slot, std::unique_ptr<Made> object) {
        delete static_cast<Made*>(slot);
        slot = object.release();
    }
    template <class T, std::size_t N>
    static bool AppendTo(T* (&slots)[N], std::uint32_t& count, std::unique_ptr<T> object) {
        if (count >= N || object == nullptr) {
            return false;
        }
        slots[count++] = object.release();
        return true;
    }
    template <class T, std::size_t N>
    static T* At(T* const (&slots)[N], std::uint32_t count, int index) {
        return index >= 0 && static_cast<std::uint32_t>(index) < std::min<std::uint32_t>(count, N)
                   ? slots[index]
                   : nullptr;
    }
    static bool IsSeriesCode(int code) { return code >= kFirstSeriesCode && code <= kLastSeriesCode; }
    EpisodeRecord* Append(EpisodeRecord* episode);
    // Destroys both annotation stores, the first one first.
    void DestroyAnnotations();
};

static_assert(sizeof(void*) != 4 || sizeof(TestRecord) == KX_TEST_RECORD_SIZE);

}  // namespace kx
