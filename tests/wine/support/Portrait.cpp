#include "Portrait.h"

#include <algorithm>
#include <cmath>

Portrait MakePortrait(int width, int height) {
    Portrait portrait{testhost::Image(width, height, 3), {}, {}};
    const float unit = std::min(static_cast<float>(width), height * 1.6f);
    const float faceX = width * 0.5f, faceRx = unit * 0.2f, faceRy = height * 0.4f;
    const float eyeY = height * 0.56f - faceRy * 0.18f, eyeRx = unit * 0.045f;
    const float eyeRy = unit * 0.022f, pupil = unit * 0.011f;
    const float eyesX[] = {faceX - faceRx * 0.42f, faceX + faceRx * 0.42f};
    // Skin, each eye's white, and its pupil glowing red as a flash leaves it,
    // darker towards its rim.
    uint8_t* pixel = portrait.image.Data();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, pixel += 3) {
            uint8_t rgb[3] = {226, 172, 140};
            for (const float eyeX : eyesX) {
                const float r = std::hypot(x + 0.5f - eyeX, y + 0.5f - eyeY);
                if (std::hypot((x + 0.5f - eyeX) / eyeRx, (y + 0.5f - eyeY) / eyeRy) < 1) {
                    rgb[0] = 246, rgb[1] = 242, rgb[2] = 236;
                }
                if (r < pupil)
                    rgb[0] = static_cast<uint8_t>(214 - 64 * r / pupil), rgb[1] = 36, rgb[2] = 40;
            }
            std::copy_n(rgb, 3, pixel);
        }
    }
    const LONG marginX = static_cast<LONG>(eyeRx * 1.4f),
               marginY = static_cast<LONG>(eyeRy + eyeRx * 0.4f);
    const LONG x = static_cast<LONG>(eyesX[0]), y = static_cast<LONG>(eyeY);
    portrait.leftEye = portrait.rightEye = RECT{x - marginX, y - marginY, x + marginX, y + marginY};
    OffsetRect(&portrait.rightEye, static_cast<LONG>(eyesX[1] - eyesX[0]), 0);
    return portrait;
}

void SelectEyes(Portrait& portrait) {
    for (const RECT& box : {portrait.leftEye, portrait.rightEye}) {
        portrait.image.SelectRect(box.left, box.top, box.right - box.left, box.bottom - box.top);
    }
}
