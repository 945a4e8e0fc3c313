// Prints the digest line of every case, the content of
// tests/data/pipeline_digests.txt.
#include <cstdio>

#include "tests/native/DigestCases.h"

int main() {
    for (size_t i = 0; i < kDigestCaseCount; ++i) {
        std::puts(FormatDigestLine(kDigestCases[i].name, RunDigestCase(kDigestCases[i])).c_str());
    }
    return 0;
}
