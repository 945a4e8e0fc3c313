#include "RedEyePixels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "redeye/Pipeline.h"

namespace {

template <typename Byte>
Byte* At(Byte* pixels, const testhost::Image& image, int x, int y) {
    return pixels + static_cast<ptrdiff_t>(y) * image.RowBytes() +
           static_cast<ptrdiff_t>(x) * image.Planes();
}

}  // namespace

void PutCorrected(testhost::Image& target, int x, int y, const testhost::Image& source,
                  PixelBox box, float tolerance, float darkening) {
    const size_t count = static_cast<size_t>(box.Width()) * box.Height();
    std::vector<uint8_t> work(count * 3), weight(count), coverage(count), depth(count);
    std::vector<uint16_t> hls(count * 3);
    std::vector<uint32_t> distance(count);
    uint8_t* pixel = work.data();
    for (int row = 0; row < box.Height(); ++row) {
        for (int column = 0; column < box.Width(); ++column, pixel += 3) {
            std::copy_n(At(source.Data(), source, box.left + column, box.top + row), 3, pixel);
        }
    }
    RunRedEyePipeline(
        {work.data(), hls.data(), distance.data(), weight.data(), coverage.data(), depth.data()},
        box.Width(), box.Height(), tolerance, darkening);
    pixel = work.data();
    for (int row = 0; row < box.Height(); ++row) {
        for (int column = 0; column < box.Width(); ++column, pixel += 3) {
            std::copy_n(pixel, 3, At(target.Data(), target, x + column, y + row));
        }
    }
}

testhost::Image Corrected(const testhost::Image& in, PixelBox box, float tolerance,
                          float darkening) {
    testhost::Image out = in;
    PutCorrected(out, box.left, box.top, in, box, tolerance, darkening);
    return out;
}

testhost::Image RedEyeImage(int width, int height, int planes) {
    testhost::Image image(width, height, planes);
    image.FillNoise(11);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::vector<uint16_t> px = image.Pixel(x, y);
            px[0] = static_cast<uint16_t>(190 + px[0] % 16);
            px[1] = static_cast<uint16_t>(140 + px[1] % 16);
            px[2] = static_cast<uint16_t>(115 + px[2] % 16);
            for (int cx : {width / 3, 2 * width / 3}) {
                const double d = std::hypot(x - cx, y - height / 2);
                if (d < 7) px[0] = 205, px[1] = static_cast<uint16_t>(25 + d * 2), px[2] = 35;
                if (std::hypot(x - cx - 2, y - height / 2 + 2) < 1.5) px[0] = px[1] = px[2] = 250;
            }
            image.SetPixel(x, y, px);
        }
    }
    return image;
}
