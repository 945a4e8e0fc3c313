// The host's service suites: handles with their lock counts, the scripting
// reader and writer, and the colour services.
#include <gtest/gtest.h>

#include <vector>

#include "FakeModule.h"

namespace {

using testhost::DescriptorItem;
using testhost::DescriptorSuiteMode;
using testhost::HandleSuiteMode;
using testhost::Image;
using testhost::TestHost;

TEST(HostHandles, TracksLocksLeaksAndForeignHandles) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    Handle kept = nullptr;
    UseFakeModule(host, [&kept](int16_t selector, FilterRecord* r, intptr_t* data, int16_t*) {
        HandleProcs* procs = r->handleProcs;
        if (*data == 0) *data = reinterpret_cast<intptr_t>(procs->newProc(8));
        procs->lockProc(reinterpret_cast<Handle>(*data), true);
        if (selector == filterSelectorStart) {
            kept = procs->newProc(100);
            procs->lockProc(kept, false);
            procs->unlockProc(kept);
            procs->unlockProc(kept);  // one too many
            char stranger[8];
            procs->disposeProc(reinterpret_cast<Handle>(&stranger));
        }
        if (selector != filterSelectorPrepare) procs->unlockProc(reinterpret_cast<Handle>(*data));
    });
    ASSERT_TRUE(host.Run().Ok());

    std::vector<int> locks;
    for (const testhost::CallRecord& call : host.log().calls)
        locks.push_back(call.globalsLocksAfter);
    EXPECT_EQ(locks, (std::vector<int>{0, 1, 1, 1}));  // prepare left it locked
    ASSERT_EQ(host.LeakedHandles().size(), 1u);
    EXPECT_EQ(host.LeakedHandles()[0].handle, kept);
    EXPECT_EQ(host.LeakedHandles()[0].size, 100);
    EXPECT_EQ(host.log().faults.size(), 2u);
}

TEST(HostHandles, SuiteKindsAndTheSizeQuirk) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.handleSuite = HandleSuiteMode::kAbsent;
    host.BeginRun();
    EXPECT_EQ(host.record().handleProcs, nullptr);

    host.settings.handleSuite = HandleSuiteMode::kVersion2;
    host.settings.handleSizeQuirk = true;
    host.BeginRun();
    HandleProcs* procs = host.record().handleProcs;
    ASSERT_NE(procs, nullptr);
    EXPECT_EQ(procs->handleProcsVersion, 2);
    EXPECT_EQ(procs->numHandleProcs, 8);
    host.handles().MakeCurrent();
    Handle h = procs->newProc(12);
    EXPECT_EQ(procs->getSizeProc(h), 0);
    EXPECT_EQ(procs->setSizeProc(h, 40), noErr);
    EXPECT_EQ(host.handles().Live().back().size, 12);
}

TEST(HostHandles, NewProcRefusesRequestsAboveTheLimitReadAtEveryCall) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    std::vector<bool> given;  // 16 and 64 bytes, per call
    UseFakeModule(host, [&given](int16_t, FilterRecord* r, intptr_t*, int16_t*) {
        for (int32_t size : {16, 64}) {
            Handle h = r->handleProcs->newProc(size);
            given.push_back(h != nullptr);
            if (h != nullptr) r->handleProcs->disposeProc(h);
        }
    });
    host.settings.newHandleLimit = 32;
    host.Call(filterSelectorParameters);
    EXPECT_NE(host.handles().Allocate(64), nullptr) << "the host's own handles are not limited";
    host.settings.newHandleLimit = INT32_MAX;
    host.Call(filterSelectorPrepare);
    EXPECT_EQ(given, (std::vector<bool>{true, false, true, true}));
}

// Start reads the descriptor with a key list, fetching the integer value.
struct ReaderProbe {
    DescriptorKeyID keys[4] = {FourCC("AntA"), FourCC("Wdth"), FourCC("CntX"), 0};
    int32_t width = 0;
    OSErr closeResult = 1;
};

void UseReader(TestHost& host, ReaderProbe* probe) {
    UseFakeModule(host, [probe](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorStart) return;
        PIDescriptorParameters* p = r->descriptorParameters;
        PIReadDescriptor reader =
            p->readDescriptorProcs->openReadDescriptorProc(p->descriptor, probe->keys);
        DescriptorKeyID key;
        DescriptorTypeID type;
        int32_t flags;
        while (p->readDescriptorProcs->getKeyProc(reader, &key, &type, &flags)) {
            if (key == FourCC("Wdth"))
                p->readDescriptorProcs->getIntegerProc(reader, &probe->width);
        }
        probe->closeResult = p->readDescriptorProcs->closeReadDescriptorProc(reader);
    });
}

TEST(HostScripting, ReaderHandsOutTheKeysAndStrikesThemFromTheList) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.playDescriptor = std::vector<DescriptorItem>{
        DescriptorItem::Integer(FourCC("Wdth"), 5), DescriptorItem::Bool(FourCC("AntA"), true)};
    host.settings.readerCloseError = errMissingParameter;
    ReaderProbe probe;
    UseReader(host, &probe);
    ASSERT_TRUE(host.Run().Ok());

    EXPECT_EQ(probe.width, 5);
    EXPECT_EQ(probe.closeResult, errMissingParameter);
    EXPECT_EQ(probe.keys[0], kDescriptorNullKey);
    EXPECT_EQ(probe.keys[1], kDescriptorNullKey);
    EXPECT_EQ(probe.keys[2], FourCC("CntX"));
    ASSERT_EQ(host.log().descriptorReads.size(), 1u);
    const testhost::DescriptorRead& read = host.log().descriptorReads[0];
    EXPECT_EQ(read.keyArray,
              (std::vector<DescriptorKeyID>{FourCC("AntA"), FourCC("Wdth"), FourCC("CntX")}));
    EXPECT_EQ(read.delivered, (std::vector<DescriptorKeyID>{FourCC("Wdth"), FourCC("AntA")}));
    EXPECT_EQ(read.valuesRead, (std::vector<DescriptorKeyID>{FourCC("Wdth")}));
    EXPECT_TRUE(read.closed);
}

TEST(HostScripting, WriterGivesBackADescriptorTheHostCanRead) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    UseFakeModule(host, [](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorFinish) return;
        PIDescriptorParameters* p = r->descriptorParameters;
        PIWriteDescriptor writer = p->writeDescriptorProcs->openWriteDescriptorProc();
        p->writeDescriptorProcs->putIntegerProc(writer, FourCC("Lvl "), 7);
        p->writeDescriptorProcs->closeWriteDescriptorProc(writer, &p->descriptor);
        p->recordInfo = plugInDialogNone;
    });
    ASSERT_TRUE(host.Run().Ok());
    PIDescriptorParameters* p = host.record().descriptorParameters;
    EXPECT_EQ(p->recordInfo, plugInDialogNone);
    const std::vector<DescriptorItem> items = host.DescriptorContents(p->descriptor);
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].key, FourCC("Lvl "));
    EXPECT_EQ(items[0].integer, 7);
    EXPECT_TRUE(host.LeakedHandles().empty());
}

TEST(HostScripting, SuiteKinds) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.descriptorSuite = DescriptorSuiteMode::kAbsent;
    host.BeginRun();
    EXPECT_EQ(host.record().descriptorParameters, nullptr);

    host.settings.descriptorSuite = DescriptorSuiteMode::kNullSuites;
    host.settings.playInfo = plugInDialogSilent;
    host.BeginRun();
    ASSERT_NE(host.record().descriptorParameters, nullptr);
    EXPECT_EQ(host.record().descriptorParameters->playInfo, plugInDialogSilent);
    EXPECT_EQ(host.record().descriptorParameters->readDescriptorProcs, nullptr);
    EXPECT_EQ(host.record().descriptorParameters->writeDescriptorProcs, nullptr);
    EXPECT_EQ(host.record().descriptorParameters->descriptor, nullptr);

    host.settings.descriptorSuite = DescriptorSuiteMode::kShortSuites;
    host.BeginRun();
    EXPECT_EQ(host.record().descriptorParameters->readDescriptorProcs->numReadDescriptorProcs, 17);
    EXPECT_EQ(host.record().descriptorParameters->writeDescriptorProcs->numWriteDescriptorProcs,
              15);
}

TEST(HostColors, ConvertsFromRgbAndCanRefuse) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    std::vector<OSErr> results;
    std::vector<int16_t> gray;
    UseFakeModule(host, [&](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorStart) return;
        ColorServicesInfo info = {};
        info.infoSize = sizeof info;
        info.selector = plugIncolorServicesConvertColor;
        info.sourceSpace = plugIncolorServicesRGBSpace;
        info.resultSpace = plugIncolorServicesGraySpace;
        info.colorComponents[0] = 200;
        info.colorComponents[1] = 100;
        info.colorComponents[2] = 0;
        results.push_back(r->colorServices(&info));
        gray.push_back(info.colorComponents[0]);
    });
    host.Run();
    host.settings.colorServices = testhost::ColorServicesMode::kUnsupported;
    host.Run();
    EXPECT_EQ(results, (std::vector<OSErr>{noErr, errPlugInHostInsufficient}));
    EXPECT_EQ(gray[0], (200 * 30 + 100 * 59 + 50) / 100);
    ASSERT_EQ(host.log().colorServices.size(), 2u);
    EXPECT_EQ(host.log().colorServices[0].componentsIn[0], 200);
}

}  // namespace
