// What the filter makes of the host's pixels, worked out with the red-eye
// pipeline on a copy, for tests to compare the host's buffers with.
#pragma once

#include <cstdint>
#include <vector>

#include "testhost/Image.h"

// Interleaved pixels as the filter addresses them: pixel (x, y) at
// y * rowBytes + x * planes bytes, its first three bytes taken as RGB
// whatever the depth of the samples.
struct PixelLayout {
    int rowBytes;
    int planes;
};

// A rectangle of pixels; right and bottom are exclusive.
struct PixelBox {
    int left;
    int top;
    int right;
    int bottom;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
};

PixelLayout LayoutOf(const testhost::Image& image);

// The box's pixels after the pipeline: three bytes each, row after row.
std::vector<uint8_t> CorrectBox(const uint8_t* pixels, PixelLayout layout, PixelBox box,
                                float tolerance, float darkening);

// Writes the three bytes of each pixel of `rgb` (as CorrectBox makes them
// for a box of `width` x `height`) with its first pixel at (x, y); the
// bytes past the third of a pixel keep their value.
void PutBox(uint8_t* pixels, PixelLayout layout, int x, int y, int width, int height,
            const std::vector<uint8_t>& rgb);

// The document with `box` corrected in place and everything else as it was.
testhost::Image Corrected(const testhost::Image& in, PixelBox box, float tolerance = 50.0f,
                          float darkening = 50.0f);
