// The host's delivery of pixel data: rectangles, planes, padding, depth,
// 16- and 32-bit coordinates, and the commit of the module's output.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeModule.h"

namespace {

using testhost::Image;
using testhost::TestHost;

// What the module saw in the record after one advanceState.
struct Delivery {
    std::vector<uint8_t> in;
    int32_t inRowBytes = -1;
    bool inNull = true;
    OSErr result = 1;
};

// A module whose start asks for data once through `request` and keeps what
// advanceState delivered, then tells the host it wants nothing more.
void UseDeliveryProbe(TestHost& host, std::function<void(FilterRecord*)> request,
                      Delivery* delivery, size_t inBytes) {
    UseFakeModule(host, [=](int16_t selector, FilterRecord* record, intptr_t*, int16_t*) {
        if (selector != filterSelectorStart) return;
        request(record);
        delivery->result = record->advanceState();
        delivery->inRowBytes = record->inRowBytes;
        delivery->inNull = record->inData == nullptr;
        const auto* in = static_cast<const uint8_t*>(record->inData);
        if (in != nullptr) delivery->in.assign(in, in + inBytes);
        RequestRect16(record, {0, 0, 0, 0});
        if (record->bigDocumentData != nullptr) {
            BigDocumentStruct& big = *record->bigDocumentData;
            big.inRect32 = big.outRect32 = big.maskRect32 = VRect{};
        }
    });
}

TEST(HostPixels, PadsOutsideTheImageAndPacksTheRequestedPlanes) {
    TestHost host;
    host.image() = Image(4, 3, 3);
    host.image().FillNoise(1);
    Delivery got;
    // Rows -1..1, columns 2..5 of a 4x3 image, planes 1 and 2, padding 7.
    UseDeliveryProbe(
        host,
        [](FilterRecord* r) {
            r->inRect = {-1, 2, 2, 6};
            r->inLoPlane = 1;
            r->inHiPlane = 2;
            r->inputPadding = 7;
        },
        &got, 3 * 8);
    ASSERT_TRUE(host.Run().Ok());

    EXPECT_EQ(got.result, noErr);
    ASSERT_EQ(got.inRowBytes, 4 * 2);
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 4; ++col) {
            const int x = 2 + col, y = row - 1;
            for (int plane = 0; plane < 2; ++plane) {
                const uint8_t expected =
                    host.image().Contains(x, y) ? host.image().Sample(x, y, 1 + plane) : 7;
                EXPECT_EQ(got.in[row * 8 + col * 2 + plane], expected)
                    << "x " << x << " y " << y << " plane " << 1 + plane;
            }
        }
    }
    EXPECT_TRUE(host.log().faults.empty());
}

TEST(HostPixels, OutsideTheImageWithoutPaddingIsAnError) {
    TestHost host;
    host.image() = Image(4, 3, 3);
    Delivery got;
    UseDeliveryProbe(
        host,
        [](FilterRecord* r) {
            r->inRect = {0, 0, 3, 5};
        },
        &got, 0);
    host.Run();
    EXPECT_EQ(got.result, paramErr);
    EXPECT_EQ(host.log().faults.size(), 1u);
}

TEST(HostPixels, ReadsThe32BitRectanglesOnlyWhenTheModuleSwitchedToThem) {
    for (const bool use32 : {false, true}) {
        TestHost host;
        host.settings.bigDocument = true;
        host.image() = Image(5, 4, 1, 16);
        host.image().FillNoise(2);
        Delivery got;
        UseDeliveryProbe(
            host,
            [use32](FilterRecord* r) {
                r->inRect = {0, 0, 1, 1};
                r->bigDocumentData->inRect32 = {1, 1, 3, 4};
                r->bigDocumentData->PluginUsing32BitCoordinates = use32;
            },
            &got, use32 ? 12 : 2);
        ASSERT_TRUE(host.Run().Ok());
        ASSERT_EQ(host.log().serves.size(), 1u);
        EXPECT_EQ(host.log().serves[0].request.uses32Bit, use32);
        if (!use32) {
            EXPECT_EQ(got.inRowBytes, 2);
            EXPECT_EQ(got.in[0] | (got.in[1] << 8), host.image().Sample(0, 0, 0));
            continue;
        }
        ASSERT_EQ(got.inRowBytes, 3 * 2);
        for (int y = 1; y < 3; ++y) {
            for (int x = 1; x < 4; ++x) {
                const size_t at = static_cast<size_t>((y - 1) * 6 + (x - 1) * 2);
                EXPECT_EQ(got.in[at] | (got.in[at + 1] << 8), host.image().Sample(x, y, 0));
            }
        }
    }
}

TEST(HostPixels, EmptyRectangleGetsNoData) {
    TestHost host;
    host.image() = Image(4, 4, 3);
    Delivery got;
    // Empty but not zero, after a first delivery that had data.
    UseDeliveryProbe(
        host,
        [](FilterRecord* r) {
            RequestRect16(r, {0, 0, 4, 4});
            r->advanceState();
            r->inRect = {2, 3, 2, 3};
        },
        &got, 0);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_TRUE(got.inNull);
    EXPECT_EQ(got.inRowBytes, 0);
}

// What a module found in the record: real rows for a rectangle with pixels,
// then stale pointers for an empty one, at start and again at finish.
struct StaleSeen {
    int32_t inRowBytes = 0;
    bool atStart = false;
    bool atFinish = false;
};

bool AllStale(const FilterRecord* r) {
    return r->inData != nullptr && r->outData != nullptr && r->maskData != nullptr &&
           r->inRowBytes == 0 && r->outRowBytes == 0 && r->maskRowBytes == 0;
}

TEST(HostPixels, StaleDataOfEmptyRectanglesCatchesEveryTouch) {
    enum Touch { kNone, kReadIn, kWriteOut, kReadMask };
    const struct {
        Touch touch;
        std::vector<std::string> faults;
    } cases[] = {
        {kNone, {}},
        {kReadIn, {"module touched inData handed out for an empty rectangle"}},
        {kWriteOut, {"module touched outData handed out for an empty rectangle"}},
        {kReadMask, {"module touched maskData handed out for an empty rectangle"}},
    };
    for (const auto& c : cases) {
        TestHost host;
        host.image() = Image(4, 4, 3);
        host.image().SelectRect(0, 0, 2, 2);
        host.settings.staleDataForEmptyRects = true;
        StaleSeen seen;
        UseFakeModule(host, [&](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
            if (selector == filterSelectorFinish) seen.atFinish = AllStale(r);
            if (selector != filterSelectorStart) return;
            RequestRect16(r, {0, 0, 1, 2});
            r->advanceState();
            seen.inRowBytes = r->inRowBytes;
            RequestRect16(r, {2, 3, 2, 3});  // empty, not zero
            r->advanceState();
            seen.atStart = AllStale(r);
            if (c.touch == kReadIn) (void)*static_cast<volatile uint8_t*>(r->inData);
            if (c.touch == kWriteOut) *static_cast<volatile uint8_t*>(r->outData) = 1;
            if (c.touch == kReadMask) (void)static_cast<volatile uint8_t*>(r->maskData)[-3];
            RequestRect16(r, {0, 0, 0, 0});
        });
        ASSERT_TRUE(host.Run().Ok());
        EXPECT_EQ(seen.inRowBytes, 2 * 3) << c.touch;
        EXPECT_TRUE(seen.atStart) << c.touch;
        EXPECT_TRUE(seen.atFinish) << c.touch;
        EXPECT_EQ(host.log().faults, c.faults) << c.touch;
    }
}

// Three one-row bands; each continue writes 0x40 + row into its band and
// checks that its input still comes from the source.
void UseBandWriter(TestHost& host, int* inputMismatches) {
    UseFakeModule(host, [inputMismatches](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector == filterSelectorStart) RequestRect16(r, {0, 0, 1, r->imageSize.h});
        if (selector != filterSelectorContinue) return;
        const int row = r->outRect.top;
        auto* out = static_cast<uint8_t*>(r->outData);
        const auto* in = static_cast<const uint8_t*>(r->inData);
        for (int i = 0; i < r->imageSize.h * r->planes; ++i) {
            if (in[i] != 0x11) ++*inputMismatches;
            out[i] = static_cast<uint8_t>(0x40 + row);
        }
        const int16_t next = static_cast<int16_t>(row + 1);
        RequestRect16(r, next < r->imageSize.v
                             ? Rect16{next, 0, static_cast<int16_t>(next + 1), r->imageSize.h}
                             : Rect16{0, 0, 0, 0});
    });
}

TEST(HostPixels, CommitsOutputIntoTheDestinationAndKeepsTheSource) {
    TestHost host;
    host.image() = Image(5, 3, 3);
    host.image().Fill({0x11, 0x11, 0x11});
    int inputMismatches = 0;
    UseBandWriter(host, &inputMismatches);
    const testhost::RunReport report = host.Run();
    ASSERT_TRUE(report.Ok());
    EXPECT_EQ(report.continueCalls, 3);
    EXPECT_EQ(inputMismatches, 0);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) EXPECT_EQ(host.output().Sample(x, y, 2), 0x40 + y);
    }
    EXPECT_EQ(host.image().Sample(0, 0, 0), 0x11);
}

TEST(HostPixels, BlendsThroughTheSelectionWhenAsked) {
    TestHost host;
    host.settings.blendThroughMask = true;
    host.image() = Image(5, 3, 3);
    host.image().Fill({0x11, 0x11, 0x11});
    host.image().SelectRect(0, 0, 2, 3);
    host.image().SelectRect(2, 0, 1, 3, 128);
    int inputMismatches = 0;
    UseBandWriter(host, &inputMismatches);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.output().Sample(1, 1, 0), 0x41);
    EXPECT_EQ(host.output().Sample(2, 1, 0), (0x41 * 128 + 0x11 * 127 + 127) / 255);
    EXPECT_EQ(host.output().Sample(4, 1, 0), 0x11);
}

TEST(HostPixels, RowPaddingIsGuarded) {
    TestHost host;
    host.settings.extraRowBytes = 4;
    host.image() = Image(3, 2, 3);
    int32_t outRowBytes = 0;
    UseFakeModule(host, [&](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorStart) return;
        RequestRect16(r, {0, 0, 2, 3});
        r->advanceState();
        outRowBytes = r->outRowBytes;
        static_cast<uint8_t*>(r->outData)[9] = 1;  // first padding byte of row 0
        RequestRect16(r, {0, 0, 0, 0});
    });
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(outRowBytes, 3 * 3 + 4);
    ASSERT_EQ(host.log().faults.size(), 1u);
    EXPECT_NE(host.log().faults[0].find("outData"), std::string::npos);
}

}  // namespace
