#include "dialog/ViewGeometry.h"

#include <algorithm>
#include <cmath>

#include "redeye/Truncate.h"

PictureExtent RectExtent(const Rect16& r) {
    return PictureExtent{std::max(r.right - r.left, 0), std::max(r.bottom - r.top, 0)};
}

float FitViewScale(PictureExtent box, PictureExtent pane) {
    const float scale = std::max(static_cast<float>(box.width) / pane.width,
                                 static_cast<float>(box.height) / pane.height);
    return scale > 1.0f ? std::ceil(scale) : scale;
}

float ZoomedIn(float viewScale) { return viewScale >= 2.0f ? viewScale - 1.0f : viewScale / 2; }

float ZoomedOut(float viewScale) {
    return viewScale >= 1.0f ? std::trunc(viewScale) + 1.0f : viewScale * 2;
}

float NavigatorFit(PictureExtent pane, PictureExtent image) {
    return std::min({static_cast<float>(pane.width) / image.width,
                     static_cast<float>(pane.height) / image.height, 1.0f});
}

PictureExtent NavigatorExtent(PictureExtent pane, PictureExtent image) {
    const float fit = NavigatorFit(pane, image);
    return PictureExtent{TruncateToInt32(image.width * fit) & ~3,
                         TruncateToInt32(image.height * fit)};
}

int32_t ImageToNavigator(float imageCoordinate, int32_t navigatorSize, int32_t imageSize) {
    return TruncateToInt32(imageCoordinate * navigatorSize / imageSize + 0.5);
}

int32_t NavigatorToImage(int32_t navigatorCoordinate, int32_t navigatorSize, int32_t imageSize) {
    return TruncateToInt32(navigatorCoordinate * (static_cast<float>(imageSize) / navigatorSize) +
                           0.5);
}
