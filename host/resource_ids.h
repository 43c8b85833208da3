/* Numbers of the workstation's resources, commands and child windows; the tests use them too. */
#ifndef KX_HOST_RESOURCE_IDS_H
#define KX_HOST_RESOURCE_IDS_H

#define IDI_WORKSTATION 1
#define IDR_MENU 2
#define IDR_ACCELERATORS 3

#define IDM_FILE_OPEN 101
#define IDM_FILE_BUILTIN 102
#define IDM_FILE_SAVE_EPISODE 103
#define IDM_FILE_SAVE_PICTURE 104
#define IDM_FILE_EXIT 105
#define IDM_FILE_EXPORT_TABLE 106

/* One command per tab, in tab order. */
#define IDM_VIEW_FIRST_PANE 110
#define IDM_VIEW_LAST_PANE 117
#define IDM_VIEW_REFRESH 120
#define IDM_VIEW_LOG 121
#define IDM_VIEW_NEXT_PART 122
#define IDM_VIEW_NEXT_PANE 123
#define IDM_VIEW_PREVIOUS_PANE 124

#define IDM_REPORT_STATEMENT 126
#define IDM_REPORT_PHYSICIAN 127

#define IDM_HELP_COMMAND_LINE 130
#define IDM_HELP_ABOUT 131

#define IDC_PATIENT_STRIP 1001
#define IDC_TABS 1002
#define IDC_PANE_HOST 1003
#define IDC_LOG 1004
#define IDC_STATUS 1005
#define IDC_REPORT_SEARCH 1006
#define IDC_REPORT_COUNT 1007
#define IDC_REPORT_LIST 1008

#endif
