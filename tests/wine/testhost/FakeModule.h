// A filter module made of a test's own code, so that the host can be tested
// without the real module.
#pragma once

#include <functional>

#include "testhost/TestHost.h"

using ModuleBody =
    std::function<void(int16_t selector, FilterRecord* record, intptr_t* data, int16_t* result)>;

// Makes `body` the module of `host` (one fake module per process at a time).
void UseFakeModule(testhost::TestHost& host, ModuleBody body);

// Sets the 16-bit in, out and mask rectangles and all planes.
void RequestRect16(FilterRecord* record, Rect16 rect);
