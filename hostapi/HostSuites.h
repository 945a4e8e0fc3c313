// Callback types and service suites the host hands a filter module. All
// callbacks use the C calling convention; the suites have natural alignment.
#pragma once

#include "HostTypes.h"

typedef Boolean (*TestAbortProc)(void);
typedef void (*ProgressProc)(int32_t done, int32_t total);
typedef void (*HostProc)(int16_t selector, intptr_t* data);
typedef void (*ProcessEventProc)(void* event);
typedef OSErr (*AdvanceStateProc)(void);

// ---- Handle services ----
typedef Handle (*NewPIHandleProc)(int32_t size);
typedef void (*DisposePIHandleProc)(Handle h);
typedef int32_t (*GetPIHandleSizeProc)(Handle h);
typedef OSErr (*SetPIHandleSizeProc)(Handle h, int32_t newSize);
typedef Ptr (*LockPIHandleProc)(Handle h, Boolean moveHigh);
typedef void (*UnlockPIHandleProc)(Handle h);
typedef void (*RecoverSpaceProc)(int32_t size);
typedef void (*DisposeRegularHandlePIHandleProc)(Handle h);

struct HandleProcs {
    int16_t handleProcsVersion;
    int16_t numHandleProcs;
    NewPIHandleProc newProc;
    DisposePIHandleProc disposeProc;
    GetPIHandleSizeProc getSizeProc;
    SetPIHandleSizeProc setSizeProc;
    LockPIHandleProc lockProc;
    UnlockPIHandleProc unlockProc;
    RecoverSpaceProc recoverSpaceProc;
    DisposeRegularHandlePIHandleProc disposeRegularHandleProc;
};

// ---- Buffer services (only the first five routines are relied upon) ----
typedef struct BufferOpaque* BufferID;
struct BufferProcs {
    int16_t bufferProcsVersion;
    int16_t numBufferProcs;
    OSErr (*allocateProc)(int32_t size, BufferID* bufferID);
    Ptr (*lockProc)(BufferID bufferID, Boolean moveHigh);
    void (*unlockProc)(BufferID bufferID);
    void (*freeProc)(BufferID bufferID);
    int32_t (*spaceProc)(void);
};

struct ResourceProcs {
    int16_t resourceProcsVersion;
    int16_t numResourceProcs;
    int16_t (*countProc)(ResType type);
    Handle (*getProc)(ResType type, int16_t index);
    void (*deleteProc)(ResType type, int16_t index);
    OSErr (*addProc)(ResType type, Handle data);
};

struct PropertyProcs {
    int16_t propertyProcsVersion;
    int16_t numPropertyProcs;
    OSErr (*getPropertyProc)(OSType signature, OSType key, int32_t index, intptr_t* simpleProperty,
                             Handle* complexProperty);
    OSErr (*setPropertyProc)(OSType signature, OSType key, int32_t index, intptr_t simpleProperty,
                             Handle complexProperty);
};
typedef OSErr (*GetPropertyProc)(OSType signature, OSType key, int32_t index,
                                 intptr_t* simpleProperty, Handle* complexProperty);

struct ChannelPortProcs {
    int16_t channelPortProcsVersion;
    int16_t numChannelPortProcs;
    void* readPixelsProc;
    void* writeBasePixelsProc;
    void* readPortForWritePortProc;
};

// ---- Scripting (descriptor) suites ----
typedef struct PIOpaqueReadDescriptor* PIReadDescriptor;
typedef struct PIOpaqueWriteDescriptor* PIWriteDescriptor;

struct PIDescriptorSimpleReference {
    DescriptorTypeID desiredClass;
    DescriptorKeyID keyForm;
    struct {
        Str255 name;
        int32_t index;
        DescriptorTypeID type;
        DescriptorEnumID value;
    } keyData;
};

struct ReadDescriptorProcs {
    int16_t readDescriptorProcsVersion;
    int16_t numReadDescriptorProcs;
    PIReadDescriptor (*openReadDescriptorProc)(Handle descriptor, DescriptorKeyID* keyArray);
    OSErr (*closeReadDescriptorProc)(PIReadDescriptor reader);
    Boolean (*getKeyProc)(PIReadDescriptor reader, DescriptorKeyID* key, DescriptorTypeID* type,
                          int32_t* flags);
    OSErr (*getIntegerProc)(PIReadDescriptor reader, int32_t* value);
    OSErr (*getFloatProc)(PIReadDescriptor reader, double* value);
    OSErr (*getUnitFloatProc)(PIReadDescriptor reader, DescriptorUnitID* unit, double* value);
    OSErr (*getBooleanProc)(PIReadDescriptor reader, Boolean* value);
    OSErr (*getTextProc)(PIReadDescriptor reader, Handle* value);
    OSErr (*getAliasProc)(PIReadDescriptor reader, Handle* value);
    OSErr (*getEnumeratedProc)(PIReadDescriptor reader, DescriptorEnumID* value);
    OSErr (*getClassProc)(PIReadDescriptor reader, DescriptorClassID* value);
    OSErr (*getSimpleReferenceProc)(PIReadDescriptor reader, PIDescriptorSimpleReference* value);
    OSErr (*getObjectProc)(PIReadDescriptor reader, DescriptorClassID* type, Handle* value);
    OSErr (*getCountProc)(PIReadDescriptor reader, uint32_t* value);
    OSErr (*getStringProc)(PIReadDescriptor reader, Str255* value);
    OSErr (*getPinnedIntegerProc)(PIReadDescriptor reader, int32_t min, int32_t max,
                                  int32_t* value);
    OSErr (*getPinnedFloatProc)(PIReadDescriptor reader, const double* min, const double* max,
                                double* value);
    OSErr (*getPinnedUnitFloatProc)(PIReadDescriptor reader, const double* min, const double* max,
                                    DescriptorUnitID* unit, double* value);
};

struct WriteDescriptorProcs {
    int16_t writeDescriptorProcsVersion;
    int16_t numWriteDescriptorProcs;
    PIWriteDescriptor (*openWriteDescriptorProc)(void);
    OSErr (*closeWriteDescriptorProc)(PIWriteDescriptor writer, Handle* newDescriptor);
    OSErr (*putIntegerProc)(PIWriteDescriptor writer, DescriptorKeyID key, int32_t value);
    OSErr (*putFloatProc)(PIWriteDescriptor writer, DescriptorKeyID key, const double* value);
    OSErr (*putUnitFloatProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorUnitID unit,
                              const double* value);
    OSErr (*putBooleanProc)(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value);
    OSErr (*putTextProc)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    OSErr (*putAliasProc)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    OSErr (*putEnumeratedProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                               DescriptorEnumTypeID type, DescriptorEnumID value);
    OSErr (*putClassProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorClassID value);
    OSErr (*putSimpleReferenceProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                                    const PIDescriptorSimpleReference* value);
    OSErr (*putObjectProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorClassID type,
                           Handle value);
    OSErr (*putCountProc)(PIWriteDescriptor writer, DescriptorKeyID key, uint32_t count);
    OSErr (*putStringProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                           const uint8_t* pascalString);
    OSErr (*putScopedClassProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                                DescriptorClassID value);
    OSErr (*putScopedObjectProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                                 DescriptorClassID type, Handle value);
};

struct PIDescriptorParameters {
    int16_t descriptorParametersVersion;
    int16_t playInfo;
    int16_t recordInfo;
    Handle descriptor;
    WriteDescriptorProcs* writeDescriptorProcs;
    ReadDescriptorProcs* readDescriptorProcs;
};

// ---- Colour services ----
struct ColorServicesInfo {
    int32_t infoSize;
    int16_t selector;
    int16_t sourceSpace;
    int16_t resultSpace;
    Boolean resultGamutInfoValid;
    Boolean resultInGamut;
    void* reservedSourceSpaceInfo;
    void* reservedResultSpaceInfo;
    int16_t colorComponents[4];
    void* reserved;
    union {
        Str255* pickerPrompt;
        Point16* globalSamplePoint;
        int32_t specialColorID;
    } selectorParameter;
};
typedef OSErr (*ColorServicesProc)(ColorServicesInfo* info);

// ---- Pixel maps for displayPixels ----
struct PSPixelMask {
    PSPixelMask* next;
    void* maskData;
    int32_t rowBytes;
    int32_t colBytes;
    int32_t maskDescription;
};

struct PSPixelMap {
    int32_t version;
    VRect bounds;
    int32_t imageMode;
    int32_t rowBytes;
    int32_t colBytes;
    int32_t planeBytes;
    void* baseAddr;
    PSPixelMask* mat;
    PSPixelMask* masks;
    int32_t maskPhaseRow;
    int32_t maskPhaseCol;
};

// On Windows platformContext is the target device context.
typedef OSErr (*DisplayPixelsProc)(const PSPixelMap* source, const VRect* srcRect, int32_t dstRow,
                                   int32_t dstCol, void* platformContext);
