// Times whole real runs of the module through the test host on a large photo
// and tells the module's own time from the host's: each selector call's wall
// time less the time spent in host callbacks (advanceState's delivery, handle
// services). Beside it, a floor measured in the same process: plain copies of
// the bytes a run must touch (the image in, the image out and the mask).
// Medians of several runs. Not a test: run it by hand or with
// `make bench-host`.
//
//   host_run_bench [width height selectionWidth selectionHeight [runs]]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <vector>

#include "BenchFigures.h"
#include "testhost/HostClock.h"
#include "testhost/TestHost.h"

namespace {

using bench::CopySeconds;
using bench::Median;

// A skin-toned picture with one red pupil in every 200 x 200 cell.
void PaintEyes(testhost::Image& image) {
    image.Fill({196, 148, 122});
    for (int cy = 100; cy < image.Height(); cy += 200) {
        for (int cx = 100; cx < image.Width(); cx += 200) {
            image.FillRect(cx - 12, cy - 12, 24, 24, {210, 40, 48});
            image.FillRect(cx - 3, cy - 9, 4, 4, {250, 250, 250});
        }
    }
}

const char* SelectorName(int16_t selector) {
    static const char* const kNames[] = {"about", "parameters", "prepare",
                                         "start", "continue",   "finish"};
    return selector >= 0 && selector <= 5 ? kNames[selector] : "other";
}

}  // namespace

int main(int argc, char** argv) {
    const int width = argc > 4 ? std::atoi(argv[1]) : 6000;
    const int height = argc > 4 ? std::atoi(argv[2]) : 4000;
    const int selectionWidth = argc > 4 ? std::atoi(argv[3]) : 2000;
    const int selectionHeight = argc > 4 ? std::atoi(argv[4]) : 1000;
    const int runs = argc > 5 ? std::max(1, std::atoi(argv[5])) : 5;

    testhost::TestHost host;
    if (!host.Load(QUORVEX_MODULE_PATH)) {
        std::fprintf(stderr, "%s\n", host.LoadError().c_str());
        return 1;
    }
    host.image() = testhost::Image(width, height, 3);
    PaintEyes(host.image());
    host.image().SelectRect((width - selectionWidth) / 2, (height - selectionHeight) / 2,
                            selectionWidth, selectionHeight);
    host.settings.maxSpace = 1 << 30;

    const size_t imageBytes = size_t(width) * height * 3;
    const size_t maskBytes = size_t(width) * height;
    std::vector<char> source(imageBytes, 1), target(imageBytes), mask(maskBytes, 1),
        maskCopy(maskBytes);
    std::vector<double> whole, module, callbacks, floor;
    std::map<int16_t, std::vector<double>> moduleBySelector;
    int result = noErr;
    for (int run = 0; run < runs; ++run) {
        floor.push_back(CopySeconds(source, target) + CopySeconds(target, source) +
                        CopySeconds(mask, maskCopy));
        host.ClearLog();
        const int64_t start = testhost::Ticks();
        result = host.Run().result;
        whole.push_back(testhost::TicksToSeconds(testhost::Ticks() - start));
        double moduleSeconds = 0, hostSeconds = 0;
        std::map<int16_t, double> bySelector;
        for (const testhost::CallRecord& call : host.log().calls) {
            moduleSeconds += call.seconds - call.hostSeconds;
            hostSeconds += call.hostSeconds;
            bySelector[call.selector] += call.seconds - call.hostSeconds;
        }
        module.push_back(moduleSeconds);
        callbacks.push_back(hostSeconds);
        for (const auto& entry : bySelector) moduleBySelector[entry.first].push_back(entry.second);
    }

    const bench::PeakMemory peak = bench::ProcessPeakMemory();
    std::printf("%d-bit module, image %dx%d, selection %dx%d, result %d, medians of %d runs:\n",
                int(sizeof(void*) * 8), width, height, selectionWidth, selectionHeight, result,
                runs);
    std::printf(
        "  whole run %.3f s: module %.3f s, host callbacks %.3f s, host between calls "
        "%.3f s\n",
        Median(whole), Median(module), Median(callbacks),
        Median(whole) - Median(module) - Median(callbacks));
    std::printf("  module by selector:");
    for (const auto& entry : moduleBySelector) {
        std::printf(" %s %.3f s", SelectorName(entry.first), Median(entry.second));
    }
    std::printf(
        "\n  floor (copies of image in, image out and mask, %.0f MB): %.3f s; module "
        "%.1fx the floor\n",
        (2 * imageBytes + maskBytes) / 1e6, Median(floor), Median(module) / Median(floor));
    std::printf("  process peak: working set %.1f MB, committed %.1f MB (host copies included)\n",
                peak.workingSetMB, peak.committedMB);
    return result == noErr ? 0 : 1;
}
