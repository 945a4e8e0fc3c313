// Built natively and for the 32-bit module under Wine: both must produce the
// digests recorded in the data file.
#include <gtest/gtest.h>

#include "tests/native/DigestCases.h"

namespace {

TEST(PipelineDigests, MatchTheRecordedBytes) {
    const std::map<std::string, uint64_t> recorded = ReadDigestFile(QUORVEX_DIGEST_FILE);
    ASSERT_EQ(recorded.size(), kDigestCaseCount) << "cannot read " << QUORVEX_DIGEST_FILE;
    for (size_t i = 0; i < kDigestCaseCount; ++i) {
        const DigestCase& c = kDigestCases[i];
        const auto entry = recorded.find(c.name);
        ASSERT_NE(entry, recorded.end()) << c.name;
        EXPECT_EQ(FormatDigestLine(c.name, RunDigestCase(c)),
                  FormatDigestLine(c.name, entry->second));
    }
}

}  // namespace
