// Fuzz target: the driver's copies between the host's buffers and the work
// image, and the selection scan, with random geometry inside buffers of
// exactly the size the host hands out. Each operation is compared with a
// plain loop over the pixels, so any other byte must stay as it was.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "redeye/HostArea.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;

// Byte k of pixel (x, y) in rows of `rowBytes`, pixels of `pixelBytes`.
size_t At(int32_t rowBytes, int32_t pixelBytes, int32_t x, int32_t y, int32_t k) {
    return static_cast<size_t>(y) * rowBytes + static_cast<size_t>(x) * pixelBytes + k;
}

// The host's side: in and out buffers of 8- or 16-bit samples, rows of the
// pixels plus some padding; either may be withheld.
struct Host {
    int32_t width, height, planes, sampleBytes;
    std::vector<uint8_t> in, out;
    HostArea area;

    explicit Host(FuzzInput& input)
        : width(input.Byte() % 40),
          height(input.Byte() % 40),
          planes(1 + input.Byte() % 6),
          sampleBytes(1 + input.Byte() % 2) {
        const int32_t inRowBytes = width * planes * sampleBytes + input.Byte() % 8;
        const int32_t outRowBytes = width * planes * sampleBytes + input.Byte() % 8;
        in.resize(static_cast<size_t>(inRowBytes) * height);
        out.resize(static_cast<size_t>(outRowBytes) * height);
        input.Fill(in);
        input.Fill(out);
        uint8_t* const inGiven = input.Byte() % 8 ? in.data() : nullptr;  // or withheld
        uint8_t* const outGiven = input.Byte() % 8 ? out.data() : nullptr;
        area = {inGiven, inRowBytes, outGiven, outRowBytes, width, height, planes};
    }
    bool BothGiven() const { return area.in != nullptr && area.out != nullptr; }
};

void CheckUnsupportedCopy(FuzzInput& input, Host& host) {
    const int32_t depths[] = {8, 16, 0, 32};
    const int32_t depth = depths[input.Byte() % 4], size = depth / 8, planes = host.planes;
    std::vector<uint8_t> expected = host.out;
    if (host.BothGiven() && size > 0 && size <= 2) {
        // Three samples, a fourth from four planes on, a fifth with five, of
        // as many pixels as both rows hold.
        const int32_t samples = std::min(planes, 3 + (planes >= 4) + (planes == 5));
        const int32_t inRow = host.area.inRowBytes, outRow = host.area.outRowBytes;
        const int32_t columns =
            std::min({host.width, inRow / planes / size, outRow / planes / size});
        for (int32_t y = 0; y < host.height; ++y)
            for (int32_t x = 0; x < columns; ++x)
                for (int32_t b = 0; b < samples * size; ++b)
                    expected[At(outRow / size * size, planes * size, x, y, b)] =
                        host.in[At(inRow / size * size, planes * size, x, y, b)];
    }
    CopyUnsupportedArea(host.area, depth);
    Require(host.out == expected, "unsupported-mode copy");
}

void CheckViewCopy(FuzzInput& input, Host& host) {
    // The driver clamps the origin to zero or more; the size may be anything.
    const int32_t originX = input.Byte() % 64, originY = input.Byte() % 64;
    const int32_t columns = input.Between(-8, 72), rows = input.Between(-8, 72);
    std::vector<uint8_t> expected = host.out;
    for (int32_t y = 0; host.BothGiven() && y < std::min(rows, host.height - originY); ++y)
        for (int32_t x = 0; x < std::min(columns, host.width - originX); ++x)
            for (int32_t k = 0; k < host.planes; ++k)
                expected[At(host.area.outRowBytes, host.planes, x, y, k)] =
                    host.in[At(host.area.inRowBytes, host.planes, originX + x, originY + y, k)];
    CopyView(host.area, originX, originY, columns, rows);
    Require(host.out == expected, "view copy");
}

// Calls copy(work byte, host byte) for the first three bytes of each region
// pixel whose place in the area, less the view origin, lies inside the area.
template <typename Copy>
void ForEachPlacedByte(const Host& host, int32_t rowBytes, const RegionPlacement& region,
                       int32_t originX, int32_t originY, Copy copy) {
    for (int32_t y = 0; y < region.height; ++y) {
        for (int32_t x = 0; x < region.width; ++x) {
            const int32_t ax = region.left + x - originX, ay = region.top + y - originY;
            if (ax < 0 || ay < 0 || ax >= host.width || ay >= host.height) continue;
            for (int32_t k = 0; k < std::min(host.planes, 3); ++k)
                copy(At(3 * region.width, 3, x, y, k), At(rowBytes, host.planes, ax, ay, k));
        }
    }
}

// The work image filled from the in buffer, or written back to the out
// buffer shifted by a view origin.
void CheckFillOrWriteBack(FuzzInput& input, Host& host, bool fill) {
    const RegionPlacement region{input.Between(-64, 128), input.Between(-64, 128),
                                 1 + input.Byte() % 48, 1 + input.Byte() % 48};
    std::vector<uint8_t> work(static_cast<size_t>(region.width) * region.height * 3);
    if (fill) {
        std::vector<uint8_t> expected = work;
        if (host.area.in != nullptr)
            ForEachPlacedByte(host, host.area.inRowBytes, region, 0, 0,
                              [&](size_t w, size_t h) { expected[w] = host.in[h]; });
        FillWorkImage(host.area, region, work.data());
        Require(work == expected, "work image fill");
        return;
    }
    const int32_t originX = input.Between(-64, 128), originY = input.Between(-64, 128);
    input.Fill(work);
    std::vector<uint8_t> expected = host.out;
    if (host.area.out != nullptr)
        ForEachPlacedByte(host, host.area.outRowBytes, region, originX, originY,
                          [&](size_t w, size_t h) { expected[h] = work[w]; });
    WriteBackWorkImage(host.area, region, originX, originY, work.data());
    Require(host.out == expected, "work image write-back");
}

// The in buffer as a selection mask of any width and row padding, as sparse
// as the density byte says, or withheld.
void CheckSelectionScan(FuzzInput& input, Host& host) {
    const int32_t width = host.width * host.planes * host.sampleBytes, height = host.height;
    const int32_t rowBytes = host.area.inRowBytes;
    const uint8_t density = input.Byte();
    for (uint8_t& m : host.in) m = m < density ? m : 0;
    SelectionBounds expected{width, height, 0, 0};
    for (int32_t y = 0; host.area.in != nullptr && y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            if (host.in[At(rowBytes, 1, x, y, 0)] != 0)
                expected = {std::min(expected.minX, x), std::min(expected.minY, y),
                            std::max(expected.maxX, x), std::max(expected.maxY, y)};
    const SelectionBounds found = FindSelectionBounds(host.area.in, rowBytes, width, height);
    Require(found.minX == expected.minX && found.minY == expected.minY &&
                found.maxX == expected.maxX && found.maxY == expected.maxY,
            "selection bounds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const uint8_t operation = input.Byte() % 5;
    Host host(input);
    if (operation == 0) CheckUnsupportedCopy(input, host);
    if (operation == 1) CheckViewCopy(input, host);
    if (operation == 2 || operation == 3) CheckFillOrWriteBack(input, host, operation == 2);
    if (operation == 4) CheckSelectionScan(input, host);
    return 0;
}
