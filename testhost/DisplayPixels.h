// Draws a module's pixel map into a device context, as a host's
// displayPixels does.
#pragma once

#include <windows.h>

#include "hostapi/HostApi.h"

namespace testhost {

// RGB (3) and grayscale (1) maps of 8-bit samples; paramErr for a missing
// map, rectangle, pixel address or device context, or a rectangle outside
// the map's bounds; errPlugInHostInsufficient for other modes.
OSErr DrawPixelMap(const PSPixelMap* source, const VRect* srcRect, int32_t dstRow, int32_t dstCol,
                   HDC dc);

}  // namespace testhost
