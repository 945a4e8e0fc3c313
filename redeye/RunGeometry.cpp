#include "redeye/RunGeometry.h"

#include <algorithm>

#include "redeye/Truncate.h"

namespace {

int32_t Saturate(int64_t value) {
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

}  // namespace

RunView PreviewRunView(float viewX, float viewY, float viewScale, int32_t paneWidth,
                       int32_t paneHeight, int32_t areaWidth, int32_t areaHeight) {
    RunView view{TruncateToInt32(viewX), TruncateToInt32(viewY), 0, 0};
    const double zoom = viewScale;
    view.width = std::min(paneWidth, TruncateToInt32(areaWidth / zoom));
    view.height = std::min(paneHeight, TruncateToInt32(areaHeight / zoom));
    if (zoom != 1.0) {
        view.width = TruncateToInt32(view.width * zoom);
        view.height = TruncateToInt32(view.height * zoom);
    }
    return view;
}

void ClampViewOrigin(RunView& view, int32_t areaWidth, int32_t areaHeight) {
    const int64_t lastX = int64_t{areaWidth} - view.width;
    const int64_t lastY = int64_t{areaHeight} - view.height;
    if (view.originX >= lastX) view.originX = Saturate(lastX - 1);
    if (view.originY >= lastY) view.originY = Saturate(lastY - 1);
    view.originX = std::max(view.originX, 0);
    view.originY = std::max(view.originY, 0);
}

RegionEdges VisibleRegion(float viewX, float viewY, int32_t copyWidth, int32_t copyHeight) {
    RegionEdges edges{TruncateToInt32(viewX), TruncateToInt32(viewY), 0, 0};
    edges.right = Saturate(int64_t{edges.left} + copyWidth);
    edges.bottom = Saturate(int64_t{edges.top} + copyHeight);
    return edges;
}

void ClampRegionEdges(RegionEdges& edges, int32_t areaWidth, int32_t areaHeight) {
    if (edges.left < 0) edges.left = 0;
    if (edges.top < 0) edges.top = 0;
    if (edges.right >= areaWidth) edges.right = areaWidth - 1;
    if (edges.bottom >= areaHeight) edges.bottom = areaHeight - 1;
}

bool PlaceRegion(const RegionEdges& edges, RegionPlacement& region) {
    // A left or top edge a host kept past the clamped right or bottom edge
    // (or any garbage) leaves no pixels; a positive extent fits in 32 bits.
    const int64_t width = int64_t{edges.right} - edges.left;
    const int64_t height = int64_t{edges.bottom} - edges.top;
    if (width <= 0 || height <= 0) return false;
    region = RegionPlacement{edges.left, edges.top, static_cast<int32_t>(width),
                             static_cast<int32_t>(height)};
    return true;
}
