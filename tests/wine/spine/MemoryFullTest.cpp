// A host whose heap is exhausted: the module answers memFullErr, runs nothing
// it has no state for, and tries again at the next call.
#include <cstdint>

#include "SpineFixture.h"
#include "plugin/FilterGlobals.h"

namespace {

class MemoryFull : public SpineTest {
  protected:
    // No selector routine ran: prepare did not size the bands, start neither
    // read the scripting descriptor nor asked for data, finish recorded nothing.
    void ExpectNoRoutineRan() {
        EXPECT_EQ(host.record().maxSpace, host.settings.maxSpace);
        EXPECT_TRUE(host.log().descriptorReads.empty());
        EXPECT_TRUE(host.log().descriptorWrites.empty());
        EXPECT_TRUE(host.log().serves.empty());
        EXPECT_TRUE(host.log().dialogs.empty());
    }
};

TEST_F(MemoryFull, WithoutRoomForTheGlobalsEverySelectorFailsAndNothingRuns) {
    host.settings.newHandleLimit = 0;
    for (int16_t selector = filterSelectorParameters; selector <= filterSelectorFinish;
         ++selector) {
        EXPECT_EQ(host.Call(selector), memFullErr) << selector;
        EXPECT_EQ(host.data(), 0) << selector;
        EXPECT_EQ(host.record().parameters, nullptr) << selector;
    }
    ExpectNoRoutineRan();
    EXPECT_TRUE(host.handles().Live().empty());

    host.settings.newHandleLimit = INT32_MAX;
    EXPECT_TRUE(host.Run().Ok());
    EXPECT_NE(host.data(), 0);
    EXPECT_NE(Parameters(), nullptr);
}

TEST_F(MemoryFull, WithoutRoomForTheParametersTheCallFailsAndTheNextTriesAgain) {
    static_assert(sizeof(FilterGlobals) < sizeof(FilterParameters), "the limit splits them");
    host.settings.newHandleLimit = sizeof(FilterGlobals);
    for (int16_t selector :
         {filterSelectorParameters, filterSelectorPrepare, filterSelectorStart}) {
        EXPECT_EQ(host.Call(selector), memFullErr) << selector;
        EXPECT_EQ(host.record().parameters, nullptr) << selector;
        EXPECT_EQ(host.GlobalsLocks(), 0) << selector;
    }
    ExpectNoRoutineRan();
    EXPECT_EQ(host.handles().Live().size(), 1u) << "the globals block alone";

    host.settings.newHandleLimit = INT32_MAX;
    EXPECT_EQ(host.Call(filterSelectorPrepare), noErr);
    ASSERT_NE(Parameters(), nullptr);
    EXPECT_EQ(Parameters()->tolerance, 50.0f);
    EXPECT_EQ(Parameters()->rowsPerTile, host.image().Height());
    EXPECT_NE(host.record().maxSpace, host.settings.maxSpace);
}

}  // namespace
