#include "Portrait.h"

#include <algorithm>
#include <cmath>

namespace {

struct Color {
    float r, g, b;
};

// `a` blended towards `b` by `t`, clamped to 0..1.
Color Mix(Color a, Color b, float t) {
    t = std::clamp(t, 0.0f, 1.0f);
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// Share of a pixel inside an ellipse, with a one-pixel soft edge.
float Inside(float x, float y, float cx, float cy, float rx, float ry) {
    return (1.0f - std::hypot((x - cx) / rx, (y - cy) / ry)) * std::min(rx, ry) + 0.5f;
}

}  // namespace

Portrait MakePortrait(int width, int height) {
    Portrait portrait{testhost::Image(width, height, 3), {}, {}};
    const float w = static_cast<float>(width), h = static_cast<float>(height);
    const float unit = std::min(w, h * 1.6f);
    const float faceX = w * 0.5f, faceY = h * 0.56f, faceRx = unit * 0.2f, faceRy = h * 0.4f;
    const float eyeY = faceY - faceRy * 0.18f, eyeRx = unit * 0.045f, eyeRy = unit * 0.022f;
    const float iris = unit * 0.02f, pupil = unit * 0.011f;
    const float eyesX[] = {faceX - faceRx * 0.42f, faceX + faceRx * 0.42f};
    uint8_t* pixel = portrait.image.Data();
    for (int py = 0; py < height; ++py) {
        for (int px = 0; px < width; ++px, pixel += 3) {
            const float x = px + 0.5f, y = py + 0.5f;
            Color c = Mix(Color{150, 172, 196}, Color{70, 88, 112}, y / h);
            c = Mix(c, Color{58, 36, 24},
                    Inside(x, y, faceX, faceY - faceRy * 0.25f, faceRx, faceRy));
            c = Mix(c, Color{226, 172, 140},
                    Inside(x, y, faceX, faceY, faceRx * 0.9f, faceRy * 0.8f));
            // Each eye: its white, the iris, and the pupil glowing red.
            for (const float eyeX : eyesX) {
                const float r = std::hypot(x - eyeX, y - eyeY);
                const float open = std::clamp(Inside(x, y, eyeX, eyeY, eyeRx, eyeRy), 0.0f, 1.0f);
                c = Mix(c, Color{246, 242, 236}, open);
                c = Mix(c, Color{100, 62, 32}, open * (iris - r + 0.5f));
                c = Mix(c, Mix(Color{214, 36, 40}, Color{150, 22, 28}, r / pupil),
                        open * (pupil - r + 0.5f));
            }
            pixel[0] = static_cast<uint8_t>(c.r);
            pixel[1] = static_cast<uint8_t>(c.g);
            pixel[2] = static_cast<uint8_t>(c.b);
        }
    }
    const LONG marginX = static_cast<LONG>(eyeRx * 1.4f),
               marginY = static_cast<LONG>(eyeRy + eyeRx * 0.4f);
    portrait.leftEye =
        RECT{static_cast<LONG>(eyesX[0]) - marginX, static_cast<LONG>(eyeY) - marginY,
             static_cast<LONG>(eyesX[0]) + marginX, static_cast<LONG>(eyeY) + marginY};
    portrait.rightEye = portrait.leftEye;
    OffsetRect(&portrait.rightEye, static_cast<LONG>(eyesX[1] - eyesX[0]), 0);
    return portrait;
}

void SelectEyes(Portrait& portrait) {
    for (const RECT& box : {portrait.leftEye, portrait.rightEye}) {
        portrait.image.SelectRect(box.left, box.top, box.right - box.left, box.bottom - box.top);
    }
}
