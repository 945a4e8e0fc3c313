// Selector numbers, result codes, image modes and scripting values of the
// host's filter plug-in interface.
#pragma once

#include "HostTypes.h"

enum FilterSelector : int16_t {
    filterSelectorAbout = 0,
    filterSelectorParameters = 1,
    filterSelectorPrepare = 2,
    filterSelectorStart = 3,
    filterSelectorContinue = 4,
    filterSelectorFinish = 5,
};

// Result codes (OSErr).
constexpr OSErr noErr = 0;
constexpr OSErr paramErr = -50;
constexpr OSErr memFullErr = -108;
constexpr OSErr nilHandleErr = -109;
constexpr OSErr userCanceledErr = -128;
constexpr OSErr errMissingParameter = -1715;
constexpr OSErr filterBadParameters = -30100;
constexpr OSErr filterBadMode = -30101;
constexpr OSErr errPlugInHostInsufficient = -30900;
constexpr OSErr errPlugInPropertyUndefined = -30901;
constexpr OSErr errHostDoesNotSupportColStep = -30902;
constexpr OSErr errInvalidSamplePoint = -30903;
constexpr OSErr errReportString = -30904;

// Image modes (imageMode).
enum ImageMode : int16_t {
    plugInModeBitmap = 0,
    plugInModeGrayScale = 1,
    plugInModeIndexedColor = 2,
    plugInModeRGBColor = 3,
    plugInModeCMYKColor = 4,
    plugInModeHSLColor = 5,
    plugInModeHSBColor = 6,
    plugInModeMultichannel = 7,
    plugInModeDuotone = 8,
    plugInModeLabColor = 9,
    plugInModeGray16 = 10,
    plugInModeRGB48 = 11,
    plugInModeLab48 = 12,
    plugInModeCMYK64 = 13,
    plugInModeDeepMultichannel = 14,
    plugInModeDuotone16 = 15,
};

// Filter cases (filterCase).
enum FilterCase : int16_t {
    filterCaseUnsupported = -1,
    filterCaseNotSet = 0,
    filterCaseFlatImageNoSelection = 1,
    filterCaseFlatImageWithSelection = 2,
    filterCaseFloatingSelection = 3,
    filterCaseEditableTransparencyNoSelection = 4,
    filterCaseEditableTransparencyWithSelection = 5,
    filterCaseProtectedTransparencyNoSelection = 6,
    filterCaseProtectedTransparencyWithSelection = 7,
};

// descriptorParameters.playInfo (host to plug-in).
enum PlayInfo : int16_t {
    plugInDialogDontDisplay = 0,
    plugInDialogDisplay = 1,
    plugInDialogSilent = 2,
};

// descriptorParameters.recordInfo (plug-in to host).
enum RecordInfo : int16_t {
    plugInDialogOptional = 0,
    plugInDialogRequired = 1,
    plugInDialogNone = 2,
};

// Colour spaces of the colour services.
enum ColorSpace : int16_t {
    plugIncolorServicesChosenSpace = -1,
    plugIncolorServicesRGBSpace = 0,
    plugIncolorServicesHSBSpace = 1,
    plugIncolorServicesCMYKSpace = 2,
    plugIncolorServicesLabSpace = 3,
    plugIncolorServicesGraySpace = 4,
    plugIncolorServicesHSLSpace = 5,
    plugIncolorServicesXYZSpace = 6,
};

enum ColorServicesSelector : int16_t {
    plugIncolorServicesChooseColor = 0,
    plugIncolorServicesConvertColor = 1,
    plugIncolorServicesSamplePoint = 2,
    plugIncolorServicesGetSpecialColor = 3,
};

constexpr OSType kPhotoshopSignature = FourCC("8BIM");
constexpr OSType kFilterKind = FourCC("8BFM");
constexpr OSType kAnyHostSignature = 0x20202020;
constexpr OSType kDescriptorNullKey = FourCC("null");
// The property-list key under which a host finds the entry point of a module
// built for its own processor.
constexpr OSType kCodePropertyKey = kHost64 ? FourCC("8664") : FourCC("wx86");

constexpr Fixed kFixedOne = 0x00010000;

constexpr int16_t kCurrentHandleProcsVersion = 1;
constexpr int16_t kCurrentDescriptorParametersVersion = 0;
constexpr int16_t kCurrentReadDescriptorProcsVersion = 0;
constexpr int16_t kCurrentReadDescriptorProcsCount = 18;
constexpr int16_t kCurrentWriteDescriptorProcsVersion = 0;
constexpr int16_t kCurrentWriteDescriptorProcsCount = 16;
