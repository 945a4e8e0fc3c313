// Where one run of the filter works: the part of the area it copies and the
// region it corrects, worked out from the view the parameters record keeps.
// Portable: plain values in and out, so that any record a host kept stays
// defined arithmetic.
#pragma once

#include <cstdint>

#include "redeye/HostArea.h"

// The part of the area a run copies to the output, from `origin` on.
struct RunView {
    int32_t originX;
    int32_t originY;
    int32_t width;
    int32_t height;
};

// The part of the image the detail pane shows at the stored position and
// zoom: no more than the pane holds, counted in image pixels.
RunView PreviewRunView(float viewX, float viewY, float viewScale, int32_t paneWidth,
                       int32_t paneHeight, int32_t areaWidth, int32_t areaHeight);

// Moves the origin back so that the view ends inside the area, then raises
// a negative origin to zero.
void ClampViewOrigin(RunView& view, int32_t areaWidth, int32_t areaHeight);

// A region by its edges; right and bottom are exclusive.
struct RegionEdges {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

// The rectangle a preview run without a selection corrects: from the view
// position, as large as the part it copied.
RegionEdges VisibleRegion(float viewX, float viewY, int32_t copyWidth, int32_t copyHeight);

// Raises negative left and top edges to zero and keeps the right and bottom
// edges before the area's last column and row.
void ClampRegionEdges(RegionEdges& edges, int32_t areaWidth, int32_t areaHeight);

// The region between clamped edges; false when it has no pixels.
bool PlaceRegion(const RegionEdges& edges, RegionPlacement& region);
