#include "plugin/AboutPicture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

struct Color {
    float red;
    float green;
    float blue;
};

Color Mix(Color a, Color b, float t) {
    return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t,
            a.blue + (b.blue - a.blue) * t};
}

Color Scaled(Color c, float factor) { return {c.red * factor, c.green * factor, c.blue * factor}; }

float Clamp01(float t) { return std::min(1.0f, std::max(0.0f, t)); }

// Share of a pixel covered by a shape whose signed distance (negative
// inside) at the pixel centre is `distance`.
float Coverage(float distance) { return Clamp01(0.5f - distance); }

float SmoothStep(float edge0, float edge1, float x) {
    const float t = Clamp01((x - edge0) / (edge1 - edge0));
    return t * t * (3.0f - 2.0f * t);
}

// Geometry of the eye, in pixels.
struct Eye {
    float centerX;
    float centerY;
    float lidRadius;  // radius of the two arcs that form the almond opening
    float lidOffset;  // distance of each arc's centre from the eye's centre
    float irisRadius;
    float pupilRadius;
};

Eye EyeFor(int width, int height) {
    Eye eye;
    eye.centerX = width * 0.5f;
    eye.centerY = height * 0.54f;
    const float halfWidth = std::min(width * 0.36f, height * 0.95f);
    const float halfHeight = halfWidth * 0.42f;
    eye.lidRadius = (halfWidth * halfWidth + halfHeight * halfHeight) / (2.0f * halfHeight);
    eye.lidOffset = eye.lidRadius - halfHeight;
    eye.irisRadius = halfHeight * 0.98f;
    eye.pupilRadius = eye.irisRadius * 0.42f;
    return eye;
}

// Signed distances to the upper and lower lid arcs (negative inside the opening).
float UpperLidDistance(const Eye& eye, float x, float y) {
    return std::hypot(x - eye.centerX, y - (eye.centerY + eye.lidOffset)) - eye.lidRadius;
}

float LowerLidDistance(const Eye& eye, float x, float y) {
    return std::hypot(x - eye.centerX, y - (eye.centerY - eye.lidOffset)) - eye.lidRadius;
}

Color Skin(const Eye& eye, float x, float y, int height) {
    const Color light = {240, 200, 172};
    const Color shade = {196, 146, 120};
    Color skin = Mix(light, shade, 0.35f * y / height);
    // Socket shadow round the eye and the crease above the upper lid.
    const float socket = std::hypot((x - eye.centerX) / 1.6f, y - eye.centerY);
    skin = Mix(skin, shade, 0.45f * (1.0f - SmoothStep(0.0f, eye.lidRadius * 0.75f, socket)));
    const float crease = std::fabs(UpperLidDistance(eye, x, y + eye.irisRadius * 0.55f));
    const float creaseReach = Clamp01(1.0f - std::fabs(x - eye.centerX) / (eye.lidRadius * 0.8f));
    return Mix(skin, Scaled(shade, 0.8f), 0.5f * creaseReach * (1.0f - SmoothStep(0, 3, crease)));
}

Color Pupil(const Eye& eye, float x, float distance) {
    if (x < eye.centerX) {
        const Color glow = {255, 92, 60};
        const Color rim = {150, 16, 14};
        return Mix(glow, rim, SmoothStep(0.0f, eye.pupilRadius, distance));
    }
    return {14, 12, 16};
}

Color Iris(const Eye& eye, float x, float y) {
    const float dx = x - eye.centerX;
    const float dy = y - eye.centerY;
    const float distance = std::hypot(dx, dy);
    const float t = distance / eye.irisRadius;
    const Color inner = {150, 128, 64};  // hazel round the pupil
    const Color outer = {58, 112, 140};  // blue-green outer iris
    Color iris = Mix(inner, outer, SmoothStep(0.3f, 0.75f, t));
    const float angle = std::atan2(dy, dx);
    const float fibres = 0.86f + 0.14f * std::sin(angle * 37.0f + 3.0f * std::sin(angle * 7.0f));
    iris = Scaled(iris, fibres * (1.0f - 0.55f * SmoothStep(0.82f, 1.0f, t)));
    const float pupil = Coverage(distance - eye.pupilRadius);
    return Mix(iris, Pupil(eye, x, distance), pupil);
}

Color EyeBall(const Eye& eye, float x, float y, float upperLid, float lowerLid) {
    const Color white = {246, 242, 236};
    const Color pink = {226, 186, 180};
    const float edge = std::max(upperLid, lowerLid);  // distance to the nearest lid, negative
    Color colour = Mix(white, pink,
                       1.0f - SmoothStep(-eye.irisRadius * 0.9f, 0.0f, -edge) +
                           0.25f * std::fabs(x - eye.centerX) / eye.lidRadius);
    const float iris = Coverage(std::hypot(x - eye.centerX, y - eye.centerY) - eye.irisRadius);
    colour = Mix(colour, Iris(eye, x, y), iris);
    // Shadow cast by the upper lid.
    colour = Scaled(colour, 0.7f + 0.3f * SmoothStep(0.0f, eye.irisRadius * 0.35f, -upperLid));
    // Catch-light of the lamp, up and to the left of the pupil.
    const float light = std::hypot(x - (eye.centerX - eye.pupilRadius * 0.55f),
                                   y - (eye.centerY - eye.pupilRadius * 0.6f));
    return Mix(colour, {255, 255, 255}, 0.95f * Coverage(light - eye.pupilRadius * 0.28f));
}

Color PixelAt(const Eye& eye, float x, float y, int height) {
    const float upperLid = UpperLidDistance(eye, x, y);
    const float lowerLid = LowerLidDistance(eye, x, y);
    const float opening = std::max(upperLid, lowerLid);
    Color colour = Skin(eye, x, y, height);
    colour = Mix(colour, EyeBall(eye, x, y, upperLid, lowerLid), Coverage(opening));
    // Lid margins: a dark line, heavier along the upper lid.
    const float lineWidth = upperLid > lowerLid ? 2.2f : 1.0f;
    const float outline = Coverage(std::fabs(opening) - lineWidth * 0.5f);
    return Mix(colour, {70, 40, 38}, 0.85f * outline);
}

uint32_t Pack(Color c) {
    const auto byte = [](float v) {
        return static_cast<uint32_t>(std::min(255.0f, std::max(0.0f, v)) + 0.5f);
    };
    return (byte(c.red) << 16) | (byte(c.green) << 8) | byte(c.blue);
}

void PaintPixels(uint32_t* pixels, int width, int height) {
    const Eye eye = EyeFor(width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const Color colour = PixelAt(eye, column + 0.5f, row + 0.5f, height);
            pixels[row * width + column] = Pack(colour);
        }
    }
    // The dividing line between the two halves.
    const int middle = width / 2;
    for (int row = 0; row < height; ++row) {
        uint32_t& pixel = pixels[row * width + middle];
        pixel = (row / 4) % 2 == 0 ? 0xFFFFFF : pixel;
    }
}

// White text with a dark shadow, one pixel down and to the right.
void DrawLabel(HDC dc, const char* text, int x, int y, UINT align) {
    SetTextAlign(dc, align | TA_TOP);
    SetTextColor(dc, RGB(60, 30, 24));
    TextOutA(dc, x + 1, y + 1, text, lstrlenA(text));
    SetTextColor(dc, RGB(255, 255, 255));
    TextOutA(dc, x, y, text, lstrlenA(text));
}

void DrawLabels(HDC dc, int width) {
    HFONT font =
        CreateFontA(-14, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                    CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH | FF_SWISS, "Arial");
    HGDIOBJ previous = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    DrawLabel(dc, "Before", 10, 8, TA_LEFT);
    DrawLabel(dc, "After", width - 10, 8, TA_RIGHT);
    SelectObject(dc, previous);
    DeleteObject(font);
}

}  // namespace

HBITMAP CreateAboutPicture(int width, int height) {
    if (width <= 0 || height <= 0) {
        return nullptr;
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap == nullptr) {
        return nullptr;
    }
    PaintPixels(static_cast<uint32_t*>(bits), width, height);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(dc, bitmap);
    DrawLabels(dc, width);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return bitmap;
}
