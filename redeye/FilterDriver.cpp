// The filtering driver: checks the mode, passes the area through, finds the
// region to correct (the selection's bounding box, or the stored or visible
// view), runs the red-eye pipeline on it in private buffers and writes the
// result back into the host's output buffer.
#include "redeye/FilterDriver.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "dialog/PreviewState.h"
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "plugin/Messages.h"
#include "redeye/HostArea.h"
#include "redeye/Pipeline.h"
#include "redeye/WorkingBuffers.h"

// Values of the last run, published for the dialog and the preview panes.
FilterGlobals* gRunGlobals = nullptr;
int32_t gAreaWidth = 0;
int32_t gAreaHeight = 0;
bool gMaskPresent = false;
int32_t gMaskRowBytes = 0;
int32_t gOutRowBytes = 0;

namespace {

constexpr UINT kProgressSetPosition = WM_USER + 2;

// Float to int, truncating toward zero; values no int can hold saturate.
int32_t TruncateToInt(double value) {
    if (std::isnan(value)) return 0;
    if (value >= 2147483647.0) return INT32_MAX;
    if (value <= -2147483648.0) return INT32_MIN;
    return static_cast<int32_t>(value);
}

// a + b without overflow: the view position comes from the stored record,
// which may hold anything.
int32_t SaturatingSum(int32_t a, int32_t b) {
    const int64_t sum = int64_t{a} + b;
    return static_cast<int32_t>(std::clamp<int64_t>(sum, INT32_MIN, INT32_MAX));
}

struct View {
    int32_t originX;
    int32_t originY;
    int32_t width;
    int32_t height;
};

View RealRunView() { return View{0, 0, gAreaWidth, gAreaHeight}; }

// The part of the image the detail pane shows at the stored zoom.
View PreviewView(const FilterParameters& parameters) {
    View view{TruncateToInt(parameters.viewX), TruncateToInt(parameters.viewY), 0, 0};
    const double zoom = parameters.viewScale;
    view.width = std::min<int32_t>(previewPaneWidth, TruncateToInt(gAreaWidth / zoom));
    view.height = std::min<int32_t>(previewPaneHeight, TruncateToInt(gAreaHeight / zoom));
    if (zoom != 1.0) {
        view.width = TruncateToInt(view.width * zoom);
        view.height = TruncateToInt(view.height * zoom);
    }
    return view;
}

void ClampOrigin(View& view) {
    if (view.originX >= gAreaWidth - view.width) view.originX = gAreaWidth - view.width - 1;
    if (view.originY >= gAreaHeight - view.height) view.originY = gAreaHeight - view.height - 1;
    view.originX = std::max(view.originX, 0);
    view.originY = std::max(view.originY, 0);
}

// The mask covers the area unless the host handed a smaller one.
SelectionBounds ScanSelection(const FilterRecord& filterRecord) {
    const Rect16& maskRect = filterRecord.maskRect;
    int32_t width = gAreaWidth;
    int32_t height = gAreaHeight;
    if (maskRect.right > maskRect.left && maskRect.bottom > maskRect.top) {
        width = std::min<int32_t>(width, maskRect.right - maskRect.left);
        height = std::min<int32_t>(height, maskRect.bottom - maskRect.top);
    }
    if (filterRecord.maskRowBytes >= 0) width = std::min(width, filterRecord.maskRowBytes);
    SelectionBounds bounds = FindSelectionBounds(static_cast<const uint8_t*>(filterRecord.maskData),
                                                 filterRecord.maskRowBytes, width, height);
    return bounds;
}

void FindRegion(const FilterRecord& filterRecord, FilterParameters& parameters, bool preview,
                int32_t copyWidth, int32_t copyHeight) {
    if (parameters.viewState <= 0 && !gMaskPresent) {
        if (preview) {
            parameters.viewLeft = TruncateToInt(parameters.viewX);
            parameters.viewTop = TruncateToInt(parameters.viewY);
            parameters.viewRight = SaturatingSum(parameters.viewLeft, copyWidth);
            parameters.viewBottom = SaturatingSum(parameters.viewTop, copyHeight);
        }
        parameters.viewState = kViewStoredRect;
    } else if (!preview) {
        const SelectionBounds box = ScanSelection(filterRecord);
        if (box.maxX <= box.minX || box.maxY <= box.minY) {
            parameters.viewState = kViewEmptySelection;
        } else {
            parameters.viewState = kViewSelectionBox;
            parameters.viewLeft = box.minX;
            parameters.viewRight = box.maxX;
            parameters.viewTop = box.minY;
            parameters.viewBottom = box.maxY;
            parameters.viewX = static_cast<float>(box.minX);
            parameters.viewY = static_cast<float>(box.minY);
        }
    }
    if (parameters.viewLeft < 0) parameters.viewLeft = 0;
    if (parameters.viewTop < 0) parameters.viewTop = 0;
    if (parameters.viewRight >= gAreaWidth) parameters.viewRight = gAreaWidth - 1;
    if (parameters.viewBottom >= gAreaHeight) parameters.viewBottom = gAreaHeight - 1;
}

// The region's right column and bottom row (the selection's largest x and y)
// are outside it: the box's last column and row keep their input pixels.
void CorrectRegion(const HostArea& area, const FilterParameters& parameters, const View& view) {
    // The clamped right and bottom edges lie inside the area, so a region
    // with positive extent fits in 32 bits; a stored left or top edge past
    // them (or any garbage a host kept) gives none.
    const int64_t width = int64_t{parameters.viewRight} - parameters.viewLeft;
    const int64_t height = int64_t{parameters.viewBottom} - parameters.viewTop;
    if (width <= 0 || height <= 0) return;
    const RegionPlacement region{parameters.viewLeft, parameters.viewTop,
                                 static_cast<int32_t>(width), static_cast<int32_t>(height)};
    WorkingBuffers buffers(region.width, region.height);
    if (!buffers.Allocated()) return;
    FillWorkImage(area, region, buffers.Get().work);
    RunRedEyePipeline(buffers.Get(), region.width, region.height, parameters.tolerance,
                      parameters.darkening);
    WriteBackWorkImage(area, region, view.originX, view.originY, buffers.Get().work);
}

void SignalCompletion(const FilterRecord& filterRecord, bool preview) {
    if (preview) {
        SendMessageA(static_cast<HWND>(previewProgressWindow), kProgressSetPosition, 0, 0);
    } else if (filterRecord.progressProc != nullptr) {
        // Hosts are told 0 of 100: the run is complete when RunFilter returns.
        filterRecord.progressProc(0, 100);
    }
}

}  // namespace

void RunFilter(FilterGlobals* globals, int flag) {
    (void)flag;  // preview runs are told apart by the open dialog alone
    FilterRecord& filterRecord = *globals->filterRecord;
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) return;

    GetInRect();
    const Rect16 outRect = GetOutRect();
    gRunGlobals = globals;
    gAreaWidth = outRect.right - outRect.left;
    gAreaHeight = outRect.bottom - outRect.top;
    gMaskPresent = filterRecord.haveMask != 0;
    gMaskRowBytes = filterRecord.maskRowBytes;
    gOutRowBytes = filterRecord.outRowBytes;
    parameters->imageTouched = 1;
    const bool preview = dialogOpen;

    if (filterRecord.planes < 3) {
        MessageBoxA(nullptr, "Color mode should be RGB!", "WARNING", MB_ICONEXCLAMATION | MB_OK);
    }
    if (!preview || previewFullScale) sharedPreviewScale = 1.0f;

    const HostArea area{static_cast<const uint8_t*>(filterRecord.inData),
                        filterRecord.inRowBytes,
                        static_cast<uint8_t*>(filterRecord.outData),
                        filterRecord.outRowBytes,
                        std::max(gAreaWidth, 0),
                        std::max(gAreaHeight, 0),
                        filterRecord.planes};
    if (filterRecord.imageMode != plugInModeRGBColor && filterRecord.imageMode != plugInModeRGB48) {
        MessageBoxA(nullptr, "dont support this image mode", "Sory", MB_ICONEXCLAMATION | MB_OK);
        CopyUnsupportedArea(area, filterRecord.depth == 0 ? 8 : filterRecord.depth);
        return;
    }

    View view = preview ? PreviewView(*parameters) : RealRunView();
    ClampOrigin(view);
    const int32_t copyWidth = std::min(view.width, gAreaWidth);
    const int32_t copyHeight = std::min(view.height, gAreaHeight);
    CopyView(area, view.originX, view.originY, copyWidth, copyHeight);

    if (!preview && !gMaskPresent) {
        ShowNotice(nullptr);
        parameters->viewState = kViewNoSelection;
    }
    FindRegion(filterRecord, *parameters, preview, copyWidth, copyHeight);
    if (parameters->viewState >= 1 || parameters->viewState == kViewStoredRect) {
        CorrectRegion(area, *parameters, view);
    }
    SignalCompletion(filterRecord, preview);
}

void RunPreviewFilter(FilterGlobals* globals, int flag) {
    FilterParameters* parameters = Parameters(globals);
    if (parameters != nullptr && parameters->useAdvanceState) RunFilter(globals, flag);
}
