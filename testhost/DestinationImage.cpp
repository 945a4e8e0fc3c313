#include "testhost/DestinationImage.h"

#include <cstring>

namespace testhost {

void DestinationImage::Begin(const Image& source) {
    if (image_.Width() != source.Width() || image_.Height() != source.Height() ||
        image_.Planes() != source.Planes() || image_.Depth() != source.Depth()) {
        image_ = Image(source.Width(), source.Height(), source.Planes(), source.Depth());
    }
    source_ = &source;
    written_.assign(static_cast<size_t>(source.Height()), false);
}

void DestinationImage::Detach() {
    if (source_ == nullptr) return;
    for (int y = 0; y < image_.Height(); ++y) WritableRow(y, false);
    source_ = nullptr;
}

const Image& DestinationImage::Holder(int y) const {
    return written_[static_cast<size_t>(y)] ? image_ : *source_;
}

const uint8_t* DestinationImage::Row(int y) const { return Holder(y).Row(y); }

uint16_t DestinationImage::Sample(int x, int y, int plane) const {
    return Holder(y).Sample(x, y, plane);
}

uint8_t* DestinationImage::WritableRow(int y, bool overwritingAll) {
    uint8_t* row = image_.Row(y);
    if (!written_[static_cast<size_t>(y)]) {
        if (!overwritingAll) std::memcpy(row, Row(y), image_.RowBytes());
        written_[static_cast<size_t>(y)] = true;
    }
    return row;
}

void DestinationImage::SetSample(int x, int y, int plane, uint16_t value) {
    WritableRow(y, false);
    image_.SetSample(x, y, plane, value);
}

}  // namespace testhost
