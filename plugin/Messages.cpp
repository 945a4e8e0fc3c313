// Pascal strings, placeholder substitution and the string-table alerts.
#include "plugin/Messages.h"

#include <cstring>

#include "plugin/FilterGlobals.h"

namespace {

constexpr int kMaxPascalLength = 255;

// Appends bytes to a Pascal string, dropping what does not fit.
void Append(Str255 pstring, const uint8_t* bytes, int count) {
    const int room = kMaxPascalLength - pstring[0];
    const int taken = count < room ? count : room;
    std::memcpy(pstring + 1 + pstring[0], bytes, static_cast<size_t>(taken));
    pstring[0] = static_cast<uint8_t>(pstring[0] + taken);
}

const uint8_t* PlaceholderText(uint8_t digit, const uint8_t* text0, const uint8_t* text1,
                               const uint8_t* text2) {
    return digit == '0' ? text0 : digit == '1' ? text1 : text2;
}

int ShowMessage(HWND owner, bool enabled, int stringId, const uint8_t* text1, const uint8_t* text2,
                UINT icon) {
    if (!enabled) {
        return 0;
    }
    char text[kMaxPascalLength + 1] = "";
    if (stringId > 0) {
        LoadStringA(static_cast<HINSTANCE>(gModuleInstance), static_cast<UINT>(stringId), text,
                    sizeof text);
    }
    Str255 message;
    CToPString(text, message);
    SubstitutePlaceholders(message, nullptr, text1, text2);
    PToCString(message, text);
    return MessageBoxA(owner, text, nullptr, icon | MB_OK);
}

}  // namespace

void CToPString(const char* text, Str255 pstring) {
    pstring[0] = 0;
    if (text != nullptr) {
        Append(pstring, reinterpret_cast<const uint8_t*>(text),
               static_cast<int>(strnlen(text, kMaxPascalLength)));
    }
}

void PToCString(const uint8_t* pstring, char* text) {
    std::memcpy(text, pstring + 1, pstring[0]);
    text[pstring[0]] = '\0';
}

void SubstitutePlaceholders(Str255 message, const uint8_t* text0, const uint8_t* text1,
                            const uint8_t* text2) {
    Str255 result = {0};
    const int length = message[0];
    for (int i = 1; i <= length; ++i) {
        const uint8_t digit = i < length ? message[i + 1] : 0;
        if (message[i] == '^' && digit >= '0' && digit <= '2') {
            const uint8_t* text = PlaceholderText(digit, text0, text1, text2);
            if (text != nullptr) {
                Append(result, text + 1, text[0]);
            }
            ++i;
        } else {
            Append(result, &message[i], 1);
        }
    }
    std::memcpy(message, result, sizeof result);
}

int ShowAlert(HWND owner, bool enabled, int stringId, const uint8_t* text1, const uint8_t* text2) {
    return ShowMessage(owner, enabled, stringId, text1, text2, MB_ICONEXCLAMATION);
}

int ShowAlertIcon(HWND owner, bool enabled, int stringId, const uint8_t* text1,
                  const uint8_t* text2, int icon) {
    return ShowMessage(owner, enabled, stringId, text1, text2,
                       icon == 1 ? MB_ICONSTOP : MB_ICONEXCLAMATION);
}
