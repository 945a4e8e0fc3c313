#include "dialog/PreviewPicture.h"

#include <algorithm>
#include <cstring>

#include "dialog/PageMemory.h"
#include "dialog/PreviewState.h"
#include "dialog/ViewGeometry.h"
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "redeye/Truncate.h"

namespace {

constexpr int kPaddingWhite = 255;
constexpr double kFixedScale = 65536.0;

// One of the host's buffers: `extent` pixels of `planes` bytes, rows
// `rowBytes` apart (upwards in memory when negative).
struct HostPixels {
    const uint8_t* data;
    int32_t rowBytes;
    int32_t planes;
    PictureExtent extent;

    // Whether the byte at `offset` from the first row's start belongs to
    // the buffer: from the lowest row's start to the last pixel of the
    // highest row.
    bool Holds(int64_t offset) const {
        if (extent.width == 0 || extent.height == 0) return false;
        const int64_t lastRow = static_cast<int64_t>(rowBytes) * (extent.height - 1);
        return offset >= std::min<int64_t>(lastRow, 0) &&
               offset < std::max<int64_t>(lastRow, 0) + static_cast<int64_t>(extent.width) * planes;
    }
};

// Three colour bytes, red first, and with four planes or more the alpha
// byte that scales them: 0 black, 255 as they are. Bytes outside the
// buffer read as 0.
void CopyPixel(const HostPixels& source, int32_t column, int32_t row, bool alpha, uint8_t* target) {
    column = std::clamp(column, 0, std::max(source.extent.width - 1, 0));
    row = std::clamp(row, 0, std::max(source.extent.height - 1, 0));
    const int64_t offset =
        static_cast<int64_t>(column) * source.planes + static_cast<int64_t>(row) * source.rowBytes;
    auto byteAt = [&](int k) {
        return source.Holds(offset + k) ? source.data[offset + k] : uint8_t{0};
    };
    uint8_t red = byteAt(0);
    uint8_t green = byteAt(1);
    uint8_t blue = byteAt(2);
    if (alpha) {
        const uint8_t a = byteAt(3);
        const float factor = a / 255.0f;
        if (a != 255) {
            red = static_cast<uint8_t>(TruncateToInt32(red * factor));
            green = static_cast<uint8_t>(TruncateToInt32(green * factor));
            blue = static_cast<uint8_t>(TruncateToInt32(blue * factor));
        }
    }
    target[0] = blue;
    target[1] = green;
    target[2] = red;
}

// Frees the previous picture and makes room for a new one of `shown`
// pixels; false when there is nothing to show or no memory.
bool StartPicture(PreviewPaneRecord* pane, PictureExtent shown) {
    if (pane->bitmap != nullptr) DeleteObject(pane->bitmap);
    pane->bitmap = nullptr;
    ReleasePages(pane->pixels);
    pane->pixels = static_cast<uint8_t*>(AllocatePages(static_cast<uint64_t>(shown.width) *
                                                       static_cast<uint64_t>(shown.height) * 3));
    if (pane->pixels == nullptr) return false;
    std::memset(&pane->header, 0, sizeof pane->header);
    BITMAPINFOHEADER& info = pane->header.info;
    info.biSize = sizeof info;
    info.biWidth = shown.width;
    info.biHeight = shown.height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biCompression = BI_RGB;
    return true;
}

// Picture row y (0 at the top) of a bottom-up picture.
uint8_t* PictureRow(const PreviewPaneRecord* pane, int32_t y) {
    const int32_t width = pane->header.info.biWidth;
    const int32_t height = pane->header.info.biHeight;
    return pane->pixels + static_cast<size_t>(height - 1 - y) * width * 3;
}

void FinishPicture(PreviewPaneRecord* pane) {
    HDC dc = GetDC(pane->head.window);
    pane->bitmap =
        CreateDIBitmap(dc, &pane->header.info, CBM_INIT, pane->pixels,
                       reinterpret_cast<const BITMAPINFO*>(&pane->header), DIB_RGB_COLORS);
    ReleaseDC(pane->head.window, dc);
    pane->bitmapSize = PanePoint{pane->header.info.biWidth, pane->header.info.biHeight};
}

// Centres `shown` (or, in the detail pane at 1:1, the whole image) in the
// pane; a picture larger than the pane starts at its corner.
PanePoint CentredOrigin(const PreviewPaneRecord* pane, PictureExtent shown) {
    return PanePoint{std::max((pane->head.width - shown.width) >> 1, 0),
                     std::max((pane->head.height - shown.height) >> 1, 0)};
}

void RequestWholeImage(FilterRecord* filterRecord) {
    const Rect16 filterRect = GetFilterRect();
    SetInRect(filterRect);
    SetOutRect(filterRect);
    SetMaskRect(filterRect);
    filterRecord->inLoPlane = filterRecord->outLoPlane = 0;
    filterRecord->inHiPlane = filterRecord->outHiPlane =
        static_cast<int16_t>(filterRecord->planes - 1);
    filterRecord->inputRate = filterRecord->maskRate =
        TruncateToInt32(sharedPreviewScale * kFixedScale);
    filterRecord->inputPadding = filterRecord->outputPadding = filterRecord->maskPadding =
        kPaddingWhite;
}

}  // namespace

void LoadSourceImage(PreviewPaneRecord* pane) {
    pane->shownSize = PanePoint{pane->head.width, pane->head.height};
    FilterGlobals* globals = pane->globals;
    Rect16& previewRect = globals->previewRect;
    previewRect.right = static_cast<int16_t>(previewRect.right - previewRect.left);
    previewRect.left = 0;
    previewRect.bottom = static_cast<int16_t>(previewRect.bottom - previewRect.top);
    previewRect.top = 0;

    FilterRecord* filterRecord = globals->filterRecord;
    RequestWholeImage(filterRecord);
    const PictureExtent delivered = RectExtent(GetInRect());
    pane->imageSize = PanePoint{delivered.width, delivered.height};
    if (filterRecord->advanceState != nullptr) *globals->result = filterRecord->advanceState();

    const PictureExtent output = RectExtent(GetOutRect());
    const uint64_t bufferSize = static_cast<uint64_t>(output.width) * output.height * 4;
    for (uint8_t*& buffer : pane->sourceBuffers) {
        ReleasePages(buffer);
        buffer = static_cast<uint8_t*>(AllocatePages(bufferSize));
    }
}

void BuildNavigatorImage(PreviewPaneRecord* pane) {
    if (pane->globals == nullptr) return;
    const FilterRecord* filterRecord = pane->globals->filterRecord;
    const PictureExtent image = RectExtent(GetFilterRect());
    if (image.width == 0 || image.height == 0 || filterRecord->inData == nullptr) return;
    const PictureExtent paneExtent{pane->head.width, pane->head.height};
    const float fit = NavigatorFit(paneExtent, image);
    const PictureExtent shown = NavigatorExtent(paneExtent, image);
    pane->shownSize = PanePoint{shown.width, shown.height};
    if (!StartPicture(pane, shown)) return;
    pane->imageOrigin = CentredOrigin(pane, shown);

    const HostPixels source{static_cast<const uint8_t*>(filterRecord->inData),
                            filterRecord->inRowBytes, filterRecord->planes,
                            RectExtent(GetInRect())};
    const bool alpha = filterRecord->planes > 3;
    const float step = 1.0f / fit;
    for (int32_t y = 0; y < shown.height; ++y) {
        uint8_t* target = PictureRow(pane, y);
        const int32_t row = TruncateToInt32(y * step + 0.5);
        for (int32_t x = 0; x < shown.width; ++x, target += 3) {
            CopyPixel(source, TruncateToInt32(x * step + 0.5), row, alpha, target);
        }
    }
    FinishPicture(pane);
}

void BuildDetailImage(PreviewPaneRecord* pane) {
    if (pane->globals == nullptr) return;
    const FilterRecord* filterRecord = pane->globals->filterRecord;
    const FilterParameters* parameters = Parameters(pane->globals);
    if (parameters == nullptr) return;
    const PictureExtent image = RectExtent(GetOutRect());
    const int32_t planes = filterRecord->planes;
    const float scale = parameters->viewScale;
    const bool oneToOne = scale == 1.0f;
    const PictureExtent zoomed =
        oneToOne ? image
                 : PictureExtent{std::max(TruncateToInt32(image.width / scale), 0),
                                 std::max(TruncateToInt32(image.height / scale), 0)};
    const PictureExtent shown{std::min(pane->head.width, zoomed.width) & ~3,
                              std::min(pane->head.height, zoomed.height)};
    pane->shownSize = PanePoint{shown.width, shown.height};
    if (filterRecord->outData == nullptr) return;
    if (!StartPicture(pane, shown)) return;
    pane->imageOrigin = CentredOrigin(pane, zoomed);

    PanePoint start = pane->viewShift;
    if (start.y >= image.height - shown.height) start.y = image.height - shown.height - 1;
    if (start.x >= image.width - shown.width) start.x = image.width - shown.width - 1;
    start.x = std::max(start.x, 0);
    start.y = std::max(start.y, 0);

    const bool alpha = planes == 4 || planes == 5;
    if (planes == 3 || alpha) {
        const HostPixels source{static_cast<const uint8_t*>(filterRecord->outData),
                                filterRecord->outRowBytes, planes, image};
        for (int32_t y = 0; y < shown.height; ++y) {
            uint8_t* target = PictureRow(pane, y);
            const int32_t row = oneToOne ? start.y + y : TruncateToInt32(start.y + y * scale);
            for (int32_t x = 0; x < shown.width; ++x, target += 3) {
                const int32_t column =
                    oneToOne ? start.x + x : TruncateToInt32(start.x + x * scale);
                CopyPixel(source, column, row, alpha, target);
            }
        }
    }
    FinishPicture(pane);
}
