#include "ExpectedPixels.h"

#include <cstddef>

#include "redeye/Pipeline.h"

namespace {

ptrdiff_t Offset(PixelLayout layout, int x, int y) {
    return static_cast<ptrdiff_t>(y) * layout.rowBytes + static_cast<ptrdiff_t>(x) * layout.planes;
}

}  // namespace

PixelLayout LayoutOf(const testhost::Image& image) {
    return PixelLayout{static_cast<int>(image.RowBytes()), image.Planes()};
}

std::vector<uint8_t> CorrectBox(const uint8_t* pixels, PixelLayout layout, PixelBox box,
                                float tolerance, float darkening) {
    const size_t count = static_cast<size_t>(box.Width()) * box.Height();
    std::vector<uint8_t> work(count * 3), weight(count), coverage(count), depth(count);
    std::vector<uint16_t> hls(count * 3);
    std::vector<uint32_t> distance(count);
    uint8_t* target = work.data();
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x, target += 3) {
            const uint8_t* source = pixels + Offset(layout, x, y);
            target[0] = source[0];
            target[1] = source[1];
            target[2] = source[2];
        }
    }
    const PipelineBuffers buffers{work.data(),   hls.data(),      distance.data(),
                                  weight.data(), coverage.data(), depth.data()};
    RunRedEyePipeline(buffers, box.Width(), box.Height(), tolerance, darkening);
    return work;
}

void PutBox(uint8_t* pixels, PixelLayout layout, int x, int y, int width, int height,
            const std::vector<uint8_t>& rgb) {
    const uint8_t* source = rgb.data();
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column, source += 3) {
            uint8_t* target = pixels + Offset(layout, x + column, y + row);
            target[0] = source[0];
            target[1] = source[1];
            target[2] = source[2];
        }
    }
}

testhost::Image Corrected(const testhost::Image& in, PixelBox box, float tolerance,
                          float darkening) {
    testhost::Image out = in;
    const PixelLayout layout = LayoutOf(in);
    PutBox(out.Data(), layout, box.left, box.top, box.Width(), box.Height(),
           CorrectBox(in.Data(), layout, box, tolerance, darkening));
    return out;
}
