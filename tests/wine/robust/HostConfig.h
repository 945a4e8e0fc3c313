// One random host of the campaign: the document, the services the host
// offers, how it behaves, and the values it keeps in the module's stored
// record. Everything follows from the configuration's seed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "testhost/HostSettings.h"
#include "testhost/Image.h"

namespace robust {

enum class MaskKind { kNone, kEmpty, kFull, kRandom, kOnePixel, kTouchingEdges, kBox };

// Written into the module's parameters record after the parameters call.
struct StoredValues {
    float tolerance = 50.0f;
    float darkening = 50.0f;
    float viewX = 0.0f;
    float viewY = 0.0f;
    float viewScale = 1.0f;
    int32_t viewLeft = 0;
    int32_t viewTop = 0;
    int32_t viewBottom = 0;
    int32_t viewRight = 0;
    int8_t viewState = 0;
    uint8_t previewOn = 1;
    uint8_t showDialog = 0;
};

struct HostConfig {
    uint64_t seed = 0;
    int width = 1;
    int height = 1;
    int planes = 3;
    int depth = 8;  // of the document; the record's field is settings.depth
    MaskKind mask = MaskKind::kNone;
    testhost::HostSettings settings;
    // One entry per run in the same host: the values stored before that
    // run, or none when the host plays the run itself (settings.parameters).
    std::vector<bool> storesValues;
    std::vector<StoredValues> stored;
    std::string adjustment;  // what was changed to keep the run affordable
};

struct CampaignLimits {
    int largestSide = 5000;
    // Bytes the band loop may deliver in one run; a host asking for more
    // bands gets a larger maxSpace.
    int64_t bandBytes = 64 * 1024 * 1024;
    // Bands in one run; each may show the module's message boxes.
    int64_t bands = 256;
};

HostConfig MakeConfiguration(uint64_t seed, const CampaignLimits& limits);
// The document of the configuration, with its selection mask.
testhost::Image MakeDocument(const HostConfig& config);
// One line for logs and failure reports.
std::string Describe(const HostConfig& config);

}  // namespace robust
