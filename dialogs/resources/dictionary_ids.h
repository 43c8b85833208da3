/* The ids of the dialog that maintains a statement file. */
#ifndef KX_DICTIONARY_IDS_H
#define KX_DICTIONARY_IDS_H

/* dialogs */
#define IDD_USER_DICTIONARY 20543

/* strings: why a text was refused, with %s for the mark in it */
#define IDS_DICT_CODE_MARK 4110
#define IDS_DICT_TAG 4111

/* controls; the buttons of the statements are made by the dialog, with ids from 100 on */
#define IDC_DICT_TEXT 31218
#define IDC_DICT_SECTION 33419
#define IDC_DICT_CODE 33852

#endif
