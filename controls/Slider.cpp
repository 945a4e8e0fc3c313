#include "controls/Slider.h"

#include <algorithm>
#include <cmath>

#include "controls/ControlFramework.h"
#include "controls/ValueText.h"

namespace {

// Pixels between the slider's edge and either end of its track.
constexpr int kTrackMargin = 5;

// Pixel positions are held within this distance of the slider's corner:
// far beyond any window, and small enough that a mark's corners around it
// are valid GDI coordinates (within 2^27) and far from int overflow.
constexpr float kFarthestPosition = 1 << 20;

float TrackLength(const SliderRecord* slider) {
    const int extent = slider->vertical ? slider->head.height : slider->head.width;
    return static_cast<float>(extent - 2 * kTrackMargin);
}

float Scale(const SliderRecord* slider) {
    return TrackLength(slider) / (slider->maximum - slider->minimum);
}

float HoldWithinLimits(const SliderRecord* slider, float value) {
    if (slider->limiting != 0) {
        if (value < slider->lowerLimit) {
            value = slider->lowerLimit;
        }
        if (value > slider->upperLimit) {
            value = slider->upperLimit;
        }
    }
    return value;
}

LRESULT Notify(const SliderRecord* slider, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageA(GetParent(slider->head.window), message, wParam, lParam);
}

LRESULT HandleSlider(ControlRecord* head, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    SliderRecord* slider = RecordOf<SliderRecord>(head);
    switch (message) {
        case WM_LBUTTONDOWN:
            SetCapture(window);
            slider->value = SliderValueAtPoint(slider, lParam);
            RepaintSlider(slider);
            return 0;
        case WM_MOUSEMOVE:
            if (wParam == MK_LBUTTON) {
                slider->value = SliderValueAtPoint(slider, lParam);
                Notify(slider, WM_HSCROLL, 0, 0);
                RepaintSlider(slider);
                if (slider->notifyWhileDragging != 0) {
                    Notify(slider, WM_COMMAND, slider->head.controlId, 1);
                }
            }
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            slider->value = SliderValueAtPoint(slider, lParam);
            RepaintSlider(slider);
            Notify(slider, WM_HSCROLL, 0, 0);
            Notify(slider, WM_COMMAND, slider->head.controlId, 0);
            return 0;
        case WM_RBUTTONDOWN:
            if (slider->forwardRightClick != 0) {
                Notify(slider, WM_RBUTTONDOWN, 0, 0);
            }
            return 0;
        case WM_PAINT:
            PaintSlider(slider);
            return 0;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}

const ControlKind kSliderKind = {NewControlRecord<SliderRecord>, DeleteControlRecord<SliderRecord>,
                                 HandleSlider};

}  // namespace

void SliderSetValue(SliderRecord* slider, float value) {
    slider->value = HoldWithinLimits(slider, value);
    RepaintSlider(slider);
}

void SliderSetRange(SliderRecord* slider, float minimum, float maximum) {
    slider->minimum = minimum;
    slider->maximum = maximum;
    RepaintSlider(slider);
}

void SliderSetLimits(SliderRecord* slider, float lowerLimit, float upperLimit, bool on) {
    slider->limiting = on ? 1 : 0;
    if (on) {
        slider->lowerLimit = lowerLimit;
        slider->upperLimit = upperLimit;
        RepaintSlider(slider);
    }
}

float SliderValueAtPoint(const SliderRecord* slider, LPARAM point) {
    const int x = static_cast<short>(LOWORD(point));
    const int y = static_cast<short>(HIWORD(point));
    const float position = static_cast<float>((slider->vertical ? y : x) - kTrackMargin);
    float value = position / Scale(slider) + slider->minimum;
    // A range too wide for a float, or an empty one on a track of no length,
    // gives a scale of 0 or NaN and the pointer 0/0 or inf - inf: the
    // minimum stands for that.
    if (std::isnan(value)) {
        value = slider->minimum;
    }
    if (slider->maximum <= value) {
        value = slider->maximum;
    }
    if (value < slider->minimum) {
        value = slider->minimum;
    }
    return HoldWithinLimits(slider, value);
}

int SliderPixelPosition(const SliderRecord* slider, float value) {
    const float exact = (value - slider->minimum) * Scale(slider) + kTrackMargin + 0.5f;
    if (std::isnan(exact)) {
        return kTrackMargin;  // where the minimum stands
    }
    // Values far outside the range, or a range so narrow that its scale is
    // infinite, put the mark off the slider; it stays off it, held nearer.
    return TruncateToInt32(std::clamp(exact, -kFarthestPosition, kFarthestPosition));
}

void RepaintSlider(const SliderRecord* slider) {
    RedrawWindow(slider->head.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

LRESULT CALLBACK SliderWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kSliderKind, window, message, wParam, lParam);
}

HWND CreateSlider(HWND parent, int id, int x, int y, int width, int height, SliderRecord** record) {
    return CreateControl(0, kSliderClassName, x, y, width, height, parent, id, record);
}
