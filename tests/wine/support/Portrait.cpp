#include "Portrait.h"

#include <algorithm>
#include <cmath>

namespace {

struct Color {
    float r, g, b;
};

Color Mix(Color a, Color b, float t) {
    t = std::clamp(t, 0.0f, 1.0f);
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// Share of a pixel inside an ellipse, with a one-pixel soft edge.
float InsideEllipse(float x, float y, float cx, float cy, float rx, float ry) {
    const float d = std::hypot((x - cx) / rx, (y - cy) / ry);
    return std::clamp((1.0f - d) * std::min(rx, ry) + 0.5f, 0.0f, 1.0f);
}

struct EyeShape {
    float cx, cy, halfWidth, halfHeight, iris, pupil;
};

Color PaintEye(Color beneath, float x, float y, const EyeShape& eye) {
    Color c = Mix(beneath, Color{246, 242, 236},
                  InsideEllipse(x, y, eye.cx, eye.cy, eye.halfWidth, eye.halfHeight));
    const float r = std::hypot(x - eye.cx, y - eye.cy);
    const float inOpening = InsideEllipse(x, y, eye.cx, eye.cy, eye.halfWidth, eye.halfHeight);
    const Color iris = Mix(Color{120, 78, 40}, Color{70, 42, 22}, r / eye.iris);
    c = Mix(c, iris, inOpening * std::clamp(eye.iris - r + 0.5f, 0.0f, 1.0f));
    // The flash's red glow fills the pupil, brightest in its middle.
    const Color red = Mix(Color{214, 36, 40}, Color{150, 22, 28}, r / eye.pupil);
    c = Mix(c, red, inOpening * std::clamp(eye.pupil - r + 0.5f, 0.0f, 1.0f));
    const float glint =
        std::hypot(x - (eye.cx - eye.pupil * 0.35f), y - (eye.cy - eye.pupil * 0.35f));
    return Mix(c, Color{255, 255, 255}, std::clamp(eye.pupil * 0.22f - glint + 0.5f, 0.0f, 1.0f));
}

RECT BoxRound(const EyeShape& eye) {
    const float margin = eye.halfWidth * 0.4f;
    return RECT{static_cast<LONG>(eye.cx - eye.halfWidth - margin),
                static_cast<LONG>(eye.cy - eye.halfHeight - margin),
                static_cast<LONG>(eye.cx + eye.halfWidth + margin),
                static_cast<LONG>(eye.cy + eye.halfHeight + margin)};
}

}  // namespace

Portrait MakePortrait(int width, int height) {
    Portrait portrait{testhost::Image(width, height, 3), {}, {}};
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    const float unit = std::min(w, h * 1.6f);
    const float faceX = w * 0.5f, faceY = h * 0.56f;
    const float faceRx = unit * 0.2f, faceRy = h * 0.4f;
    const float eyeY = faceY - faceRy * 0.18f;
    const float eyeDx = faceRx * 0.42f;
    const EyeShape left{faceX - eyeDx, eyeY,         unit * 0.045f,
                        unit * 0.022f, unit * 0.02f, unit * 0.011f};
    EyeShape right = left;
    right.cx = faceX + eyeDx;

    uint8_t* pixel = portrait.image.Data();
    for (int py = 0; py < height; ++py) {
        for (int px = 0; px < width; ++px, pixel += 3) {
            const float x = px + 0.5f, y = py + 0.5f;
            Color c = Mix(Color{150, 172, 196}, Color{70, 88, 112}, y / h);
            const float shade = (x - faceX) / faceRx * 0.25f + (y - faceY) / faceRy * 0.2f;
            const Color skin = Mix(Color{236, 190, 160}, Color{190, 132, 102}, shade + 0.2f);
            const float hair =
                InsideEllipse(x, y, faceX, faceY - faceRy * 0.25f, faceRx * 1.12f, faceRy * 0.92f);
            c = Mix(c, Color{58, 36, 24}, hair);
            c = Mix(c, skin,
                    InsideEllipse(x, y, faceX, faceY, faceRx, faceRy) *
                        (y > faceY - faceRy * 0.62f ? 1.0f : 0.0f));
            c = PaintEye(c, x, y, left);
            c = PaintEye(c, x, y, right);
            const float mouth =
                InsideEllipse(x, y, faceX, faceY + faceRy * 0.45f, faceRx * 0.32f, faceRy * 0.05f);
            c = Mix(c, Color{170, 84, 82}, mouth);
            pixel[0] = static_cast<uint8_t>(c.r);
            pixel[1] = static_cast<uint8_t>(c.g);
            pixel[2] = static_cast<uint8_t>(c.b);
        }
    }
    portrait.leftEye = BoxRound(left);
    portrait.rightEye = BoxRound(right);
    return portrait;
}

void SelectEyes(Portrait& portrait) {
    for (const RECT& box : {portrait.leftEye, portrait.rightEye}) {
        portrait.image.SelectRect(box.left, box.top, box.right - box.left, box.bottom - box.top);
    }
}
