/* The ids of the pictures that tools/make_icons.py draws. */
#ifndef KX_PICTURE_IDS_H
#define KX_PICTURE_IDS_H

/* icons: the leads, in the order of their codes */
#define IDI_LEAD_I 20500
#define IDI_LEAD_II 20501
#define IDI_LEAD_III 20502
#define IDI_LEAD_AVR 20503
#define IDI_LEAD_AVL 20504
#define IDI_LEAD_AVF 20505
#define IDI_LEAD_V1 20506
#define IDI_LEAD_V2 20507
#define IDI_LEAD_V3 20508
#define IDI_LEAD_V4 20509
#define IDI_LEAD_V5 20510
#define IDI_LEAD_V6 20511

/* icons: buttons of the interpretation pane, and the images of its comment library in this order */
#define IDI_BUTTON_INSERT_LIBRARY_ENTRY 20512
#define IDI_BUTTON_INSERT_AUTOMATIC 20513
#define IDI_BUTTON_DICTIONARY 20514

/* bitmaps: the badges of the markers; "lead" are those of one lead, the others hold for all leads */
#define IDB_BADGE_QRS_ON 20520
#define IDB_BADGE_QRS_OFF 20521
#define IDB_BADGE_P_ON 20522
#define IDB_BADGE_P_OFF 20523
#define IDB_BADGE_T_OFF 20524
#define IDB_BADGE_Q_ON_LEAD 20525
#define IDB_BADGE_R_ON_LEAD 20526
#define IDB_BADGE_S_ON_LEAD 20527
#define IDB_BADGE_R_PRIME_ON_LEAD 20528
#define IDB_BADGE_S_PRIME_ON_LEAD 20529
#define IDB_BADGE_OFF_LEAD 20530
#define IDB_BADGE_T_ON_LEAD 20531
#define IDB_BADGE_T_PRIME_ON_LEAD 20532
#define IDB_BADGE_P_ON_LEAD 20533
#define IDB_BADGE_P_PRIME_ON_LEAD 20534

#endif
