/* kxdialogs.h - what a host of kxdialogs.dll includes. Plain C; 32-bit Windows, little-endian.
 *
 * The library shows ECG review dialogs on one test record at a time. A host loads the DLL, calls LIBSTART, opens panes
 * inside windows of its own and calls LIBSTOP at the end. All calls come from the host's user-interface thread.
 *
 * Every record below is shared by address: the library reads and changes it in place, keeps the address while a pane
 * is open, and never frees anything that the host allocated. Layouts are a contract: every field, reserved ones
 * included, keeps its place. Texts are zero-terminated 8-bit Windows-1252 in fixed arrays; the stated size includes
 * the terminator. Reserved bytes are kept as they are.
 */
#ifndef KXDIALOGS_H
#define KXDIALOGS_H

/* The version, here alone: the version records, the host and the archive for integrators take it from here. */
#define KX_VERSION_MAJOR 0
#define KX_VERSION_MINOR 5
#define KX_VERSION_PATCH 0
#define KX_VERSION_TEXT "0.5.0"

#ifndef RC_INVOKED

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define KX_CALL __stdcall
#else
#define KX_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- constants ---------------------------------------------------------------------------------------------- */

/* Lead codes. Lead indices 0 to 14 of a measurement set are the codes 0 to 14. */
enum {
    KX_LEAD_I = 0,
    KX_LEAD_II = 1,
    KX_LEAD_III = 2,
    KX_LEAD_AVR = 3,
    KX_LEAD_AVL = 4,
    KX_LEAD_AVF = 5,
    KX_LEAD_V1 = 6,
    KX_LEAD_V2 = 7,
    KX_LEAD_V3 = 8,
    KX_LEAD_V4 = 9,
    KX_LEAD_V5 = 10,
    KX_LEAD_V6 = 11,
    KX_LEAD_MINUS_AVR = 16, /* never stored: aVR with its sign inverted */
    KX_LEAD_EMPTY = 20      /* a lead slot that holds no lead */
};

enum { KX_STANDARD_LEADS = 12, KX_MEASURED_LEADS = 15, KX_LEAD_SLOTS = 24, KX_BEAT_LEADS = 20, KX_ST_LEVELS = 10 };

/* KxTestRecord.testType */
enum {
    KX_TEST_STRESS = 0,
    KX_TEST_NEW = 1,
    KX_TEST_RESTING = 2,
    KX_TEST_HIGH_RESOLUTION = 3,
    KX_TEST_HOLTER = 4,
    KX_TEST_ABPM = 5,
    KX_TEST_SPIROMETRY = 6
};

/* KxTestRecord.reportState */
enum {
    KX_REPORT_ORIGINAL = 0, /* not overread */
    KX_REPORT_OVERREAD = 1, /* not confirmed */
    KX_REPORT_CONFIRMED = 2,
    KX_REPORT_REVIEWED_OUTSIDE = 3 /* reviewed outside the suite */
};

/* KxTestRecord.sex; any other value is unknown */
enum { KX_SEX_UNKNOWN = 0, KX_SEX_MALE = 1, KX_SEX_FEMALE = 2 };

/* Global fiducial points that the reviewer placed by hand: globalManualFlags of lead block 0. Other bits are reserved. */
enum {
    KX_MANUAL_P_ON = 0x01,
    KX_MANUAL_P_OFF = 0x02,
    KX_MANUAL_QRS_ON = 0x04,
    KX_MANUAL_QRS_OFF = 0x08,
    KX_MANUAL_T_OFF = 0x10
};

/* Markers of one lead that the reviewer placed by hand: markerFlags of that lead's block. Bits 12 to 15 are reserved. */
enum {
    KX_MANUAL_LEAD_P_ON = 0x001,
    KX_MANUAL_LEAD_P_PRIME_ON = 0x002,
    KX_MANUAL_LEAD_P_OFF = 0x004,
    KX_MANUAL_LEAD_Q_ON = 0x008,
    KX_MANUAL_LEAD_R_ON = 0x010,
    KX_MANUAL_LEAD_S_ON = 0x020,
    KX_MANUAL_LEAD_R_PRIME_ON = 0x040,
    KX_MANUAL_LEAD_S_PRIME_ON = 0x080,
    KX_MANUAL_LEAD_QRS_OFF = 0x100,
    KX_MANUAL_LEAD_T_ON = 0x200,
    KX_MANUAL_LEAD_T_PRIME_ON = 0x400,
    KX_MANUAL_LEAD_T_OFF = 0x800
};

/* Sizes that the layouts fix, in bytes. */
enum {
    KX_TEST_RECORD_SIZE = 13932,
    KX_EPISODE_FIXED_SIZE = 3176, /* of an episode record; the samples follow in its serialized form */
    KX_MEASUREMENT_SET_SIZE = 1872,
    KX_INTERPRETATION_RESULT_SIZE = 1044,
    KX_EPISODE_FORMAT_VERSION = 5
};

/* ---- records ------------------------------------------------------------------------------------------------ */

/* A calendar time, 8 bytes. Valid when its year is greater than 1800. */
typedef struct KxDateTime {
    int16_t year;
    uint8_t day;   /* 1 to 31 */
    uint8_t month; /* 1 to 12 */
    uint8_t minute;
    uint8_t hour; /* 0 to 23 */
    uint8_t hundredths;
    uint8_t second;
} KxDateTime;

/* A date: the first four bytes of a KxDateTime. */
typedef struct KxDate {
    int16_t year;
    uint8_t day;
    uint8_t month;
} KxDate;

/* The measurements of one lead, 122 bytes. Amplitudes in microvolts (Q and S waves negative), times in milliseconds
 * from the start of the median beat, 0 = absent. The five global fiducial points (pOn, pOff, qrsOn, qrsOff, tOff)
 * stand in every block with the same values; block 0 is the one that is read. */
typedef struct KxLeadMeasurements {
    int16_t aP1;
    int16_t aP2;
    int16_t aR;
    int16_t aR1;
    uint16_t pOn; /* global P onset */
    int16_t aQ;
    uint16_t reserved12;
    int16_t aT1;
    int16_t aT2;
    int16_t aS;
    int16_t aS1;
    int16_t fieldValue251;
    uint16_t fieldValue263;
    uint16_t fieldValue275;
    uint8_t reserved28[4];
    uint16_t intrinsicoidDeflection; /* ms */
    uint8_t reserved34[4];
    uint16_t pOff;   /* global P offset */
    uint16_t qrsOn;  /* global QRS onset */
    uint16_t qrsOff; /* global QRS offset */
    int16_t reserved44;
    uint16_t tOff; /* global T offset */
    uint8_t reserved48[14];
    uint16_t tOnMarker;
    uint16_t tPrimeOnMarker;
    uint16_t tOffMarker;
    uint8_t reserved68[12];
    uint16_t markerFlags;       /* KX_MANUAL_LEAD_... */
    uint16_t globalManualFlags; /* KX_MANUAL_..., block 0 only */
    uint16_t pOnMarker;
    uint16_t pPrimeOnMarker;
    uint16_t pOffMarker;
    uint16_t qOnMarker;
    uint16_t rOnMarker;
    uint16_t sOnMarker;
    uint16_t rPrimeOnMarker;
    uint16_t sPrimeOnMarker;
    uint16_t qrsOffMarker;
    int16_t stLevel[KX_ST_LEVELS]; /* at 0, 10, ... 90 ms */
} KxLeadMeasurements;

/* The measurements of one median beat, 1872 bytes. Intervals and durations in ms, axes in degrees. */
typedef struct KxMeasurementSet {
    uint32_t size;     /* always 1872 */
    uint32_t measured; /* 0: the set holds no measurements */
    uint16_t pDuration;
    uint16_t prInterval;
    uint16_t qtInterval;
    uint16_t qtc;
    uint16_t qtcBazett;
    uint16_t reserved18;
    uint16_t qrsDuration;
    uint16_t rrInterval;
    uint32_t episodeTime; /* copy of the episode's endTimeMs */
    int16_t pAxis;
    int16_t qrsAxis;
    uint16_t reserved32;
    uint16_t reserved34;
    int16_t tAxis;
    uint8_t reserved38[4];
    KxLeadMeasurements leads[KX_MEASURED_LEADS];
} KxMeasurementSet;

/* What the interpretation engine answers, 1044 bytes. */
typedef struct KxInterpretationResult {
    uint32_t size; /* always 1044 */
    uint32_t resultTime;
    char text[1024];
    char code[4];
    uint32_t flags;
    uint32_t extra;
} KxInterpretationResult;

/* One lead slot of an episode: which lead, and where its samples begin in the sample area (in samples). */
typedef struct KxLeadSlot {
    uint32_t leadCode; /* KX_LEAD_EMPTY: no lead */
    uint32_t sampleOffset;
} KxLeadSlot;

/* A median beat, 3176 bytes, with its samples behind `samples`. Its serialized form is these bytes followed by the
 * samples. What is read behind `samples` is bounded by totalSize and the lead table together: a lead counts as absent
 * whose samples do not lie wholly within storedLeads x samplesPerLead samples, and every lead does while totalSize
 * covers fewer samples than that. The panes then show the paper without a trace, and the log says so. */
typedef struct KxEpisodeRecord {
    uint32_t totalSize;     /* 3176 + 2 x storedLeads x samplesPerLead */
    uint16_t checksum;      /* sum of all sample bytes, low 16 bits; checked in serialized form */
    uint16_t formatVersion; /* 5 */
    uint32_t storedLeads;
    uint32_t samplesPerLead;
    uint32_t leadConfiguration; /* 0 twelve leads, 1 three or four, 3 up to three, 4 none */
    uint32_t durationSeconds;
    uint32_t state;
    uint32_t sampleRate;   /* samples per second */
    uint32_t resolutionNv; /* nanovolts per sample unit */
    uint32_t value36;
    uint32_t endTimeMs; /* end of the episode within the recording */
    uint32_t value44;
    uint8_t reserved48[16];
    KxLeadSlot leadTable[KX_LEAD_SLOTS];
    int16_t* samples; /* meaningful in memory only; ignored in serialized form */
    KxMeasurementSet measurements;
    KxInterpretationResult interpretation;
} KxEpisodeRecord;

/* One entry of a test's change history, 44 bytes. */
typedef struct KxHistoryEntry {
    uint16_t year;
    uint8_t month;
    uint8_t day;
    uint8_t hour;
    uint8_t minute;
    uint16_t millisecondsInMinute;
    uint32_t action; /* 2: interpretation reviewed outside the suite */
    char user[32];
} KxHistoryEntry;

/* The change history: at most 16 entries. */
typedef struct KxHistory {
    uint32_t count;
    KxHistoryEntry* entries; /* room for 16; null: the history takes no entries */
} KxHistory;

/* One entry of an annotation store, 8 bytes: a beat or a marker of the recording. */
typedef struct KxAnnotation {
    uint32_t timeMs;    /* within the recording */
    uint8_t label;      /* 1 normal beat, 15 segment marker */
    int8_t subLabel;    /* class of a beat; of a segment marker: -3 start, -2 end */
    uint16_t heartRate; /* beats per minute at this beat, or another value of the label */
} KxAnnotation;

/* One beat in one lead, 20 bytes. Offsets are samples from the beat, at the store's sampleRate; amplitudes are units
 * of the store's resolutionNv. */
typedef struct KxLeadBeat {
    uint8_t widthHalf; /* half of a width of 0 to 255 */
    int8_t offset1;
    int8_t onsetOffset;
    uint8_t offset3;
    uint8_t offset4;
    uint8_t endOffset;
    int16_t amplitude1;
    int16_t value8;
    int16_t amplitude2;
    int16_t amplitude3;
    int16_t amplitude4;
    int16_t amplitude5;
    int16_t leadValue; /* 0: the beat is not valid in this lead */
} KxLeadBeat;

/* How an annotation store begins, for modules that only read it. */
typedef struct KxAnnotationStore {
    uint32_t capacity;
    uint32_t count;
    KxAnnotation* entries; /* count of them, in order of time; null: none */
    uint8_t modified;
    uint8_t reserved13[3];
    uint32_t sampleRate;   /* of the offsets of the lead beats, per second */
    uint32_t resolutionNv; /* of their amplitudes, nanovolts per unit */
    /* Slots 0 to 11 the twelve leads, 17 to 19 those of a three-channel recording; null: not in this store. Slots 17
     * to 19 have room for capacity beats, the others for at least the capacity that the store was made with. */
    KxLeadBeat* leadBeats[KX_BEAT_LEADS];
} KxAnnotationStore;

/* ---- sub-records of a test
 *
 * Each begins with its own size and the mark of its layout. What has another size or another mark is left
 * alone: its values count as not given. So does a value beyond its limit. Not given is 0 where nothing else
 * is said. */
enum {
    KX_MARK_SERIES = 0x4553584B,     /* "KXSE" */
    KX_MARK_STAGE = 0x5453584B,      /* "KXST" */
    KX_MARK_PRESSURE = 0x5042584B,   /* "KXBP" */
    KX_MARK_HOLTER = 0x4448584B,     /* "KXHD" */
    KX_MARK_SUMMARY = 0x5348584B,    /* "KXHS" */
    KX_MARK_SPIROMETRY = 0x5053584B, /* "KXSP" */

    KX_SERIES_POINTS = 86400, /* the most points of a series: one a second for a day */
    KX_ST_LIMIT = 10000,      /* the largest ST level of a stage, up or down: 100 mm */
    KX_NOT_REACHED = -1,      /* as uint32_t: a speed, grade, load or MET value that the test did not come to */
    KX_HOLTER_GROUPS = 12,
    KX_SPIROMETRY_VALUES = 42
};

typedef struct KxSeriesPoint {
    uint32_t timeMs; /* within the recording; in the series of a lead 0, 10, ... 90 from the QRS offset */
    int32_t value;
} KxSeriesPoint;

/* A value followed over the test, 16 bytes and its points. */
typedef struct KxValueSeries {
    uint32_t size;         /* always 16 */
    uint32_t mark;         /* KX_MARK_SERIES */
    uint32_t count;        /* at most KX_SERIES_POINTS; a larger count: the series is left alone */
    KxSeriesPoint* points; /* count of them, in order of time; null: none */
} KxValueSeries;

/* One stage of a stress test, 672 bytes. */
typedef struct KxStressStage {
    uint32_t size; /* always 672 */
    uint32_t mark; /* KX_MARK_STAGE */
    uint32_t number;
    char name[32];
    uint32_t startMs; /* within the recording */
    uint32_t durationMs;
    uint32_t speed;         /* hundredths of a mile per hour (treadmill) or of a revolution per minute (ergometer) */
    uint32_t gradeOrLoad;   /* tenths of a percent (treadmill) or of a watt (ergometer) */
    uint32_t mets;          /* tenths of a MET */
    uint32_t heartRate;     /* beats per minute */
    uint32_t bloodPressure; /* systolic << 16 | diastolic, mmHg */
    int32_t stLevel;        /* the most conspicuous ST level, hundredths of a millimetre, within +-KX_ST_LIMIT */
    uint32_t stTimeMs;      /* when, within the recording */
    uint32_t stLead;        /* where, a lead code of 0 to 11 */
    uint8_t reserved84[588];
} KxStressStage;

/* One reading of ambulatory blood pressure, or the summary of all, 2176 bytes. Pressures in mmHg. */
typedef struct KxPressureReading {
    uint32_t size; /* always 2176 */
    uint32_t mark; /* KX_MARK_PRESSURE */
    KxDateTime time;
    uint32_t systolic;
    uint32_t diastolic;
    uint32_t mean;
    uint32_t heartRate; /* beats per minute */
    char remark[64];
    uint8_t reserved96[2080];
} KxPressureReading;

/* What a Holter recording's analysis found, 40 bytes. Heart rates in beats per minute, times within the
 * recording. */
typedef struct KxHolterData {
    uint32_t size; /* always 40 */
    uint32_t mark; /* KX_MARK_HOLTER */
    uint32_t meanHeartRate;
    uint32_t minHeartRate;
    uint32_t minHeartRateMs;
    uint32_t maxHeartRate;
    uint32_t maxHeartRateMs;
    uint32_t hasCurrentEvent; /* nonzero: the two below are those of the event under review */
    uint32_t eventStartMs;
    uint32_t eventEndMs;
} KxHolterData;

/* One group of the Holter summary: two values and the range between them, shown as whole numbers of 32 bits. */
typedef struct KxHolterGroup {
    double first;
    double second;
    uint8_t reserved16[16];
} KxHolterGroup;

/* 440 bytes. */
typedef struct KxHolterSummary {
    uint32_t size; /* always 440 */
    uint32_t mark; /* KX_MARK_SUMMARY */
    KxHolterGroup groups[KX_HOLTER_GROUPS];
    uint8_t reserved392[48];
} KxHolterSummary;

/* The results of a spirometry, 424 bytes. */
typedef struct KxSpirometry {
    uint32_t size;         /* always 424 */
    uint32_t mark;         /* KX_MARK_SPIROMETRY */
    uint32_t predictedSet; /* which set of predicted values, 0 to 9 */
    uint32_t reserved12;
    double values[KX_SPIROMETRY_VALUES]; /* litres, litres per second or percent, below a million */
    uint8_t reserved352[72];
} KxSpirometry;

/* A block that a test carries without looking into it, 6264 bytes. */
typedef struct KxRawBlock {
    uint8_t bytes[6264];
} KxRawBlock;

/* One ECG test, 13932 bytes. Names that carry a number are fields whose meaning this library does not use.
 * Sub-objects that the host put behind the pointers stay the host's. */
typedef struct KxTestRecord {
    uint32_t reserved0;
    uint32_t value4;
    KxDateTime acquisitionTime;
    uint32_t recordingDurationMs;
    char patientId[16];
    char patientName[30]; /* last^first^middle^ */
    char street[64];
    char city[32];
    char state[8];
    char postalCode[12];
    KxDate birthDate;
    char text186[32];
    char confirmedBy[39];
    uint8_t reserved257;
    uint16_t sex;
    uint16_t ageDays;
    uint16_t weight; /* hundredths of a pound; below 100: not given */
    uint16_t height; /* hundredths of an inch; below 100: not given */
    uint16_t race;
    char text268[64];
    char text332[512];
    char text844[512];
    char text1356[512];
    char interpretationText[4096]; /* lines separated by CR LF */
    uint8_t reportState;           /* KX_REPORT_... */
    char overreadBy[64];
    uint8_t reserved6029;
    KxDateTime originalTime;
    KxDateTime overreadTime;
    KxDateTime confirmedTime;
    char text6054[64];
    uint16_t value6118;
    uint8_t clinicalFlags[5];
    uint8_t reserved6125;
    KxDate clinicalDate;
    char text6130[12];
    uint8_t metricUnits; /* 1: weight and height in kg and cm */
    uint8_t reserved6143;
    uint32_t bloodPressure; /* systolic << 16 | diastolic; 0: not given */
    uint32_t heartRate;     /* beats per minute */
    uint32_t value6152;
    uint32_t value6156;
    char text6160[32];
    char text6192[32];
    char text6224[64];
    char text6288[32];
    char text6320[32];
    char deviceName[64];
    char deviceSerial[64];
    char deviceRevision[64];
    uint32_t values6544[3];
    uint32_t value6556;
    uint32_t value6560;
    uint32_t filterFlags; /* bit 0: 60 Hz, 1: 50 Hz, 2: artifact filter, 3: baseline, 6 and 7: artifact variants */
    uint16_t reserved6568;
    char text6570[512];
    char originalBy[64];
    char text7146[32];
    uint16_t reserved7178;
    uint32_t targetHeartRate;
    uint32_t exerciseDevice; /* 0 treadmill, 1 ergometer */
    uint8_t metricSpeed;
    char text7189[3][64];
    uint8_t reserved7381[3];
    uint32_t value7384;
    uint32_t exerciseTimeMs;
    uint32_t values7392[2];
    uint32_t maxHeartRate;
    uint32_t value7404;
    uint32_t peakBloodPressure;
    uint32_t value7412;
    uint32_t value7416;
    uint32_t value7420;
    uint32_t peakMets; /* tenths of a MET */
    uint32_t value7428;
    uint32_t peakSpeed; /* hundredths of a mile per hour or of a revolution per minute */
    uint32_t value7436;
    uint32_t peakGradeOrLoad; /* tenths of a percent or of a watt */
    uint32_t values7444[9];
    uint32_t values7480[3];
    char text7492[32];
    char text7524[32];
    uint32_t testType; /* KX_TEST_... */
    uint8_t modified;  /* set by a changed text, patient, overread time or physician; not by markers, the reviewer's
                       * name, the confirmed state or its time: a host that asks for changes compares these itself */
    uint8_t reserved7561[3];
    uint32_t currentAnnotation;
    uint8_t externalReview;
    uint8_t reserved7569[3];
    uint32_t value7572;
    KxDateTime lastChangeTime;
    void* buffer7584;
    void* ecg; /* the recorded signal; its contents are not read here */
    KxAnnotationStore* annotations;
    KxAnnotationStore* annotations2;
    void* object7600;
    void* object7604;
    uint32_t episodeCount; /* at most 256 */
    KxEpisodeRecord* episodes[256];
    uint32_t blockCount;
    void* blocks[256];
    uint32_t reserved9664;
    KxValueSeries* series[32]; /* one a code from -7 to 24, in slot code + 7: -7 the heart rate, -6 and -5 the
                                * systolic and the diastolic pressure, 0 to 11 the ST levels of that lead */
    KxValueSeries* series9796;
    uint32_t stageCount; /* at most 256 */
    KxStressStage* stages[256];
    KxStressStage* currentStage;
    uint32_t pressureCount; /* at most 512 */
    KxPressureReading* pressures[512];
    KxPressureReading* pressureSummary;
    KxRawBlock* rawBlocks[256];
    uint32_t rawBlockCount; /* at most 256 */
    KxHolterData* holterData;
    KxHolterSummary* holterSummary;
    KxSpirometry* spirometry;
    KxHistory* history;
} KxTestRecord;

/* The summary of one test for lists of tests, 33352 bytes. */
typedef struct KxTestListEntry {
    uint32_t reserved0[2];
    uint32_t value4;
    KxDateTime acquisitionTime;
    char text6570[504];
    KxDateTime lastChangeTime;
    char patientId[16];
    char sortName[26]; /* "last, first middle" */
    uint8_t reserved574[2];
    uint32_t stateFlags; /* bit 0 overread, 1 confirmed, 2 reviewed outside */
    uint32_t testType;
    uint8_t reserved584[32768];
} KxTestListEntry;

/* ---- the library -------------------------------------------------------------------------------------------- */

/* The host's own window object, of which the library reads one word: the second, the window handle (a 32-bit HWND). */
typedef struct KxHostWindow {
    void* hostsOwn; /* never read */
    void* handle;
} KxHostWindow;

/* A rectangle relative to the top-left corner of the parent window, pixels. */
typedef struct KxRect {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
} KxRect;

/* Use of the library, counted: the first LIBSTART makes it ready, the LIBSTOP that matches it ends its use, and with it
 * every pane and editor that is still open, as if the host had destroyed its window. */
void KX_CALL LIBSTART(void);
void KX_CALL LIBSTOP(void);

/* Each opens one dialog as a child pane of the parent's window and returns its handle, or 0 when no dialog was made
 * (the library is not started, an argument is null, or memory is short; the reason is in the suite's log). The second
 * word of the object behind the handle is the pane's window handle, 0 when the record has no median beat to show.
 * The pane belongs to its window: the host ends it by destroying that window (or the parent's) and must not use the
 * handle afterwards. It may do so at any time, also within a notice of the pane or a call that the pane makes into
 * another module; a pane that is ended while it opens gives 0. The record must outlive the pane's window, the parent
 * object need not. Some panes take IDOK and IDCANCEL for their end and are hidden, so a message loop that calls
 * IsDialogMessage keeps Enter and Esc from them. */
uint32_t KX_CALL TABLEDIALOG(KxHostWindow* parent, KxTestRecord* test);
uint32_t KX_CALL GENERALMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test);
uint32_t KX_CALL PMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test);
uint32_t KX_CALL QRSMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test);
uint32_t KX_CALL TMORPHDIALOG(KxHostWindow* parent, KxTestRecord* test);
uint32_t KX_CALL HYPERTROPHYDIALOG(KxHostWindow* parent, KxTestRecord* test);

/* hostOptions: non-null, kept while the pane is open; its first 32-bit word, when 2, leaves out the automatic
 * interpretation of a resting test. After each change the pane sends its parent window WM_USER with 1024, 1024. */
uint32_t KX_CALL INTERPRETATIONDIALOG(KxHostWindow* parent, KxTestRecord* test, void* hostOptions);

/* Runs modally at `area`. mode 0 edits the interpretation statement, mode 1 sets the confirming physician.
 * Returns 1 when the user ended it with OK, else 0. */
uint32_t KX_CALL EDITINTERPRETATION(KxHostWindow* parent, KxTestRecord* test, const KxRect* area, uint32_t mode);

#ifdef __cplusplus
}
#endif

#endif /* RC_INVOKED */

#endif
