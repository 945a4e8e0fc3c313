// Identifies the application that loaded the module from the version resource
// of its executable: which host it is, its version and its platform.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "plugin/HostServices.h"

namespace {

struct HostVersionInfo {
    OSType signature;
    uint8_t major;
    uint8_t minor;
    uint8_t fix;
    uint8_t stage;     // 0 debug build, 2 pre-release, 3 release
    uint8_t platform;  // 10 Windows NT, 11 DOS-based Windows, 12 other Windows; 0 unknown
    Boolean read;      // the executable's version resource has been looked at
};

// Filled on the first HostIs call; all zero when the resource is unreadable.
HostVersionInfo HostVersion;

constexpr size_t kTextSize = 256;

// Internal names of known hosts. The first entry found anywhere in the
// executable's internal name wins, so the order matters.
struct KnownHost {
    const char* internalName;
    OSType signature;
};
constexpr KnownHost kKnownHosts[] = {
    {"CorelDrw", FourCC("Cdrw")},
    {"PhotoPnt", FourCC("Mprn")},
    {"DeBabelizer Pro", FourCC("BABL")},
    {"Adobe After Effects", FourCC("FXTC")},
    {"Adobe Illustrator", FourCC("ART5")},
    {"PM5", FourCC("ALD5")},
    {"PM6", FourCC("ALD6")},
    {"PM65", FourCC("AD65")},
    {"PhotoDeluxe", FourCC("PHUT")},
    {"Photoshp", FourCC("8BIM")},
    {"Adobe Premiere", FourCC("PrMr")},
};

// Signatures that stand for the same host, each group ended by 0.
// clang-format off
constexpr OSType kSignatureGroups[] = {
    FourCC("Cdrw"), 0,
    FourCC("Mprn"), 0,
    FourCC("BABL"), 0,
    FourCC("FXTC"), 0,
    FourCC("ART3"), FourCC("ARTZ"), FourCC("ARTY"), FourCC("ART5"), 0,
    FourCC("ALD5"), FourCC("ALD6"), FourCC("AD65"), 0,
    FourCC("PHUT"), 0,
    FourCC("8BIM"), 0,
    FourCC("PrMr"), 0,
};
// clang-format on

uint8_t StageFromFlags(DWORD mask, DWORD flags) {
    if (mask & flags & VS_FF_DEBUG) return 0;
    if (mask & flags & VS_FF_PRERELEASE) return 2;
    return 3;
}

// The operating-system half (high word) of the file OS decides: NT-based,
// DOS-based (value 1), or anything else.
uint8_t PlatformFromFileOs(DWORD fileOs) {
    switch (HIWORD(fileOs)) {
        case HIWORD(VOS_NT):
            return 10;
        case HIWORD(VOS_DOS):
            return 11;
        default:
            return 12;
    }
}

void CopyText(char* out, const char* text, size_t length) {
    if (length >= kTextSize) length = kTextSize - 1;
    memcpy(out, text, length);
    out[length] = '\0';
}

// Looks for a string entry named `key` in the raw (UTF-16) version data and
// copies its value, narrowed to 8-bit characters. An entry is a word total
// length, a word value length, a word type (0 binary, 1 text), the key with
// its terminator, then the value at the next 4-byte boundary of the block.
bool FindRawString(const uint8_t* data, size_t size, const char* key, char* out) {
    const size_t keyChars = strlen(key) + 1;
    const size_t keyBytes = keyChars * 2;
    for (size_t at = 6; at + keyBytes <= size; at += 2) {
        size_t i = 0;
        while (i < keyChars && data[at + 2 * i] == static_cast<uint8_t>(key[i]) &&
               data[at + 2 * i + 1] == 0)
            ++i;
        if (i < keyChars || data[at - 1] != 0 || data[at - 2] > 1) continue;

        const size_t entry = at - 6;
        size_t end = entry + (data[entry] | (data[entry + 1] << 8));
        if (end > size) end = size;
        size_t value = (at + keyBytes + 3) & ~static_cast<size_t>(3);
        size_t length = 0;
        while (value + 1 < end && length < kTextSize - 1) {
            const unsigned ch = data[value] | (data[value + 1] << 8);
            if (ch == 0) break;
            out[length++] = ch < 0x100 ? static_cast<char>(ch) : '?';
            value += 2;
        }
        out[length] = '\0';
        return true;
    }
    return false;
}

// Reads "<prefix><name>" from the string table, or searches the raw data
// when the table of that translation is missing.
void ReadVersionString(void* data, DWORD size, const char* prefix, const char* name, char* out) {
    char path[64];
    strcpy(path, prefix);
    strcat(path, name);
    char* text = nullptr;
    UINT length = 0;
    if (VerQueryValueA(data, path, reinterpret_cast<void**>(&text), &length) && text) {
        CopyText(out, text, strnlen(text, length));
        return;
    }
    if (!FindRawString(static_cast<const uint8_t*>(data), size, name, out)) out[0] = '\0';
}

OSType SignatureFromInternalName(const char* internalName) {
    for (const KnownHost& host : kKnownHosts)
        if (strstr(internalName, host.internalName)) return host.signature;
    return 0;
}

// "major.minor.fix" (dots, commas or spaces between the numbers); a second
// number of 11 or more is read as minor and fix digits run together ("5.52").
void ParseFileVersion(const char* text, HostVersionInfo* version) {
    unsigned numbers[3] = {0, 0, 0};
    int count = 0;
    for (const char* p = text; *p && count < 3;) {
        if (*p >= '0' && *p <= '9') {
            unsigned value = 0;
            for (; *p >= '0' && *p <= '9'; ++p)
                if (value < 100000) value = value * 10 + (*p - '0');
            numbers[count++] = value;
        } else if (*p == '.' || *p == ',' || *p == ' ') {
            ++p;
        } else {
            break;
        }
    }
    version->major = static_cast<uint8_t>(numbers[0]);
    if (numbers[1] >= 11) {
        version->minor = static_cast<uint8_t>(numbers[1] / 10);
        version->fix = static_cast<uint8_t>(numbers[1] % 10);
    } else {
        version->minor = static_cast<uint8_t>(numbers[1]);
        version->fix = static_cast<uint8_t>(numbers[2]);
    }
}

void ReadHostVersion(HostVersionInfo* version) {
    char file[MAX_PATH];
    const DWORD fileLength = GetModuleFileNameA(nullptr, file, sizeof file);
    if (fileLength == 0 || fileLength >= sizeof file) return;
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(file, &ignored);
    if (size == 0) return;
    std::unique_ptr<uint8_t[]> data(new (std::nothrow) uint8_t[size]);
    if (!data || !GetFileVersionInfoA(file, 0, size, data.get())) return;

    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    if (VerQueryValueA(data.get(), "\\", reinterpret_cast<void**>(&fixed), &length) && fixed &&
        length >= sizeof *fixed) {
        version->stage = StageFromFlags(fixed->dwFileFlagsMask, fixed->dwFileFlags);
        version->platform = PlatformFromFileOs(fixed->dwFileOS);
    }

    WORD language = 0x0409;
    WORD codePage = 0;
    WORD* translation = nullptr;
    if (VerQueryValueA(data.get(), "\\VarFileInfo\\Translation",
                       reinterpret_cast<void**>(&translation), &length) &&
        translation && length >= 2 * sizeof(WORD)) {
        language = translation[0];
        codePage = translation[1];
    }
    char prefix[32];
    snprintf(prefix, sizeof prefix, "\\StringFileInfo\\%04x%04x\\", language, codePage);

    char internalName[kTextSize];
    char fileVersion[kTextSize];
    ReadVersionString(data.get(), size, prefix, "InternalName", internalName);
    ReadVersionString(data.get(), size, prefix, "FileVersion", fileVersion);
    version->signature = SignatureFromInternalName(internalName);
    ParseFileVersion(fileVersion, version);
}

// The group that holds `signature`, or null.
const OSType* FindSignatureGroup(OSType signature) {
    const OSType* group = kSignatureGroups;
    for (const OSType& entry : kSignatureGroups) {
        if (entry == 0)
            group = &entry + 1;
        else if (entry == signature)
            return group;
    }
    return nullptr;
}

}  // namespace

uint32_t HostIs(OSType signature) {
    if (!HostVersion.read) {
        ReadHostVersion(&HostVersion);
        HostVersion.read = 1;
    }
    if (HostVersion.platform == 0) return 0;
    const OSType* group = FindSignatureGroup(signature);
    if (!group) return 0;
    for (const OSType* member = group; *member != 0; ++member) {
        if (*member == HostVersion.signature)
            return static_cast<uint32_t>(HostVersion.major) << 24 |
                   static_cast<uint32_t>(HostVersion.minor) << 20 |
                   static_cast<uint32_t>(HostVersion.fix) << 16 | HostVersion.platform;
    }
    return 0;
}
