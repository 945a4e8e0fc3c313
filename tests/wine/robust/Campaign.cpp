// The randomized hostile-host campaign: random hosts (document, services,
// protocol, stored values, one to three runs), each that went wrong printed
// with the seed that replays it (robust_campaign --replay SEED; a campaign is
// --seed S --count N [--first F] [--largest-side 1500]). Wrong: an unexpected
// result code, globals left locked, a fault the test host saw (a write past a
// buffer, an unknown handle, a hang), handles left behind, or a completed run
// changing bytes outside the output areas delivered (any, in a mode passed
// through).
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
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
    int Between(int lo, int hi) {  // both included
        return lo + static_cast<int>(Next() % static_cast<uint64_t>(int64_t{hi} - lo + 1));
    }
    bool Percent(int percent) { return Between(1, 100) <= percent; }
    template <typename T>
    T Pick(std::initializer_list<T> values) {
        return values.begin()[Between(0, static_cast<int>(values.size()) - 1)];
    }
    float WildFloat(float lo, float hi) {  // a special value, any bits, or within lo..hi
        const uint32_t kind = static_cast<uint32_t>(Between(0, hostile::kSpecialFloatCount + 3));
        return kind < hostile::kSpecialFloatCount ? hostile::kSpecialFloats[kind]
               : kind == hostile::kSpecialFloatCount
                   ? hostile::FloatFromBits(static_cast<uint32_t>(Next()))
                   : lo + (hi - lo) * static_cast<float>(Between(0, 1 << 20)) / (1 << 20);
    }

  private:
    uint64_t state_;
};

struct Host {
    uint64_t seed = 0;
    int width = 1, height = 1, planes = 3, depth = 8;
    HostSettings settings;
    std::vector<bool> storesValues;  // per run: values written into the record first
};

int Side(Random& r, int largest) {
    const int kind = r.Between(1, 100);
    const int hi = kind <= 60 ? 48 : kind <= 80 ? 400 : kind <= 98 ? 1200 : 5000;
    return r.Between(std::min(kind > 98 ? 1000 : 1, largest), std::min(hi, largest));
}

// One random host. Everything follows from the seed.
Host MakeHost(uint64_t seed, int largestSide) {
    Random r(seed);
    Host h;
    h.seed = seed;
    h.width = Side(r, largestSide);
    h.height = r.Percent(10) ? 1 : Side(r, largestSide);
    if (r.Percent(10)) std::swap(h.width, h.height);
    const bool huge = int64_t{h.width} * h.height > 4000000;  // kept under 80 MB
    h.planes = r.Percent(40) || huge ? 3 : r.Between(1, 5);
    h.depth = r.Percent(80) || huge ? 8 : 16;
    HostSettings& s = h.settings;
    const int mode = r.Between(1, 100);
    s.imageMode = static_cast<int16_t>(mode <= 45   ? plugInModeRGBColor
                                       : mode <= 55 ? plugInModeRGB48
                                       : mode <= 98 ? r.Between(0, 15)
                                                    : static_cast<int>(r.Next()));
    if (r.Percent(30)) s.depth = r.Pick<int32_t>({0, 8, 16, 32});
    const int left = r.Between(0, h.width - 1), top = r.Between(0, h.height - 1);
    if (r.Percent(10)) {
        s.filterRect = VRect{top, left, r.Between(top + 1, h.height), r.Between(left + 1, h.width)};
    } else if (r.Percent(3)) {  // nothing to filter: no width, no height, or upside down
        s.filterRect = r.Pick({VRect{top, left, h.height, left}, VRect{top, left, top, h.width},
                               VRect{h.height, h.width, top, left}});
    }
    s.recordSize = r.Percent(20) ? kMinimumFilterRecordSize : sizeof(FilterRecord);
    s.bigDocument = r.Percent(30);
    s.hostSets32BitCoordinates = s.bigDocument && r.Percent(50);
    s.hostWindow = r.Percent(90);
    s.advanceState = r.Percent(70);
    if (r.Percent(5)) s.advanceStateError = r.Pick<OSErr>({memFullErr, paramErr, -1, 1});
    s.displayPixels = r.Percent(80);
    s.colorServices = r.Pick({ColorServicesMode::kAnswering, ColorServicesMode::kUnsupported,
                              ColorServicesMode::kAbsent});
    s.abortFromPoll = r.Percent(75) ? 0 : r.Between(1, 12);
    s.handleSuite = r.Pick({HandleSuiteMode::kVersion1, HandleSuiteMode::kVersion1,
                            HandleSuiteMode::kVersion2, HandleSuiteMode::kAbsent});
    s.handleProcCount = r.Percent(80) ? 8 : r.Pick<int16_t>({0, 4, 7, 9, -1, 30});
    s.handleSizeQuirk = r.Percent(10);
    s.newHandleFill = r.Percent(70) ? 0 : static_cast<uint8_t>(r.Next());
    s.descriptorSuite = r.Pick({DescriptorSuiteMode::kFull, DescriptorSuiteMode::kShortSuites,
                                DescriptorSuiteMode::kNullSuites, DescriptorSuiteMode::kAbsent});
    s.playInfo = r.Percent(90) ? r.Pick<int16_t>({0, 0, 2, 1}) : static_cast<int16_t>(r.Next());
    if (r.Percent(25))
        s.readerCloseError =
            r.Pick<OSErr>({errMissingParameter, -1, filterBadParameters, memFullErr, 12345});
    std::vector<DescriptorItem> items(static_cast<size_t>(r.Between(0, 6)));
    for (auto& item : items) {
        const DescriptorKeyID key =
            r.Pick<DescriptorKeyID>({FourCC("ClSt"), FourCC("Angl"), FourCC("Usil"), FourCC("zzzz"),
                                     static_cast<DescriptorKeyID>(r.Next())});
        const int kind = r.Between(0, 3);
        item = kind == 0   ? DescriptorItem::Integer(key, static_cast<int32_t>(r.Next()))
               : kind == 1 ? DescriptorItem::Float(key, r.WildFloat(-1e6f, 1e6f))
               : kind == 2 ? DescriptorItem::Bool(key, r.Percent(50))
                           : DescriptorItem::Text(key, std::string(r.Between(0, 300), 'q'));
    }
    if (r.Percent(70)) s.playDescriptor = items;
    s.extraRowBytes = r.Percent(70) ? 0 : r.Between(1, 17);
    s.nullInData = r.Percent(8);
    s.nullOutData = r.Percent(8);
    s.nullMaskData = r.Percent(8);
    s.blendThroughMask = r.Percent(10);
    s.loopEnd = r.Percent(50) ? LoopEnd::kWhileRightNonZero : LoopEnd::kUntilEmpty;
    s.callAbout = r.Percent(10);
    s.maxSpace = r.Pick<int32_t>(
        {0, -1, INT32_MIN, 1, r.Between(1, 10000), r.Between(1, 10000000), INT32_MAX, 64 << 20});
    s.watchdogSeconds = 120;
    s.staleDataForEmptyRects = r.Percent(20);
    s.parameters = r.Pick(
        {ParametersCall::kEveryRun, ParametersCall::kEveryRunFresh, ParametersCall::kFirstRunOnly});
    for (int run = r.Percent(75) ? 1 : r.Between(2, 3); run > 0; --run)
        h.storesValues.push_back(r.Percent(60));
    // Served by the host, each band runs nearly to the bottom: maxSpace is
    // raised where a run would take more than 12 bands or 16 MB.
    const VRect area = s.filterRect.value_or(VRect{0, 0, h.height, h.width});
    const int64_t width = area.right - area.left, height = area.bottom - area.top;
    const int64_t rowCost = width * (1 + 2 * h.planes);  // as the module's prepare counts
    const int64_t bandBytes = height * width * h.planes * h.depth / 8;
    if ((!s.advanceState || !s.displayPixels) && width > 0 && height > 0) {
        const int64_t rows = std::clamp<int64_t>(s.maxSpace / rowCost + 1, 1, height);
        const int64_t bands = (height + rows - 1) / rows;
        const int64_t needed = std::max(height / 12, height * bandBytes / (16 << 20)) + 1;
        if (bands > 12 || bands * bandBytes > 16 << 20)
            s.maxSpace = static_cast<int32_t>(std::min<int64_t>(needed * rowCost, INT32_MAX));
    }
    return h;
}

// The document: noise, a few red discs to find, and the host's selection.
Image MakeDocument(const Host& h) {
    Random r(h.seed ^ 0x5EED);
    Image image(h.width, h.height, h.planes, h.depth);
    image.FillNoise(static_cast<uint32_t>(h.seed));
    const uint16_t full = h.depth == 16 ? 65535 : 255;
    std::vector<uint16_t> red(static_cast<size_t>(h.planes), full / 10);
    red[0] = full * 4 / 5;
    for (int disc = r.Between(0, 4); disc > 0; --disc) {
        const int radius = r.Between(1, 12);
        image.FillRect(r.Between(0, h.width - 1) - radius, r.Between(0, h.height - 1) - radius,
                       2 * radius, 2 * radius, red);
    }
    // No selection, an empty one, all, random, one pixel, at the edges, a box.
    const int mask = r.Percent(25) ? 0 : r.Between(1, 6);
    if (mask == 0) return image;
    const int x = r.Between(0, h.width - 1), y = r.Between(0, h.height - 1);
    const int w = r.Between(1, h.width), ht = r.Between(1, h.height);
    const int density = r.Between(1, 100);
    image.SelectRect(0, 0, 0, 0);
    if (mask == 2) image.SelectRect(0, 0, h.width, h.height, r.Pick<uint8_t>({255, 1, 128}));
    if (mask == 4) image.SelectRect(x, y, 1, 1);
    if (mask == 5)
        image.SelectRect(r.Percent(50) ? 0 : h.width - w, r.Percent(50) ? 0 : h.height - ht, w, ht);
    if (mask == 6) image.SelectRect(x, y, w % 300 + 1, ht % 300 + 1);
    for (uint8_t& m : image.Mask()) {
        if (mask == 3 && r.Percent(density)) m = static_cast<uint8_t>(r.Between(1, 255));
    }
    return image;
}

// Random user values and view positions, as a host keeps them in the record.
void StoreValues(FilterParameters* p, const Host& h, int run) {
    Random r(h.seed ^ (0xBADull << run));
    for (float* value : {&p->tolerance, &p->darkening})
        *value = r.Percent(50) ? static_cast<float>(r.Between(0, 100)) : r.WildFloat(-300, 400);
    p->viewX = r.WildFloat(-10.0f, static_cast<float>(h.width + 10));
    p->viewY = r.WildFloat(-10.0f, static_cast<float>(h.height + 10));
    p->viewScale = r.Percent(40) ? 1.0f : r.WildFloat(-4.0f, 16.0f);
    for (int32_t* edge : {&p->viewLeft, &p->viewTop, &p->viewRight, &p->viewBottom})
        *edge = r.Percent(30)
                    ? r.Pick<int32_t>({INT32_MIN, INT32_MAX, static_cast<int32_t>(r.Next())})
                    : r.Between(-10, h.width + 10);
    p->viewState = r.Percent(80) ? r.Pick<int8_t>({1, 0, -1, -2}) : static_cast<int8_t>(r.Next());
    p->previewOn = r.Pick<uint8_t>({0, 1, 0xFF});
    p->showDialog = r.Percent(85) ? 0 : static_cast<uint8_t>(r.Between(1, 255));
}

// How many bytes changed outside every output area delivered since
// firstServe (all changed bytes, in an image mode the module passes through).
size_t ForbiddenChanges(TestHost& host, size_t firstServe) {
    const Image& before = host.image();
    const int16_t mode = host.record().imageMode;
    const bool processes = mode == plugInModeRGBColor || mode == plugInModeRGB48;
    const auto& serves = host.log().serves;
    const size_t pixelBytes = before.RowBytes() / static_cast<size_t>(before.Width());
    size_t forbidden = 0;
    for (int y = 0; y < before.Height(); ++y) {
        const uint8_t* a = before.Row(y);
        const uint8_t* b = host.output().Row(y);
        for (size_t i = 0; i < before.RowBytes(); ++i) {
            if (a[i] == b[i]) continue;
            const int x = static_cast<int>(i / pixelBytes);
            auto delivered = [&](const ServeRecord& s) {
                const VRect& o = s.request.outRect;
                return x >= o.left && x < o.right && y >= o.top && y < o.bottom;
            };
            forbidden +=
                !processes || std::none_of(serves.begin() + firstServe, serves.end(), delivered);
        }
    }
    return forbidden;
}

std::vector<std::string> RunHost(const Host& h) {
    std::vector<std::string> problems;
    TestHost host;
    host.settings = h.settings;
    if (!host.Load(QUORVEX_MODULE_PATH)) return {host.LoadError()};
    host.image() = MakeDocument(h);
    auto valid = [&h](OSErr e) {
        return e == noErr || e == userCanceledErr || e == memFullErr || e == filterBadParameters ||
               e == h.settings.readerCloseError || e == h.settings.advanceStateError;
    };
    for (size_t run = 0; run < h.storesValues.size(); ++run) {
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
        const bool completed =
            report.result == noErr && report.lastSelector == filterSelectorFinish;
        if (const size_t bytes = completed ? ForbiddenChanges(host, firstServe) : 0)
            problems.push_back(at + std::to_string(bytes) + " bytes changed outside the areas");
        if (!valid(report.result))
            problems.push_back(at + "the run ended with " + std::to_string(report.result));
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

// Names the host a crash happened in before any handler runs, so that even a
// fault that wrecks the stack or the heap can be replayed.
LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    const DWORD code = info->ExceptionRecord->ExceptionCode;
    if (code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_STACK_OVERFLOW ||
        code == EXCEPTION_ILLEGAL_INSTRUCTION || code == EXCEPTION_INT_DIVIDE_BY_ZERO ||
        code == STATUS_HEAP_CORRUPTION) {
        std::fprintf(stderr, "FAULT: exception 0x%08lx in the host of --replay %llu\n", code,
                     g_currentSeed);
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
    std::printf("campaign seed %llu, %llu hosts\n", seed, count);
    uint64_t failed = 0;
    for (uint64_t i = first; i < first + count; ++i) {
        g_currentSeed = replay ? seed : Random(seed ^ (i * 0xD1B54A32D192ED03ull)).Next();
        const Host h = MakeHost(g_currentSeed, static_cast<int>(option["--largest-side"]));
        const std::vector<std::string> problems = RunHost(h);
        if (problems.empty()) continue;
        std::printf("FAIL #%llu (--replay %llu): %dx%dx%d depth %d mode %d\n", i, h.seed, h.width,
                    h.height, h.planes, h.depth, *h.settings.imageMode);
        for (const std::string& problem : problems) std::printf("    %s\n", problem.c_str());
        ++failed;
    }
    std::printf("%llu passed, %llu failed\n", count - failed, failed);
    return failed == 0 ? 0 : 1;
}
