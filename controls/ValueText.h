// Numbers as the toolkit shows and reads them, and float-to-integer
// conversions that stay defined for any input (huge values, infinities, NaN).
#pragma once

#include <cstddef>
#include <cstdint>

// Truncates toward zero; values beyond the int32 range saturate, NaN gives 0.
int32_t TruncateToInt32(double value);

// The low 16 bits of the value truncated toward zero, as a signed 16-bit
// number: 70000 gives 4464, -1 gives -1. Infinities and NaN give 0.
int16_t LowWord16(double value);

// "%0.2f" in floating-point mode; in integer mode the base-10 integer of the
// value truncated toward zero.
void FormatValueText(double value, bool integerMode, char* text, size_t size);

// Reads the leading decimal number of a text (sign, digits, point, exponent)
// from at most its first 64 characters; the rest is ignored and a text
// without a number reads as 0. Too large a magnitude reads as an infinity.
float ReadValueText(const char* text);
