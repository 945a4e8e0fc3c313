#include "RedEyeImage.h"

#include <cmath>
#include <cstdint>
#include <vector>

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
