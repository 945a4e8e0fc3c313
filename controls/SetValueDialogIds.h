// Resource and item ids of the "Set value" dialog, shared by the dialog
// template and the code.
#pragma once

#define IDD_SET_VALUE 15092
#define IDC_VALUE_NAME 15901
#define IDC_CURRENT_VALUE_1 15902
#define IDC_CURRENT_VALUE_2 15903
#define IDC_VALUE_TYPE 15904
#define IDC_RECOMMENDED_RANGE 15905
#define IDC_NEW_VALUE_1 15906
#define IDC_NEW_VALUE_2 15907
#define IDC_NEW_MINIMUM 15908
#define IDC_NEW_MAXIMUM 15909
