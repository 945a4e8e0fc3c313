// Times one real run of the module through the test host on a large photo
// and reports the process's peak memory. Not a test: run it by hand or with
// `make bench-host`.
//
//   host_run_bench [width height selectionWidth selectionHeight]
#include <windows.h>

#include <psapi.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "testhost/TestHost.h"

namespace {

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

double Seconds(LARGE_INTEGER from, LARGE_INTEGER to) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return double(to.QuadPart - from.QuadPart) / double(frequency.QuadPart);
}

}  // namespace

int main(int argc, char** argv) {
    const int width = argc > 4 ? std::atoi(argv[1]) : 6000;
    const int height = argc > 4 ? std::atoi(argv[2]) : 4000;
    const int selectionWidth = argc > 4 ? std::atoi(argv[3]) : 2000;
    const int selectionHeight = argc > 4 ? std::atoi(argv[4]) : 1000;

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

    LARGE_INTEGER start, end;
    QueryPerformanceCounter(&start);
    const testhost::RunReport report = host.Run();
    QueryPerformanceCounter(&end);

    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof(memory);
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    const double pixels = double(selectionWidth) * selectionHeight;
    std::printf("image %dx%d, selection %dx%d: result %d, %.3f s for the whole run\n", width,
                height, selectionWidth, selectionHeight, report.result, Seconds(start, end));
    std::printf("working buffers of the run: %.1f MB\n", pixels * 16 / 1e6);
    std::printf("process peak: working set %.1f MB, committed %.1f MB (host copies included)\n",
                memory.PeakWorkingSetSize / 1e6, memory.PeakPagefileUsage / 1e6);
    return report.Ok() ? 0 : 1;
}
