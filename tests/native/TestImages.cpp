#include "tests/native/TestImages.h"

#include <algorithm>
#include <cstddef>

uint32_t Random::Next() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

int32_t Random::Below(int32_t bound) {
    return static_cast<int32_t>(Next() % static_cast<uint32_t>(bound));
}

int32_t Random::Between(int32_t low, int32_t high) { return low + Below(high - low + 1); }

namespace {

struct Rgb {
    int r, g, b;
};

constexpr Rgb kSceneColours[] = {
    {255, 0, 0},     {220, 30, 40},   {180, 20, 30},   {240, 60, 70},   {90, 10, 15},
    {200, 90, 90},   {160, 60, 50},   {230, 120, 130}, {200, 40, 120},  {225, 172, 140},
    {190, 130, 100}, {128, 128, 128}, {0, 0, 0},       {250, 250, 250}, {40, 120, 60},
    {50, 70, 160},   {255, 200, 200}, {120, 30, 20},
};
constexpr int kSceneColourCount = sizeof kSceneColours / sizeof kSceneColours[0];

uint8_t Channel(int value) { return static_cast<uint8_t>(std::clamp(value, 0, 255)); }

void Put(uint8_t* rgb, int32_t width, int32_t x, int32_t y, Rgb colour, int noise, Random& random) {
    uint8_t* px = rgb + 3 * (static_cast<ptrdiff_t>(y) * width + x);
    const int shade = random.Between(-noise, noise);
    const int tint = random.Between(-noise, noise) / 2;
    px[0] = Channel(colour.r + shade + tint);
    px[1] = Channel(colour.g + shade);
    px[2] = Channel(colour.b + shade - tint);
}

// Axis-aligned ellipse with centre (cx, cy) and radii rx, ry (all > 0).
bool InEllipse(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t rx, int32_t ry) {
    const int64_t dx = x - cx, dy = y - cy;
    return dx * dx * ry * ry + dy * dy * rx * rx <= int64_t{rx} * rx * ry * ry;
}

struct Ellipse {
    int32_t cx, cy, rx, ry;
    Rgb colour;
};

void Fill(uint8_t* rgb, int32_t width, int32_t height, const Ellipse& e, int noise,
          Random& random) {
    for (int32_t y = std::max(0, e.cy - e.ry); y <= std::min(height - 1, e.cy + e.ry); ++y) {
        for (int32_t x = std::max(0, e.cx - e.rx); x <= std::min(width - 1, e.cx + e.rx); ++x) {
            if (InEllipse(x, y, e.cx, e.cy, e.rx, e.ry))
                Put(rgb, width, x, y, e.colour, noise, random);
        }
    }
}

}  // namespace

void PaintScene(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed) {
    Random random(seed);
    const auto colour = [&random] { return kSceneColours[random.Below(kSceneColourCount)]; };
    const int noise = random.Below(31);
    const Rgb background = colour();
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) Put(rgb, width, x, y, background, noise, random);
    }
    const int blobs = random.Below(7);
    for (int blob = 0; blob < blobs; ++blob) {
        const Ellipse e{random.Below(width), random.Below(height), random.Between(1, width / 2 + 1),
                        random.Between(1, height / 2 + 1), colour()};
        Fill(rgb, width, height, e, noise, random);
    }
    const int64_t speckles = random.Below(
        static_cast<int32_t>(std::min<int64_t>(int64_t{width} * height / 8, 1000)) + 1);
    for (int64_t i = 0; i < speckles; ++i) {
        Put(rgb, width, random.Below(width), random.Below(height), colour(), noise, random);
    }
}

void PaintPortrait(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed) {
    Random random(seed);
    constexpr int kNoise = 6;
    for (int32_t y = 0; y < height; ++y) {
        const Rgb wall{70 + static_cast<int>(60LL * y / height), 90, 120};
        for (int32_t x = 0; x < width; ++x) Put(rgb, width, x, y, wall, kNoise, random);
    }
    const int32_t cx = width / 2, cy = height / 2;
    const int32_t face = std::max(1, std::min(width, height) * 2 / 5);
    Fill(rgb, width, height, {cx, cy, face * 4 / 5 + 1, face, {225, 172, 140}}, kNoise, random);
    Fill(rgb, width, height, {cx, cy + face / 2, face / 4 + 1, face / 12 + 1, {200, 80, 90}},
         kNoise, random);
    for (const int32_t side : {-1, 1}) {
        const int32_t ex = cx + side * face * 3 / 8, ey = cy - face / 6;
        const int32_t eye = face / 6 + 1;
        Fill(rgb, width, height, {ex, ey, eye, eye / 2 + 1, {235, 235, 230}}, kNoise, random);
        Fill(rgb, width, height, {ex, ey, eye / 2 + 1, eye / 2 + 1, {110, 70, 40}}, kNoise, random);
        Fill(rgb, width, height, {ex, ey, eye / 3 + 1, eye / 3 + 1, {215, 25, 35}}, kNoise, random);
        Fill(rgb, width, height,
             {ex - eye / 8, ey - eye / 8, eye / 12 + 1, eye / 12 + 1, {255, 240, 240}}, kNoise,
             random);
    }
}

void PaintStripes(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed) {
    PaintScene(rgb, width, height, seed);
    Random random(seed);
    for (int32_t y = random.Below(8); y < height; y += random.Between(1, 12)) {
        for (const int32_t end = std::min(height, y + random.Between(1, 16)); y < end; ++y) {
            for (int32_t x = 0; x < width; ++x) Put(rgb, width, x, y, {40, 150, 60}, 8, random);
        }
    }
}
