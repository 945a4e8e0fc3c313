// Fuzz target: the pixel work of one run as the filtering driver does it,
// from whatever view a host kept in the stored record (any float, any
// edges), on buffers exactly as large as a host hands out. The view's origin
// must end up inside the area, the region inside the area less its last
// column and row, and nothing may be read or written past the buffers.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "redeye/HostArea.h"
#include "redeye/Pipeline.h"
#include "redeye/RunGeometry.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/native/RegionBuffers.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;

// A stored edge: near the area mostly, any 32-bit value sometimes.
int32_t AnyEdge(FuzzInput& input) {
    if (input.Byte() % 8 == 0) return static_cast<int32_t>(input.Bits32());
    return input.Between(-48, 88);
}

// A view position: any stored float, or a whole number around the area.
float AnyPosition(FuzzInput& input) {
    if (input.Byte() % 2 == 0) return input.UserValue();
    return static_cast<float>(input.Between(-48, 88));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const int32_t width = input.Byte() % 40, height = input.Byte() % 40;
    const int32_t planes = 3 + input.Byte() % 3;
    const int32_t rowBytes = width * planes + input.Byte() % 4;
    std::vector<uint8_t> in(static_cast<size_t>(rowBytes) * height), out(in.size());
    for (uint8_t& b : in) b = input.Byte();
    const HostArea area{in.data(), rowBytes, out.data(), rowBytes, width, height, planes};

    const bool preview = input.Byte() % 2 == 0;
    const float viewX = AnyPosition(input), viewY = AnyPosition(input);
    const float viewScale =
        input.Byte() % 2 == 0 ? input.UserValue() : 0.2f * (1 + input.Byte() % 20);
    const int32_t paneWidth = input.Between(0, 400), paneHeight = input.Between(0, 300);
    RunView view =
        preview ? PreviewRunView(viewX, viewY, viewScale, paneWidth, paneHeight, width, height)
                : RunView{0, 0, width, height};
    ClampViewOrigin(view, width, height);
    Require(view.originX >= 0 && view.originY >= 0, "view origin below zero");
    const int32_t copyWidth = std::min(view.width, width);
    const int32_t copyHeight = std::min(view.height, height);
    CopyView(area, view.originX, view.originY, copyWidth, copyHeight);

    RegionEdges edges =
        preview && input.Byte() % 2 == 0
            ? VisibleRegion(viewX, viewY, copyWidth, copyHeight)
            : RegionEdges{AnyEdge(input), AnyEdge(input), AnyEdge(input), AnyEdge(input)};
    ClampRegionEdges(edges, width, height);
    RegionPlacement region{};
    if (!PlaceRegion(edges, region)) return 0;
    Require(region.left >= 0 && region.top >= 0 && region.left + region.width < width &&
                region.top + region.height < height,
            "region outside the area less its last column and row");

    RegionBuffers buffers(region.width, region.height);
    FillWorkImage(area, region, buffers.work.data());
    const float tolerance = input.UserValue(), darkening = input.UserValue();
    RunRedEyePipeline(buffers.View(), region.width, region.height, tolerance, darkening);
    WriteBackWorkImage(area, region, view.originX, view.originY, buffers.work.data());
    return 0;
}
