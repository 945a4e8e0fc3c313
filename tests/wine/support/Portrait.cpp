#include "Portrait.h"

#include <algorithm>
#include <cmath>

namespace {

struct Color {
    float r, g, b;
};

// `a` blended towards `b` by `t`, and the share of a pixel inside an ellipse
// with a one-pixel soft edge, to use as `t`.
Color Mix(Color a, Color b, float t) {
    t = std::clamp(t, 0.0f, 1.0f);
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

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
    const float eyesX[] = {faceX - faceRx * 0.42f, faceX + faceRx * 0.42f};
    uint8_t* pixel = portrait.image.Data();
    for (int py = 0; py < height; ++py) {
        for (int px = 0; px < width; ++px, pixel += 3) {
            const float x = px + 0.5f, y = py + 0.5f;
            Color c = Mix(Color{150, 172, 196}, Color{70, 88, 112}, y / h);
            c = Mix(c, Color{58, 36, 24},
                    Inside(x, y, faceX, faceY - faceRy * 0.25f, faceRx * 1.12f, faceRy * 0.92f));
            const float shade = (x - faceX) / faceRx * 0.25f + (y - faceY) / faceRy * 0.2f + 0.2f;
            if (y > faceY - faceRy * 0.62f) {
                c = Mix(c, Mix(Color{236, 190, 160}, Color{190, 132, 102}, shade),
                        Inside(x, y, faceX, faceY, faceRx, faceRy));
            }
            for (const float eyeX : eyesX) {
                // White, iris, the pupil's red glow brightest in its middle, a glint.
                const float opening =
                    std::clamp(Inside(x, y, eyeX, eyeY, eyeRx, eyeRy), 0.0f, 1.0f);
                const float r = std::hypot(x - eyeX, y - eyeY), iris = unit * 0.02f,
                            pupil = unit * 0.011f;
                c = Mix(c, Color{246, 242, 236}, opening);
                c = Mix(c, Mix(Color{120, 78, 40}, Color{70, 42, 22}, r / iris),
                        opening * (iris - r + 0.5f));
                c = Mix(c, Mix(Color{214, 36, 40}, Color{150, 22, 28}, r / pupil),
                        opening * (pupil - r + 0.5f));
                const float glint = std::hypot(x - eyeX + pupil * 0.35f, y - eyeY + pupil * 0.35f);
                c = Mix(c, Color{255, 255, 255}, pupil * 0.22f - glint + 0.5f);
            }
            c = Mix(c, Color{170, 84, 82},
                    Inside(x, y, faceX, faceY + faceRy * 0.45f, faceRx * 0.32f, faceRy * 0.05f));
            pixel[0] = static_cast<uint8_t>(c.r);
            pixel[1] = static_cast<uint8_t>(c.g);
            pixel[2] = static_cast<uint8_t>(c.b);
        }
    }
    const float margin = eyeRx * 0.4f;
    RECT* boxes[] = {&portrait.leftEye, &portrait.rightEye};
    for (int eye = 0; eye < 2; ++eye) {
        *boxes[eye] = RECT{static_cast<LONG>(eyesX[eye] - eyeRx - margin),
                           static_cast<LONG>(eyeY - eyeRy - margin),
                           static_cast<LONG>(eyesX[eye] + eyeRx + margin),
                           static_cast<LONG>(eyeY + eyeRy + margin)};
    }
    return portrait;
}

void SelectEyes(Portrait& portrait) {
    for (const RECT& box : {portrait.leftEye, portrait.rightEye}) {
        portrait.image.SelectRect(box.left, box.top, box.right - box.left, box.bottom - box.top);
    }
}
