// Pixel work of the filtering driver on the host's buffers: the area the host
// delivered, copies into and out of it, and the selection's bounding box.
// Portable: no host or Windows calls.
#pragma once

#include <cstdint>

// The host's input and output buffers for one area, interleaved pixels of
// `planes` bytes (or 16-bit samples for the deep copy).
struct HostArea {
    const uint8_t* in;
    int32_t inRowBytes;
    uint8_t* out;
    int32_t outRowBytes;
    int32_t width;
    int32_t height;
    int32_t planes;
};

// Copy of an image the filter does not process: three samples per pixel,
// a fourth with four planes or more, a fifth with five. Depth 8 copies
// bytes, depth 16 copies 16-bit samples, any other depth nothing.
void CopyUnsupportedArea(const HostArea& area, int32_t depth);

// Copies `columns` x `rows` input pixels from (originX, originY) on to the
// output from (0, 0), stopping at the area's right and bottom edges.
void CopyView(const HostArea& area, int32_t originX, int32_t originY, int32_t columns,
              int32_t rows);

struct RegionPlacement {
    int32_t left;  // region's position in the area
    int32_t top;
    int32_t width;
    int32_t height;
};

// Fills the zeroed W x H x 3 work image with the first three bytes of each
// region pixel that lies inside the area.
void FillWorkImage(const HostArea& area, const RegionPlacement& region, uint8_t* work);

// Writes the work image back, shifted by the view origin, wherever the
// target lies inside the area; bytes past the third of a pixel are kept.
void WriteBackWorkImage(const HostArea& area, const RegionPlacement& region, int32_t originX,
                        int32_t originY, const uint8_t* work);

struct SelectionBounds {
    int32_t minX;
    int32_t minY;
    int32_t maxX;
    int32_t maxY;
};

// Smallest and largest x and y of the non-zero mask bytes; with none the
// minima stay at width and height and the maxima at 0.
SelectionBounds FindSelectionBounds(const uint8_t* mask, int32_t maskRowBytes, int32_t width,
                                    int32_t height);
