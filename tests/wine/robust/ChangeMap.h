// Which bytes of the document a real run of the filter may change: for each
// area the host delivered, the region the module corrects there, worked out
// from the delivered rectangles and mask the way the module finds it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "testhost/HostLog.h"
#include "testhost/Image.h"

namespace robust {

// The stored view rectangle, for runs without a selection.
struct StoredRect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
};

class ChangeMap {
  public:
    explicit ChangeMap(const testhost::Image& document);

    // Adds the region the module corrects in one delivered area. The module
    // addresses `planes` bytes per pixel whatever the sample size and
    // rewrites the first three bytes (fewer with fewer planes).
    void AddDelivery(const testhost::ServeRecord& served, const StoredRect& stored);
    // Adds every byte of a delivered output area (what the dialog's preview
    // may leave in the host's buffer).
    void AddWholeArea(const testhost::ServeRecord& served);

    // Empty when every byte that differs between the two documents may
    // change; otherwise where the first forbidden change is and how many.
    std::string ForbiddenChanges(const testhost::Image& before, const testhost::Image& after) const;

  private:
    struct Region {
        int32_t left, top, right, bottom;  // right and bottom exclusive
    };
    Region SelectionRegion(const testhost::ServeRecord& served, int32_t width,
                           int32_t height) const;
    void Allow(const VRect& area, const Region& region);
    uint16_t SampleBits(int64_t byteInPixel) const;
    uint16_t& AllowedAt(int32_t x, int32_t y);

    const testhost::Image& document_;
    int pixelBytes_;
    // Per document pixel, one bit per byte of the pixel that may change.
    std::vector<uint16_t> allowed_;
};

}  // namespace robust
