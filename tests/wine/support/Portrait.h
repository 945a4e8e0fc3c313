// A synthetic portrait with red eyes, drawn at any size: skin and two eyes
// whose pupils glow red as a flash leaves them.
#pragma once

#include <windows.h>

#include "testhost/Image.h"

struct Portrait {
    testhost::Image image;
    RECT leftEye;  // boxes round the eyes, a margin wider than the eye
    RECT rightEye;
};

Portrait MakePortrait(int width, int height);

// Selects the two eye boxes.
void SelectEyes(Portrait& portrait);
