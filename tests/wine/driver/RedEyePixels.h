// A test document with red eyes, and what the filter makes of the host's
// pixels, worked out with the red-eye pipeline on a copy, for tests to
// compare the host's buffers with. Pixels are addressed as the filter
// addresses them: pixel (x, y) at y * row bytes + x * planes bytes, its
// first three bytes taken as RGB whatever the depth of the samples.
#pragma once

#include "testhost/Image.h"

// A rectangle of pixels; right and bottom are exclusive.
struct PixelBox {
    int left;
    int top;
    int right;
    int bottom;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
};

// Writes the pixels of `box` of `source`, after the pipeline, into `target`
// with the box's first pixel at (x, y); the bytes past the third of a pixel
// keep their value.
void PutCorrected(testhost::Image& target, int x, int y, const testhost::Image& source,
                  PixelBox box, float tolerance = 50.0f, float darkening = 50.0f);

// The document with `box` corrected in place and everything else as it was.
testhost::Image Corrected(const testhost::Image& in, PixelBox box, float tolerance = 50.0f,
                          float darkening = 50.0f);

// Skin with a little grain and two red pupils with a catchlight, at a third
// and two thirds of the width, half-way down, seven pixels in radius.
// Samples past the third keep a noise of their own.
testhost::Image RedEyeImage(int width, int height, int planes);
