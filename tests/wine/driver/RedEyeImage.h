// A test document for the filter: skin with a little grain and two red
// pupils with a catchlight.
#pragma once

#include "testhost/Image.h"

// The pupils sit at a third and two thirds of the width, half-way down,
// seven pixels in radius. Samples past the third keep a noise of their own.
testhost::Image RedEyeImage(int width, int height, int planes);
