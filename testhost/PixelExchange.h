// Hands the module the pixel data it asks for (inData, outData, maskData)
// and writes its output back into the document.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hostapi/HostApi.h"
#include "testhost/DestinationImage.h"
#include "testhost/GuardedMemory.h"
#include "testhost/HostLog.h"
#include "testhost/HostSettings.h"
#include "testhost/Image.h"

namespace testhost {

// The request as the module sees it (32-bit rectangles when it switched to them).
DataRequest ReadRequest(const FilterRecord& record);
bool IsEmpty(const VRect& r);

class PixelExchange {
  public:
    explicit PixelExchange(std::vector<std::string>* faults) : faults_(faults) {}

    // Writes the pending output into `destination`, then serves the current
    // request: inData and maskData from `source`, outData from `destination`.
    // Empty rectangles get null pointers and row bytes 0 (stale ones with
    // settings.staleDataForEmptyRects).
    OSErr Serve(FilterRecord& record, const Image& source, DestinationImage& destination,
                const HostSettings& settings, ServeRecord* served);
    // Writes the pending outData back into `destination` (once per serve),
    // blended with `source` through its mask when `blend` is set.
    void Commit(DestinationImage& destination, const Image& source, bool blend);
    // Points the data of every empty rectangle of the current request at
    // guarded memory, with row bytes 0, as a host that keeps its last
    // buffers leaves them. The pending output stays pending.
    void HandStaleData(FilterRecord& record);
    // Records a fault for every stale pointer the module read or wrote through.
    void CheckStaleData();
    // Forgets every buffer.
    void Reset();

  private:
    struct Buffer {
        // Kept from request to request and only ever grown, as an editor
        // keeps its tiles: no fresh pages to fault in on every delivery.
        std::vector<uint8_t> storage;
        size_t size = 0;  // bytes of the current request, the guard included; 0 for none
        VRect rect{};
        int loPlane = 0;
        int planes = 0;  // planes in the buffer
        int sampleBytes = 1;
        int32_t rowBytes = 0;
        size_t usedRowBytes = 0;  // without the row padding
        bool pendingCommit = false;
        const char* name = "";
        uint8_t* bytes() { return storage.data(); }
        const uint8_t* bytes() const { return storage.data(); }
        bool empty() const { return size == 0; }
    };

    OSErr Prepare(Buffer& buffer, const char* name, const VRect& rect, int loPlane, int hiPlane,
                  int imagePlanes, int sampleBytes, int32_t extraRowBytes);
    // Fills the buffer from a document shaped like `image`, with `pixelBytes`
    // to a pixel: rowAt(y) gives the bytes of row y (the fast path copies
    // from there), sampleAt(x, y, plane) one sample.
    template <typename RowAt, typename SampleAt>
    OSErr Fill(Buffer& buffer, const Image& image, size_t pixelBytes, Fixed rate, int16_t padding,
               RowAt rowAt, SampleAt sampleAt);
    // The fast path of Fill and Commit, for a rectangle inside a document of
    // width x height pixels: calls copy(offset in the buffer, document row,
    // offset in that row, bytes) for runs of bytes, one per row when the
    // buffer holds every plane, else one per pixel. False, and no call,
    // otherwise.
    template <typename CopyRun>
    static bool ForEachRun(const Buffer& buffer, int width, int height, size_t pixelBytes,
                           CopyRun copy);
    void CheckPadding(const Buffer& buffer);
    // Empties the buffer and forgets its request.
    static void Clear(Buffer& buffer);
    void Fault(const std::string& text);

    std::vector<std::string>* faults_;
    Buffer in_, out_, mask_;
    // Where the stale pointers lead, one region for each buffer (made on first use).
    std::unique_ptr<GuardedMemory> staleIn_, staleOut_, staleMask_;
};

}  // namespace testhost
