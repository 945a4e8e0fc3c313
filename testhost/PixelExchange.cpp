#include "testhost/PixelExchange.h"

#include <algorithm>
#include <cstring>

namespace testhost {

namespace {

// Row padding and the guard after each buffer hold this byte; a module that
// writes there is caught at the next commit.
constexpr uint8_t kPadByte = 0xEE;
constexpr size_t kGuardBytes = 16;
constexpr int64_t kLargestBuffer = 512LL * 1024 * 1024;

VRect ToVRect(const Rect16& r) { return {r.top, r.left, r.bottom, r.right}; }

// Image coordinate of a coordinate sampled at `rate` (16.16), rounded down.
int Sampled(int32_t v, Fixed rate) {
    const int64_t scaled = static_cast<int64_t>(v) * rate;
    return static_cast<int>(scaled >= 0 ? scaled >> 16 : -((-scaled + 0xFFFF) >> 16));
}

void WriteSample(uint8_t* p, int sampleBytes, uint16_t value) {
    p[0] = static_cast<uint8_t>(value);
    if (sampleBytes == 2) p[1] = static_cast<uint8_t>(value >> 8);
}

uint16_t ReadSample(const uint8_t* p, int sampleBytes) {
    return sampleBytes == 2 ? static_cast<uint16_t>(p[0] | (p[1] << 8)) : p[0];
}

}  // namespace

bool IsEmpty(const VRect& r) { return r.right <= r.left || r.bottom <= r.top; }

DataRequest ReadRequest(const FilterRecord& record) {
    DataRequest request;
    const BigDocumentStruct* big = record.bigDocumentData;
    request.uses32Bit = big != nullptr && big->PluginUsing32BitCoordinates != 0;
    if (request.uses32Bit) {
        request.inRect = big->inRect32;
        request.outRect = big->outRect32;
        request.maskRect = big->maskRect32;
    } else {
        request.inRect = ToVRect(record.inRect);
        request.outRect = ToVRect(record.outRect);
        request.maskRect = ToVRect(record.maskRect);
    }
    request.inLoPlane = record.inLoPlane;
    request.inHiPlane = record.inHiPlane;
    request.outLoPlane = record.outLoPlane;
    request.outHiPlane = record.outHiPlane;
    request.inputPadding = record.inputPadding;
    request.outputPadding = record.outputPadding;
    request.maskPadding = record.maskPadding;
    request.inputRate = record.inputRate;
    request.maskRate = record.maskRate;
    return request;
}

OSErr PixelExchange::Serve(FilterRecord& record, const Image& source, DestinationImage& destination,
                           const HostSettings& settings, ServeRecord* served) {
    Commit(destination, source, settings.blendThroughMask);
    const DataRequest request = ReadRequest(record);
    const int sampleBytes = source.BytesPerSample();
    OSErr result = noErr;
    auto keep = [&result](OSErr err) {
        if (result == noErr) result = err;
    };

    keep(Prepare(in_, "inData", request.inRect, request.inLoPlane, request.inHiPlane,
                 source.Planes(), sampleBytes, settings.extraRowBytes));
    const size_t pixelBytes = size_t(source.Planes()) * sampleBytes;
    keep(Fill(
        in_, source, pixelBytes, request.inputRate, request.inputPadding,
        [&source](int y) { return source.Row(y); },
        [&source](int x, int y, int plane) { return source.Sample(x, y, plane); }));
    keep(Prepare(out_, "outData", request.outRect, request.outLoPlane, request.outHiPlane,
                 source.Planes(), sampleBytes, settings.extraRowBytes));
    keep(Fill(
        out_, source, pixelBytes, kFixedOne, request.outputPadding,
        [&destination](int y) { return destination.Row(y); },
        [&destination](int x, int y, int plane) { return destination.Sample(x, y, plane); }));
    out_.pendingCommit = !out_.empty();
    const bool maskWanted = record.haveMask != 0 && source.HasMask();
    keep(Prepare(mask_, "maskData", maskWanted ? request.maskRect : VRect{}, 0, 0, 1, 1,
                 settings.extraRowBytes));
    keep(Fill(
        mask_, source, 1, request.maskRate, request.maskPadding,
        [&source](int y) { return source.Mask().data() + static_cast<size_t>(y) * source.Width(); },
        [&source](int x, int y, int) { return source.MaskAt(x, y); }));

    auto hand = [](Buffer& buffer, bool withhold, void** data, int32_t* rowBytes) {
        const bool give = !withhold && !buffer.empty();
        *data = give ? buffer.bytes() : nullptr;
        *rowBytes = give ? buffer.rowBytes : 0;
        return give;
    };
    const bool inGiven = hand(in_, settings.nullInData, &record.inData, &record.inRowBytes);
    const bool outGiven = hand(out_, settings.nullOutData, &record.outData, &record.outRowBytes);
    const bool maskGiven =
        hand(mask_, settings.nullMaskData, &record.maskData, &record.maskRowBytes);
    record.inColumnBytes = inGiven ? in_.planes * sampleBytes : 0;
    record.inPlaneBytes = inGiven ? sampleBytes : 0;
    record.outColumnBytes = outGiven ? out_.planes * sampleBytes : 0;
    record.outPlaneBytes = outGiven ? sampleBytes : 0;
    if (settings.staleDataForEmptyRects) HandStaleData(record);

    if (served != nullptr) {
        served->request = request;
        served->result = result;
        served->inRowBytes = record.inRowBytes;
        served->outRowBytes = record.outRowBytes;
        served->maskRowBytes = record.maskRowBytes;
        served->inData = inGiven;
        served->outData = outGiven;
        served->maskData = maskGiven;
    }
    return result;
}

OSErr PixelExchange::Prepare(Buffer& buffer, const char* name, const VRect& rect, int loPlane,
                             int hiPlane, int imagePlanes, int sampleBytes, int32_t extraRowBytes) {
    Clear(buffer);
    buffer.name = name;
    if (IsEmpty(rect)) return noErr;
    if (loPlane < 0 || hiPlane >= imagePlanes || loPlane > hiPlane) {
        Fault(std::string(name) + " asked for planes " + std::to_string(loPlane) + ".." +
              std::to_string(hiPlane) + " of an image with " + std::to_string(imagePlanes));
        return paramErr;
    }
    const int64_t width = static_cast<int64_t>(rect.right) - rect.left;
    const int64_t height = static_cast<int64_t>(rect.bottom) - rect.top;
    const int planes = hiPlane - loPlane + 1;
    const int64_t usedRowBytes = width * planes * sampleBytes;
    const int64_t rowBytes = usedRowBytes + std::max(extraRowBytes, 0);
    if (rowBytes * height > kLargestBuffer) {
        Fault(std::string(name) + " asked for a rectangle of " + std::to_string(width) + "x" +
              std::to_string(height) + " pixels");
        return memFullErr;
    }
    buffer.rect = rect;
    buffer.loPlane = loPlane;
    buffer.planes = planes;
    buffer.sampleBytes = sampleBytes;
    buffer.rowBytes = static_cast<int32_t>(rowBytes);
    buffer.usedRowBytes = static_cast<size_t>(usedRowBytes);
    buffer.size = static_cast<size_t>(rowBytes * height) + kGuardBytes;
    if (buffer.storage.size() < buffer.size) {
        buffer.storage.reserve(buffer.size);
        buffer.storage.resize(buffer.size);
    }
    // Fill writes every pixel byte; only the row padding and the guard get
    // the pad byte here.
    uint8_t* bytes = buffer.bytes();
    if (rowBytes > usedRowBytes) {
        for (int64_t y = 0; y < height; ++y) {
            std::fill_n(bytes + y * rowBytes + usedRowBytes, rowBytes - usedRowBytes, kPadByte);
        }
    }
    std::fill_n(bytes + buffer.size - kGuardBytes, kGuardBytes, kPadByte);
    return noErr;
}

template <typename CopyRun>
bool PixelExchange::ForEachRun(const Buffer& buffer, int width, int height, size_t pixelBytes,
                               CopyRun copy) {
    const VRect& r = buffer.rect;
    if (r.left < 0 || r.top < 0 || r.right > width || r.bottom > height) return false;
    const size_t taken = static_cast<size_t>(buffer.planes) * buffer.sampleBytes;
    const size_t first = static_cast<size_t>(r.left) * pixelBytes +
                         static_cast<size_t>(buffer.loPlane) * buffer.sampleBytes;
    const size_t pixels = static_cast<size_t>(r.right - r.left);
    for (int32_t y = r.top; y < r.bottom; ++y) {
        const size_t row = static_cast<size_t>(y - r.top) * static_cast<size_t>(buffer.rowBytes);
        if (taken == pixelBytes) {
            copy(row, y, first, pixels * taken);
            continue;
        }
        for (size_t x = 0; x < pixels; ++x) {
            copy(row + x * taken, y, first + x * pixelBytes, taken);
        }
    }
    return true;
}

template <typename RowAt, typename SampleAt>
OSErr PixelExchange::Fill(Buffer& buffer, const Image& image, size_t pixelBytes, Fixed rate,
                          int16_t padding, RowAt rowAt, SampleAt sampleAt) {
    if (buffer.empty()) return noErr;
    if (rate <= 0) rate = kFixedOne;
    uint8_t* bytes = buffer.bytes();
    if (rate == kFixedOne &&
        ForEachRun(buffer, image.Width(), image.Height(), pixelBytes,
                   [bytes, &rowAt](size_t at, int32_t y, size_t from, size_t count) {
                       std::memcpy(bytes + at, rowAt(y) + from, count);
                   })) {
        return noErr;
    }
    const bool replicate = padding == -1 && image.Width() > 0 && image.Height() > 0;
    const uint16_t padValue = padding >= 0 && padding <= 255 ? static_cast<uint16_t>(padding) : 0;
    bool reachedOutside = false;
    const VRect& r = buffer.rect;
    for (int32_t y = r.top; y < r.bottom; ++y) {
        uint8_t* row = bytes + static_cast<size_t>(y - r.top) * buffer.rowBytes;
        for (int32_t x = r.left; x < r.right; ++x) {
            int sx = Sampled(x, rate);
            int sy = Sampled(y, rate);
            const bool inside = image.Contains(sx, sy);
            reachedOutside |= !inside;
            if (!inside && replicate) {
                sx = std::clamp(sx, 0, image.Width() - 1);
                sy = std::clamp(sy, 0, image.Height() - 1);
            }
            uint8_t* pixel = row + static_cast<size_t>(x - r.left) * buffer.planes *
                                       static_cast<size_t>(buffer.sampleBytes);
            for (int c = 0; c < buffer.planes; ++c) {
                const uint16_t value =
                    inside || replicate ? sampleAt(sx, sy, buffer.loPlane + c) : padValue;
                WriteSample(pixel + c * buffer.sampleBytes, buffer.sampleBytes, value);
            }
        }
    }
    if (reachedOutside && (padding < -1 || padding > 255)) {
        Fault(std::string(buffer.name) + " rectangle reaches outside the image with padding " +
              std::to_string(padding));
        return paramErr;
    }
    return noErr;
}

void PixelExchange::Commit(DestinationImage& destination, const Image& source, bool blend) {
    CheckPadding(in_);
    CheckPadding(mask_);
    CheckPadding(out_);
    if (!out_.pendingCommit) return;
    out_.pendingCommit = false;
    const uint8_t* bytes = out_.bytes();
    const VRect& r = out_.rect;
    const size_t pixelBytes = size_t(source.Planes()) * source.BytesPerSample();
    const bool wholeRows = r.left == 0 && r.right == source.Width() &&
                           size_t(out_.planes) * out_.sampleBytes == pixelBytes;
    if ((!blend || !source.HasMask()) &&
        ForEachRun(out_, source.Width(), source.Height(), pixelBytes,
                   [bytes, &destination, wholeRows](size_t at, int32_t y, size_t to, size_t count) {
                       std::memcpy(destination.WritableRow(y, wholeRows) + to, bytes + at, count);
                   })) {
        return;
    }
    for (int32_t y = std::max(r.top, 0); y < std::min(r.bottom, source.Height()); ++y) {
        const uint8_t* row = bytes + static_cast<size_t>(y - r.top) * out_.rowBytes;
        for (int32_t x = std::max(r.left, 0); x < std::min(r.right, source.Width()); ++x) {
            const uint8_t* pixel = row + static_cast<size_t>(x - r.left) * out_.planes *
                                             static_cast<size_t>(out_.sampleBytes);
            const uint32_t weight = blend && source.HasMask() ? source.MaskAt(x, y) : 255;
            for (int c = 0; c < out_.planes; ++c) {
                const int plane = out_.loPlane + c;
                const uint32_t value = ReadSample(pixel + c * out_.sampleBytes, out_.sampleBytes);
                const uint32_t original = source.Sample(x, y, plane);
                destination.SetSample(
                    x, y, plane,
                    static_cast<uint16_t>((value * weight + original * (255 - weight) + 127) /
                                          255));
            }
        }
    }
}

void PixelExchange::CheckPadding(const Buffer& buffer) {
    if (buffer.empty()) return;
    const uint8_t* guard = buffer.bytes() + buffer.size - kGuardBytes;
    const size_t rows = (buffer.size - kGuardBytes) / static_cast<size_t>(buffer.rowBytes);
    bool intact = std::all_of(guard, guard + kGuardBytes, [](uint8_t b) { return b == kPadByte; });
    for (size_t y = 0; y < rows && intact; ++y) {
        const uint8_t* row = buffer.bytes() + y * static_cast<size_t>(buffer.rowBytes);
        intact = std::all_of(row + buffer.usedRowBytes, row + buffer.rowBytes,
                             [](uint8_t b) { return b == kPadByte; });
    }
    if (!intact) Fault(std::string("module wrote outside the pixels of ") + buffer.name);
}

void PixelExchange::HandStaleData(FilterRecord& record) {
    const DataRequest request = ReadRequest(record);
    auto stale = [](const VRect& rect, std::unique_ptr<GuardedMemory>& memory, void** data,
                    int32_t* rowBytes) {
        if (!IsEmpty(rect)) return;
        if (!memory) memory = std::make_unique<GuardedMemory>();
        *data = memory->Middle();
        *rowBytes = 0;
    };
    stale(request.inRect, staleIn_, &record.inData, &record.inRowBytes);
    stale(request.outRect, staleOut_, &record.outData, &record.outRowBytes);
    stale(request.maskRect, staleMask_, &record.maskData, &record.maskRowBytes);
}

void PixelExchange::CheckStaleData() {
    auto check = [this](std::unique_ptr<GuardedMemory>& memory, const char* name) {
        if (memory && memory->TakeTouched()) {
            Fault(std::string("module touched ") + name + " handed out for an empty rectangle");
        }
    };
    check(staleIn_, "inData");
    check(staleOut_, "outData");
    check(staleMask_, "maskData");
}

void PixelExchange::Reset() {
    Clear(in_);
    Clear(out_);
    Clear(mask_);
}

void PixelExchange::Clear(Buffer& buffer) {
    std::vector<uint8_t> storage = std::move(buffer.storage);
    buffer = Buffer{};
    buffer.storage = std::move(storage);
}

void PixelExchange::Fault(const std::string& text) {
    if (faults_ != nullptr) faults_->push_back(text);
}

}  // namespace testhost
