// Fuzz target: the driver's copies between the host's buffers and the work
// image, and the selection scan, with random geometry inside buffers of
// exactly the size the host hands out. Each operation is compared with a
// plain loop, and bytes past each row's pixels must stay untouched.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "redeye/HostArea.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;

// The host's side: in and out buffers of `sampleBytes` per sample, rows of
// the pixels plus some padding; either may be withheld.
struct HostBuffers {
    int32_t width, height, planes, sampleBytes;
    std::vector<uint8_t> in, out;
    int32_t inRowBytes, outRowBytes;
    bool inGiven, outGiven;

    explicit HostBuffers(FuzzInput& input)
        : width(input.Byte() % 40),
          height(input.Byte() % 40),
          planes(1 + input.Byte() % 6),
          sampleBytes(1 + input.Byte() % 2) {
        const int32_t used = width * planes * sampleBytes;
        inRowBytes = used + input.Byte() % 8;
        outRowBytes = used + input.Byte() % 8;
        in.resize(static_cast<size_t>(inRowBytes) * height);
        out.resize(static_cast<size_t>(outRowBytes) * height);
        for (uint8_t& b : in) b = input.Byte();
        for (uint8_t& b : out) b = input.Byte();
        inGiven = input.Byte() % 8 != 0;
        outGiven = input.Byte() % 8 != 0;
    }

    HostArea Area() {
        return HostArea{inGiven && !in.empty() ? in.data() : nullptr,
                        inRowBytes,
                        outGiven && !out.empty() ? out.data() : nullptr,
                        outRowBytes,
                        width,
                        height,
                        planes};
    }
    uint8_t* OutByte(int32_t x, int32_t y, int32_t k) {
        return &out[static_cast<size_t>(y) * outRowBytes + static_cast<size_t>(x) * planes + k];
    }
    const uint8_t* InByte(int32_t x, int32_t y, int32_t k) const {
        return &in[static_cast<size_t>(y) * inRowBytes + static_cast<size_t>(x) * planes + k];
    }
    bool Inside(int32_t x, int32_t y) const { return x >= 0 && y >= 0 && x < width && y < height; }
};

void CheckUnsupportedCopy(FuzzInput& input, HostBuffers& host) {
    const int32_t depth = input.Pick4(8, 16, 0, 32);
    std::vector<uint8_t> expected = host.out;
    if (host.Area().in != nullptr && host.Area().out != nullptr && (depth == 8 || depth == 16)) {
        const int32_t size = depth / 8;
        const int32_t samples = std::min(host.planes, 3 + (host.planes >= 4) + (host.planes == 5));
        const int32_t pixelBytes = host.planes * size;
        const int32_t columns =
            std::min({host.width, host.inRowBytes / pixelBytes, host.outRowBytes / pixelBytes});
        const int32_t inStep = host.inRowBytes / size * size;
        const int32_t outStep = host.outRowBytes / size * size;
        for (int32_t y = 0; y < host.height; ++y) {
            for (int32_t x = 0; x < columns; ++x) {
                for (int32_t b = 0; b < samples * size; ++b) {
                    expected[static_cast<size_t>(y) * outStep + x * pixelBytes + b] =
                        host.in[static_cast<size_t>(y) * inStep + x * pixelBytes + b];
                }
            }
        }
    }
    CopyUnsupportedArea(host.Area(), depth);
    Require(host.out == expected, "unsupported-mode copy");
}

void CheckViewCopy(FuzzInput& input, HostBuffers& host) {
    // The driver clamps the origin to zero or more; the size may be anything.
    const int32_t originX = input.Byte() % 64;
    const int32_t originY = input.Byte() % 64;
    const int32_t columns = input.Between(-8, 72);
    const int32_t rows = input.Between(-8, 72);
    std::vector<uint8_t> before = host.out;
    HostBuffers expected = host;
    if (host.Area().in != nullptr && host.Area().out != nullptr) {
        for (int32_t y = 0; y < std::min(rows, host.height - originY); ++y) {
            for (int32_t x = 0; x < std::min(columns, host.width - originX); ++x) {
                for (int32_t k = 0; k < host.planes; ++k) {
                    *expected.OutByte(x, y, k) = *host.InByte(originX + x, originY + y, k);
                }
            }
        }
    }
    CopyView(host.Area(), originX, originY, columns, rows);
    Require(host.out == expected.out, "view copy");
}

RegionPlacement AnyRegion(FuzzInput& input) {
    return RegionPlacement{input.Between(-64, 128), input.Between(-64, 128), 1 + input.Byte() % 48,
                           1 + input.Byte() % 48};
}

void CheckFill(FuzzInput& input, HostBuffers& host) {
    const RegionPlacement region = AnyRegion(input);
    std::vector<uint8_t> work(static_cast<size_t>(region.width) * region.height * 3, 0);
    std::vector<uint8_t> expected = work;
    const int32_t bytes = std::min(host.planes, 3);
    if (host.Area().in != nullptr) {
        for (int32_t y = 0; y < region.height; ++y) {
            for (int32_t x = 0; x < region.width; ++x) {
                if (!host.Inside(region.left + x, region.top + y)) continue;
                for (int32_t k = 0; k < bytes; ++k) {
                    expected[(static_cast<size_t>(y) * region.width + x) * 3 + k] =
                        *host.InByte(region.left + x, region.top + y, k);
                }
            }
        }
    }
    FillWorkImage(host.Area(), region, work.data());
    Require(work == expected, "work image fill");
}

void CheckWriteBack(FuzzInput& input, HostBuffers& host) {
    const RegionPlacement region = AnyRegion(input);
    const int32_t originX = input.Between(-64, 128);
    const int32_t originY = input.Between(-64, 128);
    std::vector<uint8_t> work(static_cast<size_t>(region.width) * region.height * 3);
    for (uint8_t& b : work) b = input.Byte();
    HostBuffers expected = host;
    const int32_t bytes = std::min(host.planes, 3);
    if (host.Area().out != nullptr) {
        for (int32_t y = 0; y < region.height; ++y) {
            for (int32_t x = 0; x < region.width; ++x) {
                const int32_t tx = region.left + x - originX;
                const int32_t ty = region.top + y - originY;
                if (!host.Inside(tx, ty)) continue;
                for (int32_t k = 0; k < bytes; ++k) {
                    *expected.OutByte(tx, ty, k) =
                        work[(static_cast<size_t>(y) * region.width + x) * 3 + k];
                }
            }
        }
    }
    WriteBackWorkImage(host.Area(), region, originX, originY, work.data());
    Require(host.out == expected.out, "work image write-back");
}

void CheckSelectionScan(FuzzInput& input) {
    const int32_t width = input.Byte() % 64;
    const int32_t height = input.Byte() % 64;
    const int32_t rowBytes = width + input.Byte() % 8;
    std::vector<uint8_t> mask(static_cast<size_t>(rowBytes) * height);
    const uint8_t density = input.Byte();
    for (uint8_t& m : mask) m = input.Byte() < density ? input.Byte() : 0;
    SelectionBounds expected{width, height, 0, 0};
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            if (mask[static_cast<size_t>(y) * rowBytes + x] == 0) continue;
            expected.minX = std::min(expected.minX, x);
            expected.minY = std::min(expected.minY, y);
            expected.maxX = std::max(expected.maxX, x);
            expected.maxY = std::max(expected.maxY, y);
        }
    }
    const SelectionBounds found =
        FindSelectionBounds(mask.empty() ? nullptr : mask.data(), rowBytes, width, height);
    Require(found.minX == expected.minX && found.minY == expected.minY &&
                found.maxX == expected.maxX && found.maxY == expected.maxY,
            "selection bounds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const uint8_t operation = input.Byte() % 5;
    if (operation == 4) {
        CheckSelectionScan(input);
        return 0;
    }
    HostBuffers host(input);
    switch (operation) {
        case 0:
            CheckUnsupportedCopy(input, host);
            break;
        case 1:
            CheckViewCopy(input, host);
            break;
        case 2:
            CheckFill(input, host);
            break;
        default:
            CheckWriteBack(input, host);
            break;
    }
    return 0;
}
