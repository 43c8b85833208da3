/* The ids of the library's resources, for the resource compiler and for the code. Dialogs, controls and
 * strings are named after what they are; their numbers are known to the host's users (help contexts,
 * translators) and stay. */
#ifndef KX_RESOURCE_IDS_H
#define KX_RESOURCE_IDS_H

/* strings; the statements of the automatic interpretation are known by their codes alone (statements.rc) */
#define IDS_SEX_PICK_LIST 913
#define IDS_REPORT_STATES 914
#define IDS_CLINICAL_FLAG_1 959
#define IDS_CLINICAL_FLAG_2 960
#define IDS_CLINICAL_FLAG_3 961
#define IDS_CLINICAL_FLAG_4 962
#define IDS_RACE_PICK_LIST 963
#define IDS_CLINICAL_FLAG_5 964
#define IDS_MEASUREMENT_COLUMNS 4102

/* dialogs */
#define IDD_HYPERTROPHY 20548

/* IDD_HYPERTROPHY: voltages (microvolts) */
#define IDC_HYP_R_V5 59000
#define IDC_HYP_R_V6 59001
#define IDC_HYP_SOKOLOW_LYON 59002
#define IDC_HYP_R_AVL 59003
#define IDC_HYP_S_V3 59004
#define IDC_HYP_SEX 59005
#define IDC_HYP_S_V1 59006
#define IDC_HYP_CORNELL 59007
/* group 1, amplitude */
#define IDC_HYP_LIMB_AMPLITUDE 59008
#define IDC_HYP_PRECORDIAL_S 59009
#define IDC_HYP_PRECORDIAL_R 59010
#define IDC_HYP_AMPLITUDE_POINTS 59011
/* group 2, ST */
#define IDC_HYP_ST_POINTS 59012
#define IDC_HYP_OPPOSED_ST 59013
#define IDC_HYP_STRAIN_DIGITALIS 59014
/* group 3, axis */
#define IDC_HYP_LEFT_AXIS 59015
#define IDC_HYP_AXIS_POINTS 59016
/* group 4, durations */
#define IDC_HYP_LONG_QRS 59017
#define IDC_HYP_DURATION_POINTS 59018
#define IDC_HYP_LATE_INTRINSICOID 59019
/* group 5, left atrium */
#define IDC_HYP_LEFT_ATRIUM 59020
#define IDC_HYP_ATRIUM_POINTS 59021
#define IDC_HYP_TOTAL_POINTS 59022

/* strings: what is said where the help cannot be opened */
#define IDS_NO_HELP 4116

#endif
