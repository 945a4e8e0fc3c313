// The module's dialog templates, read out of the built module and parsed as
// extended templates byte by byte: what the system builds each dialog from.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "tests/wine/resources/ByteReader.h"
#include "tests/wine/resources/TestModule.h"

namespace {

// Positions and sizes in dialog units.
struct Box {
    int16_t x, y, cx, cy;
    bool operator==(const Box& other) const {
        return x == other.x && y == other.y && cx == other.cx && cy == other.cy;
    }
};

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << box.x << "," << box.y << " " << box.cx << "x" << box.cy;
}

struct ItemTemplate {
    uint32_t exStyle = 0;
    uint32_t style = 0;
    Box box = {};
    int32_t id = 0;
    std::string className;  // a predefined class's ordinal as its name
    std::string text;       // a resource ordinal as "#<number>"
};

struct DialogTemplate {
    uint32_t style = 0;
    Box box = {};
    std::string caption;
    int pointSize = 0;
    std::string font;
    std::vector<ItemTemplate> items;
};

// The rest of a zero-terminated UTF-16 string whose first unit is read;
// characters up to 255 as their Latin-1 byte.
std::string WideText(ByteReader& in, uint16_t first) {
    std::string text;
    for (uint16_t c = first; c != 0 && in.Ok(); c = in.U16()) {
        text += c < 256 ? static_cast<char>(c) : '?';
    }
    return text;
}

// A name or a resource ordinal (0xFFFF and the number, given as "#<number>").
std::string NameOrOrdinal(ByteReader& in) {
    const uint16_t first = in.U16();
    return first == 0xFFFF ? "#" + std::to_string(in.U16()) : WideText(in, first);
}

std::string ClassName(ByteReader& in) {
    const std::string name = NameOrOrdinal(in);
    static const char* const kPredefined[] = {"Button", "Edit", "Static"};
    for (int ordinal = 0x80; ordinal <= 0x82; ++ordinal) {
        if (name == "#" + std::to_string(ordinal)) {
            return kPredefined[ordinal - 0x80];
        }
    }
    return name;
}

Box ReadBox(ByteReader& in) {
    Box box;
    box.x = static_cast<int16_t>(in.U16());
    box.y = static_cast<int16_t>(in.U16());
    box.cx = static_cast<int16_t>(in.U16());
    box.cy = static_cast<int16_t>(in.U16());
    return box;
}

// Items start on 32-bit boundaries of the template.
void Align(ByteReader& in) {
    while (in.Offset() % 4 != 0 && in.Ok()) {
        in.U8();
    }
}

DialogTemplate ParseDialog(const std::vector<uint8_t>& bytes) {
    DialogTemplate dialog;
    ByteReader in(bytes);
    EXPECT_EQ(in.U16(), 1) << "extended template version";
    EXPECT_EQ(in.U16(), 0xFFFF) << "extended template signature";
    in.U32();  // help id
    in.U32();  // extended style
    dialog.style = in.U32();
    const int count = in.U16();
    dialog.box = ReadBox(in);
    EXPECT_EQ(NameOrOrdinal(in), "") << "menu";
    EXPECT_EQ(NameOrOrdinal(in), "") << "window class";
    dialog.caption = WideText(in, in.U16());
    if (dialog.style & DS_SETFONT) {
        dialog.pointSize = in.U16();
        in.U16();  // weight
        in.U8();   // italic
        in.U8();   // character set
        dialog.font = WideText(in, in.U16());
    }
    for (int i = 0; i < count && in.Ok(); ++i) {
        Align(in);
        ItemTemplate item;
        in.U32();  // help id
        item.exStyle = in.U32();
        item.style = in.U32();
        item.box = ReadBox(in);
        item.id = in.I32();
        item.className = ClassName(in);
        item.text = NameOrOrdinal(in);
        in.Bytes(in.U16());  // creation data
        dialog.items.push_back(item);
    }
    EXPECT_TRUE(in.Ok()) << "template ends early";
    return dialog;
}

DialogTemplate LoadDialog(const char* name) {
    const std::vector<uint8_t> bytes = LoadModuleResource(RT_DIALOG, name);
    EXPECT_FALSE(bytes.empty()) << "no dialog resource";
    return ParseDialog(bytes);
}

DialogTemplate LoadDialog(int id) { return LoadDialog(MAKEINTRESOURCEA(id)); }

// What a template states of one item: the style bits in `styleMask` must
// equal those of `style`, and the extended style bits given must be set.
struct ExpectedItem {
    int32_t id;
    const char* className;
    const char* text;
    Box box;
    uint32_t style = 0;
    uint32_t styleMask = 0;
    uint32_t exStyle = 0;
};

void ExpectItems(const DialogTemplate& dialog, const std::vector<ExpectedItem>& expected) {
    ASSERT_EQ(dialog.items.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        const ItemTemplate& item = dialog.items[i];
        const ExpectedItem& want = expected[i];
        SCOPED_TRACE("item " + std::to_string(i) + " \"" + want.text + "\"");
        EXPECT_EQ(item.id, want.id);
        // The system finds a class whatever the case of its name, and the
        // resource compiler stores the names of templates in capitals.
        EXPECT_STRCASEEQ(item.className.c_str(), want.className);
        EXPECT_EQ(item.text, want.text);
        EXPECT_EQ(item.box, want.box);
        EXPECT_EQ(item.style & want.styleMask, want.style) << std::hex << item.style;
        EXPECT_EQ(item.exStyle & want.exStyle, want.exStyle) << std::hex << item.exStyle;
    }
}

const ItemTemplate* ItemWithId(const DialogTemplate& dialog, int32_t id) {
    for (const ItemTemplate& item : dialog.items) {
        if (item.id == id) return &item;
    }
    return nullptr;
}

const ItemTemplate* ItemWithText(const DialogTemplate& dialog, const std::string& text) {
    for (const ItemTemplate& item : dialog.items) {
        if (item.text == text) return &item;
    }
    return nullptr;
}

constexpr uint32_t kButtonKind = 0xF;
constexpr uint32_t kEditStyle = 0x50810080;
constexpr uint32_t kExact = 0xFFFFFFFF;

TEST(DialogTemplate, SetValue) {
    const DialogTemplate dialog = LoadDialog(15092);
    EXPECT_EQ(dialog.style, 0x80C800C8u);
    EXPECT_EQ(dialog.box, (Box{0, 0, 186, 177}));
    EXPECT_EQ(dialog.caption, "Set value");
    EXPECT_EQ(dialog.font, "MS Shell Dlg");
    EXPECT_EQ(dialog.pointSize, 8);
    ExpectItems(dialog, {
                            {1, "Button", "OK", {41, 156, 50, 14}, BS_DEFPUSHBUTTON, kButtonKind},
                            {2, "Button", "Cancel", {94, 156, 50, 14}, BS_PUSHBUTTON, kButtonKind},
                            {-1, "Button", "", {4, 2, 178, 63}, BS_GROUPBOX, kButtonKind},
                            {-1, "Button", "", {4, 67, 178, 81}, BS_GROUPBOX, kButtonKind},
                            {-1, "Static", "Value name is:", {41, 9, 47, 8}},
                            {15901, "Static", "Static", {97, 9, 74, 8}},
                            {-1, "Static", "Current value 1 is:", {27, 19, 60, 8}},
                            {15902, "Static", "Static", {97, 19, 77, 8}},
                            {-1, "Static", "Current value 2 is:", {27, 29, 60, 8}},
                            {15903, "Static", "Static", {97, 29, 75, 8}},
                            {-1, "Static", "Value type is:", {43, 39, 44, 8}},
                            {15904, "Static", "Static", {97, 39, 75, 8}},
                            {-1, "Static", "Recomended range is:", {15, 49, 72, 8}},
                            {15905, "Static", "Static", {97, 49, 75, 8}},
                            {-1, "Static", "New value 1 is:", {20, 79, 50, 8}},
                            {15906, "Edit", "", {74, 76, 97, 14}, kEditStyle, kExact},
                            {-1, "Static", "New value 2 is:", {20, 95, 50, 8}},
                            {15907, "Edit", "", {74, 92, 97, 14}, kEditStyle, kExact},
                            {-1, "Static", "New min value is:", {14, 111, 56, 8}},
                            {15908, "Edit", "", {74, 108, 97, 14}, kEditStyle, kExact},
                            {-1, "Static", "New max value is:", {11, 127, 59, 8}},
                            {15909, "Edit", "", {74, 124, 97, 14}, kEditStyle, kExact},
                        });
}

TEST(DialogTemplate, MainFilterDialog) {
    const DialogTemplate dialog = LoadDialog("DISSOLVEWITHPARAM00");
    EXPECT_EQ(dialog.style,
              static_cast<uint32_t>(WS_POPUP | WS_CAPTION | DS_MODALFRAME | DS_SETFONT));
    EXPECT_EQ(dialog.box, (Box{34, 40, 361, 188}));
    EXPECT_EQ(dialog.caption, "Velmora Quorvex");
    EXPECT_EQ(dialog.font, "MS Sans Serif");
    EXPECT_EQ(dialog.pointSize, 8);
    const uint32_t shown = WS_CHILD | WS_VISIBLE;
    const uint32_t field = shown | WS_TABSTOP;
    const uint32_t button = WS_TABSTOP | kButtonKind;
    const uint32_t notify = WS_TABSTOP | BS_NOTIFY;
    const uint32_t bitmap = WS_TABSTOP | BS_BITMAP;
    ExpectItems(
        dialog,
        {
            {1102, "Preview Contaner CPP", "", {5, 4, 173, 130}, shown, shown, WS_EX_CLIENTEDGE},
            {1031, "Preview Contaner CPP", "", {183, 4, 173, 130}, shown, shown, WS_EX_CLIENTEDGE},
            {1076, "Spin Edit CPP", "", {238, 142, 52, 29}, field, field, WS_EX_CLIENTEDGE},
            {1077, "Spin Edit CPP", "", {298, 142, 52, 29}, field, field, WS_EX_CLIENTEDGE},
            {1121, "Button", "velmora-imaging.com", {6, 154, 86, 14}, WS_TABSTOP, button},
            {1120, "Button", "About", {51, 138, 41, 14}, WS_TABSTOP, button},
            {2, "Button", "Cancel", {51, 170, 41, 14}, notify, notify | kButtonKind},
            {1, "Button", "OK", {6, 170, 41, 14}, notify | BS_DEFPUSHBUTTON, notify | kButtonKind},
            {-1, "Static", "Tolerance", {248, 171, 33, 8}, WS_GROUP, WS_GROUP},
            {-1, "Static", "Darkening", {309, 171, 34, 8}, WS_GROUP, WS_GROUP},
            {-1, "Button", "", {232, 133, 124, 51}, BS_GROUPBOX, kButtonKind},
            {1103, "Button", "", {6, 138, 16, 14}, bitmap, bitmap | kButtonKind},
            {1104, "Button", "", {24, 138, 16, 14}, bitmap, bitmap | kButtonKind},
            {-1, "Static", "#777", {99, 138, 125, 47}, SS_BITMAP, SS_TYPEMASK},
        });
}

TEST(DialogTemplate, AboutBox) {
    const DialogTemplate dialog = LoadDialog(16103);
    EXPECT_EQ(dialog.box.cx, 316);
    EXPECT_EQ(dialog.box.cy, 316);
    EXPECT_EQ(dialog.caption, "About Quorvex");
    EXPECT_EQ(dialog.font, "MS Sans Serif");
    EXPECT_EQ(dialog.pointSize, 8);
    const ItemTemplate* close = ItemWithId(dialog, 1);
    ASSERT_NE(close, nullptr);
    EXPECT_STRCASEEQ(close->className.c_str(), "Button");
    EXPECT_EQ(close->text, "Close");
    EXPECT_EQ(close->style & kButtonKind, static_cast<uint32_t>(BS_DEFPUSHBUTTON));
    const ItemTemplate* site = ItemWithId(dialog, 1121);
    ASSERT_NE(site, nullptr);
    EXPECT_STRCASEEQ(site->className.c_str(), "Button");
    EXPECT_EQ(site->style & kButtonKind, static_cast<uint32_t>(BS_PUSHBUTTON));
    EXPECT_NE(site->text, "");
    for (const char* text :
         {"Velmora Quorvex", "The plug-in module for Adobe\xae Photoshop\xae."}) {
        const ItemTemplate* line = ItemWithText(dialog, text);
        ASSERT_NE(line, nullptr) << text;
        EXPECT_STRCASEEQ(line->className.c_str(), "Static");
    }
}

TEST(DialogTemplate, Notice) {
    const DialogTemplate dialog = LoadDialog(122);
    EXPECT_EQ(dialog.caption, "Notice");
    EXPECT_EQ(dialog.font, "MS Shell Dlg");
    const ItemTemplate* close = ItemWithId(dialog, 1);
    ASSERT_NE(close, nullptr);
    EXPECT_STRCASEEQ(close->className.c_str(), "Button");
    EXPECT_EQ(close->text, "Close");
    const char kText[] = "You should have a selection  around the areas that you want to process!";
    const ItemTemplate* text = ItemWithText(dialog, kText);
    ASSERT_NE(text, nullptr);
    EXPECT_STRCASEEQ(text->className.c_str(), "Static");
}

}  // namespace
