// Compile-time checks of our declarations against the host's binary
// interface: the numbers it passes, and the layout of its records in a 32-bit
// and in a 64-bit host. A wrong value here means the module would misread the
// host.
#pragma once

#include "FilterRecord.h"
#include "HostConstants.h"
#include "HostSuites.h"
#include "HostTypes.h"

// The numbers the host passes and expects.
#define HOSTAPI_VALUE(name, value) static_assert((name) == (value), #name)

// Selectors of the entry point.
HOSTAPI_VALUE(filterSelectorAbout, 0);
HOSTAPI_VALUE(filterSelectorParameters, 1);
HOSTAPI_VALUE(filterSelectorPrepare, 2);
HOSTAPI_VALUE(filterSelectorStart, 3);
HOSTAPI_VALUE(filterSelectorContinue, 4);
HOSTAPI_VALUE(filterSelectorFinish, 5);

// System result codes.
HOSTAPI_VALUE(noErr, 0);
HOSTAPI_VALUE(paramErr, -50);
HOSTAPI_VALUE(memFullErr, -108);
HOSTAPI_VALUE(nilHandleErr, -109);
HOSTAPI_VALUE(userCanceledErr, -128);
HOSTAPI_VALUE(errMissingParameter, -1715);

// Filter result codes.
HOSTAPI_VALUE(filterBadParameters, -30100);
HOSTAPI_VALUE(filterBadMode, -30101);

// Host result codes.
HOSTAPI_VALUE(errPlugInHostInsufficient, -30900);
HOSTAPI_VALUE(errPlugInPropertyUndefined, -30901);
HOSTAPI_VALUE(errHostDoesNotSupportColStep, -30902);
HOSTAPI_VALUE(errInvalidSamplePoint, -30903);
HOSTAPI_VALUE(errReportString, -30904);

// 8-bit image modes.
HOSTAPI_VALUE(plugInModeBitmap, 0);
HOSTAPI_VALUE(plugInModeGrayScale, 1);
HOSTAPI_VALUE(plugInModeIndexedColor, 2);
HOSTAPI_VALUE(plugInModeRGBColor, 3);
HOSTAPI_VALUE(plugInModeCMYKColor, 4);
HOSTAPI_VALUE(plugInModeHSLColor, 5);
HOSTAPI_VALUE(plugInModeHSBColor, 6);
HOSTAPI_VALUE(plugInModeMultichannel, 7);
HOSTAPI_VALUE(plugInModeDuotone, 8);
HOSTAPI_VALUE(plugInModeLabColor, 9);

// 16-bit image modes.
HOSTAPI_VALUE(plugInModeGray16, 10);
HOSTAPI_VALUE(plugInModeRGB48, 11);
HOSTAPI_VALUE(plugInModeLab48, 12);
HOSTAPI_VALUE(plugInModeCMYK64, 13);
HOSTAPI_VALUE(plugInModeDeepMultichannel, 14);
HOSTAPI_VALUE(plugInModeDuotone16, 15);

// Filter cases.
HOSTAPI_VALUE(filterCaseUnsupported, -1);
HOSTAPI_VALUE(filterCaseNotSet, 0);
HOSTAPI_VALUE(filterCaseFlatImageNoSelection, 1);
HOSTAPI_VALUE(filterCaseFlatImageWithSelection, 2);
HOSTAPI_VALUE(filterCaseFloatingSelection, 3);
HOSTAPI_VALUE(filterCaseEditableTransparencyNoSelection, 4);
HOSTAPI_VALUE(filterCaseEditableTransparencyWithSelection, 5);
HOSTAPI_VALUE(filterCaseProtectedTransparencyNoSelection, 6);
HOSTAPI_VALUE(filterCaseProtectedTransparencyWithSelection, 7);

// descriptorParameters.playInfo (host to module).
HOSTAPI_VALUE(plugInDialogDontDisplay, 0);
HOSTAPI_VALUE(plugInDialogDisplay, 1);
HOSTAPI_VALUE(plugInDialogSilent, 2);

// descriptorParameters.recordInfo (module to host).
HOSTAPI_VALUE(plugInDialogOptional, 0);
HOSTAPI_VALUE(plugInDialogRequired, 1);
HOSTAPI_VALUE(plugInDialogNone, 2);

// Colour spaces.
HOSTAPI_VALUE(plugIncolorServicesChosenSpace, -1);
HOSTAPI_VALUE(plugIncolorServicesRGBSpace, 0);
HOSTAPI_VALUE(plugIncolorServicesHSBSpace, 1);
HOSTAPI_VALUE(plugIncolorServicesCMYKSpace, 2);
HOSTAPI_VALUE(plugIncolorServicesLabSpace, 3);
HOSTAPI_VALUE(plugIncolorServicesGraySpace, 4);
HOSTAPI_VALUE(plugIncolorServicesHSLSpace, 5);
HOSTAPI_VALUE(plugIncolorServicesXYZSpace, 6);

// Colour services selectors.
HOSTAPI_VALUE(plugIncolorServicesChooseColor, 0);
HOSTAPI_VALUE(plugIncolorServicesConvertColor, 1);
HOSTAPI_VALUE(plugIncolorServicesSamplePoint, 2);
HOSTAPI_VALUE(plugIncolorServicesGetSpecialColor, 3);

// Four-character codes.
HOSTAPI_VALUE(kPhotoshopSignature, 0x3842494D);
HOSTAPI_VALUE(kFilterKind, 0x3842464D);
HOSTAPI_VALUE(kAnyHostSignature, 0x20202020);
HOSTAPI_VALUE(kDescriptorNullKey, 0x6E756C6C);

// 1.0 in 16.16 fixed point.
HOSTAPI_VALUE(kFixedOne, 0x00010000);

// Suite versions and counts.
HOSTAPI_VALUE(kCurrentHandleProcsVersion, 1);
HOSTAPI_VALUE(kCurrentDescriptorParametersVersion, 0);
HOSTAPI_VALUE(kCurrentReadDescriptorProcsVersion, 0);
HOSTAPI_VALUE(kCurrentReadDescriptorProcsCount, 18);
HOSTAPI_VALUE(kCurrentWriteDescriptorProcsVersion, 0);
HOSTAPI_VALUE(kCurrentWriteDescriptorProcsCount, 16);

#undef HOSTAPI_VALUE

// Each record's offsets and sizes, first as a 32-bit host lays them out,
// then as a 64-bit one does (pointers, handles and procedures 8 bytes; the
// filter record still packed to 4, so some pointers sit at 4 mod 8).
static_assert(sizeof(void*) == 4 || sizeof(void*) == 8, "a 32-bit or a 64-bit build");
#define HOSTAPI_CHECK(type, field, off32, off64) \
    static_assert(offsetof(type, field) == (kHost64 ? (off64) : (off32)), #type "." #field)
#define HOSTAPI_SIZE(type, size32, size64) \
    static_assert(sizeof(type) == (kHost64 ? (size64) : (size32)), #type " size")

static_assert(sizeof(Point16) == 4, "Point16");
static_assert(sizeof(Rect16) == 8, "Rect16");
static_assert(sizeof(VPoint) == 8, "VPoint");
static_assert(sizeof(VRect) == 16, "VRect");
static_assert(sizeof(RGBColor16) == 6, "RGBColor16");
static_assert(sizeof(PlugInMonitor) == 40, "PlugInMonitor");
static_assert(sizeof(Str255) == 256, "Str255");

HOSTAPI_CHECK(PlatformData, hwnd, 0, 0);
HOSTAPI_SIZE(PlatformData, 4, 8);

HOSTAPI_CHECK(AboutRecord, platformData, 0, 0);
HOSTAPI_CHECK(AboutRecord, sSPBasic, 4, 8);
HOSTAPI_CHECK(AboutRecord, plugInRef, 8, 16);
HOSTAPI_CHECK(AboutRecord, reserved, 12, 24);
HOSTAPI_SIZE(AboutRecord, 256, 272);

HOSTAPI_CHECK(FilterRecord, serialNumber, 0, 0);
HOSTAPI_CHECK(FilterRecord, abortProc, 4, 4);
HOSTAPI_CHECK(FilterRecord, progressProc, 8, 12);
HOSTAPI_CHECK(FilterRecord, parameters, 12, 20);
HOSTAPI_CHECK(FilterRecord, imageSize, 16, 28);
HOSTAPI_CHECK(FilterRecord, planes, 20, 32);
HOSTAPI_CHECK(FilterRecord, filterRect, 22, 34);
HOSTAPI_CHECK(FilterRecord, background, 30, 42);
HOSTAPI_CHECK(FilterRecord, foreground, 36, 48);
HOSTAPI_CHECK(FilterRecord, maxSpace, 44, 56);
HOSTAPI_CHECK(FilterRecord, bufferSpace, 48, 60);
HOSTAPI_CHECK(FilterRecord, inRect, 52, 64);
HOSTAPI_CHECK(FilterRecord, inLoPlane, 60, 72);
HOSTAPI_CHECK(FilterRecord, inHiPlane, 62, 74);
HOSTAPI_CHECK(FilterRecord, outRect, 64, 76);
HOSTAPI_CHECK(FilterRecord, outLoPlane, 72, 84);
HOSTAPI_CHECK(FilterRecord, outHiPlane, 74, 86);
HOSTAPI_CHECK(FilterRecord, inData, 76, 88);
HOSTAPI_CHECK(FilterRecord, inRowBytes, 80, 96);
HOSTAPI_CHECK(FilterRecord, outData, 84, 100);
HOSTAPI_CHECK(FilterRecord, outRowBytes, 88, 108);
HOSTAPI_CHECK(FilterRecord, isFloating, 92, 112);
HOSTAPI_CHECK(FilterRecord, haveMask, 93, 113);
HOSTAPI_CHECK(FilterRecord, autoMask, 94, 114);
HOSTAPI_CHECK(FilterRecord, maskRect, 96, 116);
HOSTAPI_CHECK(FilterRecord, maskData, 104, 124);
HOSTAPI_CHECK(FilterRecord, maskRowBytes, 108, 132);
HOSTAPI_CHECK(FilterRecord, backColor, 112, 136);
HOSTAPI_CHECK(FilterRecord, foreColor, 116, 140);
HOSTAPI_CHECK(FilterRecord, hostSig, 120, 144);
HOSTAPI_CHECK(FilterRecord, hostProc, 124, 148);
HOSTAPI_CHECK(FilterRecord, imageMode, 128, 156);
HOSTAPI_CHECK(FilterRecord, imageHRes, 132, 160);
HOSTAPI_CHECK(FilterRecord, imageVRes, 136, 164);
HOSTAPI_CHECK(FilterRecord, floatCoord, 140, 168);
HOSTAPI_CHECK(FilterRecord, wholeSize, 144, 172);
HOSTAPI_CHECK(FilterRecord, monitor, 148, 176);
HOSTAPI_CHECK(FilterRecord, platformData, 188, 216);
HOSTAPI_CHECK(FilterRecord, bufferProcs, 192, 224);
HOSTAPI_CHECK(FilterRecord, resourceProcs, 196, 232);
HOSTAPI_CHECK(FilterRecord, processEvent, 200, 240);
HOSTAPI_CHECK(FilterRecord, displayPixels, 204, 248);
HOSTAPI_CHECK(FilterRecord, handleProcs, 208, 256);
HOSTAPI_CHECK(FilterRecord, supportsDummyChannels, 212, 264);
HOSTAPI_CHECK(FilterRecord, supportsAlternateLayouts, 213, 265);
HOSTAPI_CHECK(FilterRecord, wantLayout, 214, 266);
HOSTAPI_CHECK(FilterRecord, filterCase, 216, 268);
HOSTAPI_CHECK(FilterRecord, dummyPlaneValue, 218, 270);
HOSTAPI_CHECK(FilterRecord, legacyHook, 220, 272);
HOSTAPI_CHECK(FilterRecord, advanceState, 224, 280);
HOSTAPI_CHECK(FilterRecord, supportsAbsolute, 228, 288);
HOSTAPI_CHECK(FilterRecord, wantsAbsolute, 229, 289);
HOSTAPI_CHECK(FilterRecord, getPropertyObsolete, 232, 292);
HOSTAPI_CHECK(FilterRecord, cannotUndo, 236, 300);
HOSTAPI_CHECK(FilterRecord, supportsPadding, 237, 301);
HOSTAPI_CHECK(FilterRecord, inputPadding, 238, 302);
HOSTAPI_CHECK(FilterRecord, outputPadding, 240, 304);
HOSTAPI_CHECK(FilterRecord, maskPadding, 242, 306);
HOSTAPI_CHECK(FilterRecord, samplingSupport, 244, 308);
HOSTAPI_CHECK(FilterRecord, reservedByte, 245, 309);
HOSTAPI_CHECK(FilterRecord, inputRate, 248, 312);
HOSTAPI_CHECK(FilterRecord, maskRate, 252, 316);
HOSTAPI_CHECK(FilterRecord, colorServices, 256, 320);
HOSTAPI_CHECK(FilterRecord, inLayerPlanes, 260, 328);
HOSTAPI_CHECK(FilterRecord, inTransparencyMask, 262, 330);
HOSTAPI_CHECK(FilterRecord, inLayerMasks, 264, 332);
HOSTAPI_CHECK(FilterRecord, inInvertedLayerMasks, 266, 334);
HOSTAPI_CHECK(FilterRecord, inNonLayerPlanes, 268, 336);
HOSTAPI_CHECK(FilterRecord, outLayerPlanes, 270, 338);
HOSTAPI_CHECK(FilterRecord, outTransparencyMask, 272, 340);
HOSTAPI_CHECK(FilterRecord, outLayerMasks, 274, 342);
HOSTAPI_CHECK(FilterRecord, outInvertedLayerMasks, 276, 344);
HOSTAPI_CHECK(FilterRecord, outNonLayerPlanes, 278, 346);
HOSTAPI_CHECK(FilterRecord, absLayerPlanes, 280, 348);
HOSTAPI_CHECK(FilterRecord, absTransparencyMask, 282, 350);
HOSTAPI_CHECK(FilterRecord, absLayerMasks, 284, 352);
HOSTAPI_CHECK(FilterRecord, absInvertedLayerMasks, 286, 354);
HOSTAPI_CHECK(FilterRecord, absNonLayerPlanes, 288, 356);
HOSTAPI_CHECK(FilterRecord, inPreDummyPlanes, 290, 358);
HOSTAPI_CHECK(FilterRecord, inPostDummyPlanes, 292, 360);
HOSTAPI_CHECK(FilterRecord, outPreDummyPlanes, 294, 362);
HOSTAPI_CHECK(FilterRecord, outPostDummyPlanes, 296, 364);
HOSTAPI_CHECK(FilterRecord, inColumnBytes, 300, 368);
HOSTAPI_CHECK(FilterRecord, inPlaneBytes, 304, 372);
HOSTAPI_CHECK(FilterRecord, outColumnBytes, 308, 376);
HOSTAPI_CHECK(FilterRecord, outPlaneBytes, 312, 380);
HOSTAPI_CHECK(FilterRecord, imageServicesProcs, 316, 384);
HOSTAPI_CHECK(FilterRecord, propertyProcs, 320, 392);
HOSTAPI_CHECK(FilterRecord, inTileHeight, 324, 400);
HOSTAPI_CHECK(FilterRecord, inTileWidth, 326, 402);
HOSTAPI_CHECK(FilterRecord, inTileOrigin, 328, 404);
HOSTAPI_CHECK(FilterRecord, absTileHeight, 332, 408);
HOSTAPI_CHECK(FilterRecord, absTileWidth, 334, 410);
HOSTAPI_CHECK(FilterRecord, absTileOrigin, 336, 412);
HOSTAPI_CHECK(FilterRecord, outTileHeight, 340, 416);
HOSTAPI_CHECK(FilterRecord, outTileWidth, 342, 418);
HOSTAPI_CHECK(FilterRecord, outTileOrigin, 344, 420);
HOSTAPI_CHECK(FilterRecord, maskTileHeight, 348, 424);
HOSTAPI_CHECK(FilterRecord, maskTileWidth, 350, 426);
HOSTAPI_CHECK(FilterRecord, maskTileOrigin, 352, 428);
HOSTAPI_CHECK(FilterRecord, descriptorParameters, 356, 432);
HOSTAPI_CHECK(FilterRecord, errorString, 360, 440);
HOSTAPI_CHECK(FilterRecord, channelPortProcs, 364, 448);
HOSTAPI_CHECK(FilterRecord, documentInfo, 368, 456);
HOSTAPI_CHECK(FilterRecord, sSPBasic, 372, 464);
HOSTAPI_CHECK(FilterRecord, plugInRef, 376, 472);
HOSTAPI_CHECK(FilterRecord, depth, 380, 480);
HOSTAPI_CHECK(FilterRecord, iCCprofileData, 384, 484);
HOSTAPI_CHECK(FilterRecord, iCCprofileSize, 388, 492);
HOSTAPI_CHECK(FilterRecord, canUseICCProfiles, 392, 496);
HOSTAPI_CHECK(FilterRecord, hasImageScrap, 396, 500);
HOSTAPI_CHECK(FilterRecord, bigDocumentData, 400, 504);
HOSTAPI_CHECK(FilterRecord, input3DScene, 404, 512);
HOSTAPI_CHECK(FilterRecord, output3DScene, 408, 520);
HOSTAPI_CHECK(FilterRecord, createNewLayer, 412, 528);
HOSTAPI_CHECK(FilterRecord, iCCWorkingProfileData, 416, 532);
HOSTAPI_CHECK(FilterRecord, iCCWorkingProfileSize, 420, 540);
HOSTAPI_CHECK(FilterRecord, bufferSpace64, 424, 544);
HOSTAPI_CHECK(FilterRecord, maxSpace64, 432, 552);
HOSTAPI_CHECK(FilterRecord, reserved, 440, 560);
HOSTAPI_SIZE(FilterRecord, 488, 608);

HOSTAPI_CHECK(BigDocumentStruct, PluginUsing32BitCoordinates, 0, 0);
HOSTAPI_CHECK(BigDocumentStruct, imageSize32, 4, 4);
HOSTAPI_CHECK(BigDocumentStruct, filterRect32, 12, 12);
HOSTAPI_CHECK(BigDocumentStruct, inRect32, 28, 28);
HOSTAPI_CHECK(BigDocumentStruct, outRect32, 44, 44);
HOSTAPI_CHECK(BigDocumentStruct, maskRect32, 60, 60);
HOSTAPI_CHECK(BigDocumentStruct, floatCoord32, 76, 76);
HOSTAPI_CHECK(BigDocumentStruct, wholeSize32, 84, 84);
HOSTAPI_SIZE(BigDocumentStruct, 92, 92);

HOSTAPI_CHECK(HandleProcs, handleProcsVersion, 0, 0);
HOSTAPI_CHECK(HandleProcs, numHandleProcs, 2, 2);
HOSTAPI_CHECK(HandleProcs, newProc, 4, 8);
HOSTAPI_CHECK(HandleProcs, disposeProc, 8, 16);
HOSTAPI_CHECK(HandleProcs, getSizeProc, 12, 24);
HOSTAPI_CHECK(HandleProcs, setSizeProc, 16, 32);
HOSTAPI_CHECK(HandleProcs, lockProc, 20, 40);
HOSTAPI_CHECK(HandleProcs, unlockProc, 24, 48);
HOSTAPI_CHECK(HandleProcs, recoverSpaceProc, 28, 56);
HOSTAPI_CHECK(HandleProcs, disposeRegularHandleProc, 32, 64);
HOSTAPI_SIZE(HandleProcs, 36, 72);

HOSTAPI_CHECK(BufferProcs, bufferProcsVersion, 0, 0);
HOSTAPI_CHECK(BufferProcs, numBufferProcs, 2, 2);
HOSTAPI_CHECK(BufferProcs, allocateProc, 4, 8);
HOSTAPI_CHECK(BufferProcs, lockProc, 8, 16);
HOSTAPI_CHECK(BufferProcs, unlockProc, 12, 24);
HOSTAPI_CHECK(BufferProcs, freeProc, 16, 32);
HOSTAPI_CHECK(BufferProcs, spaceProc, 20, 40);
HOSTAPI_SIZE(BufferProcs, 24, 48);

HOSTAPI_CHECK(ResourceProcs, resourceProcsVersion, 0, 0);
HOSTAPI_CHECK(ResourceProcs, numResourceProcs, 2, 2);
HOSTAPI_CHECK(ResourceProcs, countProc, 4, 8);
HOSTAPI_CHECK(ResourceProcs, getProc, 8, 16);
HOSTAPI_CHECK(ResourceProcs, deleteProc, 12, 24);
HOSTAPI_CHECK(ResourceProcs, addProc, 16, 32);
HOSTAPI_SIZE(ResourceProcs, 20, 40);

HOSTAPI_CHECK(PropertyProcs, propertyProcsVersion, 0, 0);
HOSTAPI_CHECK(PropertyProcs, numPropertyProcs, 2, 2);
HOSTAPI_CHECK(PropertyProcs, getPropertyProc, 4, 8);
HOSTAPI_CHECK(PropertyProcs, setPropertyProc, 8, 16);
HOSTAPI_SIZE(PropertyProcs, 12, 24);

HOSTAPI_CHECK(ChannelPortProcs, channelPortProcsVersion, 0, 0);
HOSTAPI_CHECK(ChannelPortProcs, numChannelPortProcs, 2, 2);
HOSTAPI_CHECK(ChannelPortProcs, readPixelsProc, 4, 8);
HOSTAPI_CHECK(ChannelPortProcs, writeBasePixelsProc, 8, 16);
HOSTAPI_CHECK(ChannelPortProcs, readPortForWritePortProc, 12, 24);
HOSTAPI_SIZE(ChannelPortProcs, 16, 32);

HOSTAPI_CHECK(PIDescriptorParameters, descriptorParametersVersion, 0, 0);
HOSTAPI_CHECK(PIDescriptorParameters, playInfo, 2, 2);
HOSTAPI_CHECK(PIDescriptorParameters, recordInfo, 4, 4);
HOSTAPI_CHECK(PIDescriptorParameters, descriptor, 8, 8);
HOSTAPI_CHECK(PIDescriptorParameters, writeDescriptorProcs, 12, 16);
HOSTAPI_CHECK(PIDescriptorParameters, readDescriptorProcs, 16, 24);
HOSTAPI_SIZE(PIDescriptorParameters, 20, 32);

HOSTAPI_CHECK(ReadDescriptorProcs, readDescriptorProcsVersion, 0, 0);
HOSTAPI_CHECK(ReadDescriptorProcs, numReadDescriptorProcs, 2, 2);
HOSTAPI_CHECK(ReadDescriptorProcs, openReadDescriptorProc, 4, 8);
HOSTAPI_CHECK(ReadDescriptorProcs, closeReadDescriptorProc, 8, 16);
HOSTAPI_CHECK(ReadDescriptorProcs, getKeyProc, 12, 24);
HOSTAPI_CHECK(ReadDescriptorProcs, getIntegerProc, 16, 32);
HOSTAPI_CHECK(ReadDescriptorProcs, getFloatProc, 20, 40);
HOSTAPI_CHECK(ReadDescriptorProcs, getUnitFloatProc, 24, 48);
HOSTAPI_CHECK(ReadDescriptorProcs, getBooleanProc, 28, 56);
HOSTAPI_CHECK(ReadDescriptorProcs, getTextProc, 32, 64);
HOSTAPI_CHECK(ReadDescriptorProcs, getAliasProc, 36, 72);
HOSTAPI_CHECK(ReadDescriptorProcs, getEnumeratedProc, 40, 80);
HOSTAPI_CHECK(ReadDescriptorProcs, getClassProc, 44, 88);
HOSTAPI_CHECK(ReadDescriptorProcs, getSimpleReferenceProc, 48, 96);
HOSTAPI_CHECK(ReadDescriptorProcs, getObjectProc, 52, 104);
HOSTAPI_CHECK(ReadDescriptorProcs, getCountProc, 56, 112);
HOSTAPI_CHECK(ReadDescriptorProcs, getStringProc, 60, 120);
HOSTAPI_CHECK(ReadDescriptorProcs, getPinnedIntegerProc, 64, 128);
HOSTAPI_CHECK(ReadDescriptorProcs, getPinnedFloatProc, 68, 136);
HOSTAPI_CHECK(ReadDescriptorProcs, getPinnedUnitFloatProc, 72, 144);
HOSTAPI_SIZE(ReadDescriptorProcs, 76, 152);

HOSTAPI_CHECK(WriteDescriptorProcs, writeDescriptorProcsVersion, 0, 0);
HOSTAPI_CHECK(WriteDescriptorProcs, numWriteDescriptorProcs, 2, 2);
HOSTAPI_CHECK(WriteDescriptorProcs, openWriteDescriptorProc, 4, 8);
HOSTAPI_CHECK(WriteDescriptorProcs, closeWriteDescriptorProc, 8, 16);
HOSTAPI_CHECK(WriteDescriptorProcs, putIntegerProc, 12, 24);
HOSTAPI_CHECK(WriteDescriptorProcs, putFloatProc, 16, 32);
HOSTAPI_CHECK(WriteDescriptorProcs, putUnitFloatProc, 20, 40);
HOSTAPI_CHECK(WriteDescriptorProcs, putBooleanProc, 24, 48);
HOSTAPI_CHECK(WriteDescriptorProcs, putTextProc, 28, 56);
HOSTAPI_CHECK(WriteDescriptorProcs, putAliasProc, 32, 64);
HOSTAPI_CHECK(WriteDescriptorProcs, putEnumeratedProc, 36, 72);
HOSTAPI_CHECK(WriteDescriptorProcs, putClassProc, 40, 80);
HOSTAPI_CHECK(WriteDescriptorProcs, putSimpleReferenceProc, 44, 88);
HOSTAPI_CHECK(WriteDescriptorProcs, putObjectProc, 48, 96);
HOSTAPI_CHECK(WriteDescriptorProcs, putCountProc, 52, 104);
HOSTAPI_CHECK(WriteDescriptorProcs, putStringProc, 56, 112);
HOSTAPI_CHECK(WriteDescriptorProcs, putScopedClassProc, 60, 120);
HOSTAPI_CHECK(WriteDescriptorProcs, putScopedObjectProc, 64, 128);
HOSTAPI_SIZE(WriteDescriptorProcs, 68, 136);
HOSTAPI_CHECK(PIDescriptorSimpleReference, desiredClass, 0, 0);
HOSTAPI_CHECK(PIDescriptorSimpleReference, keyForm, 4, 4);
HOSTAPI_CHECK(PIDescriptorSimpleReference, keyData, 8, 8);
HOSTAPI_SIZE(PIDescriptorSimpleReference, 276, 276);

HOSTAPI_CHECK(ColorServicesInfo, infoSize, 0, 0);
HOSTAPI_CHECK(ColorServicesInfo, selector, 4, 4);
HOSTAPI_CHECK(ColorServicesInfo, sourceSpace, 6, 6);
HOSTAPI_CHECK(ColorServicesInfo, resultSpace, 8, 8);
HOSTAPI_CHECK(ColorServicesInfo, resultGamutInfoValid, 10, 10);
HOSTAPI_CHECK(ColorServicesInfo, resultInGamut, 11, 11);
HOSTAPI_CHECK(ColorServicesInfo, reservedSourceSpaceInfo, 12, 16);
HOSTAPI_CHECK(ColorServicesInfo, reservedResultSpaceInfo, 16, 24);
HOSTAPI_CHECK(ColorServicesInfo, colorComponents, 20, 32);
HOSTAPI_CHECK(ColorServicesInfo, reserved, 28, 40);
HOSTAPI_CHECK(ColorServicesInfo, selectorParameter, 32, 48);
HOSTAPI_SIZE(ColorServicesInfo, 36, 56);

HOSTAPI_CHECK(PSPixelMap, version, 0, 0);
HOSTAPI_CHECK(PSPixelMap, bounds, 4, 4);
HOSTAPI_CHECK(PSPixelMap, imageMode, 20, 20);
HOSTAPI_CHECK(PSPixelMap, rowBytes, 24, 24);
HOSTAPI_CHECK(PSPixelMap, colBytes, 28, 28);
HOSTAPI_CHECK(PSPixelMap, planeBytes, 32, 32);
HOSTAPI_CHECK(PSPixelMap, baseAddr, 36, 40);
HOSTAPI_CHECK(PSPixelMap, mat, 40, 48);
HOSTAPI_CHECK(PSPixelMap, masks, 44, 56);
HOSTAPI_CHECK(PSPixelMap, maskPhaseRow, 48, 64);
HOSTAPI_CHECK(PSPixelMap, maskPhaseCol, 52, 68);
HOSTAPI_SIZE(PSPixelMap, 56, 72);
HOSTAPI_CHECK(PSPixelMask, next, 0, 0);
HOSTAPI_CHECK(PSPixelMask, maskData, 4, 8);
HOSTAPI_CHECK(PSPixelMask, rowBytes, 8, 16);
HOSTAPI_CHECK(PSPixelMask, colBytes, 12, 20);
HOSTAPI_CHECK(PSPixelMask, maskDescription, 16, 24);
HOSTAPI_SIZE(PSPixelMask, 20, 32);

#undef HOSTAPI_CHECK
#undef HOSTAPI_SIZE
