// The module's property list, parsed the way a host reads it.
#include <gtest/gtest.h>

#include <algorithm>

#include "hostapi/HostApi.h"
#include "tests/wine/resources/ByteReader.h"
#include "tests/wine/resources/TestModule.h"

namespace {

struct Property {
    std::string vendor;
    std::string key;
    int32_t id;
    int32_t length;
    std::vector<uint8_t> data;
};

struct PropertyList {
    uint16_t prelude = 0;
    int32_t version = -1;
    int32_t count = -1;
    std::vector<Property> properties;
    bool complete = false;  // every byte read, nothing left over
};

PropertyList ReadPropertyList() {
    const std::vector<uint8_t> bytes = LoadModuleResource("PiPL", 16000);
    ByteReader in(bytes);
    PropertyList list;
    list.prelude = in.U16();
    list.version = in.I32();
    list.count = in.I32();
    for (int32_t i = 0; i < list.count && in.Ok(); ++i) {
        Property property;
        property.vendor = in.Code();
        property.key = in.Code();
        property.id = in.I32();
        property.length = in.I32();
        // Hosts step by the stored length, so it must already be padded.
        property.data = in.Bytes(property.length < 0 ? 0 : property.length);
        list.properties.push_back(property);
    }
    list.complete = in.Ok() && in.Remaining() == 0;
    return list;
}

std::vector<uint8_t> Data(const char* key) {
    for (const Property& property : ReadPropertyList().properties)
        if (property.key == key) return property.data;
    ADD_FAILURE() << "no property " << key;
    return {};
}

std::vector<uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

// The key of the entry point's property as text: "wx86" in the 32-bit
// module, "8664" in the 64-bit one.
std::string CodeKey() {
    std::string key;
    for (int shift = 24; shift >= 0; shift -= 8)
        key += static_cast<char>(kCodePropertyKey >> shift);
    return key;
}

std::vector<uint8_t> Padded(std::vector<uint8_t> bytes, size_t size) {
    bytes.resize(size, 0);
    return bytes;
}

std::vector<uint8_t> Word32(uint32_t value) {
    return {uint8_t(value), uint8_t(value >> 8), uint8_t(value >> 16), uint8_t(value >> 24)};
}

}  // namespace

TEST(PiPL, HeaderAndPropertiesInTheHostsOrder) {
    const PropertyList list = ReadPropertyList();
    EXPECT_EQ(list.prelude, 1);
    EXPECT_EQ(list.version, 0);
    ASSERT_EQ(list.count, 13);
    EXPECT_TRUE(list.complete);

    const std::string keys[] = {"kind", "name", "catg", "vers", CodeKey(), "hstm", "mode",
                                "enbl", "fici", "btni", "aFLT", "aPAR",    "eGLO"};
    const int32_t lengths[] = {4, 12, 8, 4, 12, 16, 4, 112, 28, 24, 68, 100, 4};
    ASSERT_EQ(list.properties.size(), 13u);
    for (size_t i = 0; i < 13; ++i) {
        const Property& property = list.properties[i];
        EXPECT_EQ(property.key, keys[i]) << "property " << i;
        EXPECT_EQ(property.vendor, "8BIM") << keys[i];
        EXPECT_EQ(property.id, 0) << keys[i];
        EXPECT_EQ(property.length, lengths[i]) << keys[i];
        EXPECT_EQ(property.length % 4, 0) << keys[i];
    }
}

TEST(PiPL, KindNamesVersionAndEntryPoint) {
    EXPECT_EQ(Data("kind"), Bytes("MFB8"));  // '8BFM' as a little-endian word
    EXPECT_EQ(Data("name"), Padded(Bytes("\x0AQuorvex..."), 12));
    EXPECT_EQ(Data("catg"), Bytes("\x07Velmora"));
    EXPECT_EQ(Data("vers"), Word32(0x00040000));
    EXPECT_EQ(Data(CodeKey().c_str()), Padded(Bytes("ENTRYPOINT"), 12));
    EXPECT_EQ(Data("eGLO"), Word32(0x00385FFC));

    const std::vector<std::string> exported = ExportedNames();
    const std::vector<uint8_t> entry = Data(CodeKey().c_str());
    EXPECT_NE(std::find(exported.begin(), exported.end(),
                        std::string(reinterpret_cast<const char*>(entry.data()))),
              exported.end())
        << "the entry point is not exported";
}

TEST(PiPL, TerminologyReference) {
    const std::vector<uint8_t> data = Data("hstm");
    ByteReader in(data);
    EXPECT_EQ(in.I32(), 0);
    EXPECT_EQ(in.Code(), "sdK2");
    EXPECT_EQ(in.Code(), "Hlmk");
    EXPECT_EQ(in.U16(), 16000);
    EXPECT_EQ(in.U8(), 0) << "scope must be an empty C string at offset 14";
    EXPECT_EQ(in.U8(), 0) << "padding";
    EXPECT_TRUE(in.Ok());
    EXPECT_EQ(in.Remaining(), 0u);
}

TEST(PiPL, ImageModesAndEnableExpression) {
    // Grayscale, RGB, CMYK, HSL, HSB, multichannel, duotone, Lab; not bitmap,
    // indexed or the 16-bit modes.
    EXPECT_EQ(Data("mode"), (std::vector<uint8_t>{0x5F, 0xC0, 0x00, 0x00}));
    EXPECT_EQ(Data("enbl"),
              Padded(Bytes("in (PSHOP_ImageMode, GrayScaleMode, RGBMode,CMYKMode, HSLMode, "
                           "HSBMode, MultichannelMode,DuotoneMode, LabMode)"),
                     112));
}

TEST(PiPL, FilterCaseInfoForTheSevenCases) {
    const std::vector<uint8_t> data = Data("fici");
    ASSERT_EQ(data.size(), 28u);
    // Cases 1, 4 and 6 have no selection; 2, 3, 5 and 7 have one (or a floating one).
    const uint8_t flags[7] = {0x07, 0x0F, 0x0F, 0x07, 0x0F, 0x07, 0x0F};
    for (int filterCase = 0; filterCase < 7; ++filterCase) {
        const uint8_t* info = &data[4 * filterCase];
        EXPECT_EQ(info[0], 4) << "input handling, case " << filterCase + 1;
        EXPECT_EQ(info[1], 4) << "output handling, case " << filterCase + 1;
        EXPECT_EQ(info[2], flags[filterCase]) << "flags, case " << filterCase + 1;
        EXPECT_EQ(info[3], 0) << "second flags, case " << filterCase + 1;
    }
}

TEST(PiPL, ButtonIcon) {
    const std::vector<uint8_t> data = Data("btni");
    ByteReader in(data);
    EXPECT_EQ(in.I32(), 0);
    EXPECT_EQ(in.I32(), 1);
    EXPECT_EQ(in.I32(), 1);
    EXPECT_EQ(in.I32(), 16000);
    EXPECT_EQ(in.Pascal(), "Quorvex");
    EXPECT_TRUE(in.Ok());
    EXPECT_EQ(in.Remaining(), 0u);
}

TEST(PiPL, FilterAndParameterBlocks) {
    const std::vector<uint8_t> filter = Data("aFLT");
    ByteReader flt(filter);
    for (int32_t expected : {1, 0, 0, 65, 1}) EXPECT_EQ(flt.I32(), expected);
    EXPECT_EQ(flt.Bytes(48), Padded(Bytes("Quorvex"), 48));
    EXPECT_TRUE(flt.Ok());
    EXPECT_EQ(flt.Remaining(), 0u);

    const std::vector<uint8_t> parameters = Data("aPAR");
    ByteReader par(parameters);
    EXPECT_EQ(par.Bytes(32), Padded(Bytes("Quorvex"), 32));
    EXPECT_EQ(par.I32(), 2);
    EXPECT_EQ(par.I32(), 2);
    for (double expected : {1.0, 99.0, 1.0, 99.0}) EXPECT_EQ(par.F64(), expected);
    EXPECT_EQ(par.I32(), 10);
    EXPECT_EQ(par.I32(), 2);
    EXPECT_EQ(par.Bytes(20), std::vector<uint8_t>(20, 0));
    EXPECT_TRUE(par.Ok());
    EXPECT_EQ(par.Remaining(), 0u);
}
