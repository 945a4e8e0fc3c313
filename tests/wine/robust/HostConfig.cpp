#include "tests/wine/robust/HostConfig.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "tests/fuzz/HostileFloats.h"
#include "tests/wine/robust/Random.h"

namespace robust {

namespace {

using testhost::DescriptorItem;
using testhost::HostSettings;

constexpr int64_t kLargestDocumentBytes = 80LL * 1024 * 1024;

float WildFloat(Random& random, float lo, float hi) {
    const int64_t kind = random.Between(0, hostile::kSpecialFloatCount + 3);
    if (kind < hostile::kSpecialFloatCount) return hostile::kSpecialFloats[kind];
    if (kind == hostile::kSpecialFloatCount) {
        return hostile::FloatFromBits(static_cast<uint32_t>(random.Next()));
    }
    return lo + (hi - lo) * static_cast<float>(random.Between(0, 1 << 20)) / (1 << 20);
}

// A user value: mostly in the dialog's range, often anything a float holds.
float UserValue(Random& random) {
    if (random.Percent(50)) return static_cast<float>(random.Between(0, 100));
    return WildFloat(random, -300.0f, 400.0f);
}

int32_t WildInt(Random& random, int32_t lo, int32_t hi) {
    switch (random.Between(0, 9)) {
        case 0:
            return std::numeric_limits<int32_t>::min();
        case 1:
            return std::numeric_limits<int32_t>::max();
        case 2:
            return static_cast<int32_t>(random.Next());
        default:
            return static_cast<int32_t>(random.Between(lo, hi));
    }
}

StoredValues MakeStoredValues(Random& random, const HostConfig& config) {
    StoredValues v;
    v.tolerance = UserValue(random);
    v.darkening = UserValue(random);
    v.viewX = WildFloat(random, -10.0f, static_cast<float>(config.width + 10));
    v.viewY = WildFloat(random, -10.0f, static_cast<float>(config.height + 10));
    v.viewScale = random.Percent(40) ? 1.0f : WildFloat(random, -4.0f, 16.0f);
    v.viewLeft = WildInt(random, -10, config.width + 10);
    v.viewTop = WildInt(random, -10, config.height + 10);
    v.viewRight = WildInt(random, -10, config.width + 10);
    v.viewBottom = WildInt(random, -10, config.height + 10);
    v.viewState = random.Percent(80) ? random.Pick<int8_t>({1, 0, -1, -2})
                                     : static_cast<int8_t>(random.Next());
    v.previewOn = static_cast<uint8_t>(random.Pick<int>({0, 1, 0xFF}));
    v.showDialog = random.Percent(85) ? 0 : static_cast<uint8_t>(random.Between(1, 255));
    return v;
}

void ChooseSize(Random& random, const CampaignLimits& limits, HostConfig& c) {
    const int kind = static_cast<int>(random.Between(1, 100));
    const int largest = std::max(limits.largestSide, 1);
    auto side = [&random, largest](int lo, int hi) {
        return static_cast<int>(random.Between(std::min(lo, largest), std::min(hi, largest)));
    };
    if (kind <= 60) {
        c.width = side(1, 48);
        c.height = side(1, 48);
    } else if (kind <= 80) {
        c.width = side(1, 400);
        c.height = side(1, 400);
    } else if (kind <= 90) {
        const int length = side(1, 2000);
        const bool oneRow = random.Percent(50);
        c.width = oneRow ? length : 1;
        c.height = oneRow ? 1 : length;
    } else if (kind <= 98) {
        c.width = side(1, 1200);
        c.height = side(1, 1200);
    } else {
        c.width = side(1000, 5000);
        c.height = side(1000, 5000);
    }
}

void ChooseImage(Random& random, HostConfig& c) {
    c.planes = random.Percent(40) ? 3 : static_cast<int>(random.Between(1, 5));
    c.depth = random.Percent(80) ? 8 : 16;
    const int64_t bytes = int64_t{c.width} * c.height * c.planes * (c.depth / 8);
    if (bytes > kLargestDocumentBytes) {
        c.planes = std::min(c.planes, 3);
        c.depth = 8;
    }
    HostSettings& s = c.settings;
    const int mode = static_cast<int>(random.Between(1, 100));
    if (mode <= 45) {
        s.imageMode = 3;
    } else if (mode <= 55) {
        s.imageMode = 11;
    } else if (mode <= 98) {
        s.imageMode = static_cast<int16_t>(random.Between(0, 15));
    } else {
        s.imageMode = static_cast<int16_t>(random.Next());
    }
    if (random.Percent(30)) s.depth = random.Pick<int32_t>({0, 8, 16, 32});
    const int mask = static_cast<int>(random.Between(1, 100));
    c.mask = mask <= 25   ? MaskKind::kNone
             : mask <= 33 ? MaskKind::kEmpty
             : mask <= 43 ? MaskKind::kFull
             : mask <= 55 ? MaskKind::kRandom
             : mask <= 65 ? MaskKind::kOnePixel
             : mask <= 80 ? MaskKind::kTouchingEdges
                          : MaskKind::kBox;
    const int left = static_cast<int>(random.Between(0, c.width - 1));
    const int top = static_cast<int>(random.Between(0, c.height - 1));
    if (random.Percent(10)) {
        s.filterRect = VRect{top, left, static_cast<int32_t>(random.Between(top + 1, c.height)),
                             static_cast<int32_t>(random.Between(left + 1, c.width))};
    } else if (random.Percent(3)) {
        // Nothing to filter: no width, no height, or upside down.
        s.filterRect =
            random.Pick({VRect{top, left, c.height, left}, VRect{top, left, top, c.width},
                         VRect{c.height, c.width, top, left}});
    }
}

DescriptorItem RandomItem(Random& random) {
    const DescriptorKeyID key = random.Pick<DescriptorKeyID>(
        {FourCC("ClSt"), FourCC("Geom"), FourCC("Angl"), FourCC("CntY"), FourCC("Usil"),
         FourCC("zzzz"), static_cast<DescriptorKeyID>(random.Next())});
    switch (random.Between(0, 3)) {
        case 0:
            return DescriptorItem::Integer(key, static_cast<int32_t>(random.Next()));
        case 1:
            return DescriptorItem::Float(key, WildFloat(random, -1e6f, 1e6f));
        case 2:
            return DescriptorItem::Bool(key, random.Percent(50));
        default:
            return DescriptorItem::Text(key, std::string(random.Between(0, 300), 'q'));
    }
}

void ChooseServices(Random& random, HostConfig& c) {
    HostSettings& s = c.settings;
    s.recordSize = random.Percent(20) ? kMinimumFilterRecordSize : sizeof(FilterRecord);
    s.bigDocument = random.Percent(30);
    s.hostSets32BitCoordinates = s.bigDocument && random.Percent(50);
    s.hostWindow = random.Percent(90);
    s.advanceState = random.Percent(70);
    if (random.Percent(5)) s.advanceStateError = random.Pick<OSErr>({memFullErr, paramErr, -1, 1});
    s.displayPixels = random.Percent(80);
    s.colorServices = random.Pick({testhost::ColorServicesMode::kAnswering,
                                   testhost::ColorServicesMode::kUnsupported,
                                   testhost::ColorServicesMode::kAbsent});
    s.abortFromPoll = random.Percent(75) ? 0 : static_cast<int>(random.Between(1, 12));

    const int handles = static_cast<int>(random.Between(1, 100));
    s.handleSuite = handles <= 70   ? testhost::HandleSuiteMode::kVersion1
                    : handles <= 85 ? testhost::HandleSuiteMode::kVersion2
                                    : testhost::HandleSuiteMode::kAbsent;
    s.handleProcCount = random.Percent(80) ? 8 : random.Pick<int16_t>({0, 4, 7, 9, -1, 30});
    s.handleSizeQuirk = random.Percent(10);
    s.newHandleFill = random.Percent(70) ? 0 : static_cast<uint8_t>(random.Next());

    s.descriptorSuite = random.Pick(
        {testhost::DescriptorSuiteMode::kFull, testhost::DescriptorSuiteMode::kShortSuites,
         testhost::DescriptorSuiteMode::kNullSuites, testhost::DescriptorSuiteMode::kAbsent});
    s.playInfo = random.Percent(90) ? random.Pick<int16_t>({0, 0, 2, 1})
                                    : static_cast<int16_t>(random.Next());
    s.readerCloseError =
        random.Percent(75)
            ? noErr
            : random.Pick<OSErr>({errMissingParameter, -1, filterBadParameters, memFullErr, 12345});
    if (random.Percent(70)) {
        std::vector<DescriptorItem> items(static_cast<size_t>(random.Between(0, 6)));
        for (DescriptorItem& item : items) item = RandomItem(random);
        s.playDescriptor = items;
    }

    s.extraRowBytes = random.Percent(70) ? 0 : static_cast<int32_t>(random.Between(1, 17));
    s.nullInData = random.Percent(8);
    s.nullOutData = random.Percent(8);
    s.nullMaskData = random.Percent(8);
    s.blendThroughMask = random.Percent(10);
    s.loopEnd =
        random.Percent(50) ? testhost::LoopEnd::kWhileRightNonZero : testhost::LoopEnd::kUntilEmpty;
    s.callAbout = random.Percent(10);
    s.maxSpace = random.Pick<int32_t>({0, -1, std::numeric_limits<int32_t>::min(), 1,
                                       static_cast<int32_t>(random.Between(1, 10000)),
                                       static_cast<int32_t>(random.Between(1, 10000000)),
                                       std::numeric_limits<int32_t>::max(), 64 * 1024 * 1024});
    s.watchdogSeconds = 120;
}

// The band height the module picks for this maxSpace (its prepare step).
int64_t RowsPerTile(int64_t width, int64_t height, int planes, int32_t maxSpace) {
    const int64_t rowCost = width + 2 * width * planes;
    int64_t rows = 1;
    while (rows * rowCost < maxSpace && rows < height) ++rows;
    return rows;
}

// A host without whole-image mode gets one band per rowsPerTile rows, each
// nearly as high as the filter rectangle: raise maxSpace when that adds up
// to more bands or bytes than the campaign affords.
void BoundBandWork(const CampaignLimits& limits, HostConfig& c) {
    HostSettings& s = c.settings;
    if (s.advanceState && s.displayPixels) return;
    const VRect area = s.filterRect.value_or(VRect{0, 0, c.height, c.width});
    const int64_t width = area.right - area.left;
    const int64_t height = area.bottom - area.top;
    const int64_t rowBytes = width * c.planes * (c.depth / 8);
    const int64_t rows = RowsPerTile(width, height, c.planes, s.maxSpace);
    const int64_t bands = (height + rows - 1) / rows;
    if (bands <= limits.bands && bands * height * rowBytes <= limits.bandBytes) return;
    const int64_t forBytes = height * height * rowBytes / std::max<int64_t>(limits.bandBytes, 1);
    const int64_t forBands = height / std::max<int64_t>(limits.bands, 1);
    const int64_t needed = std::min(height, std::max(forBytes, forBands) + 1);
    const int64_t rowCost = width + 2 * width * c.planes;
    s.maxSpace = static_cast<int32_t>(std::min<int64_t>(needed * rowCost, INT32_MAX));
    c.adjustment = "maxSpace raised to " + std::to_string(s.maxSpace);
}

void ChooseRuns(Random& random, HostConfig& c) {
    const int runs = random.Percent(75) ? 1 : static_cast<int>(random.Between(2, 3));
    c.settings.parameters =
        random.Pick({testhost::ParametersCall::kEveryRun, testhost::ParametersCall::kEveryRunFresh,
                     testhost::ParametersCall::kFirstRunOnly});
    for (int run = 0; run < runs; ++run) {
        c.storesValues.push_back(random.Percent(60));
        c.stored.push_back(MakeStoredValues(random, c));
    }
}

const char* MaskName(MaskKind kind) {
    switch (kind) {
        case MaskKind::kNone:
            return "none";
        case MaskKind::kEmpty:
            return "empty";
        case MaskKind::kFull:
            return "full";
        case MaskKind::kRandom:
            return "random";
        case MaskKind::kOnePixel:
            return "one-pixel";
        case MaskKind::kTouchingEdges:
            return "edges";
        case MaskKind::kBox:
            return "box";
    }
    return "?";
}

}  // namespace

HostConfig MakeConfiguration(uint64_t seed, const CampaignLimits& limits) {
    Random random(seed);
    HostConfig c;
    c.seed = seed;
    ChooseSize(random, limits, c);
    ChooseImage(random, c);
    ChooseServices(random, c);
    ChooseRuns(random, c);
    BoundBandWork(limits, c);
    return c;
}

testhost::Image MakeDocument(const HostConfig& c) {
    Random random(c.seed ^ 0x5EED);
    testhost::Image image(c.width, c.height, c.planes, c.depth);
    image.FillNoise(static_cast<uint32_t>(c.seed));
    // A few red discs for the pipeline to find.
    const int discs = static_cast<int>(random.Between(0, 4));
    for (int i = 0; i < discs; ++i) {
        const int radius = static_cast<int>(random.Between(1, 12));
        const int cx = static_cast<int>(random.Between(0, c.width - 1));
        const int cy = static_cast<int>(random.Between(0, c.height - 1));
        const uint16_t full = c.depth == 16 ? 65535 : 255;
        std::vector<uint16_t> red(static_cast<size_t>(c.planes), full);
        red[0] = static_cast<uint16_t>(full * 4 / 5);
        if (c.planes > 1) red[1] = static_cast<uint16_t>(full / 10);
        if (c.planes > 2) red[2] = static_cast<uint16_t>(full / 8);
        image.FillRect(cx - radius, cy - radius, 2 * radius, 2 * radius, red);
    }

    const int w = c.width;
    const int h = c.height;
    switch (c.mask) {
        case MaskKind::kNone:
            break;
        case MaskKind::kEmpty:
            image.SelectRect(0, 0, 0, 0);
            break;
        case MaskKind::kFull:
            image.SelectRect(0, 0, w, h, static_cast<uint8_t>(random.Pick<int>({255, 1, 128})));
            break;
        case MaskKind::kRandom: {
            image.SelectRect(0, 0, 0, 0);
            const int density = static_cast<int>(random.Between(1, 100));
            for (uint8_t& m : image.Mask()) {
                if (random.Percent(density)) m = static_cast<uint8_t>(random.Between(1, 255));
            }
            break;
        }
        case MaskKind::kOnePixel:
            image.SelectRect(static_cast<int>(random.Between(0, w - 1)),
                             static_cast<int>(random.Between(0, h - 1)), 1, 1);
            break;
        case MaskKind::kTouchingEdges: {
            const int bw = static_cast<int>(random.Between(1, w));
            const int bh = static_cast<int>(random.Between(1, h));
            const int x = random.Percent(50) ? 0 : w - bw;
            const int y = random.Percent(50) ? 0 : h - bh;
            image.SelectRect(x, y, bw, bh);
            break;
        }
        case MaskKind::kBox: {
            const int x = static_cast<int>(random.Between(0, w - 1));
            const int y = static_cast<int>(random.Between(0, h - 1));
            image.SelectRect(x, y, static_cast<int>(random.Between(1, std::min(w - x, 300))),
                             static_cast<int>(random.Between(1, std::min(h - y, 300))));
            break;
        }
    }
    return image;
}

std::string Describe(const HostConfig& c) {
    const HostSettings& s = c.settings;
    std::ostringstream text;
    text << "seed " << c.seed << ": " << c.width << "x" << c.height << "x" << c.planes << " depth "
         << c.depth << " mode " << s.imageMode.value_or(-1) << " recordDepth "
         << s.depth.value_or(c.depth) << " mask " << MaskName(c.mask) << " maxSpace " << s.maxSpace
         << (s.advanceState ? " advanceState" : "") << (s.displayPixels ? " displayPixels" : "")
         << " handles " << static_cast<int>(s.handleSuite) << "/" << s.handleProcCount
         << " descriptors " << static_cast<int>(s.descriptorSuite) << " playInfo " << s.playInfo
         << " abortFrom " << s.abortFromPoll << (s.bigDocument ? " big" : "")
         << (s.hostSets32BitCoordinates ? "32" : "") << (s.nullInData ? " nullIn" : "")
         << (s.nullOutData ? " nullOut" : "") << (s.nullMaskData ? " nullMask" : "")
         << " extraRowBytes " << s.extraRowBytes << " record " << s.recordSize << " runs "
         << c.stored.size();
    if (s.filterRect) {
        text << " filterRect " << s.filterRect->top << "," << s.filterRect->left << ","
             << s.filterRect->bottom << "," << s.filterRect->right;
    }
    if (!c.adjustment.empty()) text << " (" << c.adjustment << ")";
    return text.str();
}

}  // namespace robust
