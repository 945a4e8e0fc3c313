// Alerts, the About box and the Notice as the user sees them: message box
// texts and icons, dialog captions, texts, buttons, tooltip and picture.
#include <algorithm>
#include <string>

#include "GuiTestSupport.h"
#include "plugin/FilterGlobals.h"
#include "plugin/MessageIds.h"
#include "plugin/Messages.h"

namespace {

std::string AsText(const uint8_t* pstring) {
    return std::string(reinterpret_cast<const char*>(pstring + 1), pstring[0]);
}

struct Pascal {
    explicit Pascal(const std::string& text) { CToPString(text.c_str(), bytes); }
    Str255 bytes;
};

std::string Substituted(const std::string& message, const uint8_t* text0, const uint8_t* text1,
                        const uint8_t* text2) {
    Pascal result(message);
    SubstitutePlaceholders(result.bytes, text0, text1, text2);
    return AsText(result.bytes);
}

TEST(PascalStrings, ConvertBothWaysAndCutAt255) {
    Pascal shortText("Quorvex");
    EXPECT_EQ(shortText.bytes[0], 7);
    char back[256];
    PToCString(shortText.bytes, back);
    EXPECT_STREQ(back, "Quorvex");
    Pascal longText(std::string(300, 'x'));
    EXPECT_EQ(longText.bytes[0], 255);
    Pascal none("");
    CToPString(nullptr, none.bytes);
    EXPECT_EQ(none.bytes[0], 0);
}

TEST(Placeholders, AreFilledInOrderAndTheResultIsCut) {
    Pascal zero("histogram");
    Pascal one("1");
    Pascal two("100");
    EXPECT_EQ(Substituted("between ^1 and ^2.", zero.bytes, one.bytes, two.bytes),
              "between 1 and 100.");
    EXPECT_EQ(Substituted("suite '^0' ^2^1", zero.bytes, one.bytes, two.bytes),
              "suite 'histogram' 1001");
    EXPECT_EQ(Substituted("^0 stays out", nullptr, one.bytes, two.bytes), " stays out");
    EXPECT_EQ(Substituted("^3 and ^ and ^", zero.bytes, one.bytes, two.bytes), "^3 and ^ and ^");
    Pascal echo("^2");
    EXPECT_EQ(Substituted("^1", nullptr, echo.bytes, two.bytes), "^2") << "no second pass";

    Pascal wide(std::string(200, 'w'));
    const std::string cut = Substituted("^1^2^1", nullptr, wide.bytes, two.bytes);
    EXPECT_EQ(cut.size(), 255u);
    EXPECT_EQ(cut.substr(200, 3), "100");
}

class AlertTest : public ::testing::Test {
  protected:
    void SetUp() override { gModuleInstance = GetModuleHandleA(nullptr); }

    // Shows an alert, records the box's text and icon and closes it with OK.
    int Show(const std::function<int()>& alert) {
        return static_cast<int>(RunModal(alert, {[this](HWND box) {
                                             text = MessageBoxText(box);
                                             caption = WindowText(box);
                                             icon = FindIcon(box);
                                             ClickButton(box, IDOK);
                                         }}));
    }

    static BOOL CALLBACK KeepIcon(HWND child, LPARAM found) {
        const LRESULT icon = SendMessageA(child, STM_GETICON, 0, 0);
        if (icon != 0) {
            *reinterpret_cast<HICON*>(found) = reinterpret_cast<HICON>(icon);
        }
        return TRUE;
    }

    static HICON FindIcon(HWND box) {
        HICON found = nullptr;
        EnumChildWindows(box, KeepIcon, reinterpret_cast<LPARAM>(&found));
        return found;
    }

    std::string text;
    std::string caption;
    HICON icon = nullptr;
};

TEST_F(AlertTest, ShowsTheStringWithItsPlaceholdersFilled) {
    Pascal low("0");
    Pascal high("100");
    const int result =
        Show([&] { return ShowAlert(nullptr, true, IDS_INTEGER_REQUIRED, low.bytes, high.bytes); });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(text, "An integer is required between 0 and 100.");
    EXPECT_EQ(caption, "Error") << "no caption of our own: the system's default";
    EXPECT_EQ(icon, LoadIconA(nullptr, IDI_EXCLAMATION));
}

TEST_F(AlertTest, IconOneIsTheStopIcon) {
    Pascal version("7.0");
    Show([&] { return ShowAlertIcon(nullptr, true, IDS_HOST_TOO_OLD, version.bytes, nullptr, 1); });
    EXPECT_EQ(text, "This plug-in requires Adobe Photoshop\xae 7.0 or later functionality.");
    EXPECT_EQ(icon, LoadIconA(nullptr, IDI_HAND));
    Show([&] { return ShowAlertIcon(nullptr, true, IDS_HOST_INCOMPATIBLE, nullptr, nullptr, 2); });
    EXPECT_EQ(icon, LoadIconA(nullptr, IDI_EXCLAMATION));
}

TEST_F(AlertTest, LongTextIsCutTo255Characters) {
    Pascal wide(std::string(250, '9'));
    Pascal high("100");
    Show([&] { return ShowAlert(nullptr, true, IDS_DECIMAL_REQUIRED, wide.bytes, high.bytes); });
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(0, 42), "A decimal number is required between 99999");
}

TEST_F(AlertTest, MissingStringShowsAnEmptyMessageAndDisabledShowsNothing) {
    Show([] { return ShowAlert(nullptr, true, 4242, nullptr, nullptr); });
    EXPECT_EQ(text, "");
    Show([] { return ShowAlert(nullptr, true, 0, nullptr, nullptr); });
    EXPECT_EQ(text, "");
    EXPECT_EQ(ShowAlert(nullptr, false, IDS_INTEGER_REQUIRED, nullptr, nullptr), 0);
}

class SmallDialogTest : public ToolkitTest {
  protected:
    INT_PTR Open(int id, DLGPROC procedure, std::vector<DialogStep> steps) {
        return RunModal(
            [&] {
                return DialogBoxParamA(static_cast<HINSTANCE>(gModuleInstance),
                                       MAKEINTRESOURCEA(id), Parent(), procedure, 0);
            },
            std::move(steps));
    }
};

TEST_F(SmallDialogTest, NoticeAsksForASelectionAndClosesWithEscapeAsCancel) {
    const INT_PTR escaped =
        Open(IDD_NOTICE, NoticeDialogProc,
             {[](HWND dialog) {
                  EXPECT_EQ(WindowText(dialog), "Notice");
                  EXPECT_EQ(MessageBoxText(dialog),
                            "You should have a selection  around the areas that you want to "
                            "process!");
                  EXPECT_EQ(ItemText(dialog, IDOK), "Close");
                  EXPECT_TRUE(SaveScreenshot(dialog, "notice"));
              },
              [](HWND dialog) { PostKey(dialog, VK_ESCAPE); }});
    EXPECT_EQ(escaped, IDCANCEL);
    EXPECT_EQ(Open(IDD_NOTICE, NoticeDialogProc, {[](HWND dialog) { ClickButton(dialog, IDOK); }}),
              IDOK);
    RunModal(
        [] {
            ShowNotice(nullptr);
            return INT_PTR{0};
        },
        {[](HWND dialog) { ClickButton(dialog, IDOK); }});
}

BOOL CALLBACK CollectText(HWND child, LPARAM texts) {
    reinterpret_cast<std::string*>(texts)->append(WindowText(child) + "\n");
    return TRUE;
}

TEST_F(SmallDialogTest, AboutBoxShowsTheProductThePictureAndTheWebSite) {
    HBITMAP picture = nullptr;
    const INT_PTR result =
        Open(IDD_ABOUT, AboutDialogProc,
             {[&](HWND dialog) {
                  EXPECT_EQ(WindowText(dialog), "About Quorvex");
                  std::string texts;
                  EnumChildWindows(dialog, CollectText, reinterpret_cast<LPARAM>(&texts));
                  EXPECT_NE(texts.find("\nVelmora Quorvex\n"), std::string::npos) << texts;
                  EXPECT_NE(texts.find("The plug-in module for Adobe\xae Photoshop\xae."),
                            std::string::npos);
                  HWND site = GetDlgItem(dialog, IDC_ABOUT_WEB_SITE);
                  EXPECT_EQ(WindowText(site), kMakerWebSite);
                  EXPECT_NE(ToolTipOf(site), nullptr);
                  EXPECT_EQ(ItemText(dialog, IDOK), "Close");
                  EXPECT_EQ(GetWindowLongA(GetDlgItem(dialog, IDOK), GWL_STYLE) & BS_DEFPUSHBUTTON,
                            BS_DEFPUSHBUTTON);

                  HWND pictureControl = GetDlgItem(dialog, IDC_ABOUT_PICTURE);
                  picture = reinterpret_cast<HBITMAP>(
                      SendMessageA(pictureControl, STM_GETIMAGE, IMAGE_BITMAP, 0));
                  BITMAP size = {};
                  RECT area;
                  GetClientRect(pictureControl, &area);
                  EXPECT_TRUE(GetObjectA(picture, sizeof size, &size));
                  EXPECT_EQ(size.bmWidth, area.right);
                  EXPECT_EQ(size.bmHeight, area.bottom);
                  EXPECT_TRUE(SaveScreenshot(dialog, "about_box"));
              },
              [](HWND dialog) { ClickButton(dialog, IDOK); }});
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(GetObjectType(picture), 0u) << "the picture goes with the dialog";
}

TEST(ModuleResources, BuiltModuleCarriesTheStringsAndDialogs) {
    HMODULE module = LoadLibraryExA(QUORVEX_MODULE_PATH, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr) << QUORVEX_MODULE_PATH;
    auto text = [&](int id) {
        char buffer[512] = "";
        LoadStringA(module, id, buffer, sizeof buffer);
        return std::string(buffer);
    };
    const std::string about = text(IDS_ABOUT_TEXT);
    EXPECT_EQ(about.rfind("Quorvex\n\nVersion CS Release 1 (9/2003)\n", 0), 0u) << about;
    EXPECT_EQ(std::count(about.begin(), about.end(), '\n'), 6);
    EXPECT_EQ(about.substr(about.size() - 25), "\n\nVelmora Quorvex remover");
    EXPECT_EQ(text(IDS_ABOUT_TEXT_PADDED), about + "\n\n\n\n");
    EXPECT_EQ(text(IDS_INTEGER_REQUIRED), "An integer is required between ^1 and ^2.");
    EXPECT_EQ(text(IDS_DECIMAL_REQUIRED), "A decimal number is required between ^1 and ^2.");
    EXPECT_EQ(text(IDS_HOST_TOO_OLD),
              "This plug-in requires Adobe Photoshop\xae ^1 or later functionality.");
    EXPECT_EQ(text(IDS_HOST_INCOMPATIBLE),
              "This plug-in is incompatible with this version of the host program.");
    EXPECT_EQ(text(IDS_SUITE_MISSING), "the required suite '^0' is unavailable");
    for (int dialog : {IDD_NOTICE, IDD_ABOUT, 15092}) {
        EXPECT_NE(FindResourceA(module, MAKEINTRESOURCEA(dialog), MAKEINTRESOURCEA(5)), nullptr)
            << dialog;
    }
    FreeLibrary(module);
}

}  // namespace
