// Alerts, the About box and the Notice as the user sees them: message box
// texts and icons, dialog captions, texts, buttons, tooltip and picture.
#include <string>
#include <vector>

#include "GuiTestSupport.h"
#include "ScreenCapture.h"
#include "plugin/FilterGlobals.h"
#include "plugin/MessageIds.h"
#include "plugin/Messages.h"

namespace {

struct Pascal {
    explicit Pascal(const std::string& text) { CToPString(text.c_str(), bytes); }
    std::string Text() const {
        return std::string(reinterpret_cast<const char*>(bytes + 1), bytes[0]);
    }
    Str255 bytes;
};

BOOL CALLBACK CollectText(HWND child, LPARAM texts) {
    *reinterpret_cast<std::string*>(texts) += WindowText(child) + "\n";
    return TRUE;
}

// Whether a child window shows exactly this text.
bool Shows(HWND window, const std::string& text) {
    std::string texts = "\n";
    EnumChildWindows(window, CollectText, reinterpret_cast<LPARAM>(&texts));
    return texts.find("\n" + text + "\n") != std::string::npos;
}

BOOL CALLBACK KeepIcon(HWND child, LPARAM found) {
    const LRESULT icon = SendMessageA(child, STM_GETICON, 0, 0);
    if (icon != 0) *reinterpret_cast<HICON*>(found) = reinterpret_cast<HICON>(icon);
    return TRUE;
}

// Each placeholder is filled once: a text that holds one itself shows it.
TEST(Alerts, ShowTheStringWithItsPlaceholdersAndTheIconAsked) {
    gModuleInstance = GetModuleHandleA(nullptr);
    const Pascal low("^1"), high("100"), version("7.0"), wide(std::string(250, '9'));
    const struct {
        int id;
        const uint8_t* text1;
        const uint8_t* text2;
        int icon;  // 0: ShowAlert; 1: the stop icon, otherwise the exclamation mark
        std::string shown;
        LPCSTR systemIcon;
    } alerts[] = {
        {IDS_INTEGER_REQUIRED, low.bytes, high.bytes, 0,
         "An integer is required between ^1 and 100.", IDI_EXCLAMATION},
        {IDS_HOST_TOO_OLD, version.bytes, nullptr, 1,
         "This plug-in requires Adobe Photoshop\xae 7.0 or later functionality.", IDI_HAND},
        {IDS_HOST_INCOMPATIBLE, nullptr, nullptr, 2,
         "This plug-in is incompatible with this version of the host program.", IDI_EXCLAMATION},
        {IDS_DECIMAL_REQUIRED, wide.bytes, high.bytes, 0,
         ("A decimal number is required between " + std::string(250, '9')).substr(0, 255),
         IDI_EXCLAMATION},
        {4242, nullptr, nullptr, 0, "", IDI_EXCLAMATION}};
    for (const auto& alert : alerts) {
        SCOPED_TRACE(alert.id);
        const auto show = [&] {
            return alert.icon == 0 ? ShowAlert(nullptr, true, alert.id, alert.text1, alert.text2)
                                   : ShowAlertIcon(nullptr, true, alert.id, alert.text1,
                                                   alert.text2, alert.icon);
        };
        EXPECT_EQ(RunModal(show, {[&](HWND box) {
                               EXPECT_EQ(ItemText(box, 0xFFFF), alert.shown);  // the box's text
                               EXPECT_EQ(WindowText(box), "Error") << "the system's caption";
                               HICON icon = nullptr;
                               EnumChildWindows(box, KeepIcon, reinterpret_cast<LPARAM>(&icon));
                               EXPECT_EQ(icon, LoadIconA(nullptr, alert.systemIcon));
                               ClickButton(box, IDOK);
                           }}),
                  IDOK);
    }
    EXPECT_EQ(ShowAlert(nullptr, false, IDS_INTEGER_REQUIRED, nullptr, nullptr), 0);
}

using SmallDialogTest = ToolkitTest;

TEST_F(SmallDialogTest, NoticeAsksForASelectionAndClosesWithEscapeOrClose) {
    for (HWND owner : {Parent(), HWND{nullptr}}) {
        RunModal(
            [&] {
                ShowNotice(owner);
                return INT_PTR{0};
            },
            {[](HWND dialog) {
                 EXPECT_EQ(WindowText(dialog), "Notice");
                 EXPECT_TRUE(Shows(dialog,
                                   "You should have a selection  around the areas that "
                                   "you want to process!"));
                 EXPECT_EQ(ItemText(dialog, IDOK), "Close");
                 EXPECT_TRUE(SaveCapture(CaptureWindow(dialog), "notice"));
             },
             [&](HWND dialog) {
                 owner != nullptr ? PostKey(dialog, VK_ESCAPE) : ClickButton(dialog, IDOK);
             }});
    }
}

TEST_F(SmallDialogTest, AboutBoxShowsTheProductThePictureAndTheWebSite) {
    HBITMAP picture = nullptr;
    RunModal(
        [&] {
            ShowAboutBox(Parent());
            return INT_PTR{0};
        },
        {[&](HWND dialog) {
             EXPECT_EQ(WindowText(dialog), "About Quorvex");
             EXPECT_TRUE(Shows(dialog, "Velmora Quorvex"));
             EXPECT_TRUE(Shows(dialog, "The plug-in module for Adobe\xae Photoshop\xae."));
             HWND site = GetDlgItem(dialog, IDC_ABOUT_WEB_SITE);
             EXPECT_EQ(WindowText(site), kMakerWebSite);
             EXPECT_NE(ToolTipOf(site), nullptr);
             EXPECT_EQ(GetWindowLongA(GetDlgItem(dialog, IDOK), GWL_STYLE) & BS_TYPEMASK,
                       BS_DEFPUSHBUTTON);
             HWND pictureControl = GetDlgItem(dialog, IDC_ABOUT_PICTURE);
             picture = reinterpret_cast<HBITMAP>(
                 SendMessageA(pictureControl, STM_GETIMAGE, IMAGE_BITMAP, 0));
             BITMAP size = {};
             RECT area;
             GetClientRect(pictureControl, &area);
             ASSERT_TRUE(GetObjectA(picture, sizeof size, &size));
             EXPECT_EQ(std::make_pair(size.bmWidth, size.bmHeight),
                       std::make_pair(area.right, area.bottom));
         },
         [](HWND dialog) { ClickButton(dialog, IDOK); }});
    EXPECT_EQ(GetObjectType(picture), 0u) << "the picture goes with the dialog";
}

}  // namespace
