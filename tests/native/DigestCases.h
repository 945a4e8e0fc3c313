// A fixed set of pipeline runs on seeded scenes and their output digests,
// checked natively and in the 32-bit module's build: equal digests mean the
// same corrected bytes on both.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

struct DigestCase {
    const char* name;
    int32_t width, height;
    uint32_t seed;
    float tolerance, darkening;
    bool portrait;  // PaintPortrait, else PaintScene
};

extern const DigestCase kDigestCases[];
extern const size_t kDigestCaseCount;

// FNV-1a 64 of the corrected RGB of the case's scene.
uint64_t RunDigestCase(const DigestCase& digestCase);

// "name hex-digest" lines.
std::string FormatDigestLine(const char* name, uint64_t digest);
std::map<std::string, uint64_t> ReadDigestFile(const char* path);
