// Item ids of the main filter dialog and its resources, shared by the
// dialog template and the code.
#pragma once

#define IDD_MAIN_DIALOG "DISSOLVEWITHPARAM00"

#define IDC_DETAIL_PANE 1102
#define IDC_NAVIGATOR_PANE 1031
#define IDC_TOLERANCE 1076
#define IDC_DARKENING 1077
#define IDC_WEB_SITE 1121
#define IDC_ABOUT 1120
#define IDC_ZOOM_IN 1103
#define IDC_ZOOM_OUT 1104
// Commands the dialog answers although its template has no such control.
#define IDC_RESET_DEFAULTS 1117
#define IDC_DOCUMENTATION 1119
// A progress bar the preview run reports to; this dialog has none.
#define IDC_PROGRESS 669

#define IDB_PRODUCT_PICTURE 777
#define IDB_ZOOM_OUT 7771
#define IDB_ZOOM_IN 7772
