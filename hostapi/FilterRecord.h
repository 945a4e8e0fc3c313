// The filter parameter block the host passes on every call, and the
// big-document block with 32-bit coordinates. Both are declared with 4-byte
// packing by the host; on 32-bit x86 that equals natural alignment, on x86-64
// it does not (several pointers sit at 4 mod 8).
#pragma once

#include "HostSuites.h"
#include "HostTypes.h"

#pragma pack(push, 4)

struct BigDocumentStruct {
    int32_t PluginUsing32BitCoordinates;
    VPoint imageSize32;
    VRect filterRect32;
    VRect inRect32;
    VRect outRect32;
    VRect maskRect32;
    VPoint floatCoord32;
    VPoint wholeSize32;
};

struct FilterRecord {
    int32_t serialNumber;
    TestAbortProc abortProc;
    ProgressProc progressProc;
    Handle parameters;
    Point16 imageSize;
    int16_t planes;
    Rect16 filterRect;
    RGBColor16 background;
    RGBColor16 foreground;
    int32_t maxSpace;
    int32_t bufferSpace;
    Rect16 inRect;
    int16_t inLoPlane;
    int16_t inHiPlane;
    Rect16 outRect;
    int16_t outLoPlane;
    int16_t outHiPlane;
    void* inData;
    int32_t inRowBytes;
    void* outData;
    int32_t outRowBytes;
    Boolean isFloating;
    Boolean haveMask;
    Boolean autoMask;
    Rect16 maskRect;
    void* maskData;
    int32_t maskRowBytes;
    FilterColor backColor;
    FilterColor foreColor;
    OSType hostSig;
    HostProc hostProc;
    int16_t imageMode;
    Fixed imageHRes;
    Fixed imageVRes;
    Point16 floatCoord;
    Point16 wholeSize;
    PlugInMonitor monitor;
    PlatformData* platformData;
    BufferProcs* bufferProcs;
    ResourceProcs* resourceProcs;
    ProcessEventProc processEvent;
    DisplayPixelsProc displayPixels;
    HandleProcs* handleProcs;
    Boolean supportsDummyChannels;
    Boolean supportsAlternateLayouts;
    int16_t wantLayout;
    int16_t filterCase;
    int16_t dummyPlaneValue;
    void* legacyHook;  // always null
    AdvanceStateProc advanceState;
    Boolean supportsAbsolute;
    Boolean wantsAbsolute;
    GetPropertyProc getPropertyObsolete;
    Boolean cannotUndo;
    Boolean supportsPadding;
    int16_t inputPadding;
    int16_t outputPadding;
    int16_t maskPadding;
    uint8_t samplingSupport;
    uint8_t reservedByte;
    Fixed inputRate;
    Fixed maskRate;
    ColorServicesProc colorServices;
    int16_t inLayerPlanes;
    int16_t inTransparencyMask;
    int16_t inLayerMasks;
    int16_t inInvertedLayerMasks;
    int16_t inNonLayerPlanes;
    int16_t outLayerPlanes;
    int16_t outTransparencyMask;
    int16_t outLayerMasks;
    int16_t outInvertedLayerMasks;
    int16_t outNonLayerPlanes;
    int16_t absLayerPlanes;
    int16_t absTransparencyMask;
    int16_t absLayerMasks;
    int16_t absInvertedLayerMasks;
    int16_t absNonLayerPlanes;
    int16_t inPreDummyPlanes;
    int16_t inPostDummyPlanes;
    int16_t outPreDummyPlanes;
    int16_t outPostDummyPlanes;
    int32_t inColumnBytes;
    int32_t inPlaneBytes;
    int32_t outColumnBytes;
    int32_t outPlaneBytes;
    void* imageServicesProcs;
    PropertyProcs* propertyProcs;
    int16_t inTileHeight;
    int16_t inTileWidth;
    Point16 inTileOrigin;
    int16_t absTileHeight;
    int16_t absTileWidth;
    Point16 absTileOrigin;
    int16_t outTileHeight;
    int16_t outTileWidth;
    Point16 outTileOrigin;
    int16_t maskTileHeight;
    int16_t maskTileWidth;
    Point16 maskTileOrigin;
    PIDescriptorParameters* descriptorParameters;
    Str255* errorString;
    ChannelPortProcs* channelPortProcs;
    void* documentInfo;
    void* sSPBasic;
    void* plugInRef;
    int32_t depth;
    Handle iCCprofileData;
    int32_t iCCprofileSize;
    int32_t canUseICCProfiles;
    // Everything from here on is missing in older hosts; hosts that know it
    // may still leave it zero. Never write past bigDocumentData.
    int32_t hasImageScrap;
    BigDocumentStruct* bigDocumentData;
    PIDescriptorParameters* input3DScene;
    PIDescriptorParameters* output3DScene;
    Boolean createNewLayer;
    Handle iCCWorkingProfileData;
    int32_t iCCWorkingProfileSize;
    int64_t bufferSpace64;
    int64_t maxSpace64;
    char reserved[46];
};

#pragma pack(pop)

// The smallest record a host allocates. Older 32-bit hosts allocate 452
// bytes, a little past bigDocumentData; a 64-bit host's record may end right
// after bigDocumentData.
constexpr size_t kMinimumFilterRecordSize =
    kHost64 ? offsetof(FilterRecord, bigDocumentData) + sizeof(BigDocumentStruct*) : 452;
