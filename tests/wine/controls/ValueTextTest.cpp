// Numbers as the controls show and read them, and the conversions that feed
// the 16-bit up-down control.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "controls/ValueText.h"

namespace {

std::string Format(double value, bool integerMode) {
    char text[64];
    FormatValueText(value, integerMode, text, sizeof text);
    return text;
}

TEST(ValueText, LowWordKeepsTheLowSixteenBitsOfTheTruncatedValue) {
    EXPECT_EQ(LowWord16(100.9), 100);
    EXPECT_EQ(LowWord16(-1.9), -1);
    EXPECT_EQ(LowWord16(32768.0), -32768);
    EXPECT_EQ(LowWord16(70000.0), 4464);
    EXPECT_EQ(LowWord16(-70000.0), -4464);
    EXPECT_EQ(LowWord16(4294967297.0), 1) << "beyond 32 bits the low bits still count";
    EXPECT_EQ(LowWord16(1e30), 0);
    EXPECT_EQ(LowWord16(-1e30), 0);
    EXPECT_EQ(LowWord16(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(LowWord16(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(ValueText, FormatsTwoDecimalsOrTheTruncatedInteger) {
    EXPECT_EQ(Format(12.345f, false), "12.35");
    EXPECT_EQ(Format(0.0, false), "0.00");
    EXPECT_EQ(Format(12.7, true), "12");
    EXPECT_EQ(Format(-12.7, true), "-12");
    EXPECT_EQ(Format(-0.4, true), "0");
    EXPECT_EQ(Format(3e38, true).size(), 39u);
}

TEST(ValueText, ReadsTheLeadingDecimalNumberOnly) {
    EXPECT_EQ(ReadValueText("42.5abc"), 42.5f);
    EXPECT_EQ(ReadValueText("  -7"), -7.0f);
    EXPECT_EQ(ReadValueText(".5"), 0.5f);
    EXPECT_EQ(ReadValueText("2e3x"), 2000.0f);
    EXPECT_EQ(ReadValueText("2e"), 2.0f);
    EXPECT_EQ(ReadValueText("0x1A"), 0.0f) << "no hexadecimal";
    EXPECT_EQ(ReadValueText("nan"), 0.0f);
    EXPECT_EQ(ReadValueText("inf"), 0.0f);
    EXPECT_EQ(ReadValueText(""), 0.0f);
    EXPECT_EQ(ReadValueText("-"), 0.0f);
    EXPECT_EQ(ReadValueText("1e30"), 1e30f);
}

TEST(ValueText, NumbersBeyondAFloatReadAsTheLargestFloat) {
    constexpr float kLargest = std::numeric_limits<float>::max();
    EXPECT_EQ(ReadValueText("1e999"), kLargest);
    EXPECT_EQ(ReadValueText("-1e999"), -kLargest);
    EXPECT_EQ(ReadValueText("3.4028236e38"), kLargest);
    EXPECT_EQ(ReadValueText(std::string(400, '9').c_str()), kLargest)
        << "64 nines are still too many for a float";
    EXPECT_EQ(ReadValueText("1e-999"), 0.0f);
}

}  // namespace
