// Primitive types of the host's filter plug-in interface, as a Windows host
// lays them out. Written from our own notes on the binary interface.
#pragma once

#include <cstddef>
#include <cstdint>

// The 64-bit module talks to 64-bit hosts: pointers, handles and procedures
// are 8 bytes there, everything else keeps its size.
constexpr bool kHost64 = sizeof(void*) == 8;

typedef int16_t OSErr;
typedef uint8_t Boolean;  // non-zero is true
typedef uint32_t OSType;  // four-character code, first character in the high byte
typedef uint32_t ResType;
typedef uint32_t DescriptorKeyID;
typedef uint32_t DescriptorTypeID;
typedef uint32_t DescriptorUnitID;
typedef uint32_t DescriptorEnumID;
typedef uint32_t DescriptorEnumTypeID;
typedef uint32_t DescriptorClassID;
typedef int32_t Fixed;  // 16.16 fixed point
typedef char** Handle;  // pointer to a master pointer
typedef char* Ptr;
typedef uint8_t Str255[256];  // length byte, then up to 255 characters

// Builds a four-character code the way the host writes it: 'abcd'.
constexpr OSType FourCC(const char (&s)[5]) {
    return (static_cast<uint32_t>(static_cast<uint8_t>(s[0])) << 24) |
           (static_cast<uint32_t>(static_cast<uint8_t>(s[1])) << 16) |
           (static_cast<uint32_t>(static_cast<uint8_t>(s[2])) << 8) |
           static_cast<uint32_t>(static_cast<uint8_t>(s[3]));
}

struct Point16 {
    int16_t v;
    int16_t h;
};

struct Rect16 {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
};

struct VPoint {
    int32_t v;
    int32_t h;
};

struct VRect {
    int32_t top;
    int32_t left;
    int32_t bottom;
    int32_t right;
};

struct RGBColor16 {
    uint16_t red;
    uint16_t green;
    uint16_t blue;
};

typedef uint8_t FilterColor[4];

struct PlugInMonitor {
    Fixed gamma;
    Fixed redX, redY;
    Fixed greenX, greenY;
    Fixed blueX, blueY;
    Fixed whiteX, whiteY;
    Fixed ambient;
};

// First member is the host's main window (an HWND on Windows).
struct PlatformData {
    void* hwnd;
};

// Passed instead of the filter record on the about selector.
struct AboutRecord {
    PlatformData* platformData;
    void* sSPBasic;
    void* plugInRef;
    char reserved[244];
};
