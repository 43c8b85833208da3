// The layouts that the library shares with its host and the modules of the suite: every field at its place.
#include <cstddef>

#include "include/kxdialogs.h"

namespace {

#define KX_FIELD(record, field, offset) static_assert(offsetof(record, field) == (offset), #field)

static_assert(sizeof(KxDateTime) == 8 && sizeof(KxDate) == 4);
KX_FIELD(KxDateTime, year, 0);
KX_FIELD(KxDateTime, day, 2);
KX_FIELD(KxDateTime, month, 3);
KX_FIELD(KxDateTime, minute, 4);
KX_FIELD(KxDateTime, hour, 5);
KX_FIELD(KxDateTime, hundredths, 6);
KX_FIELD(KxDateTime, second, 7);
KX_FIELD(KxDate, year, 0);
KX_FIELD(KxDate, day, 2);
KX_FIELD(KxDate, month, 3);

static_assert(sizeof(KxLeadMeasurements) == 122);
KX_FIELD(KxLeadMeasurements, aP1, 0);
KX_FIELD(KxLeadMeasurements, aP2, 2);
KX_FIELD(KxLeadMeasurements, aR, 4);
KX_FIELD(KxLeadMeasurements, aR1, 6);
KX_FIELD(KxLeadMeasurements, pOn, 8);
KX_FIELD(KxLeadMeasurements, aQ, 10);
KX_FIELD(KxLeadMeasurements, aT1, 14);
KX_FIELD(KxLeadMeasurements, aT2, 16);
KX_FIELD(KxLeadMeasurements, aS, 18);
KX_FIELD(KxLeadMeasurements, aS1, 20);
KX_FIELD(KxLeadMeasurements, fieldValue251, 22);
KX_FIELD(KxLeadMeasurements, fieldValue263, 24);
KX_FIELD(KxLeadMeasurements, fieldValue275, 26);
KX_FIELD(KxLeadMeasurements, intrinsicoidDeflection, 32);
KX_FIELD(KxLeadMeasurements, pOff, 38);
KX_FIELD(KxLeadMeasurements, qrsOn, 40);
KX_FIELD(KxLeadMeasurements, qrsOff, 42);
KX_FIELD(KxLeadMeasurements, tOff, 46);
KX_FIELD(KxLeadMeasurements, tOnMarker, 62);
KX_FIELD(KxLeadMeasurements, tPrimeOnMarker, 64);
KX_FIELD(KxLeadMeasurements, tOffMarker, 66);
KX_FIELD(KxLeadMeasurements, markerFlags, 80);
KX_FIELD(KxLeadMeasurements, globalManualFlags, 82);
KX_FIELD(KxLeadMeasurements, pOnMarker, 84);
KX_FIELD(KxLeadMeasurements, pPrimeOnMarker, 86);
KX_FIELD(KxLeadMeasurements, pOffMarker, 88);
KX_FIELD(KxLeadMeasurements, qOnMarker, 90);
KX_FIELD(KxLeadMeasurements, rOnMarker, 92);
KX_FIELD(KxLeadMeasurements, sOnMarker, 94);
KX_FIELD(KxLeadMeasurements, rPrimeOnMarker, 96);
KX_FIELD(KxLeadMeasurements, sPrimeOnMarker, 98);
KX_FIELD(KxLeadMeasurements, qrsOffMarker, 100);
KX_FIELD(KxLeadMeasurements, stLevel, 102);

static_assert(sizeof(KxMeasurementSet) == KX_MEASUREMENT_SET_SIZE);
KX_FIELD(KxMeasurementSet, size, 0);
KX_FIELD(KxMeasurementSet, measured, 4);
KX_FIELD(KxMeasurementSet, pDuration, 8);
KX_FIELD(KxMeasurementSet, prInterval, 10);
KX_FIELD(KxMeasurementSet, qtInterval, 12);
KX_FIELD(KxMeasurementSet, qtc, 14);
KX_FIELD(KxMeasurementSet, qtcBazett, 16);
KX_FIELD(KxMeasurementSet, qrsDuration, 20);
KX_FIELD(KxMeasurementSet, rrInterval, 22);
KX_FIELD(KxMeasurementSet, episodeTime, 24);
KX_FIELD(KxMeasurementSet, pAxis, 28);
KX_FIELD(KxMeasurementSet, qrsAxis, 30);
KX_FIELD(KxMeasurementSet, tAxis, 36);
KX_FIELD(KxMeasurementSet, leads, 42);
// The global points and flags, seen from the start of the set.
KX_FIELD(KxMeasurementSet, leads[0].pOn, 50);
KX_FIELD(KxMeasurementSet, leads[0].pOff, 80);
KX_FIELD(KxMeasurementSet, leads[0].qrsOn, 82);
KX_FIELD(KxMeasurementSet, leads[0].qrsOff, 84);
KX_FIELD(KxMeasurementSet, leads[0].tOff, 88);
KX_FIELD(KxMeasurementSet, leads[0].globalManualFlags, 124);

static_assert(sizeof(KxInterpretationResult) == KX_INTERPRETATION_RESULT_SIZE);
KX_FIELD(KxInterpretationResult, size, 0);
KX_FIELD(KxInterpretationResult, resultTime, 4);
KX_FIELD(KxInterpretationResult, text, 8);
KX_FIELD(KxInterpretationResult, code, 1032);
KX_FIELD(KxInterpretationResult, flags, 1036);
KX_FIELD(KxInterpretationResult, extra, 1040);

static_assert(sizeof(KxHistoryEntry) == 44);
KX_FIELD(KxHistoryEntry, year, 0);
KX_FIELD(KxHistoryEntry, month, 2);
KX_FIELD(KxHistoryEntry, day, 3);
KX_FIELD(KxHistoryEntry, hour, 4);
KX_FIELD(KxHistoryEntry, minute, 5);
KX_FIELD(KxHistoryEntry, millisecondsInMinute, 6);
KX_FIELD(KxHistoryEntry, action, 8);
KX_FIELD(KxHistoryEntry, user, 12);

static_assert(sizeof(KxAnnotation) == 8);
KX_FIELD(KxAnnotation, timeMs, 0);
KX_FIELD(KxAnnotation, label, 4);
KX_FIELD(KxAnnotation, subLabel, 5);
KX_FIELD(KxAnnotation, heartRate, 6);

static_assert(sizeof(KxLeadBeat) == 20);
KX_FIELD(KxLeadBeat, widthHalf, 0);
KX_FIELD(KxLeadBeat, offset1, 1);
KX_FIELD(KxLeadBeat, onsetOffset, 2);
KX_FIELD(KxLeadBeat, offset3, 3);
KX_FIELD(KxLeadBeat, offset4, 4);
KX_FIELD(KxLeadBeat, endOffset, 5);
KX_FIELD(KxLeadBeat, amplitude1, 6);
KX_FIELD(KxLeadBeat, value8, 8);
KX_FIELD(KxLeadBeat, amplitude2, 10);
KX_FIELD(KxLeadBeat, amplitude3, 12);
KX_FIELD(KxLeadBeat, amplitude4, 14);
KX_FIELD(KxLeadBeat, amplitude5, 16);
KX_FIELD(KxLeadBeat, leadValue, 18);

static_assert(sizeof(KxTestListEntry) == 33352);
KX_FIELD(KxTestListEntry, value4, 8);
KX_FIELD(KxTestListEntry, acquisitionTime, 12);
KX_FIELD(KxTestListEntry, text6570, 20);
KX_FIELD(KxTestListEntry, lastChangeTime, 524);
KX_FIELD(KxTestListEntry, patientId, 532);
KX_FIELD(KxTestListEntry, sortName, 548);
KX_FIELD(KxTestListEntry, stateFlags, 576);
KX_FIELD(KxTestListEntry, testType, 580);
KX_FIELD(KxTestListEntry, reserved584, 584);

static_assert(sizeof(KxSeriesPoint) == 8 && sizeof(KxRawBlock) == 6264);
static_assert(sizeof(KxStressStage) == 672);
KX_FIELD(KxStressStage, mark, 4);
KX_FIELD(KxStressStage, number, 8);
KX_FIELD(KxStressStage, name, 12);
KX_FIELD(KxStressStage, startMs, 44);
KX_FIELD(KxStressStage, durationMs, 48);
KX_FIELD(KxStressStage, speed, 52);
KX_FIELD(KxStressStage, gradeOrLoad, 56);
KX_FIELD(KxStressStage, mets, 60);
KX_FIELD(KxStressStage, heartRate, 64);
KX_FIELD(KxStressStage, bloodPressure, 68);
KX_FIELD(KxStressStage, stLevel, 72);
KX_FIELD(KxStressStage, stTimeMs, 76);
KX_FIELD(KxStressStage, stLead, 80);
KX_FIELD(KxStressStage, reserved84, 84);

static_assert(sizeof(KxPressureReading) == 2176);
KX_FIELD(KxPressureReading, mark, 4);
KX_FIELD(KxPressureReading, time, 8);
KX_FIELD(KxPressureReading, systolic, 16);
KX_FIELD(KxPressureReading, diastolic, 20);
KX_FIELD(KxPressureReading, mean, 24);
KX_FIELD(KxPressureReading, heartRate, 28);
KX_FIELD(KxPressureReading, remark, 32);
KX_FIELD(KxPressureReading, reserved96, 96);

static_assert(sizeof(KxHolterData) == 40);
KX_FIELD(KxHolterData, mark, 4);
KX_FIELD(KxHolterData, meanHeartRate, 8);
KX_FIELD(KxHolterData, minHeartRate, 12);
KX_FIELD(KxHolterData, minHeartRateMs, 16);
KX_FIELD(KxHolterData, maxHeartRate, 20);
KX_FIELD(KxHolterData, maxHeartRateMs, 24);
KX_FIELD(KxHolterData, hasCurrentEvent, 28);
KX_FIELD(KxHolterData, eventStartMs, 32);
KX_FIELD(KxHolterData, eventEndMs, 36);

static_assert(sizeof(KxHolterSummary) == 440 && sizeof(KxHolterGroup) == 32);
KX_FIELD(KxHolterSummary, mark, 4);
KX_FIELD(KxHolterSummary, groups, 8);
KX_FIELD(KxHolterGroup, second, 8);
KX_FIELD(KxHolterSummary, reserved392, 392);

static_assert(sizeof(KxSpirometry) == 424);
KX_FIELD(KxSpirometry, mark, 4);
KX_FIELD(KxSpirometry, predictedSet, 8);
KX_FIELD(KxSpirometry, values, 16);
KX_FIELD(KxSpirometry, reserved352, 352);

// These hold pointers, so their layout is that of the 32-bit library alone.
#if UINTPTR_MAX == UINT32_MAX
static_assert(sizeof(KxEpisodeRecord) == KX_EPISODE_FIXED_SIZE);
KX_FIELD(KxEpisodeRecord, totalSize, 0);
KX_FIELD(KxEpisodeRecord, checksum, 4);
KX_FIELD(KxEpisodeRecord, formatVersion, 6);
KX_FIELD(KxEpisodeRecord, storedLeads, 8);
KX_FIELD(KxEpisodeRecord, samplesPerLead, 12);
KX_FIELD(KxEpisodeRecord, leadConfiguration, 16);
KX_FIELD(KxEpisodeRecord, durationSeconds, 20);
KX_FIELD(KxEpisodeRecord, state, 24);
KX_FIELD(KxEpisodeRecord, sampleRate, 28);
KX_FIELD(KxEpisodeRecord, resolutionNv, 32);
KX_FIELD(KxEpisodeRecord, value36, 36);
KX_FIELD(KxEpisodeRecord, endTimeMs, 40);
KX_FIELD(KxEpisodeRecord, value44, 44);
KX_FIELD(KxEpisodeRecord, leadTable, 64);
KX_FIELD(KxEpisodeRecord, samples, 256);
KX_FIELD(KxEpisodeRecord, measurements, 260);
KX_FIELD(KxEpisodeRecord, interpretation, 2132);

static_assert(sizeof(KxTestRecord) == KX_TEST_RECORD_SIZE);
KX_FIELD(KxTestRecord, value4, 4);
KX_FIELD(KxTestRecord, acquisitionTime, 8);
KX_FIELD(KxTestRecord, recordingDurationMs, 16);
KX_FIELD(KxTestRecord, patientId, 20);
KX_FIELD(KxTestRecord, patientName, 36);
KX_FIELD(KxTestRecord, street, 66);
KX_FIELD(KxTestRecord, city, 130);
KX_FIELD(KxTestRecord, state, 162);
KX_FIELD(KxTestRecord, postalCode, 170);
KX_FIELD(KxTestRecord, birthDate, 182);
KX_FIELD(KxTestRecord, text186, 186);
KX_FIELD(KxTestRecord, confirmedBy, 218);
KX_FIELD(KxTestRecord, sex, 258);
KX_FIELD(KxTestRecord, ageDays, 260);
KX_FIELD(KxTestRecord, weight, 262);
KX_FIELD(KxTestRecord, height, 264);
KX_FIELD(KxTestRecord, race, 266);
KX_FIELD(KxTestRecord, text268, 268);
KX_FIELD(KxTestRecord, text332, 332);
KX_FIELD(KxTestRecord, text844, 844);
KX_FIELD(KxTestRecord, text1356, 1356);
KX_FIELD(KxTestRecord, interpretationText, 1868);
KX_FIELD(KxTestRecord, reportState, 5964);
KX_FIELD(KxTestRecord, overreadBy, 5965);
KX_FIELD(KxTestRecord, originalTime, 6030);
KX_FIELD(KxTestRecord, overreadTime, 6038);
KX_FIELD(KxTestRecord, confirmedTime, 6046);
KX_FIELD(KxTestRecord, text6054, 6054);
KX_FIELD(KxTestRecord, value6118, 6118);
KX_FIELD(KxTestRecord, clinicalFlags, 6120);
KX_FIELD(KxTestRecord, clinicalDate, 6126);
KX_FIELD(KxTestRecord, text6130, 6130);
KX_FIELD(KxTestRecord, metricUnits, 6142);
KX_FIELD(KxTestRecord, bloodPressure, 6144);
KX_FIELD(KxTestRecord, heartRate, 6148);
KX_FIELD(KxTestRecord, value6152, 6152);
KX_FIELD(KxTestRecord, value6156, 6156);
KX_FIELD(KxTestRecord, text6160, 6160);
KX_FIELD(KxTestRecord, text6192, 6192);
KX_FIELD(KxTestRecord, text6224, 6224);
KX_FIELD(KxTestRecord, text6288, 6288);
KX_FIELD(KxTestRecord, text6320, 6320);
KX_FIELD(KxTestRecord, deviceName, 6352);
KX_FIELD(KxTestRecord, deviceSerial, 6416);
KX_FIELD(KxTestRecord, deviceRevision, 6480);
KX_FIELD(KxTestRecord, values6544, 6544);
KX_FIELD(KxTestRecord, value6556, 6556);
KX_FIELD(KxTestRecord, value6560, 6560);
KX_FIELD(KxTestRecord, filterFlags, 6564);
KX_FIELD(KxTestRecord, text6570, 6570);
KX_FIELD(KxTestRecord, originalBy, 7082);
KX_FIELD(KxTestRecord, text7146, 7146);
KX_FIELD(KxTestRecord, targetHeartRate, 7180);
KX_FIELD(KxTestRecord, exerciseDevice, 7184);
KX_FIELD(KxTestRecord, metricSpeed, 7188);
KX_FIELD(KxTestRecord, text7189, 7189);
KX_FIELD(KxTestRecord, value7384, 7384);
KX_FIELD(KxTestRecord, exerciseTimeMs, 7388);
KX_FIELD(KxTestRecord, values7392, 7392);
KX_FIELD(KxTestRecord, maxHeartRate, 7400);
KX_FIELD(KxTestRecord, value7404, 7404);
KX_FIELD(KxTestRecord, peakBloodPressure, 7408);
KX_FIELD(KxTestRecord, value7412, 7412);
KX_FIELD(KxTestRecord, value7416, 7416);
KX_FIELD(KxTestRecord, value7420, 7420);
KX_FIELD(KxTestRecord, peakMets, 7424);
KX_FIELD(KxTestRecord, value7428, 7428);
KX_FIELD(KxTestRecord, peakSpeed, 7432);
KX_FIELD(KxTestRecord, value7436, 7436);
KX_FIELD(KxTestRecord, peakGradeOrLoad, 7440);
KX_FIELD(KxTestRecord, values7444, 7444);
KX_FIELD(KxTestRecord, values7480, 7480);
KX_FIELD(KxTestRecord, text7492, 7492);
KX_FIELD(KxTestRecord, text7524, 7524);
KX_FIELD(KxTestRecord, testType, 7556);
KX_FIELD(KxTestRecord, modified, 7560);
KX_FIELD(KxTestRecord, currentAnnotation, 7564);
KX_FIELD(KxTestRecord, externalReview, 7568);
KX_FIELD(KxTestRecord, value7572, 7572);
KX_FIELD(KxTestRecord, lastChangeTime, 7576);
KX_FIELD(KxTestRecord, buffer7584, 7584);
KX_FIELD(KxTestRecord, ecg, 7588);
KX_FIELD(KxTestRecord, annotations, 7592);
KX_FIELD(KxTestRecord, annotations2, 7596);
KX_FIELD(KxTestRecord, object7600, 7600);
KX_FIELD(KxTestRecord, object7604, 7604);
KX_FIELD(KxTestRecord, episodeCount, 7608);
KX_FIELD(KxTestRecord, episodes, 7612);
KX_FIELD(KxTestRecord, blockCount, 8636);
KX_FIELD(KxTestRecord, blocks, 8640);
KX_FIELD(KxTestRecord, series, 9668);
KX_FIELD(KxTestRecord, series9796, 9796);
KX_FIELD(KxTestRecord, stageCount, 9800);
KX_FIELD(KxTestRecord, stages, 9804);
KX_FIELD(KxTestRecord, currentStage, 10828);
KX_FIELD(KxTestRecord, pressureCount, 10832);
KX_FIELD(KxTestRecord, pressures, 10836);
KX_FIELD(KxTestRecord, pressureSummary, 12884);
KX_FIELD(KxTestRecord, rawBlocks, 12888);
KX_FIELD(KxTestRecord, rawBlockCount, 13912);
KX_FIELD(KxTestRecord, holterData, 13916);
KX_FIELD(KxTestRecord, holterSummary, 13920);
KX_FIELD(KxTestRecord, spirometry, 13924);
KX_FIELD(KxTestRecord, history, 13928);

static_assert(sizeof(KxAnnotationStore) == 104);
KX_FIELD(KxAnnotationStore, capacity, 0);
KX_FIELD(KxAnnotationStore, count, 4);
KX_FIELD(KxAnnotationStore, entries, 8);
KX_FIELD(KxAnnotationStore, modified, 12);
KX_FIELD(KxAnnotationStore, sampleRate, 16);
KX_FIELD(KxAnnotationStore, resolutionNv, 20);
KX_FIELD(KxAnnotationStore, leadBeats, 24);

static_assert(sizeof(KxValueSeries) == 16);
KX_FIELD(KxValueSeries, mark, 4);
KX_FIELD(KxValueSeries, count, 8);
KX_FIELD(KxValueSeries, points, 12);

static_assert(sizeof(KxHistory) == 8 && sizeof(KxLeadSlot) == 8);
KX_FIELD(KxHistory, entries, 4);
KX_FIELD(KxLeadSlot, sampleOffset, 4);
KX_FIELD(KxHostWindow, handle, 4);
static_assert(sizeof(KxRect) == 16);
#endif

#undef KX_FIELD

}  // namespace
