#include "controls/ValueText.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr size_t kMaxReadLength = 64;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

const char* SkipDigits(const char* p) {
    while (IsDigit(*p)) {
        ++p;
    }
    return p;
}

// Length of the decimal number at the start of `text`, 0 if there is none.
size_t DecimalPrefixLength(const char* text) {
    const char* p = text;
    if (*p == '+' || *p == '-') {
        ++p;
    }
    const char* integerEnd = SkipDigits(p);
    bool hasDigits = integerEnd != p;
    p = integerEnd;
    if (*p == '.') {
        const char* fractionEnd = SkipDigits(p + 1);
        hasDigits = hasDigits || fractionEnd != p + 1;
        p = fractionEnd;
    }
    if (!hasDigits) {
        return 0;
    }
    if (*p == 'e' || *p == 'E') {
        const char* exponent = p + 1;
        if (*exponent == '+' || *exponent == '-') {
            ++exponent;
        }
        if (IsDigit(*exponent)) {
            p = SkipDigits(exponent);
        }
    }
    return static_cast<size_t>(p - text);
}

}  // namespace

int16_t LowWord16(double value) {
    if (!std::isfinite(value)) {
        return 0;
    }
    double low = std::fmod(std::trunc(value), 65536.0);  // exact for any finite value
    if (low < 0) {
        low += 65536.0;
    }
    return static_cast<int16_t>(static_cast<uint16_t>(low));
}

void FormatValueText(double value, bool integerMode, char* text, size_t size) {
    if (integerMode) {
        // Adding 0.0 turns a truncated -0 into 0.
        std::snprintf(text, size, "%.0f", std::trunc(value) + 0.0);
    } else {
        std::snprintf(text, size, "%0.2f", value);
    }
}

float ReadValueText(const char* text) {
    char number[kMaxReadLength + 1];
    std::strncpy(number, text, kMaxReadLength);
    number[kMaxReadLength] = '\0';
    const char* start = number;
    while (std::isspace(static_cast<unsigned char>(*start))) {
        ++start;
    }
    const size_t length = DecimalPrefixLength(start);
    if (length == 0) {
        return 0.0f;
    }
    number[(start - number) + length] = '\0';
    const double value = std::strtod(start, nullptr);
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}
