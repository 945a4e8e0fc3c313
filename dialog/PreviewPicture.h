// The pictures of the preview panes: the whole image, fetched from the host
// when the dialog opens; the navigator's reduced picture of the input; the
// detail pane's picture of the output that the preview run left. Both are
// bottom-up 24-bit pictures whose width is a multiple of 4.
#pragma once

#include "dialog/PreviewPane.h"

// Asks the host for the whole filter rectangle, all planes, at the preview's
// sampling rate; the host's answer goes to the globals' result. Sets the
// pane's imageSize to the delivered size and makes its source buffers.
void LoadSourceImage(PreviewPaneRecord* pane);

// The host's input reduced to fit the pane (never enlarged), centred; the
// nearest pixel is found by rounding.
void BuildNavigatorImage(PreviewPaneRecord* pane);

// The host's output at the stored zoom (viewScale image pixels per picture
// pixel), centred; the pixel at or before each point is taken.
void BuildDetailImage(PreviewPaneRecord* pane);
