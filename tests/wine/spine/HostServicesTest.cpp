// The module with hosts whose handle services are missing or too new, and
// with bad host records: it must work on or refuse cleanly, never crash.
#include <string>

#include "SpineFixture.h"

namespace {

using testhost::HandleSuiteMode;

class HostServices : public SpineTest {};

TEST_F(HostServices, WithoutUsableHandleServicesWindowsMemoryServes) {
    for (HandleSuiteMode mode : {HandleSuiteMode::kVersion2, HandleSuiteMode::kAbsent}) {
        testhost::TestHost fresh;
        ASSERT_TRUE(fresh.Load(QUORVEX_MODULE_PATH));
        fresh.image() = testhost::Image(16, 8, 3);
        fresh.settings.handleSuite = mode;
        ASSERT_TRUE(fresh.Run().Ok());
        ASSERT_TRUE(fresh.Run().Ok()) << "a second run finds its globals and record again";
        Handle parameters = fresh.record().parameters;
        ASSERT_NE(parameters, nullptr);
        EXPECT_FALSE(fresh.handles().IsLive(parameters)) << "not a host handle";
        EXPECT_FALSE(fresh.handles().IsLive(reinterpret_cast<Handle>(fresh.data())));
        EXPECT_EQ(reinterpret_cast<const FilterParameters*>(*parameters)->tolerance, 50.0f);
        // The Windows block carries its tag after the master pointer.
        EXPECT_EQ(std::string(reinterpret_cast<char*>(parameters) + sizeof(Ptr), 4), "OTOF");
        EXPECT_EQ(fresh.log().faults, std::vector<std::string>{});
    }
}

TEST_F(HostServices, AShortHandleTableIsNotUsedButAnUnknownCountIs) {
    host.settings.handleProcCount = 7;
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_FALSE(host.handles().IsLive(host.record().parameters));

    testhost::TestHost other;
    ASSERT_TRUE(other.Load(QUORVEX_MODULE_PATH));
    other.image() = testhost::Image(16, 8, 3);
    other.settings.handleProcCount = -1;
    ASSERT_TRUE(other.Run().Ok());
    EXPECT_TRUE(other.handles().IsLive(other.record().parameters));
}

TEST_F(HostServices, BadDataAndMissingCallbacksNeverCrash) {
    host.image().SelectRect(5, 5, 20, 10);
    host.settings.nullInData = true;
    host.settings.nullOutData = true;
    host.settings.nullMaskData = true;
    host.settings.colorServices = testhost::ColorServicesMode::kAbsent;
    host.settings.hostWindow = false;
    EXPECT_TRUE(host.Run().Ok());
    host.settings.filterRect = VRect{5, 5, 5, 5};
    EXPECT_TRUE(host.Run().Ok());
}

TEST_F(HostServices, AnOlderHostsShortRecordIsNotWrittenPast) {
    host.settings.recordSize = kMinimumFilterRecordSize;
    EXPECT_TRUE(host.Run().Ok());
}

}  // namespace
