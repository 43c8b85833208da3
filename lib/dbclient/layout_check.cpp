// The layouts that the library shares with its host and the modules of the suite: every field at its place.
#include <cstddef>

#include "include/kxdialogs.h"

namespace {

struct Place {
    std::size_t is;
    std::size_t mustBe;
};

// The index of the first field that is not in its place, counted from 1, which a failing assertion shows; 0
// when all are.
template <class... Places>
consteval int FirstMisplaced(Places... places) {
    int index = 0;
    return ((++index, places.is == places.mustBe) && ...) ? 0 : index;
}

#define AT(field, offset)          \
    Place {                        \
        offsetof(R, field), offset \
    }

consteval int MisplacedIn(const KxDateTime*) {
    using R = KxDateTime;
    return FirstMisplaced(AT(year, 0), AT(day, 2), AT(month, 3), AT(minute, 4), AT(hour, 5),
                          AT(hundredths, 6), AT(second, 7));
}
static_assert(sizeof(KxDateTime) == 8 && MisplacedIn(static_cast<KxDateTime*>(nullptr)) == 0);

consteval int MisplacedIn(const KxDate*) {
    using R = KxDate;
    return FirstMisplaced(AT(year, 0), AT(day, 2), AT(month, 3));
}
static_assert(sizeof(KxDate) == 4 && MisplacedIn(static_cast<KxDate*>(nullptr)) == 0);

consteval int MisplacedIn(const KxLeadMeasurements*) {
    using R = KxLeadMeasurements;
    return FirstMisplaced(AT(aP1, 0), AT(aP2, 2), AT(aR, 4), AT(aR1, 6), AT(pOn, 8), AT(aQ, 10), AT(aT1, 14),
                          AT(aT2, 16), AT(aS, 18), AT(aS1, 20), AT(fieldValue251, 22), AT(fieldValue263, 24),
                          AT(fieldValue275, 26), AT(intrinsicoidDeflection, 32), AT(pOff, 38), AT(qrsOn, 40),
                          AT(qrsOff, 42), AT(tOff, 46), AT(tOnMarker, 62), AT(tPrimeOnMarker, 64),
                          AT(tOffMarker, 66), AT(markerFlags, 80), AT(globalManualFlags, 82),
                          AT(pOnMarker, 84), AT(pPrimeOnMarker, 86), AT(pOffMarker, 88), AT(qOnMarker, 90),
                          AT(rOnMarker, 92), AT(sOnMarker, 94), AT(rPrimeOnMarker, 96),
                          AT(sPrimeOnMarker, 98), AT(qrsOffMarker, 100), AT(stLevel, 102));
}
static_assert(sizeof(KxLeadMeasurements) == 122 &&
              MisplacedIn(static_cast<KxLeadMeasurements*>(nullptr)) == 0);

consteval int MisplacedIn(const KxMeasurementSet*) {
    using R = KxMeasurementSet;
    return FirstMisplaced(AT(size, 0), AT(measured, 4), AT(pDuration, 8), AT(prInterval, 10),
                          AT(qtInterval, 12), AT(qtc, 14), AT(qtcBazett, 16), AT(qrsDuration, 20),
                          AT(rrInterval, 22), AT(episodeTime, 24), AT(pAxis, 28), AT(qrsAxis, 30),
                          AT(tAxis, 36), AT(leads, 42), AT(leads[0].pOn, 50), AT(leads[0].pOff, 80),
                          AT(leads[0].qrsOn, 82), AT(leads[0].qrsOff, 84), AT(leads[0].tOff, 88),
                          AT(leads[0].globalManualFlags, 124));
}
static_assert(sizeof(KxMeasurementSet) == KX_MEASUREMENT_SET_SIZE &&
              MisplacedIn(static_cast<KxMeasurementSet*>(nullptr)) == 0);

consteval int MisplacedIn(const KxInterpretationResult*) {
    using R = KxInterpretationResult;
    return FirstMisplaced(AT(size, 0), AT(resultTime, 4), AT(text, 8), AT(code, 1032), AT(flags, 1036),
                          AT(extra, 1040));
}
static_assert(sizeof(KxInterpretationResult) == KX_INTERPRETATION_RESULT_SIZE &&
              MisplacedIn(static_cast<KxInterpretationResult*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHistoryEntry*) {
    using R = KxHistoryEntry;
    return FirstMisplaced(AT(year, 0), AT(month, 2), AT(day, 3), AT(hour, 4), AT(minute, 5),
                          AT(millisecondsInMinute, 6), AT(action, 8), AT(user, 12));
}
static_assert(sizeof(KxHistoryEntry) == 44 && MisplacedIn(static_cast<KxHistoryEntry*>(nullptr)) == 0);

consteval int MisplacedIn(const KxAnnotation*) {
    using R = KxAnnotation;
    return FirstMisplaced(AT(timeMs, 0), AT(label, 4), AT(subLabel, 5), AT(heartRate, 6));
}
static_assert(sizeof(KxAnnotation) == 8 && MisplacedIn(static_cast<KxAnnotation*>(nullptr)) == 0);

consteval int MisplacedIn(const KxLeadBeat*) {
    using R = KxLeadBeat;
    return FirstMisplaced(AT(widthHalf, 0), AT(offset1, 1), AT(onsetOffset, 2), AT(offset3, 3),
                          AT(offset4, 4), AT(endOffset, 5), AT(amplitude1, 6), AT(value8, 8),
                          AT(amplitude2, 10), AT(amplitude3, 12), AT(amplitude4, 14), AT(amplitude5, 16),
                          AT(leadValue, 18));
}
static_assert(sizeof(KxLeadBeat) == 20 && MisplacedIn(static_cast<KxLeadBeat*>(nullptr)) == 0);

consteval int MisplacedIn(const KxTestListEntry*) {
    using R = KxTestListEntry;
    return FirstMisplaced(AT(value4, 8), AT(acquisitionTime, 12), AT(text6570, 20), AT(lastChangeTime, 524),
                          AT(patientId, 532), AT(sortName, 548), AT(stateFlags, 576), AT(testType, 580),
                          AT(reserved584, 584));
}
static_assert(sizeof(KxTestListEntry) == 33352 && MisplacedIn(static_cast<KxTestListEntry*>(nullptr)) == 0);

consteval int MisplacedIn(const KxStressStage*) {
    using R = KxStressStage;
    return FirstMisplaced(AT(mark, 4), AT(number, 8), AT(name, 12), AT(startMs, 44), AT(durationMs, 48),
                          AT(speed, 52), AT(gradeOrLoad, 56), AT(mets, 60), AT(heartRate, 64),
                          AT(bloodPressure, 68), AT(stLevel, 72), AT(stTimeMs, 76), AT(stLead, 80),
                          AT(reserved84, 84));
}
static_assert(sizeof(KxStressStage) == 672 && MisplacedIn(static_cast<KxStressStage*>(nullptr)) == 0);

consteval int MisplacedIn(const KxPressureReading*) {
    using R = KxPressureReading;
    return FirstMisplaced(AT(mark, 4), AT(time, 8), AT(systolic, 16), AT(diastolic, 20), AT(mean, 24),
                          AT(heartRate, 28), AT(remark, 32), AT(reserved96, 96));
}
static_assert(sizeof(KxPressureReading) == 2176 &&
              MisplacedIn(static_cast<KxPressureReading*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHolterData*) {
    using R = KxHolterData;
    return FirstMisplaced(AT(mark, 4), AT(meanHeartRate, 8), AT(minHeartRate, 12), AT(minHeartRateMs, 16),
                          AT(maxHeartRate, 20), AT(maxHeartRateMs, 24), AT(hasCurrentEvent, 28),
                          AT(eventStartMs, 32), AT(eventEndMs, 36));
}
static_assert(sizeof(KxHolterData) == 40 && MisplacedIn(static_cast<KxHolterData*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHolterSummary*) {
    using R = KxHolterSummary;
    return FirstMisplaced(AT(mark, 4), AT(groups, 8), AT(reserved392, 392));
}
static_assert(sizeof(KxHolterSummary) == 440 && MisplacedIn(static_cast<KxHolterSummary*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHolterGroup*) {
    using R = KxHolterGroup;
    return FirstMisplaced(AT(second, 8));
}
static_assert(sizeof(KxHolterGroup) == 32 && MisplacedIn(static_cast<KxHolterGroup*>(nullptr)) == 0);

consteval int MisplacedIn(const KxSpirometry*) {
    using R = KxSpirometry;
    return FirstMisplaced(AT(mark, 4), AT(predictedSet, 8), AT(values, 16), AT(reserved352, 352));
}
static_assert(sizeof(KxSpirometry) == 424 && MisplacedIn(static_cast<KxSpirometry*>(nullptr)) == 0);

static_assert(sizeof(KxSeriesPoint) == 8 && sizeof(KxRawBlock) == 6264 && sizeof(KxRect) == 16);

// These hold pointers, so their layout is that of the 32-bit library alone.
#if UINTPTR_MAX == UINT32_MAX
consteval int MisplacedIn(const KxEpisodeRecord*) {
    using R = KxEpisodeRecord;
    return FirstMisplaced(AT(totalSize, 0), AT(checksum, 4), AT(formatVersion, 6), AT(storedLeads, 8),
                          AT(samplesPerLead, 12), AT(leadConfiguration, 16), AT(durationSeconds, 20),
                          AT(state, 24), AT(sampleRate, 28), AT(resolutionNv, 32), AT(value36, 36),
                          AT(endTimeMs, 40), AT(value44, 44), AT(leadTable, 64), AT(samples, 256),
                          AT(measurements, 260), AT(interpretation, 2132));
}
static_assert(sizeof(KxEpisodeRecord) == KX_EPISODE_FIXED_SIZE &&
              MisplacedIn(static_cast<KxEpisodeRecord*>(nullptr)) == 0);

consteval int MisplacedIn(const KxTestRecord*) {
    using R = KxTestRecord;
    return FirstMisplaced(
        AT(value4, 4), AT(acquisitionTime, 8), AT(recordingDurationMs, 16), AT(patientId, 20),
        AT(patientName, 36), AT(street, 66), AT(city, 130), AT(state, 162), AT(postalCode, 170),
        AT(birthDate, 182), AT(text186, 186), AT(confirmedBy, 218), AT(sex, 258), AT(ageDays, 260),
        AT(weight, 262), AT(height, 264), AT(race, 266), AT(text268, 268), AT(text332, 332), AT(text844, 844),
        AT(text1356, 1356), AT(interpretationText, 1868), AT(reportState, 5964), AT(overreadBy, 5965),
        AT(originalTime, 6030), AT(overreadTime, 6038), AT(confirmedTime, 6046), AT(text6054, 6054),
        AT(value6118, 6118), AT(clinicalFlags, 6120), AT(clinicalDate, 6126), AT(text6130, 6130),
        AT(metricUnits, 6142), AT(bloodPressure, 6144), AT(heartRate, 6148), AT(value6152, 6152),
        AT(value6156, 6156), AT(text6160, 6160), AT(text6192, 6192), AT(text6224, 6224), AT(text6288, 6288),
        AT(text6320, 6320), AT(deviceName, 6352), AT(deviceSerial, 6416), AT(deviceRevision, 6480),
        AT(values6544, 6544), AT(value6556, 6556), AT(value6560, 6560), AT(filterFlags, 6564),
        AT(text6570, 6570), AT(originalBy, 7082), AT(text7146, 7146), AT(targetHeartRate, 7180),
        AT(exerciseDevice, 7184), AT(metricSpeed, 7188), AT(text7189, 7189), AT(value7384, 7384),
        AT(exerciseTimeMs, 7388), AT(values7392, 7392), AT(maxHeartRate, 7400), AT(value7404, 7404),
        AT(peakBloodPressure, 7408), AT(value7412, 7412), AT(value7416, 7416), AT(value7420, 7420),
        AT(peakMets, 7424), AT(value7428, 7428), AT(peakSpeed, 7432), AT(value7436, 7436),
        AT(peakGradeOrLoad, 7440), AT(values7444, 7444), AT(values7480, 7480), AT(text7492, 7492),
        AT(text7524, 7524), AT(testType, 7556), AT(modified, 7560), AT(currentAnnotation, 7564),
        AT(externalReview, 7568), AT(value7572, 7572), AT(lastChangeTime, 7576), AT(buffer7584, 7584),
        AT(ecg, 7588), AT(annotations, 7592), AT(annotations2, 7596), AT(object7600, 7600),
        AT(object7604, 7604), AT(episodeCount, 7608), AT(episodes, 7612), AT(blockCount, 8636),
        AT(blocks, 8640), AT(series, 9668), AT(series9796, 9796), AT(stageCount, 9800), AT(stages, 9804),
        AT(currentStage, 10828), AT(pressureCount, 10832), AT(pressures, 10836), AT(pressureSummary, 12884),
        AT(rawBlocks, 12888), AT(rawBlockCount, 13912), AT(holterData, 13916), AT(holterSummary, 13920),
        AT(spirometry, 13924), AT(history, 13928));
}
static_assert(sizeof(KxTestRecord) == KX_TEST_RECORD_SIZE &&
              MisplacedIn(static_cast<KxTestRecord*>(nullptr)) == 0);

consteval int MisplacedIn(const KxAnnotationStore*) {
    using R = KxAnnotationStore;
    return FirstMisplaced(AT(capacity, 0), AT(count, 4), AT(entries, 8), AT(modified, 12), AT(sampleRate, 16),
                          AT(resolutionNv, 20), AT(leadBeats, 24));
}
static_assert(sizeof(KxAnnotationStore) == 104 && MisplacedIn(static_cast<KxAnnotationStore*>(nullptr)) == 0);

consteval int MisplacedIn(const KxValueSeries*) {
    using R = KxValueSeries;
    return FirstMisplaced(AT(mark, 4), AT(count, 8), AT(points, 12));
}
static_assert(sizeof(KxValueSeries) == 16 && MisplacedIn(static_cast<KxValueSeries*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHistory*) {
    using R = KxHistory;
    return FirstMisplaced(AT(entries, 4));
}
static_assert(sizeof(KxHistory) == 8 && MisplacedIn(static_cast<KxHistory*>(nullptr)) == 0);

consteval int MisplacedIn(const KxLeadSlot*) {
    using R = KxLeadSlot;
    return FirstMisplaced(AT(sampleOffset, 4));
}
static_assert(sizeof(KxLeadSlot) == 8 && MisplacedIn(static_cast<KxLeadSlot*>(nullptr)) == 0);

consteval int MisplacedIn(const KxHostWindow*) {
    using R = KxHostWindow;
    return FirstMisplaced(AT(handle, 4));
}
static_assert(sizeof(KxHostWindow) == 8 && MisplacedIn(static_cast<KxHostWindow*>(nullptr)) == 0);

#endif

#undef AT

}  // namespace
