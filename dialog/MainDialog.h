// The main filter dialog.
#pragma once

#include "plugin/FilterGlobals.h"

// Runs the modal dialog over the host's window; true when the user chose OK.
bool RunFilterDialog(FilterGlobals* globals);
