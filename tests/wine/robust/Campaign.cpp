// The randomized hostile-host campaign: runs the module through many random
// hosts (document, services, protocol, stored values, one to three runs
// each) and reports every host that went wrong with the seed that replays it.
//
//   robust_campaign --seed 7 --count 80               hosts 0..79 of seed 7
//   robust_campaign --seed 7 --first 80 --count 80    and 80..159
//   robust_campaign --count 100000                    a fresh seed (printed)
//   robust_campaign --replay 1234567                  one host
//   --largest-side N limits the document's sides (1500).
//
// A host went wrong when a call answered a code a host does not expect, the
// globals stayed locked, the test host saw a fault (a write past a buffer,
// an unknown handle, a crash-free hang), handles were left behind, or a
// completed run changed the document outside the areas delivered to the
// module (or at all, in an image mode it passes through).
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <sstream>
#include <string>

#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"
#include "tests/fuzz/HostileFloats.h"

namespace {

using namespace testhost;

class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed) {}
    uint64_t Next() {  // splitmix64
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    int64_t Between(int64_t lo, int64_t hi) {  // both included
        return lo + static_cast<int64_t>(Next() % (static_cast<uint64_t>(hi - lo) + 1));
    }
    bool Percent(int percent) { return Between(1, 100) <= percent; }
    template <typename T>
    T Pick(std::initializer_list<T> values) {
        return values.begin()[Between(0, static_cast<int64_t>(values.size()) - 1)];
    }
    float WildFloat(float lo, float hi) {
        const int64_t kind = Between(0, hostile::kSpecialFloatCount + 3);
        if (kind < hostile::kSpecialFloatCount) return hostile::kSpecialFloats[kind];
        if (kind == hostile::kSpecialFloatCount)
            return hostile::FloatFromBits(static_cast<uint32_t>(Next()));
        return lo + (hi - lo) * static_cast<float>(Between(0, 1 << 20)) / (1 << 20);
    }
    int32_t WildInt(int32_t lo, int32_t hi) {
        const int32_t special[] = {INT32_MIN, INT32_MAX, static_cast<int32_t>(Next())};
        const int64_t kind = Between(0, 9);
        return kind < 3 ? special[kind] : static_cast<int32_t>(Between(lo, hi));
    }

  private:
    uint64_t state_;
};

// One random host. Everything follows from the seed.
struct Host {
    uint64_t seed;
    int width, height, planes, depth;
    int mask;  // 0 none, 1 empty, 2 full, 3 random, 4 one pixel, 5 at the edges, 6 a box
    HostSettings settings;
    std::vector<bool> storesValues;  // per run: values written into the record first
    std::string adjustment;          // what was changed to keep the run affordable
};

int Side(Random& r, int largest) {
    const int kind = static_cast<int>(r.Between(1, 100));
    const int hi = kind <= 60 ? 48 : kind <= 80 ? 400 : kind <= 98 ? 1200 : 5000;
    return static_cast<int>(
        r.Between(std::min(kind > 98 ? 1000 : 1, largest), std::min(hi, largest)));
}

void ChooseDocument(Random& r, int largestSide, Host& h) {
    h.width = Side(r, largestSide);
    h.height = r.Percent(10) ? 1 : Side(r, largestSide);
    if (r.Percent(10)) std::swap(h.width, h.height);
    h.planes = r.Percent(40) ? 3 : static_cast<int>(r.Between(1, 5));
    h.depth = r.Percent(80) ? 8 : 16;
    if (int64_t{h.width} * h.height * h.planes * h.depth / 8 > 80LL << 20) {
        h.planes = std::min(h.planes, 3);
        h.depth = 8;
    }
    HostSettings& s = h.settings;
    const int mode = static_cast<int>(r.Between(1, 100));
    s.imageMode = static_cast<int16_t>(mode <= 45   ? int64_t{plugInModeRGBColor}
                                       : mode <= 55 ? int64_t{plugInModeRGB48}
                                       : mode <= 98 ? r.Between(0, 15)
                                                    : static_cast<int64_t>(r.Next()));
    if (r.Percent(30)) s.depth = r.Pick<int32_t>({0, 8, 16, 32});
    h.mask = r.Percent(25) ? 0 : static_cast<int>(r.Between(1, 6));
    const int left = static_cast<int>(r.Between(0, h.width - 1));
    const int top = static_cast<int>(r.Between(0, h.height - 1));
    if (r.Percent(10)) {
        s.filterRect = VRect{top, left, static_cast<int32_t>(r.Between(top + 1, h.height)),
                             static_cast<int32_t>(r.Between(left + 1, h.width))};
    } else if (r.Percent(3)) {  // nothing to filter: no width, no height, or upside down
        s.filterRect = r.Pick({VRect{top, left, h.height, left}, VRect{top, left, top, h.width},
                               VRect{h.height, h.width, top, left}});
    }
}

void ChooseServices(Random& r, Host& h) {
    HostSettings& s = h.settings;
    s.recordSize = r.Percent(20) ? kMinimumFilterRecordSize : sizeof(FilterRecord);
    s.bigDocument = r.Percent(30);
    s.hostSets32BitCoordinates = s.bigDocument && r.Percent(50);
    s.hostWindow = r.Percent(90);
    s.advanceState = r.Percent(70);
    if (r.Percent(5)) s.advanceStateError = r.Pick<OSErr>({memFullErr, paramErr, -1, 1});
    s.displayPixels = r.Percent(80);
    s.colorServices = r.Pick({ColorServicesMode::kAnswering, ColorServicesMode::kUnsupported,
                              ColorServicesMode::kAbsent});
    s.abortFromPoll = r.Percent(75) ? 0 : static_cast<int>(r.Between(1, 12));
    s.handleSuite = r.Pick({HandleSuiteMode::kVersion1, HandleSuiteMode::kVersion1,
                            HandleSuiteMode::kVersion2, HandleSuiteMode::kAbsent});
    s.handleProcCount = r.Percent(80) ? 8 : r.Pick<int16_t>({0, 4, 7, 9, -1, 30});
    s.handleSizeQuirk = r.Percent(10);
    s.newHandleFill = r.Percent(70) ? 0 : static_cast<uint8_t>(r.Next());
    s.descriptorSuite = r.Pick({DescriptorSuiteMode::kFull, DescriptorSuiteMode::kShortSuites,
                                DescriptorSuiteMode::kNullSuites, DescriptorSuiteMode::kAbsent});
    s.playInfo = r.Percent(90) ? r.Pick<int16_t>({0, 0, 2, 1}) : static_cast<int16_t>(r.Next());
    s.readerCloseError =
        r.Percent(75)
            ? noErr
            : r.Pick<OSErr>({errMissingParameter, -1, filterBadParameters, memFullErr, 12345});
    if (r.Percent(70)) {
        std::vector<DescriptorItem> items(static_cast<size_t>(r.Between(0, 6)));
        for (auto& item : items) {
            const DescriptorKeyID key =
                r.Pick<DescriptorKeyID>({FourCC("ClSt"), FourCC("Angl"), FourCC("Usil"),
                                         FourCC("zzzz"), static_cast<DescriptorKeyID>(r.Next())});
            const int64_t kind = r.Between(0, 3);
            const std::string text(static_cast<size_t>(r.Between(0, 300)), 'q');
            item = kind == 0   ? DescriptorItem::Integer(key, static_cast<int32_t>(r.Next()))
                   : kind == 1 ? DescriptorItem::Float(key, r.WildFloat(-1e6f, 1e6f))
                   : kind == 2 ? DescriptorItem::Bool(key, r.Percent(50))
                               : DescriptorItem::Text(key, text);
        }
        s.playDescriptor = items;
    }
    s.extraRowBytes = r.Percent(70) ? 0 : static_cast<int32_t>(r.Between(1, 17));
    s.nullInData = r.Percent(8);
    s.nullOutData = r.Percent(8);
    s.nullMaskData = r.Percent(8);
    s.blendThroughMask = r.Percent(10);
    s.loopEnd = r.Percent(50) ? LoopEnd::kWhileRightNonZero : LoopEnd::kUntilEmpty;
    s.callAbout = r.Percent(10);
    s.maxSpace =
        r.Pick<int32_t>({0, -1, INT32_MIN, 1, static_cast<int32_t>(r.Between(1, 10000)),
                         static_cast<int32_t>(r.Between(1, 10000000)), INT32_MAX, 64 << 20});
    s.watchdogSeconds = 120;
    s.staleDataForEmptyRects = r.Percent(20);
    s.parameters = r.Pick(
        {ParametersCall::kEveryRun, ParametersCall::kEveryRunFresh, ParametersCall::kFirstRunOnly});
    const int runs = r.Percent(75) ? 1 : static_cast<int>(r.Between(2, 3));
    for (int run = 0; run < runs; ++run) h.storesValues.push_back(r.Percent(60));
}

// Without whole-image mode the host serves one band per rowsPerTile rows,
// each nearly as high as the filter rectangle: maxSpace is raised when that
// adds up to more than 12 bands or 16 MB in one run.
void BoundBandWork(Host& h) {
    HostSettings& s = h.settings;
    if (s.advanceState && s.displayPixels) return;
    const VRect area = s.filterRect.value_or(VRect{0, 0, h.height, h.width});
    const int64_t width = area.right - area.left, height = area.bottom - area.top;
    const int64_t rowCost = width + 2 * width * h.planes;  // the module's prepare
    int64_t rows = 1;
    while (rows * rowCost < s.maxSpace && rows < height) ++rows;
    const int64_t bands = (height + rows - 1) / rows;
    const int64_t bytes = bands * height * width * h.planes * h.depth / 8;
    if (bands <= 12 && bytes <= 16 << 20) return;
    const int64_t needed = std::min(
        height,
        std::max(height * height * width * h.planes * h.depth / 8 / (16 << 20), height / 12) + 1);
    s.maxSpace = static_cast<int32_t>(std::min<int64_t>(needed * rowCost, INT32_MAX));
    h.adjustment = " (maxSpace raised to " + std::to_string(s.maxSpace) + ")";
}

Host MakeHost(uint64_t seed, int largestSide) {
    Random r(seed);
    Host h{seed, 1, 1, 3, 8, 0, {}, {}, {}};
    ChooseDocument(r, largestSide, h);
    ChooseServices(r, h);
    BoundBandWork(h);
    return h;
}

Image MakeDocument(const Host& h) {
    Random r(h.seed ^ 0x5EED);
    Image image(h.width, h.height, h.planes, h.depth);
    image.FillNoise(static_cast<uint32_t>(h.seed));
    const uint16_t full = h.depth == 16 ? 65535 : 255;
    std::vector<uint16_t> red(static_cast<size_t>(h.planes), full);  // red discs to find
    red[0] = full * 4 / 5;
    for (size_t i = 1; i < red.size() && i < 3; ++i) red[i] = full / 10;
    for (int64_t disc = r.Between(0, 4); disc > 0; --disc) {
        const int radius = static_cast<int>(r.Between(1, 12));
        image.FillRect(static_cast<int>(r.Between(0, h.width - 1)) - radius,
                       static_cast<int>(r.Between(0, h.height - 1)) - radius, 2 * radius,
                       2 * radius, red);
    }
    if (h.mask == 0) return image;
    const int x = static_cast<int>(r.Between(0, h.width - 1));
    const int y = static_cast<int>(r.Between(0, h.height - 1));
    const int w = static_cast<int>(r.Between(1, h.width));
    const int ht = static_cast<int>(r.Between(1, h.height));
    const int density = static_cast<int>(r.Between(1, 100));
    const bool left = r.Percent(50), top = r.Percent(50);
    image.SelectRect(0, 0, 0, 0);
    if (h.mask == 2) image.SelectRect(0, 0, h.width, h.height, r.Pick<uint8_t>({255, 1, 128}));
    if (h.mask == 4) image.SelectRect(x, y, 1, 1);
    if (h.mask == 5) image.SelectRect(left ? 0 : h.width - w, top ? 0 : h.height - ht, w, ht);
    if (h.mask == 6) image.SelectRect(x, y, w % 300 + 1, ht % 300 + 1);
    for (uint8_t& m : image.Mask()) {
        if (h.mask == 3 && r.Percent(density)) m = static_cast<uint8_t>(r.Between(1, 255));
    }
    return image;
}

std::string Describe(const Host& h) {
    const HostSettings& s = h.settings;
    std::ostringstream t;
    t << "seed " << h.seed << ": " << h.width << "x" << h.height << "x" << h.planes << " depth "
      << h.depth << "/" << s.depth.value_or(h.depth) << " mode " << *s.imageMode << " mask "
      << h.mask << " maxSpace " << s.maxSpace << " advanceState " << s.advanceState
      << " displayPixels " << s.displayPixels << " runs " << h.storesValues.size();
    if (s.filterRect) {
        t << " filterRect " << s.filterRect->top << "," << s.filterRect->left << ","
          << s.filterRect->bottom << "," << s.filterRect->right;
    }
    return t.str() + h.adjustment;
}

// Random user values and view positions, as a host keeps them in the record.
void StoreValues(FilterParameters* p, const Host& h, int run) {
    Random r(h.seed ^ (0xBADull << run));
    auto user = [&r] { return r.Percent(50) ? r.Between(0, 100) : r.WildFloat(-300.0f, 400.0f); };
    p->tolerance = static_cast<float>(user());
    p->darkening = static_cast<float>(user());
    p->viewX = r.WildFloat(-10.0f, static_cast<float>(h.width + 10));
    p->viewY = r.WildFloat(-10.0f, static_cast<float>(h.height + 10));
    p->viewScale = r.Percent(40) ? 1.0f : r.WildFloat(-4.0f, 16.0f);
    p->viewLeft = r.WildInt(-10, h.width + 10);
    p->viewTop = r.WildInt(-10, h.height + 10);
    p->viewRight = r.WildInt(-10, h.width + 10);
    p->viewBottom = r.WildInt(-10, h.height + 10);
    p->viewState = r.Percent(80) ? r.Pick<int8_t>({1, 0, -1, -2}) : static_cast<int8_t>(r.Next());
    p->previewOn = r.Pick<uint8_t>({0, 1, 0xFF});
    p->showDialog = r.Percent(85) ? 0 : static_cast<uint8_t>(r.Between(1, 255));
}

// Bytes changed outside every output area delivered in this run (all bytes,
// in an image mode the module passes through); empty when there are none.
std::string ForbiddenChanges(TestHost& host, size_t firstServe) {
    const Image& before = host.image();
    const int16_t mode = host.record().imageMode;
    const bool processes = mode == plugInModeRGBColor || mode == plugInModeRGB48;
    const size_t pixelBytes = before.RowBytes() / static_cast<size_t>(before.Width());
    size_t forbidden = 0;
    std::string first;
    for (int y = 0; y < before.Height(); ++y) {
        const uint8_t* a = before.Data() + y * before.RowBytes();
        const uint8_t* b = host.output().Data() + y * before.RowBytes();
        for (size_t i = 0; i < before.RowBytes(); ++i) {
            if (a[i] == b[i]) continue;
            const int x = static_cast<int>(i / pixelBytes);
            const auto& serves = host.log().serves;
            const bool delivered =
                processes &&
                std::any_of(serves.begin() + firstServe, serves.end(), [&](const auto& s) {
                    const VRect& o = s.request.outRect;
                    return x >= o.left && x < o.right && y >= o.top && y < o.bottom;
                });
            if (!delivered && forbidden++ == 0)
                first = "(" + std::to_string(x) + ", " + std::to_string(y) + ")";
        }
    }
    if (forbidden == 0) return "";
    return std::to_string(forbidden) + " bytes changed outside the delivered areas, first at " +
           first;
}

std::vector<std::string> RunHost(const Host& h, int& runs) {
    std::vector<std::string> problems;
    TestHost host;
    host.settings = h.settings;
    if (!host.Load(QUORVEX_MODULE_PATH)) return {host.LoadError()};
    host.image() = MakeDocument(h);
    auto valid = [&h](OSErr e) {
        return e == noErr || e == userCanceledErr || e == memFullErr || e == filterBadParameters ||
               e == h.settings.readerCloseError || e == h.settings.advanceStateError;
    };
    for (size_t run = 0; run < h.storesValues.size(); ++run, ++runs) {
        const size_t firstCall = host.log().calls.size(), firstServe = host.log().serves.size();
        const std::string at = "run " + std::to_string(run) + ": ";
        RunReport report;
        host.settings.parameters = h.settings.parameters;
        if (h.storesValues[run]) {
            host.settings.parameters = ParametersCall::kNever;
            report.lastSelector = filterSelectorParameters;
            report.result = host.Call(filterSelectorParameters);
            Handle stored = host.record().parameters;  // a host's handle or the module's own
            if (stored != nullptr && *stored != nullptr)
                StoreValues(reinterpret_cast<FilterParameters*>(*stored), h, static_cast<int>(run));
            if (report.result == noErr) report = host.RunFromPrepare();
        } else {
            report = host.Run();
        }
        for (size_t i = firstCall; i < host.log().calls.size(); ++i) {
            const CallRecord& call = host.log().calls[i];
            const std::string selector = " after selector " + std::to_string(call.selector);
            if (!valid(call.result))
                problems.push_back(at + "result " + std::to_string(call.result) + selector);
            if (call.globalsLocksAfter > 0)
                problems.push_back(at + "globals still locked" + selector);
        }
        if (report.result == noErr && report.lastSelector == filterSelectorFinish) {
            const std::string pixels = ForbiddenChanges(host, firstServe);
            if (!pixels.empty()) problems.push_back(at + pixels);
        } else if (!valid(report.result)) {
            problems.push_back(at + "the run ended with " + std::to_string(report.result));
        }
    }
    for (const std::string& fault : host.log().faults) problems.push_back("host fault: " + fault);
    // With its own Windows blocks the module cannot give back the
    // descriptor handles the host makes.
    const HostSettings& s = h.settings;
    if (s.handleSuite == HandleSuiteMode::kVersion1 &&
        (s.handleProcCount >= 8 || s.handleProcCount < 0)) {
        for (const HandleInfo& leaked : host.LeakedHandles())
            problems.push_back("handle of " + std::to_string(leaked.size) + " bytes left behind");
    }
    return problems;
}

volatile uint64_t g_currentSeed = 0;

// Names the host a crash happened in, before any handler runs, so that even
// a fault that wrecks the stack or the heap can be replayed.
LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    const DWORD code = info->ExceptionRecord->ExceptionCode;
    if (code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_STACK_OVERFLOW ||
        code == EXCEPTION_ILLEGAL_INSTRUCTION || code == EXCEPTION_INT_DIVIDE_BY_ZERO ||
        code == STATUS_HEAP_CORRUPTION) {
        std::fprintf(stderr, "FAULT: exception 0x%08lx in the host of seed %llu (--replay %llu)\n",
                     code, static_cast<unsigned long long>(g_currentSeed),
                     static_cast<unsigned long long>(g_currentSeed));
        std::fflush(stderr);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

int main(int argc, char** argv) {
    std::map<std::string, uint64_t> option = {
        {"--seed", GetTickCount64()}, {"--first", 0}, {"--count", 80}, {"--largest-side", 1500}};
    for (int i = 1; i + 1 < argc; i += 2) option[argv[i]] = std::strtoull(argv[i + 1], nullptr, 10);
    const bool replay = option.count("--replay") != 0;
    if (argc % 2 == 0 || option.size() != 4u + replay) {
        std::fprintf(stderr, "options: --seed, --first, --count, --largest-side, --replay\n");
        return 2;
    }
    const uint64_t seed = option[replay ? "--replay" : "--seed"];
    const uint64_t first = option["--first"], count = replay ? 1 : option["--count"];
    AddVectoredExceptionHandler(1, ReportFault);
    // The module stays loaded for the whole campaign, as a host keeps its
    // plug-ins: module-wide state carries over from one host to the next.
    if (LoadLibraryA(QUORVEX_MODULE_PATH) == nullptr) return 2;
    std::printf("campaign seed %llu, %llu hosts\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(count));
    uint64_t failed = 0;
    int runs = 0;
    for (uint64_t i = first; i < first + count; ++i) {
        g_currentSeed = replay ? seed : Random(seed ^ (i * 0xD1B54A32D192ED03ull)).Next();
        const Host h = MakeHost(g_currentSeed, static_cast<int>(option["--largest-side"]));
        const std::vector<std::string> problems = RunHost(h, runs);
        if (problems.empty()) continue;
        ++failed;
        std::printf("FAIL #%llu (replay with --replay %llu): %s\n",
                    static_cast<unsigned long long>(i),
                    static_cast<unsigned long long>(g_currentSeed), Describe(h).c_str());
        for (const std::string& problem : problems) std::printf("    %s\n", problem.c_str());
    }
    std::printf("%llu passed, %llu failed (%d runs)\n",
                static_cast<unsigned long long>(count - failed),
                static_cast<unsigned long long>(failed), runs);
    return failed == 0 ? 0 : 1;
}
