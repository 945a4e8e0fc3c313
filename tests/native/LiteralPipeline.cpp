#include "tests/native/LiteralPipeline.h"

#include <algorithm>
#include <cstddef>

#include "redeye/Color.h"
#include "redeye/Truncate.h"

namespace literal {

void RgbToHls(const uint8_t* rgb, uint16_t* hls) {
    const int R = rgb[0], G = rgb[1], B = rgb[2];
    const int max = std::max({R, G, B}), min = std::min({R, G, B});
    const int L = ((max + min) * 240 + 255) / 510;
    int H = 160, S = 0;
    if (max != min) {
        const int d = max - min;
        S = L <= 120 ? (d * 240 + (max + min) / 2) / (max + min)
                     : (d * 240 + (510 - max - min) / 2) / (510 - max - min);
        const int Rd = ((max - R) * 40 + d / 2) / d;
        const int Gd = ((max - G) * 40 + d / 2) / d;
        const int Bd = ((max - B) * 40 + d / 2) / d;
        if (R == max) {
            H = Bd - Gd;
        } else if (G == max) {
            H = 80 + Rd - Bd;
        } else {
            H = 160 + Gd - Rd;
        }
        if (H < 0) H += 240;
        if (H > 240) H -= 240;
    }
    hls[0] = static_cast<uint16_t>(H);
    hls[1] = static_cast<uint16_t>(L);
    hls[2] = static_cast<uint16_t>(S);
}

uint8_t ClassifyPixel(uint8_t h, uint8_t s, uint8_t l, float t) {
    float f;
    if (h < 11) {
        f = h * 6.0;
    } else {
        f = (255 - h) * 0.35;
    }
    float g = (255 - s) / 1.5;
    if (h > 230 - t / 3.0 && s > 3 * f + 155.0 - t / 1.2 && l < t / 2.0 + 175.0 &&
        l > g / 2.0 + 3 * f + 65.0 - t / 1.5)
        return 1;
    if (h < t / 5.0 + 7.0 && s > 3 * f + 155.0 - t / 1.5 && l > g / 2.0 + 3 * f + 65.0 - t / 1.5 &&
        l < 175)
        return 1;
    if (f < 2.0 && s > 150 && l > g + 50.0 - t / 2.0 && l < 175) return 1;
    if (h > 215 && s >= f + 60.0 && l < 235) return 2;
    if (h < 11 && s >= f + 100.0 && l < 190) return 2;
    if (h < 3 && s > f + 50.0 && l < 155) return 2;
    bool P = h > 255.0 - t || h < 10;
    if (P && s > f + 80.0 && 51 <= l && l <= 99) return 2;
    if (P && s > 70.0 - t / 5.0 + f && 91 <= l && l <= 149) return 2;
    bool Q = h > 255.0 - t / 2.0 || h < 10;
    if (Q && s > f + 200.0 && l >= 181) return 2;
    return 0;
}

namespace {

struct Region {
    const PipelineBuffers& b;
    int W, H;

    size_t At(int x, int y) const { return static_cast<size_t>(y) * W + x; }
    bool Inside(int x, int y) const { return x >= 0 && x < W && y >= 0 && y < H; }
    uint8_t& Class(int x, int y) const { return b.work[3 * At(x, y)]; }
    int Dist(int x, int y) const {
        return Inside(x, y) ? static_cast<int32_t>(b.distance[At(x, y)]) : 0;
    }
};

// The sums wrap as 32-bit values would.
int Add(int value, int step) {
    return static_cast<int32_t>(static_cast<uint32_t>(value) + static_cast<uint32_t>(step));
}

void Classify(const Region& r, float T) {
    for (int y = 0; y < r.H; ++y)
        for (int x = 0; x < r.W; ++x) {
            uint8_t* px = r.b.work + 3 * r.At(x, y);
            uint16_t* hls = r.b.hls + 3 * r.At(x, y);
            RgbToHls(px, hls);
            px[0] = ClassifyPixel(static_cast<uint8_t>(hls[0]), static_cast<uint8_t>(hls[2]),
                                  static_cast<uint8_t>(hls[1]), T);
            px[1] = static_cast<uint8_t>(hls[0]);
            px[2] = static_cast<uint8_t>(hls[2]);
        }
}

void Chamfer(const Region& r) {
    for (int y = 0; y < r.H; ++y)
        for (int x = 0; x < r.W; ++x)
            r.b.distance[r.At(x, y)] = r.Class(x, y) != 0 ? static_cast<uint32_t>(r.W * r.H) : 0;
    for (int y = 0; y < r.H; ++y)
        for (int x = r.W - 1; x >= 0; --x)
            if (r.Class(x, y) != 0)
                r.b.distance[r.At(x, y)] = static_cast<uint32_t>(
                    std::min({Add(r.Dist(x, y - 1), 3), Add(r.Dist(x - 1, y - 1), 4),
                              Add(r.Dist(x - 1, y), 3), Add(r.Dist(x - 1, y + 1), 4)}));
    for (int y = r.H - 1; y >= 0; --y)
        for (int x = 0; x < r.W; ++x)
            if (r.Class(x, y) != 0)
                r.b.distance[r.At(x, y)] = static_cast<uint32_t>(
                    std::min({r.Dist(x, y), Add(r.Dist(x, y + 1), 3), Add(r.Dist(x + 1, y + 1), 4),
                              Add(r.Dist(x + 1, y), 3), Add(r.Dist(x + 1, y - 1), 4)}));
}

void Smooth(const Region& r) {
    for (int y = 0; y < r.H; ++y)
        for (int x = 0; x < r.W; ++x) {
            const bool inner = x >= 1 && x < r.W - 1 && y >= 1 && y < r.H - 1;
            uint32_t sum = 0;  // the border keeps depth 0
            for (int j = -1; inner && j <= 1; ++j)
                for (int i = -1; i <= 1; ++i) sum += r.b.distance[r.At(x + i, y + j)];
            r.b.depth[r.At(x, y)] =
                static_cast<uint8_t>(std::min(static_cast<int32_t>(sum) / 9, 255));
        }
    for (int y = 1; y < r.H - 1; ++y)
        for (int x = 1; x < r.W - 1; ++x) {
            uint8_t d = r.b.depth[r.At(x, y)];
            if (d != 1 && d != 2) continue;
            bool shallow = true;
            for (int j = -1; j <= 1; ++j)
                for (int i = -1; i <= 1; ++i)
                    if ((i || j) && r.b.depth[r.At(x + i, y + j)] >= 3) shallow = false;
            if (shallow) r.b.depth[r.At(x, y)] = 0;
        }
}

void GrowWeak(const Region& r, int rounds) {
    for (int round = 0; round < rounds; ++round) {
        for (int y = 0; y <= r.H - 2; ++y)
            for (int x = 0; x <= r.W - 2; ++x)
                if (r.Class(x, y) == 2 && (r.Class(x + 1, y) == 1 || r.Class(x, y + 1) == 1 ||
                                           r.Class(x + 1, y + 1) == 1))
                    r.Class(x, y) = 1;
        for (int y = r.H - 1; y >= 1; --y)
            for (int x = r.W - 1; x >= 1; --x)
                if (r.Class(x, y) == 2 && (r.Class(x - 1, y) == 1 || r.Class(x, y - 1) == 1 ||
                                           r.Class(x - 1, y - 1) == 1))
                    r.Class(x, y) = 1;
    }
}

int Reddish(const Region& r, int x, int y) {
    int hue = r.b.hls[3 * r.At(x, y)];
    return hue > 200 || hue < 11 ? 2 : 0;
}

void GrowRows(const Region& r, int rounds) {
    for (int round = 0; round < rounds; ++round)
        for (int y = 0; y < r.H; ++y) {
            for (int x = 1; x <= r.W - 1; ++x)
                if (r.Class(x, y) == 1 && Reddish(r, x - 1, y) == 2) r.Class(x - 1, y) = 1;
            for (int x = r.W - 2; x >= 0; --x)
                if (r.Class(x, y) == 1 && Reddish(r, x + 1, y) == 2) r.Class(x + 1, y) = 1;
        }
}

void Coverage(const Region& r) {
    for (int y = 1; y < r.H - 1; ++y)
        for (int x = 1; x < r.W - 1; ++x) {
            int score = r.Class(x, y) == 1 ? 4 : 0;
            for (int j = -1; j <= 1; ++j)
                for (int i = -1; i <= 1; ++i)
                    if ((i || j) && r.Class(x + i, y + j) == 1) score += 1;
            r.b.coverage[r.At(x, y)] =
                static_cast<uint8_t>(TruncateToInt32(std::min(score / 12.0, 1.0) * 255.0));
        }
    for (int y = 1; y < r.H - 1; ++y)
        for (int x = 1; x < r.W - 1; ++x) {
            float sum = 4 * r.b.coverage[r.At(x, y)];
            for (int j = -1; j <= 1; ++j)
                for (int i = -1; i <= 1; ++i)
                    if (i || j) sum += r.b.coverage[r.At(x + i, y + j)];
            r.b.weight[r.At(x, y)] =
                static_cast<uint8_t>(TruncateToInt32(std::min(sum / 12.0, 255.0)));
        }
}

void Correct(const Region& r, float darkening) {
    float D = darkening / 5.0;
    for (int y = 0; y < r.H; ++y)
        for (int x = 0; x < r.W; ++x) {
            int a = r.b.weight[r.At(x, y)], b = r.b.depth[r.At(x, y)];
            uint16_t* hls = r.b.hls + 3 * r.At(x, y);
            int L = hls[1], S = hls[2];
            if (a == 0) continue;
            float k = a / 255.0;
            if (L > 150) k = 1.0;
            S = k == 1.0 ? 0 : TruncateToInt32(S * std::max(0.0, 1.0 - 1.5 * k));
            float threshold = D * 7.0 + 100.0;
            if (L < threshold) {
                float m = std::min((threshold - L) / 15.0, 1.0);
                L = std::clamp(TruncateToInt32(L - b * D * m), 0, 255);
            }
            hls[1] = static_cast<uint16_t>(L);
            hls[2] = static_cast<uint16_t>(S);
        }
}

}  // namespace

void RunPipeline(const PipelineBuffers& buffers, int32_t width, int32_t height, float tolerance,
                 float darkening) {
    if (width <= 0 || height <= 0) return;
    const Region r{buffers, width, height};
    Classify(r, tolerance);
    Chamfer(r);
    Smooth(r);
    GrowWeak(r, TruncateToInt32(tolerance / 40.0));
    GrowRows(r, TruncateToInt32(tolerance / 30.0 + 1.0));
    Coverage(r);
    Correct(r, darkening);
    for (int y = 0; y < r.H; ++y)
        for (int x = 0; x < r.W; ++x) HlsToRgb(r.b.hls + 3 * r.At(x, y), r.b.work + 3 * r.At(x, y));
}

}  // namespace literal
