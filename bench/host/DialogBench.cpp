// Benchmark, not a test (ctest does not run it): on a 24-megapixel portrait
// with a 1000 x 1000 selection round one eye, how long the dialog takes to
// open (from the start call's entry to the first painted preview, the
// module's own time apart from the host's callbacks) and how long a change
// of Tolerance takes to the repainted detail pane. Beside each, a floor
// measured in the same process: plain copies of the bytes the step must
// touch. Medians over several openings.
//
//   make bench-host, or
//   scripts/with-display.sh build/<dir> wine build/<dir>/bench/host/dialog_benchmark.exe
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "BenchFigures.h"
#include "DialogRun.h"
#include "Portrait.h"
#include "testhost/HostClock.h"

namespace {

using bench::CopySeconds;
using bench::Median;

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kSelection = 1000;
constexpr int kOpenings = 7;
constexpr int kChanges = 10;

// One change as the field reports it: a new value, then its command.
double TimeToleranceChange(HWND dialog, float tolerance) {
    FieldOf(dialog, IDC_TOLERANCE)->value = tolerance;
    const int64_t start = testhost::Ticks();
    SendCommand(dialog, IDC_TOLERANCE);
    return testhost::TicksToSeconds(testhost::Ticks() - start);
}

TEST(PreviewBenchmark, OpeningAndToleranceChangeOn24Megapixels) {
    DialogRun run;
    {
        Portrait portrait = MakePortrait(kWidth, kHeight);
        const RECT& eye = portrait.leftEye;
        const int centreX = (eye.left + eye.right) / 2;
        const int centreY = (eye.top + eye.bottom) / 2;
        portrait.image.SelectRect(centreX - kSelection / 2, centreY - kSelection / 2, kSelection,
                                  kSelection);
        run.host.image() = std::move(portrait.image);
    }
    const size_t imageBytes = size_t(kWidth) * kHeight * 3,
                 boxBytes = size_t(kSelection) * kSelection * 3;
    std::vector<char> image(imageBytes, 1), imageCopy(imageBytes), mask(imageBytes / 3, 1),
        maskCopy(imageBytes / 3), box(boxBytes, 1), boxCopy(boxBytes);
    std::vector<double> openWhole, openModule, openHost, changes, openFloor, changeFloor;
    for (int opening = 0; opening < kOpenings; ++opening) {
        openFloor.push_back(CopySeconds(image, imageCopy) + CopySeconds(imageCopy, image) +
                            CopySeconds(mask, maskCopy));
        changeFloor.push_back(CopySeconds(box, boxCopy) + CopySeconds(boxCopy, box));
        const int64_t start = testhost::Ticks();
        run.Run({
            [&](HWND dialog) {
                openWhole.push_back(testhost::TicksToSeconds(testhost::Ticks() - start));
                const testhost::TestHost::CallTimes opened = run.host.TimesInCall();
                openModule.push_back(opened.module);
                openHost.push_back(opened.host);
                for (int i = 0; i < kChanges; ++i) {
                    changes.push_back(TimeToleranceChange(dialog, i % 2 == 0 ? 40.0f : 60.0f));
                }
                SendCommand(dialog, IDCANCEL);
            },
        });
    }
    ASSERT_EQ(openModule.size(), size_t(kOpenings));
    std::printf("%d-bit module, %dx%d image, %dx%d selection, medians of %d openings:\n",
                int(sizeof(void*) * 8), kWidth, kHeight, kSelection, kSelection, kOpenings);
    std::printf(
        "  opening to the first painted preview %.0f ms (from prepare on, host included); "
        "in the start call: module %.0f ms, host callbacks %.0f ms; floor (copies of "
        "image in, image out and mask) %.0f ms; module %.0fx the floor\n",
        Median(openWhole) * 1000, Median(openModule) * 1000, Median(openHost) * 1000,
        Median(openFloor) * 1000, Median(openModule) / Median(openFloor));
    std::printf(
        "  tolerance change to the repainted preview (%zu changes): median %.1f ms, "
        "max %.1f ms; floor (copies of the box in and out) %.2f ms; %.0fx the floor\n",
        changes.size(), Median(changes) * 1000,
        *std::max_element(changes.begin(), changes.end()) * 1000, Median(changeFloor) * 1000,
        Median(changes) / Median(changeFloor));
    const bench::PeakMemory peak = bench::ProcessPeakMemory();
    std::printf("  process peak: working set %.1f MB, committed %.1f MB (host copies included)\n",
                peak.workingSetMB, peak.committedMB);
}

}  // namespace
