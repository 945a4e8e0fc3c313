// The filtering driver: checks the mode, passes the area through, finds the
// region to correct (the selection's bounding box, or the stored or visible
// view), runs the red-eye pipeline on it in private buffers and writes the
// result back into the host's output buffer.
#include "redeye/FilterDriver.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "dialog/PreviewState.h"
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "plugin/Messages.h"
#include "redeye/HostArea.h"
#include "redeye/Pipeline.h"
#include "redeye/RunGeometry.h"
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

// Kept from one preview run to the next while the dialog is open.
WorkingBuffers previewBuffers;

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
            const RegionEdges visible =
                VisibleRegion(parameters.viewX, parameters.viewY, copyWidth, copyHeight);
            parameters.viewLeft = visible.left;
            parameters.viewTop = visible.top;
            parameters.viewRight = visible.right;
            parameters.viewBottom = visible.bottom;
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
    RegionEdges edges{parameters.viewLeft, parameters.viewTop, parameters.viewRight,
                      parameters.viewBottom};
    ClampRegionEdges(edges, gAreaWidth, gAreaHeight);
    parameters.viewLeft = edges.left;
    parameters.viewTop = edges.top;
    parameters.viewRight = edges.right;
    parameters.viewBottom = edges.bottom;
}

// The region's right column and bottom row (the selection's largest x and y)
// are outside it: the box's last column and row keep their input pixels.
void CorrectRegion(const HostArea& area, const FilterParameters& parameters, const RunView& view,
                   WorkingBuffers& buffers) {
    RegionPlacement region{};
    if (!PlaceRegion(RegionEdges{parameters.viewLeft, parameters.viewTop, parameters.viewRight,
                                 parameters.viewBottom},
                     region)) {
        return;
    }
    if (!buffers.Prepare(region.width, region.height)) return;
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

    RunView view =
        preview ? PreviewRunView(parameters->viewX, parameters->viewY, parameters->viewScale,
                                 previewPaneWidth, previewPaneHeight, gAreaWidth, gAreaHeight)
                : RunView{0, 0, gAreaWidth, gAreaHeight};
    ClampViewOrigin(view, gAreaWidth, gAreaHeight);
    const int32_t copyWidth = std::min(view.width, gAreaWidth);
    const int32_t copyHeight = std::min(view.height, gAreaHeight);
    CopyView(area, view.originX, view.originY, copyWidth, copyHeight);

    if (!preview && !gMaskPresent) {
        ShowNotice(nullptr);
        parameters->viewState = kViewNoSelection;
    }
    FindRegion(filterRecord, *parameters, preview, copyWidth, copyHeight);
    if (parameters->viewState >= 1 || parameters->viewState == kViewStoredRect) {
        if (preview) {
            CorrectRegion(area, *parameters, view, previewBuffers);
        } else {
            WorkingBuffers buffers;
            CorrectRegion(area, *parameters, view, buffers);
        }
    }
    SignalCompletion(filterRecord, preview);
}

void RunPreviewFilter(FilterGlobals* globals, int flag) {
    FilterParameters* parameters = Parameters(globals);
    if (parameters != nullptr && parameters->useAdvanceState) RunFilter(globals, flag);
}

void ReleasePreviewBuffers() { previewBuffers.Release(); }
