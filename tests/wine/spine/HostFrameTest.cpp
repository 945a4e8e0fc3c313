// The host frame as a host sees it through the test host: each selector's
// result, both data protocols, the band height, memory full, scripting and
// missing host services; and the module's load log.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "plugin/FilterGlobals.h"
#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

namespace {

using testhost::DescriptorSuiteMode;
using testhost::HandleSuiteMode;
using testhost::LoopEnd;

class HostFrame : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
        host.image() = testhost::Image(40, 30, 3);
        host.image().FillNoise(7);
    }
    void TearDown() override { EXPECT_EQ(host.log().faults, std::vector<std::string>{}); }

    FilterParameters* Parameters() { return host.ParametersAs<FilterParameters>(); }

    // The rectangle of every delivery, "top,left,bottom,right" (in, out and
    // mask when they differ).
    std::vector<std::string> ServedRects() {
        std::vector<std::string> rects;
        for (const auto& s : host.log().serves) {
            const std::string in = Text(s.request.inRect), out = Text(s.request.outRect);
            const std::string mask = Text(s.request.maskRect);
            rects.push_back(in == out && out == mask ? in : in + " " + out + " " + mask);
        }
        return rects;
    }
    static std::string Text(const VRect& r) {
        return std::to_string(r.top) + "," + std::to_string(r.left) + "," +
               std::to_string(r.bottom) + "," + std::to_string(r.right);
    }
    // A 40 x 10 image in bands of 3 rows (3 * (40 + 2 * 120) = 840 bytes).
    void UseBandsOfThreeRows() {
        host.image() = testhost::Image(40, 10, 3);
        host.settings.maxSpace = 3 * 280;
    }

    testhost::TestHost host;
};

TEST_F(HostFrame, AboutMakesNothingAndUnknownSelectorsAreRefusedWithoutRunning) {
    EXPECT_EQ(host.Call(filterSelectorAbout), noErr);
    EXPECT_EQ(host.data(), 0);
    EXPECT_TRUE(host.handles().Live().empty());
    for (int16_t selector : {int16_t{6}, int16_t{-1}, int16_t{100}}) {
        EXPECT_EQ(host.Call(selector), filterBadParameters) << selector;
        EXPECT_EQ(host.GlobalsLocks(), 0) << selector;
    }
    EXPECT_EQ(host.record().inRect.right, 0) << "no band was requested";
    EXPECT_TRUE(host.log().serves.empty());
    EXPECT_TRUE(host.log().dialogs.empty());
}

TEST_F(HostFrame, ParametersMakesTheRecordWithItsDefaultsAndItsValuesSurviveRuns) {
    ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
    FilterParameters* p = Parameters();
    ASSERT_NE(p, nullptr);
    // Scale, tolerance, darkening, preview, view state, dialog, host kind.
    EXPECT_EQ(
        std::make_tuple(p->viewScale, p->tolerance, p->darkening, +p->previewOn, +p->viewState,
                        +p->showDialog, p->hostIsPremiere + p->hostIsAfterEffects),
        std::make_tuple(1.0f, 50.0f, 50.0f, 1, 0, 1, 0));
    p->tolerance = 73.0f;
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->tolerance, 73.0f);
}

// A row costs a mask byte and an input and an output byte per plane: 70
// bytes for a 10-pixel RGB row. Rows are added while they cost less than
// maxSpace, up to the image's height.
TEST_F(HostFrame, PrepareSizesTheBandsByMaxSpace) {
    const struct {
        int height;
        int32_t maxSpace;
        int rows;
    } cases[] = {{50, 700, 10}, {50, 701, 11}, {50, 5, 1}, {50, 1 << 30, 50}, {1, 1 << 30, 1}};
    for (const auto& c : cases) {
        host.image() = testhost::Image(10, c.height, 3);
        host.settings.maxSpace = c.maxSpace;
        ASSERT_TRUE(host.Run().Ok());
        EXPECT_EQ(Parameters()->rowsPerTile, c.rows) << c.maxSpace;
        EXPECT_EQ(host.record().maxSpace, c.rows * 70) << c.maxSpace;
        EXPECT_EQ(host.record().bufferSpace, 0);
    }
}

// Every call of a whole run answers noErr and leaves the globals unlocked and
// no handle behind. With advanceState and displayPixels the module fetches
// one band itself during start; otherwise the host drives bands through continue (until the
// right edges are zero, or until the rectangles are empty: the same bands).
// The first band then starts one band below the top and runs to the bottom;
// each continue moves both edges down by a band.
TEST_F(HostFrame, TheWholeImageIsFetchedThroughAdvanceStateAndBandsThroughContinue) {
    UseBandsOfThreeRows();
    const std::vector<int16_t> continued = {1, 2, 3, 4, 4, 4, 5};
    const std::vector<std::string> bands = {"3,0,10,40", "6,0,13,40", "9,0,16,40"};
    const struct {
        bool advanceState, displayPixels;
        LoopEnd loopEnd;
        std::vector<int16_t> selectors;
        std::vector<std::string> rects;
    } cases[] = {{true, true, LoopEnd::kWhileRightNonZero, {1, 2, 3, 5}, {"0,0,3,40"}},
                 {false, true, LoopEnd::kWhileRightNonZero, continued, bands},
                 {true, false, LoopEnd::kUntilEmpty, continued, bands}};
    for (const auto& c : cases) {
        host.settings.advanceState = c.advanceState;
        host.settings.displayPixels = c.displayPixels;
        host.settings.loopEnd = c.loopEnd;
        host.ClearLog();
        ASSERT_TRUE(host.Run().Ok());
        EXPECT_EQ(host.log().Selectors(), c.selectors);
        for (const auto& call : host.log().calls) {
            EXPECT_EQ(call.result, noErr) << "selector " << call.selector;
            EXPECT_EQ(call.globalsLocksAfter, 0) << "selector " << call.selector;
        }
        EXPECT_TRUE(host.LeakedHandles().empty());
        EXPECT_EQ(ServedRects(), c.rects);
        const testhost::DataRequest& request = host.log().serves[0].request;
        EXPECT_EQ(request.inLoPlane + request.outLoPlane, 0);
        EXPECT_EQ(request.inHiPlane + request.outHiPlane, 4);
        EXPECT_EQ(request.inputRate + request.maskRate, 0x20000);
        if (c.selectors.size() > 4) {
            EXPECT_EQ(request.inputPadding + request.outputPadding + request.maskPadding, 765);
        }
        // The last call leaves the rectangles empty: no (further) continue.
        const testhost::DataRequest& after = host.log().calls[c.selectors.size() - 2].requestAfter;
        EXPECT_EQ(Text(after.inRect) + Text(after.outRect) + Text(after.maskRect),
                  "0,0,0,00,0,0,00,0,0,0");
    }
}

TEST_F(HostFrame, AbortCancelsStartOrTheNextContinue) {
    UseBandsOfThreeRows();
    const struct {
        bool advanceState;
        int abortFromPoll;  // the first continue polls once
        int16_t lastSelector;
        int continues;
    } cases[] = {{true, 1, filterSelectorStart, 0}, {false, 2, filterSelectorContinue, 2}};
    for (const auto& c : cases) {
        host.settings.advanceState = c.advanceState;
        host.settings.abortFromPoll = c.abortFromPoll;
        host.ClearLog();
        const testhost::RunReport report = host.Run();
        EXPECT_EQ(report.result, userCanceledErr);
        EXPECT_EQ(report.lastSelector, c.lastSelector);
        EXPECT_EQ(host.log().CountCalls(filterSelectorContinue), c.continues);
        EXPECT_EQ(host.log().CountCalls(filterSelectorFinish), 0);
        EXPECT_EQ(host.log().serves.size(), static_cast<size_t>(c.continues));
        EXPECT_EQ(testhost::DescribeDifference(host.output(), host.image()), "");
    }
}

// With the 32-bit rectangles switched on the module reads and writes only
// them; otherwise only the 16-bit ones. The filter rectangle's top and left
// differ so that a swapped edge shows.
TEST_F(HostFrame, BigDocumentRectanglesAreUsedOnlyWhenSwitchedOn) {
    UseBandsOfThreeRows();  // of five rows on the 28 columns filtered
    host.settings.filterRect = VRect{2, 5, 9, 33};
    host.settings.bigDocument = true;
    for (bool wide : {true, false}) {
        host.settings.hostSets32BitCoordinates = wide;
        host.ClearLog();
        ASSERT_TRUE(host.Run().Ok());
        ASSERT_EQ(host.log().serves.size(), 1u);
        EXPECT_EQ(host.log().serves[0].request.uses32Bit, wide);
        EXPECT_EQ(ServedRects()[0], "2,5,7,33");
        const Rect16& narrow = host.record().inRect;
        const VRect unused = wide ? VRect{narrow.top, narrow.left, narrow.bottom, narrow.right}
                                  : host.record().bigDocumentData->inRect32;
        EXPECT_EQ(Text(unused), "0,0,0,0") << "the other fields are untouched";
    }
}

// Without room for its globals every selector fails; with room for them
// alone (not the parameters), parameters, prepare and start fail. Either way
// prepare's work, pixels, scripting and windows are left alone, and with room
// again the next run works from the start.
TEST_F(HostFrame, WithoutRoomForItsBlocksACallFailsAloneAndTheNextRunWorks) {
    static_assert(sizeof(FilterGlobals) < sizeof(FilterParameters), "the limit splits them");
    for (const int32_t limit : {0, static_cast<int32_t>(sizeof(FilterGlobals))}) {
        testhost::TestHost fresh;
        ASSERT_TRUE(fresh.Load(QUORVEX_MODULE_PATH));
        fresh.image() = host.image();
        fresh.settings.newHandleLimit = limit;
        const int16_t last = limit == 0 ? filterSelectorFinish : filterSelectorStart;
        for (int16_t selector = filterSelectorParameters; selector <= last; ++selector) {
            EXPECT_EQ(fresh.Call(selector), memFullErr) << limit << ": " << selector;
            EXPECT_EQ(fresh.record().parameters, nullptr) << selector;
            EXPECT_EQ(fresh.GlobalsLocks(), limit == 0 ? -1 : 0) << selector;
        }
        EXPECT_EQ(fresh.handles().Live().size(), limit == 0 ? 0u : 1u) << "the globals alone";
        EXPECT_EQ(fresh.record().maxSpace, fresh.settings.maxSpace) << "prepare did not run";
        EXPECT_TRUE(fresh.log().serves.empty());
        EXPECT_TRUE(fresh.log().descriptorReads.empty() && fresh.log().descriptorWrites.empty());
        EXPECT_TRUE(fresh.log().dialogs.empty());
        fresh.settings.newHandleLimit = INT32_MAX;
        EXPECT_TRUE(fresh.Run().Ok());
        ASSERT_NE(fresh.ParametersAs<FilterParameters>(), nullptr);
        EXPECT_EQ(fresh.ParametersAs<FilterParameters>()->tolerance, 50.0f);
        EXPECT_EQ(fresh.log().faults, std::vector<std::string>{});
    }
}

// A table of at least 8 procedures (or of an unknown count) of version 1 is
// used; otherwise the module keeps its own Windows blocks and still finds
// them again in the next run.
TEST_F(HostFrame, HandleServicesAreUsedOnlyWhenUsable) {
    const struct {
        HandleSuiteMode mode;
        int16_t count;
        bool used;
    } cases[] = {{HandleSuiteMode::kVersion1, 8, true},
                 {HandleSuiteMode::kVersion1, -1, true},
                 {HandleSuiteMode::kVersion1, 7, false},
                 {HandleSuiteMode::kVersion2, 8, false},
                 {HandleSuiteMode::kAbsent, 8, false}};
    for (const auto& c : cases) {
        testhost::TestHost fresh;
        ASSERT_TRUE(fresh.Load(QUORVEX_MODULE_PATH));
        fresh.image() = testhost::Image(16, 8, 3);
        fresh.settings.handleSuite = c.mode;
        fresh.settings.handleProcCount = c.count;
        ASSERT_TRUE(fresh.Run().Ok());
        ASSERT_TRUE(fresh.Run().Ok()) << "a second run finds its globals and record again";
        Handle parameters = fresh.record().parameters;
        ASSERT_NE(parameters, nullptr);
        EXPECT_EQ(fresh.handles().IsLive(parameters), c.used) << c.count;
        EXPECT_EQ(fresh.handles().IsLive(reinterpret_cast<Handle>(fresh.data())), c.used);
        EXPECT_EQ(reinterpret_cast<const FilterParameters*>(*parameters)->tolerance, 50.0f);
        EXPECT_EQ(fresh.log().faults, std::vector<std::string>{});
    }
}

TEST_F(HostFrame, ReplayedValuesAreSkippedCloseErrorsCountAndFinishRecordsAnEmptyDescriptor) {
    host.settings.playDescriptor = std::vector<testhost::DescriptorItem>{
        testhost::DescriptorItem::Integer(FourCC("ClSt"), 3),
        testhost::DescriptorItem::Float(FourCC("Angl"), 45.0)};
    host.settings.readerCloseError = errMissingParameter;
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().descriptorReads.size(), 1u);
    const testhost::DescriptorRead& read = host.log().descriptorReads[0];
    EXPECT_TRUE(read.opened && read.closed);
    EXPECT_EQ(read.delivered.size(), 2u);
    EXPECT_TRUE(read.valuesRead.empty());
    EXPECT_EQ(read.keyArray, (std::vector<DescriptorKeyID>{
                                 FourCC("ClSt"), FourCC("Geom"), FourCC("InvI"), FourCC("AntA"),
                                 FourCC("Invr"), FourCC("NoBr"), FourCC("UsBg"), FourCC("Angl"),
                                 FourCC("Spac"), FourCC("Wdth"), FourCC("BRel"), FourCC("Ampl"),
                                 FourCC("Shif"), FourCC("Usil"), FourCC("CntX"), FourCC("CntY")}));
    EXPECT_EQ(Parameters()->tolerance, 50.0f);

    ASSERT_EQ(host.log().descriptorWrites.size(), 1u);
    const testhost::DescriptorWrite& write = host.log().descriptorWrites[0];
    EXPECT_TRUE(write.closed);
    EXPECT_TRUE(write.items.empty());
    ASSERT_NE(host.record().descriptorParameters, nullptr);
    EXPECT_EQ(host.record().descriptorParameters->descriptor, write.descriptor);
    EXPECT_EQ(host.record().descriptorParameters->recordInfo, plugInDialogOptional);

    host.settings.readerCloseError = paramErr;
    const testhost::RunReport report = host.Run();
    EXPECT_EQ(report.result, paramErr);
    EXPECT_EQ(report.lastSelector, filterSelectorStart);
}

// After a parameters call the module would show its window; a replayed
// action decides, unless the host's scripting suites are missing or unusable:
// then the window shows and the module leaves the suites alone.
TEST_F(HostFrame, OnlyPlayModeDisplayOrAHostWithoutScriptingShowsTheWindow) {
    const struct {
        int16_t playInfo;
        DescriptorSuiteMode suite;
        bool shown;
    } cases[] = {{plugInDialogDisplay, DescriptorSuiteMode::kFull, true},
                 {plugInDialogDontDisplay, DescriptorSuiteMode::kFull, false},
                 {plugInDialogSilent, DescriptorSuiteMode::kFull, false},
                 {plugInDialogDontDisplay, DescriptorSuiteMode::kAbsent, true},
                 {plugInDialogDontDisplay, DescriptorSuiteMode::kNullSuites, true},
                 {plugInDialogDontDisplay, DescriptorSuiteMode::kShortSuites, true}};
    bool shown = false;
    host.OnDialog(1076, [&shown](HWND dialog) {
        shown = true;
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
    host.settings.parameters = testhost::ParametersCall::kEveryRunFresh;
    host.settings.playDescriptor = std::vector<testhost::DescriptorItem>{};
    for (const auto& c : cases) {
        shown = false;
        host.settings.playInfo = c.playInfo;
        host.settings.descriptorSuite = c.suite;
        host.ClearLog();
        EXPECT_TRUE(host.Run().Ok());
        EXPECT_EQ(shown, c.shown) << c.playInfo << " " << static_cast<int>(c.suite);
        const size_t used = c.suite == DescriptorSuiteMode::kFull;
        EXPECT_EQ(host.log().descriptorReads.size(), used);
        EXPECT_EQ(host.log().descriptorWrites.size(), used);
    }
}

// One line per load notification: the event and the classic 24-character
// local time ("Sun Nov 22 00:30:00 2026").
TEST(LoadLog, OneTimeStampedLinePerLoadNotification) {
    const char* path = "C:\\LoadLogTextFormat.txt";
    std::remove(path);
    HMODULE module = LoadLibraryA(QUORVEX_MODULE_PATH);
    ASSERT_NE(module, nullptr);
    std::thread([] {}).join();
    FreeLibrary(module);
    const std::string stamp =
        R"( DllMain: [A-Z][a-z]{2} [A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d \d{4})";
    std::ifstream file(path);
    std::string line;
    for (const char* event :
         {"DLL_PROCESS_ATTACH", "DLL_THREAD_ATTACH", "DLL_THREAD_DETACH", "DLL_PROCESS_DETACH"}) {
        ASSERT_TRUE(std::getline(file, line)) << event;
        EXPECT_TRUE(std::regex_match(line, std::regex(event + stamp))) << line;
    }
    EXPECT_FALSE(std::getline(file, line)) << line;
}

}  // namespace
