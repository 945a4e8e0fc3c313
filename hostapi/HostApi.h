// Our declarations of the host's filter plug-in interface (32-bit Windows).
#pragma once

#include "FilterRecord.h"
#include "HostConstants.h"
#include "HostLayout.h"
#include "HostSuites.h"
#include "HostTypes.h"
