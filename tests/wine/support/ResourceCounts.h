// What a process holds of the system's resources, for leak tests over long
// sessions. Wine 8 answers GetGuiResources and GetProcessHandleCount with 0
// and leaves PrivateUsage at 0, so each count falls back to counting for
// itself when the system's answer is 0: live GDI handles (Wine accepts a
// handle's table index alone), windows of the process, open kernel handles,
// and committed private pages.
#pragma once

#include <cstddef>
#include <string>

namespace robust {

struct ResourceCounts {
    size_t gdiObjects = 0;
    size_t windows = 0;
    size_t kernelHandles = 0;
    size_t privateBytes = 0;
};

ResourceCounts CountResources();
std::string Describe(const ResourceCounts& counts);

}  // namespace robust
