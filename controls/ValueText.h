// Numbers as the toolkit shows and reads them, and float-to-integer
// conversions that stay defined for any input (huge values, infinities, NaN);
// TruncateToInt32 is the one the pixel code uses too.
#pragma once

#include <cstddef>
#include <cstdint>

#include "redeye/Truncate.h"

// The low 16 bits of the value truncated toward zero, as a signed 16-bit
// number: 70000 gives 4464, -1 gives -1. Infinities and NaN give 0.
int16_t LowWord16(double value);

// "%0.2f" in floating-point mode; in integer mode the base-10 integer of the
// value truncated toward zero.
void FormatValueText(double value, bool integerMode, char* text, size_t size);

// Reads the leading decimal number of a text (sign, digits, point, exponent)
// from at most its first 64 characters; the rest is ignored and a text
// without a number reads as 0. Too large a magnitude for a float reads as
// the largest float of its sign, so a typed number is always finite.
float ReadValueText(const char* text);
