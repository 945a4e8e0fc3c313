// The document a run writes into. A row stays the source's until the run
// first writes to it, so a run costs the rows it writes rather than a copy
// of the whole document, as an editor shares a layer's untouched tiles.
#pragma once

#include <cstdint>
#include <vector>

#include "testhost/Image.h"

namespace testhost {

class DestinationImage {
  public:
    // Starts again from `source`'s samples (its mask stays with it).
    // `source` must not change until the next Begin() or Detach().
    void Begin(const Image& source);
    // Takes a copy of every row still shared, so that the source may change.
    void Detach();
    // The whole image, detached.
    const Image& Whole() {
        Detach();
        return image_;
    }

    // Row y (the source's while unwritten) and one of its samples.
    const uint8_t* Row(int y) const;
    uint16_t Sample(int x, int y, int plane) const;
    // Row y for writing; its current bytes are copied in first unless the
    // caller is about to overwrite all of them.
    uint8_t* WritableRow(int y, bool overwritingAll);
    void SetSample(int x, int y, int plane, uint16_t value);

  private:
    // The image whose row y is the current one.
    const Image& Holder(int y) const;

    Image image_;
    const Image* source_ = nullptr;
    std::vector<bool> written_;  // per row: the row is image_'s own
};

}  // namespace testhost
