// Benchmark, not a test (ctest does not run it): how long the dialog takes
// from a change of Tolerance to the repainted detail pane, on a 24-megapixel
// portrait with a 1000 x 1000 selection round one eye.
//
//   scripts/with-display.sh build/<dir> wine build/<dir>/tests/wine/dialog/dialog_benchmark.exe
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "DialogRun.h"
#include "Portrait.h"

namespace {

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kSelection = 1000;
constexpr int kRounds = 20;

double Seconds(LARGE_INTEGER from, LARGE_INTEGER to) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(to.QuadPart - from.QuadPart) / frequency.QuadPart;
}

// One change as the field reports it: a new value, then its command.
double TimeToleranceChange(HWND dialog, float tolerance) {
    FieldOf(dialog, IDC_TOLERANCE)->value = tolerance;
    LARGE_INTEGER start, end;
    QueryPerformanceCounter(&start);
    SendCommand(dialog, IDC_TOLERANCE);
    QueryPerformanceCounter(&end);
    return Seconds(start, end);
}

TEST(PreviewBenchmark, ToleranceChangeOn24Megapixels) {
    DialogRun run;
    LARGE_INTEGER start, opened;
    {
        Portrait portrait = MakePortrait(kWidth, kHeight);
        const RECT& eye = portrait.leftEye;
        const int centreX = (eye.left + eye.right) / 2;
        const int centreY = (eye.top + eye.bottom) / 2;
        portrait.image.SelectRect(centreX - kSelection / 2, centreY - kSelection / 2, kSelection,
                                  kSelection);
        run.host.image() = std::move(portrait.image);
    }
    std::vector<double> times;
    float zoom = 0;
    QueryPerformanceCounter(&start);
    run.Run({
        [&](HWND dialog) {
            QueryPerformanceCounter(&opened);
            zoom = run.Record().viewScale;
            for (int i = 0; i < kRounds; ++i) {
                times.push_back(TimeToleranceChange(dialog, i % 2 == 0 ? 40.0f : 60.0f));
            }
            SendCommand(dialog, IDCANCEL);
        },
    });
    ASSERT_EQ(times.size(), static_cast<size_t>(kRounds));
    std::sort(times.begin(), times.end());
    std::printf(
        "%dx%d image, %dx%d selection, zoom %.2f: opening %.0f ms; tolerance change to "
        "repainted preview over %d rounds: min %.1f ms, median %.1f ms, max %.1f ms\n",
        kWidth, kHeight, kSelection, kSelection, zoom, Seconds(start, opened) * 1000, kRounds,
        times.front() * 1000, times[times.size() / 2] * 1000, times.back() * 1000);
}

}  // namespace
