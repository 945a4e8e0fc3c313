// HostIs in a program whose own version resource plays the host: every
// signature of the host's group gets the expected answer, all others 0.
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>

#include "plugin/HostServices.h"

namespace {

// Every signature HostIs knows, and some it does not.
const char* const kSignatures[] = {"Cdrw", "Mprn", "BABL", "FXTC", "ART3", "ARTZ",
                                   "ARTY", "ART5", "ALD5", "ALD6", "AD65", "PHUT",
                                   "8BIM", "PrMr", "8BFM", "ART4", "    ", "prmr"};

OSType Code(const char* text) {
    return static_cast<OSType>(static_cast<uint8_t>(text[0])) << 24 |
           static_cast<OSType>(static_cast<uint8_t>(text[1])) << 16 |
           static_cast<OSType>(static_cast<uint8_t>(text[2])) << 8 | static_cast<uint8_t>(text[3]);
}

bool Accepted(const char* signature) {
    std::istringstream accepted(HOSTIS_ACCEPTED);
    std::string word;
    while (accepted >> word)
        if (word == signature) return true;
    return false;
}

}  // namespace

TEST(HOSTIS_SUITE, AnswersTheHostsGroupAndNothingElse) {
    for (int round = 0; round < 2; ++round) {  // the second round uses the kept reading
        for (const char* signature : kSignatures) {
            const uint32_t expected = Accepted(signature) ? HOSTIS_ANSWER : 0u;
            EXPECT_EQ(HostIs(Code(signature)), expected) << "'" << signature << "'";
        }
    }
}

TEST(HOSTIS_SUITE, NeverAcceptsTheGroupEndMarker) { EXPECT_EQ(HostIs(0), 0u); }
