// The built module read as a host and the system read it, none of its code
// run: the property list, the scripting terminology, the dialog templates,
// and the export and import tables.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "QuorvexVersion.h"
#include "hostapi/HostConstants.h"
#include "plugin/MessageIds.h"

namespace {

using Bytes = std::vector<uint8_t>;

// Mapped as an image whose imports are not resolved and whose entry point
// does not run.
HMODULE Module() {
    static HMODULE module =
        LoadLibraryExA(QUORVEX_MODULE_PATH, nullptr, DONT_RESOLVE_DLL_REFERENCES);
    return module;
}

Bytes Resource(const char* type, const char* name) {
    HRSRC info = FindResourceA(Module(), name, type);
    const auto* data = static_cast<const uint8_t*>(LockResource(LoadResource(Module(), info)));
    return data != nullptr ? Bytes(data, data + SizeofResource(Module(), info)) : Bytes();
}

// Little-endian bytes as the host expects them.
struct Layout {
    Layout& Int(uint64_t value, int size = 4) {
        for (int i = 0; i < size; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
        return *this;
    }
    Layout& Ints(std::initializer_list<uint32_t> values) {
        for (uint32_t value : values) Int(value);
        return *this;
    }
    Layout& Code(const char* code) {  // a four-character code, stored as a word
        return Int(uint32_t(code[0]) << 24 | code[1] << 16 | code[2] << 8 | code[3]);
    }
    Layout& Text(const std::string& text, size_t padTo = 0) {
        bytes.insert(bytes.end(), text.begin(), text.end());
        bytes.resize(bytes.size() + (padTo > text.size() ? padTo - text.size() : 0));
        return *this;
    }
    Layout& Pascal(const std::string& text) { return Int(text.size(), 1).Text(text); }
    Layout& Doubles(std::initializer_list<double> values) {
        for (double value : values) {
            uint64_t bits;
            std::memcpy(&bits, &value, sizeof bits);
            Int(bits, 8);
        }
        return *this;
    }
    Bytes bytes;
};

// Sequential reads; a read past the end gives zeros and marks the reader.
struct Reader {
    uint32_t Int(int size = 4) {
        uint32_t value = 0;
        for (int i = 0; i < size; ++i) value |= uint32_t{Byte()} << 8 * i;
        return value;
    }
    uint8_t Byte() {
        ok = ok && at < bytes.size();
        return ok ? bytes[at++] : 0;
    }
    std::string Code() {
        const uint32_t code = Int();
        return {char(code >> 24), char(code >> 16), char(code >> 8), char(code)};
    }
    std::string Wide() {  // a UTF-16 string, or an ordinal as "#<number>"
        std::string text;
        for (uint32_t c = Int(2); c != 0 && ok; c = Int(2)) {
            if (c == 0xFFFF && text.empty()) return "#" + std::to_string(Int(2));
            text += static_cast<char>(c);
        }
        return text;
    }
    const Bytes& bytes;
    size_t at = 0;
    bool ok = true;
};

void ExpectBytes(const Bytes& actual, const Bytes& expected, const std::string& what) {
    const auto differ =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    EXPECT_TRUE(differ.first == actual.end() && differ.second == expected.end())
        << what << ": " << actual.size() << " bytes, " << expected.size()
        << " expected, first difference at " << differ.first - actual.begin();
}

TEST(Resources, PropertyListGivesTheHostItsPropertiesInOrder) {
    const std::string codeKey = Reader{Layout().Int(kCodePropertyKey).bytes}.Code();
    const std::string enable =
        "in (PSHOP_ImageMode, GrayScaleMode, RGBMode,CMYKMode, HSLMode, HSBMode, "
        "MultichannelMode,DuotoneMode, LabMode)";
    Layout cases;  // input and output white matte; flags 0x07 without a selection, 0x0F with one
    for (int flags : {0x07, 0x0F, 0x0F, 0x07, 0x0F, 0x07, 0x0F}) cases.Int(0x0404 | flags << 16);
    const std::pair<std::string, Layout> properties[] = {
        {"kind", Layout().Code("8BFM")},
        {"name", Layout().Pascal("Quorvex...").Text("", 1)},
        {"catg", Layout().Pascal("Velmora")},
        {"vers", Layout().Int(0x00040000)},
        {codeKey, Layout().Text("ENTRYPOINT", 12)},
        {"hstm", Layout().Int(0).Code("sdK2").Code("Hlmk").Int(16000, 2).Int(0, 2)},
        {"mode",
         Layout().Int(0xC05F)},  // grayscale, RGB, CMYK, HSL, HSB, multichannel, duotone, Lab
        {"enbl", Layout().Text(enable, 112)},
        {"fici", cases},
        {"btni", Layout().Ints({0, 1, 1, 16000}).Pascal("Quorvex")},
        {"aFLT", Layout().Ints({1, 0, 0, 65, 1}).Text("Quorvex", 48)},
        {"aPAR", Layout()
                     .Text("Quorvex", 32)
                     .Ints({2, 2})
                     .Doubles({1, 99, 1, 99})
                     .Ints({10, 2})
                     .Text("", 20)},
        {"eGLO", Layout().Int(0x00385FFC)}};
    const Bytes list = Resource("PiPL", MAKEINTRESOURCEA(16000));
    Reader in{list};
    EXPECT_EQ(in.Int(2), 1u);
    EXPECT_EQ(in.Int(), 0u) << "version";
    ASSERT_EQ(in.Int(), std::size(properties));
    for (const auto& [key, data] : properties) {
        EXPECT_EQ(in.Code(), "8BIM");
        EXPECT_EQ(in.Code(), key);
        EXPECT_EQ(in.Int(), 0u) << key;
        const uint32_t length = in.Int();  // hosts step by it: already padded to 4
        ExpectBytes(Bytes(list.begin() + std::min(in.at, list.size()),
                          list.begin() + std::min(in.at + length, list.size())),
                    data.bytes, key);
        in.at += length;
    }
    EXPECT_EQ(in.at, list.size());
}

TEST(Resources, TerminologyNamesTheEventAndItsNineteenParameters) {
    // Names and descriptions are shown to users as they are, spelling included.
    const char* const parameters[][4] = {{"Color Scheme", "ClSt", "long", "Color Cheme"},
                                         {"Kind of Geometry", "Geom", "long", "Geometry Kind"},
                                         {"Invert Intensity", "InvI", "bool", "Invert Intensity"},
                                         {"Antialiasing", "AntA", "bool", "Use Antialiasing"},
                                         {"Invert", "Invr", "bool", "Invert Image"},
                                         {"No Breack", "NoBr", "bool", "Lines don't must break"},
                                         {"Use Circles", "UsBg", "bool", "Use Big Circles"},
                                         {"Angle", "Angl", "doub", "Angle of Rotation"},
                                         {"Space", "Spac", "doub", "Space between lines"},
                                         {"Offset", "Ofst", "doub", "Offset"},
                                         {"Width", "Wdth", "doub", "Width of Lines"},
                                         {"Retouching", "Lvl ", "doub", "Retouching"},
                                         {"Add Relief", "BRel", "doub", "Addition Relief"},
                                         {"Amplitude", "Ampl", "doub", "Amplitude"},
                                         {"Frequency", "Frqn", "doub", "Frequency"},
                                         {"Shift", "Shif", "doub", "Shift"},
                                         {"Usil", "Usil", "doub", "Usil"},
                                         {"Center X", "CntX", "doub", "Center of X"},
                                         {"Center Y", "CntY", "doub", "Center of Y"}};
    constexpr int kOptional = 0x8000;
    Layout aete;
    aete.Int(1, 2).Int(1, 1).Int(0, 1).Int(0, 2).Int(0, 2).Int(1, 2);  // version 1.0, one suite
    aete.Pascal("Velmora").Pascal("Velmora").Code("sdK2").Int(1, 2).Int(1, 2).Int(1, 2);
    aete.Pascal("Quorvex").Pascal("Velmora Empty").Code("sdK2").Code("Hlmk");
    aete.Code("null").Pascal("").Int(kOptional, 2);                      // no reply
    aete.Code("#ImR").Pascal("").Int(kOptional | 0x1000, 2).Int(19, 2);  // changes the image
    for (const auto& p : parameters)
        aete.Pascal(p[0]).Code(p[1]).Code(p[2]).Pascal(p[3]).Int(kOptional, 2);
    aete.Int(0, 2).Int(0, 2).Int(0, 2);  // no classes, comparison operators or enumerations
    ExpectBytes(Resource("AETE", MAKEINTRESOURCEA(16000)), aete.bytes, "terminology");
}

// Caption and font, then a line for each item, "id CLASS 'text'" and the
// styles that change what a user sees or does.
std::string DialogTemplate(const char* name) {
    const Bytes bytes = Resource(RT_DIALOG, name);
    Reader in{bytes};
    EXPECT_EQ(in.Int(), 0xFFFF0001u) << "an extended template";
    in.at += 12;  // help id, extended style, style
    const int count = static_cast<int>(in.Int(2));
    in.at += 8;  // position and size
    EXPECT_EQ(in.Wide() + in.Wide(), "") << "menu and class";
    std::string text = "'" + in.Wide() + "' ";
    text += std::to_string(in.Int(2)) + " ";
    in.at += 4;  // weight, italic, character set
    text += in.Wide() + "\n";
    for (int i = 0; i < count && in.ok; ++i) {
        in.at = ((in.at + 3) & ~size_t{3}) + 4;  // aligned, past the help id
        const uint32_t exStyle = in.Int(), style = in.Int();
        in.at += 8;  // position and size
        text += std::to_string(static_cast<int32_t>(in.Int())) + " ";
        std::string className = in.Wide();
        CharUpperA(className.data());  // the resource compiler may store either case
        const char* const predefined[] = {"BUTTON", "EDIT", "STATIC"};
        for (int ordinal = 0; ordinal < 3; ++ordinal)
            if (className == "#" + std::to_string(0x80 + ordinal)) className = predefined[ordinal];
        text += className + " '" + in.Wide() + "'";
        in.at += in.Int(2);  // creation data
        const bool button = className == "BUTTON";
        const uint32_t kind = style & (button ? BS_TYPEMASK : SS_TYPEMASK);
        if (button && kind == BS_DEFPUSHBUTTON) text += " default";
        if (button && kind == BS_GROUPBOX) text += " group";
        if (button ? style & BS_BITMAP : kind == SS_BITMAP && className == "STATIC")
            text += " bitmap";
        if (style & WS_TABSTOP) text += " tab";
        if (exStyle & WS_EX_CLIENTEDGE) text += " sunken";
        text += "\n";
    }
    EXPECT_TRUE(in.ok) << "template ends early";
    return text;
}

TEST(Resources, DialogTemplatesHoldTheItemsTheCodeFindsByClassAndId) {
    EXPECT_EQ(DialogTemplate("DISSOLVEWITHPARAM00"),
              "'Velmora Quorvex' 8 MS Sans Serif\n"
              "1102 PREVIEW CONTANER CPP '' sunken\n1031 PREVIEW CONTANER CPP '' sunken\n"
              "1076 SPIN EDIT CPP '' tab sunken\n1077 SPIN EDIT CPP '' tab sunken\n"
              "1121 BUTTON 'velmora-imaging.com' tab\n1120 BUTTON 'About' tab\n"
              "2 BUTTON 'Cancel' tab\n1 BUTTON 'OK' default tab\n"
              "-1 STATIC 'Tolerance'\n-1 STATIC 'Darkening'\n-1 BUTTON '' group\n"
              "1103 BUTTON '' bitmap tab\n1104 BUTTON '' bitmap tab\n-1 STATIC '#777' bitmap\n");
    EXPECT_EQ(DialogTemplate(MAKEINTRESOURCEA(15092)),
              "'Set value' 8 MS Shell Dlg\n"
              "1 BUTTON 'OK' default tab\n2 BUTTON 'Cancel' tab\n-1 BUTTON '' group\n"
              "-1 BUTTON '' group\n-1 STATIC 'Value name is:'\n15901 STATIC 'Static'\n"
              "-1 STATIC 'Current value 1 is:'\n15902 STATIC 'Static'\n"
              "-1 STATIC 'Current value 2 is:'\n15903 STATIC 'Static'\n"
              "-1 STATIC 'Value type is:'\n15904 STATIC 'Static'\n"
              "-1 STATIC 'Recomended range is:'\n15905 STATIC 'Static'\n"
              "-1 STATIC 'New value 1 is:'\n15906 EDIT '' tab\n"
              "-1 STATIC 'New value 2 is:'\n15907 EDIT '' tab\n"
              "-1 STATIC 'New min value is:'\n15908 EDIT '' tab\n"
              "-1 STATIC 'New max value is:'\n15909 EDIT '' tab\n");
    EXPECT_EQ(
        DialogTemplate(MAKEINTRESOURCEA(IDD_ABOUT)),
        "'About Quorvex' 8 MS Sans Serif\n1122 STATIC '' bitmap\n-1 STATIC 'Velmora Quorvex'\n"
        "-1 STATIC 'Version " QUORVEX_VERSION_TEXT ", " QUORVEX_RELEASE_NAME
        "'\n"
        "-1 STATIC 'The plug-in module for Adobe\xae Photoshop\xae.'\n-1 STATIC ''\n"
        "-1 STATIC 'Written by the Velmora Imaging plug-in team'\n"
        "-1 STATIC 'Velmora Imaging, 27 Harbour Row, Kestrel Bay'\n"
        "1121 BUTTON 'https://www.velmora-imaging.com/' tab\n1 BUTTON 'Close' default tab\n");
    EXPECT_EQ(
        DialogTemplate(MAKEINTRESOURCEA(IDD_NOTICE)),
        "'Notice' 8 MS Shell Dlg\n"
        "-1 STATIC 'You should have a selection  around the areas that you want to process!'\n"
        "1 BUTTON 'Close' default tab\n");
}

// What the loader reads: the names exported, and the libraries needed.
TEST(Resources, ModuleExportsItsEntryPointsAndImportsOnlySystemLibraries) {
    const auto* base = reinterpret_cast<const uint8_t*>(Module());
    ASSERT_NE(base, nullptr) << QUORVEX_MODULE_PATH;
    const IMAGE_DATA_DIRECTORY* directory =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(
            base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew)
            ->OptionalHeader.DataDirectory;
    EXPECT_EQ(reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
                  base + directory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress)
                  ->NumberOfNames,
              2u);
    for (const char* name : {"ENTRYPOINT", "DissolveProc"}) {
        EXPECT_NE(GetProcAddress(Module(), name), nullptr) << name;
    }
    const std::string system =
        " KERNEL32.DLL USER32.DLL GDI32.DLL MSVCRT.DLL COMCTL32.DLL SHELL32.DLL VERSION.DLL "
        "ADVAPI32.DLL COMDLG32.DLL OLE32.DLL ";
    for (const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
             base + directory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
         import->Name != 0; ++import) {
        std::string name = reinterpret_cast<const char*>(base + import->Name);
        CharUpperA(name.data());
        EXPECT_NE(system.find(" " + name + " "), std::string::npos)
            << name << " would have to be shipped";
    }
}

}  // namespace
