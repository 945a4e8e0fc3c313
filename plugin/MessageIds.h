// Resource ids of the module's messages and small dialogs, shared by the
// resource scripts and the code.
#pragma once

#define IDS_ABOUT_TEXT 16000
#define IDS_ABOUT_TEXT_PADDED 16002
#define IDS_INTEGER_REQUIRED 16990
#define IDS_DECIMAL_REQUIRED 16991
#define IDS_HOST_TOO_OLD 16992
#define IDS_HOST_INCOMPATIBLE 16993
#define IDS_SUITE_MISSING 16994

#define IDD_NOTICE 122
#define IDD_ABOUT 16103
#define IDC_ABOUT_WEB_SITE 1121
#define IDC_ABOUT_PICTURE 1122
