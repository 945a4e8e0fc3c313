// The arithmetic of the preview's view: the zoom that fits a selection, the
// zoom steps, the navigator's reduced size and the frame's position in it.
#pragma once

#include <cstdint>

#include "hostapi/HostTypes.h"

// viewScale is the number of image pixels per preview pixel; it never goes
// below this.
constexpr float kSmallestViewScale = 0.2f;

struct PictureExtent {
    int32_t width;
    int32_t height;
};

// Width and height of a rectangle; an inverted one is empty.
PictureExtent RectExtent(const Rect16& r);

// The zoom that shows a box of `box` image pixels in a pane of `pane`
// pixels: the larger of the two ratios, rounded up to a whole number when it
// is above 1.
float FitViewScale(PictureExtent box, PictureExtent pane);

// One step in: 1 less from 2 upwards, half below.
float ZoomedIn(float viewScale);
// One step out: the next whole number from 1 upwards, double below.
float ZoomedOut(float viewScale);

// How much the navigator reduces an image: the smaller of the pane-to-image
// ratios, never above 1.
float NavigatorFit(PictureExtent pane, PictureExtent image);
// The navigator picture's size: the image reduced by NavigatorFit, its
// width cut down to a multiple of 4.
PictureExtent NavigatorExtent(PictureExtent pane, PictureExtent image);

// Where a point of the image lies in the navigator picture (rounded), and
// the way back. Each direction scales by the two pictures' sizes.
int32_t ImageToNavigator(float imageCoordinate, int32_t navigatorSize, int32_t imageSize);
int32_t NavigatorToImage(int32_t navigatorCoordinate, int32_t navigatorSize, int32_t imageSize);
