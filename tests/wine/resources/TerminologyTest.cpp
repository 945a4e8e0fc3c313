// The module's scripting terminology, parsed the way a host reads it.
#include <gtest/gtest.h>

#include "tests/wine/resources/ByteReader.h"
#include "tests/wine/resources/TestModule.h"

namespace {

struct Parameter {
    const char* key;
    const char* type;
    const char* name;
    const char* description;
};

// Names and descriptions are shown to users as they are, spelling included.
const Parameter kParameters[] = {
    {"ClSt", "long", "Color Scheme", "Color Cheme"},
    {"Geom", "long", "Kind of Geometry", "Geometry Kind"},
    {"InvI", "bool", "Invert Intensity", "Invert Intensity"},
    {"AntA", "bool", "Antialiasing", "Use Antialiasing"},
    {"Invr", "bool", "Invert", "Invert Image"},
    {"NoBr", "bool", "No Breack", "Lines don't must break"},
    {"UsBg", "bool", "Use Circles", "Use Big Circles"},
    {"Angl", "doub", "Angle", "Angle of Rotation"},
    {"Spac", "doub", "Space", "Space between lines"},
    {"Ofst", "doub", "Offset", "Offset"},
    {"Wdth", "doub", "Width", "Width of Lines"},
    {"Lvl ", "doub", "Retouching", "Retouching"},
    {"BRel", "doub", "Add Relief", "Addition Relief"},
    {"Ampl", "doub", "Amplitude", "Amplitude"},
    {"Frqn", "doub", "Frequency", "Frequency"},
    {"Shif", "doub", "Shift", "Shift"},
    {"Usil", "doub", "Usil", "Usil"},
    {"CntX", "doub", "Center X", "Center of X"},
    {"CntY", "doub", "Center Y", "Center of Y"},
};

constexpr uint16_t kOptional = 0x8000;
constexpr uint16_t kChangesState = 0x1000;

class Terminology : public testing::Test {
  protected:
    Terminology() : bytes_(LoadModuleResource("AETE", 16000)), in_(bytes_) {}

    // Reads up to and including the event's direct parameter.
    void ReadHead() {
        EXPECT_EQ(in_.U16(), 1) << "prelude";
        EXPECT_EQ(in_.U8(), 1) << "major version";
        EXPECT_EQ(in_.U8(), 0) << "minor version";
        EXPECT_EQ(in_.U16(), 0) << "language";
        EXPECT_EQ(in_.U16(), 0) << "script";
        EXPECT_EQ(in_.U16(), 1) << "suites";
        EXPECT_EQ(in_.Pascal(), "Velmora");
        EXPECT_EQ(in_.Pascal(), "Velmora");
        EXPECT_EQ(in_.Code(), "sdK2");
        EXPECT_EQ(in_.U16(), 1) << "suite level";
        EXPECT_EQ(in_.U16(), 1) << "suite version";
        EXPECT_EQ(in_.U16(), 1) << "events";
        EXPECT_EQ(in_.Pascal(), "Quorvex");
        EXPECT_EQ(in_.Pascal(), "Velmora Empty");
        EXPECT_EQ(in_.Code(), "sdK2") << "event class";
        EXPECT_EQ(in_.Code(), "Hlmk") << "event id";
        EXPECT_EQ(in_.Code(), "null") << "reply type";
        EXPECT_EQ(in_.Pascal(), "");
        EXPECT_EQ(in_.U16(), kOptional) << "reply flags";
        EXPECT_EQ(in_.Code(), "#ImR") << "direct parameter type";
        EXPECT_EQ(in_.Pascal(), "");
        EXPECT_EQ(in_.U16(), kOptional | kChangesState) << "direct parameter flags";
    }

    const std::vector<uint8_t> bytes_;
    ByteReader in_;
};

}  // namespace

TEST_F(Terminology, SuiteAndEvent) {
    ASSERT_FALSE(bytes_.empty());
    ReadHead();
    EXPECT_TRUE(in_.Ok());
}

TEST_F(Terminology, NineteenParametersThenEmptyTables) {
    ReadHead();
    ASSERT_EQ(in_.U16(), 19);
    for (const Parameter& expected : kParameters) {
        EXPECT_EQ(in_.Pascal(), expected.name);
        EXPECT_EQ(in_.Code(), expected.key) << expected.name;
        EXPECT_EQ(in_.Code(), expected.type) << expected.name;
        EXPECT_EQ(in_.Pascal(), expected.description) << expected.name;
        EXPECT_EQ(in_.U16(), kOptional) << expected.name;
    }
    EXPECT_EQ(in_.U16(), 0) << "classes";
    EXPECT_EQ(in_.U16(), 0) << "comparison operators";
    EXPECT_EQ(in_.U16(), 0) << "enumerations";
    EXPECT_TRUE(in_.Ok());
    EXPECT_EQ(in_.Remaining(), 0u);
}
