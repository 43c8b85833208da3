/* Resource ids of the framework's tests. */
#define IDD_PANE 500 /* captioned and disabled, with an owner-drawn list that asks for its height early */
#define IDD_MODAL 501
#define IDD_CUSTOM 502 /* with a control of the class KxFramework */
#define IDD_PLAIN_CHILD 503
#define IDC_LIST 40001 /* ids above 32767, as the product's controls have them */
#define IDC_EDIT 40002
#define IDC_CUSTOM 40003
