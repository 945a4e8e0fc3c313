// HostIs in a program whose own version resource plays the host: every
// signature of the host's group gets the expected answer, all others 0; and
// the module loaded into it runs its own band loop on a Premiere-style host.
#include <gtest/gtest.h>

#include <string>

#include "plugin/HostServices.h"
#include "testhost/TestHost.h"

namespace {

// Every signature HostIs knows, and some it does not.
const char kSignatures[][5] = {"Cdrw", "Mprn", "BABL", "FXTC", "ART3", "ARTZ",
                               "ARTY", "ART5", "ALD5", "ALD6", "AD65", "PHUT",
                               "8BIM", "PrMr", "8BFM", "ART4", "    ", "prmr"};

}  // namespace

TEST(HOSTIS_SUITE, AnswersTheHostsGroupAndNothingElse) {
    for (int round = 0; round < 2; ++round) {  // the second round uses the kept reading
        for (const auto& signature : kSignatures) {
            const bool accepted =
                std::string(" " HOSTIS_ACCEPTED " ").find(std::string(" ") + signature + " ") !=
                std::string::npos;
            EXPECT_EQ(HostIs(FourCC(signature)), accepted ? HOSTIS_ANSWER : 0u)
                << "'" << signature << "'";
        }
        EXPECT_EQ(HostIs(0), 0u) << "the group end marker";
    }
}

TEST(HOSTIS_SUITE, OnlyAPremiereStyleHostGetsTheModulesOwnBands) {
    testhost::TestHost host;
    ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
    host.image() = testhost::Image(8, 4, 3);
    host.image().SelectRect(0, 0, 8, 4);
    host.settings.maxSpace = 1;  // bands of one row
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.log().CountCalls(filterSelectorContinue), HOSTIS_PREMIERE ? 3 : 0);
}
