// A whole document as the test host keeps it: interleaved samples of 8 or
// 16 bits, 1 to 5 planes, and an optional selection mask.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace testhost {

class Image {
  public:
    Image() = default;
    // width x height pixels, `planes` samples per pixel (1..5), `depth` 8 or
    // 16 bits per sample; every sample starts at 0 and there is no mask.
    Image(int width, int height, int planes, int depth = 8);

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Planes() const { return planes_; }
    int Depth() const { return depth_; }
    int BytesPerSample() const { return depth_ / 8; }
    // Bytes of one tightly packed row.
    size_t RowBytes() const;

    bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }
    uint16_t Sample(int x, int y, int plane) const;
    void SetSample(int x, int y, int plane, uint16_t value);
    // All samples of one pixel (Planes() values).
    std::vector<uint16_t> Pixel(int x, int y) const;
    void SetPixel(int x, int y, const std::vector<uint16_t>& samples);

    // Sets every pixel of the rectangle (clipped to the image) to `samples`.
    void FillRect(int x, int y, int w, int h, const std::vector<uint16_t>& samples);
    void Fill(const std::vector<uint16_t>& samples) { FillRect(0, 0, width_, height_, samples); }
    // Fills every sample with a reproducible pseudo-random value.
    void FillNoise(uint32_t seed);

    // Raw interleaved samples, row after row (RowBytes() each).
    uint8_t* Data() { return samples_.data(); }
    const uint8_t* Data() const { return samples_.data(); }
    uint8_t* Row(int y) { return Data() + static_cast<size_t>(y) * RowBytes(); }
    const uint8_t* Row(int y) const { return Data() + static_cast<size_t>(y) * RowBytes(); }

    // Selection mask: one byte per pixel, 255 = selected, 0 = not selected.
    bool HasMask() const { return !mask_.empty(); }
    void ClearMask() { mask_.clear(); }
    // Creates an all-zero mask if there is none, then sets the rectangle.
    void SelectRect(int x, int y, int w, int h, uint8_t value = 255);
    uint8_t MaskAt(int x, int y) const;
    std::vector<uint8_t>& Mask() { return mask_; }
    const std::vector<uint8_t>& Mask() const { return mask_; }

  private:
    size_t Offset(int x, int y, int plane) const;

    int width_ = 0;
    int height_ = 0;
    int planes_ = 0;
    int depth_ = 8;
    std::vector<uint8_t> samples_;
    std::vector<uint8_t> mask_;
};

// Number of samples that differ (images of different shapes differ everywhere).
size_t CountDifferentSamples(const Image& a, const Image& b);
// Empty when the samples are equal; otherwise the first difference and the
// count, for test failure messages.
std::string DescribeDifference(const Image& a, const Image& b);
// True when the two images are equal outside the rectangle.
bool SameOutside(const Image& a, const Image& b, int x, int y, int w, int h);

}  // namespace testhost
