// Numbers as the controls show and read them, and the low 16 bits that the
// up-down arrows get.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "controls/ValueText.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

TEST(ValueText, ShowsTwoDecimalsOrTheTruncatedInteger) {
    const std::pair<double, const char*> decimals[] = {{12.345f, "12.35"}, {0.0, "0.00"}};
    const std::pair<double, const char*> integers[] = {
        {12.7, "12"},
        {-12.7, "-12"},
        {-0.4, "0"},
        {3e38, "300000000000000012135895401846682943488"}};
    char text[64];
    for (const auto& [value, shown] : decimals) {
        FormatValueText(value, false, text, sizeof text);
        EXPECT_STREQ(text, shown);
    }
    for (const auto& [value, shown] : integers) {
        FormatValueText(value, true, text, sizeof text);
        EXPECT_STREQ(text, shown);
    }
}

TEST(ValueText, ReadsTheLeadingDecimalNumberHeldWithinAFloat) {
    const std::pair<const char*, float> numbers[] = {
        {"42.5abc", 42.5f}, {"  -7", -7.0f},     {".5", 0.5f},          {"5.", 5.0f},
        {"2e3x", 2000.0f},  {"2e", 2.0f},        {"1e30", 1e30f},       {"1e-999", 0.0f},
        {"0x1A", 0.0f},     {"nan", 0.0f},       {"inf", 0.0f},         {"-", 0.0f},
        {"", 0.0f},         {"1e999", kLargest}, {"-1e999", -kLargest}, {"3.4028236e38", kLargest}};
    for (const auto& [text, value] : numbers) EXPECT_EQ(ReadValueText(text), value) << text;
    EXPECT_EQ(ReadValueText(std::string(400, '9').c_str()), kLargest);
}

TEST(ValueText, ArrowsGetTheLowSixteenBitsOfTheTruncatedValue) {
    const std::pair<double, int16_t> cases[] = {
        {100.9, 100},      {-1.9, -1}, {32768.0, -32768}, {70000.0, 4464}, {-70000.0, -4464},
        {4294967297.0, 1}, {1e30, 0},  {-1e30, 0},        {kInf, 0},       {kInf - kInf, 0}};
    for (const auto& [value, low] : cases) EXPECT_EQ(LowWord16(value), low) << value;
}

}  // namespace
