#include "testhost/Image.h"

#include <algorithm>
#include <sstream>

namespace testhost {

Image::Image(int width, int height, int planes, int depth)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      planes_(std::clamp(planes, 1, 5)),
      depth_(depth == 16 ? 16 : 8) {
    samples_.assign(RowBytes() * static_cast<size_t>(height_), 0);
}

size_t Image::RowBytes() const {
    return static_cast<size_t>(width_) * static_cast<size_t>(planes_) *
           static_cast<size_t>(BytesPerSample());
}

size_t Image::Offset(int x, int y, int plane) const {
    return static_cast<size_t>(y) * RowBytes() +
           (static_cast<size_t>(x) * static_cast<size_t>(planes_) + static_cast<size_t>(plane)) *
               static_cast<size_t>(BytesPerSample());
}

uint16_t Image::Sample(int x, int y, int plane) const {
    if (!Contains(x, y) || plane < 0 || plane >= planes_) return 0;
    const uint8_t* p = &samples_[Offset(x, y, plane)];
    return depth_ == 16 ? static_cast<uint16_t>(p[0] | (p[1] << 8)) : p[0];
}

void Image::SetSample(int x, int y, int plane, uint16_t value) {
    if (!Contains(x, y) || plane < 0 || plane >= planes_) return;
    uint8_t* p = &samples_[Offset(x, y, plane)];
    p[0] = static_cast<uint8_t>(value);
    if (depth_ == 16) p[1] = static_cast<uint8_t>(value >> 8);
}

std::vector<uint16_t> Image::Pixel(int x, int y) const {
    std::vector<uint16_t> pixel(static_cast<size_t>(planes_));
    for (int p = 0; p < planes_; ++p) pixel[static_cast<size_t>(p)] = Sample(x, y, p);
    return pixel;
}

void Image::SetPixel(int x, int y, const std::vector<uint16_t>& samples) {
    const int count = std::min(planes_, static_cast<int>(samples.size()));
    for (int p = 0; p < count; ++p) SetSample(x, y, p, samples[static_cast<size_t>(p)]);
}

void Image::FillRect(int x, int y, int w, int h, const std::vector<uint16_t>& samples) {
    const int right = std::min(x + w, width_);
    const int bottom = std::min(y + h, height_);
    for (int row = std::max(y, 0); row < bottom; ++row) {
        for (int col = std::max(x, 0); col < right; ++col) SetPixel(col, row, samples);
    }
}

void Image::FillNoise(uint32_t seed) {
    uint32_t state = seed * 2654435761u + 1;
    for (uint8_t& byte : samples_) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        byte = static_cast<uint8_t>(state >> 11);
    }
}

void Image::SelectRect(int x, int y, int w, int h, uint8_t value) {
    if (mask_.empty()) mask_.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), 0);
    const int right = std::min(x + w, width_);
    const int bottom = std::min(y + h, height_);
    for (int row = std::max(y, 0); row < bottom; ++row) {
        for (int col = std::max(x, 0); col < right; ++col) {
            mask_[static_cast<size_t>(row) * static_cast<size_t>(width_) +
                  static_cast<size_t>(col)] = value;
        }
    }
}

uint8_t Image::MaskAt(int x, int y) const {
    if (mask_.empty() || !Contains(x, y)) return 0;
    return mask_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)];
}

namespace {

bool SameShape(const Image& a, const Image& b) {
    return a.Width() == b.Width() && a.Height() == b.Height() && a.Planes() == b.Planes() &&
           a.Depth() == b.Depth();
}

// Calls visit(x, y, plane) for every differing sample outside the skipped
// rectangle; stops early when it returns false.
template <typename Visit>
void ForEachDifference(const Image& a, const Image& b, int skipX, int skipY, int skipW, int skipH,
                       Visit visit) {
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) {
            if (x >= skipX && x < skipX + skipW && y >= skipY && y < skipY + skipH) continue;
            for (int p = 0; p < a.Planes(); ++p) {
                if (a.Sample(x, y, p) != b.Sample(x, y, p) && !visit(x, y, p)) return;
            }
        }
    }
}

}  // namespace

size_t CountDifferentSamples(const Image& a, const Image& b) {
    if (!SameShape(a, b)) {
        return std::max(a.RowBytes() * static_cast<size_t>(a.Height()),
                        b.RowBytes() * static_cast<size_t>(b.Height())) +
               1;
    }
    size_t count = 0;
    ForEachDifference(a, b, 0, 0, 0, 0, [&](int, int, int) {
        ++count;
        return true;
    });
    return count;
}

std::string DescribeDifference(const Image& a, const Image& b) {
    std::ostringstream text;
    if (!SameShape(a, b)) {
        text << "shapes differ: " << a.Width() << "x" << a.Height() << "x" << a.Planes() << "@"
             << a.Depth() << " vs " << b.Width() << "x" << b.Height() << "x" << b.Planes() << "@"
             << b.Depth();
        return text.str();
    }
    size_t count = 0;
    ForEachDifference(a, b, 0, 0, 0, 0, [&](int x, int y, int p) {
        if (count++ == 0) {
            text << "first difference at (" << x << "," << y << ") plane " << p << ": "
                 << a.Sample(x, y, p) << " vs " << b.Sample(x, y, p) << "; ";
        }
        return true;
    });
    if (count == 0) return "";
    text << count << " samples differ";
    return text.str();
}

bool SameOutside(const Image& a, const Image& b, int x, int y, int w, int h) {
    if (!SameShape(a, b)) return false;
    bool same = true;
    ForEachDifference(a, b, x, y, w, h, [&](int, int, int) { return same = false; });
    return same;
}

}  // namespace testhost
