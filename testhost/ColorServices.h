// The colour services of the test host: conversions between RGB, gray, CMYK,
// HSB and HSL with 0..255 components, special colours and sample points.
#pragma once

#include "hostapi/HostApi.h"
#include "testhost/Image.h"

namespace testhost {

// Answers one colour-services request; `source` is the document for sample
// points, `record` gives the foreground and background colours.
OSErr AnswerColorServices(ColorServicesInfo* info, const FilterRecord& record, const Image& source);

}  // namespace testhost
