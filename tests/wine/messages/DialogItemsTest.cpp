// The dialog-item helpers on real buttons and edit boxes.
#include <string>

#include "GuiTestSupport.h"
#include "plugin/DialogItems.h"
#include "plugin/Messages.h"

namespace {

enum Item { kFirstRadio = 10, kLastRadio = 12, kCheckBox = 20, kEdit = 30, kButton = 40 };

class DialogItemsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        dialog = parent.window();
        for (int id = kFirstRadio; id <= kLastRadio; ++id) {
            Add("BUTTON", id, BS_AUTORADIOBUTTON, 10, 10 + (id - kFirstRadio) * 20);
        }
        Add("BUTTON", kCheckBox, BS_AUTOCHECKBOX, 10, 80);
        Add("EDIT", kEdit, WS_BORDER | ES_AUTOHSCROLL, 120, 10);
        Add("BUTTON", kButton, BS_PUSHBUTTON, 120, 40);
    }
    void Add(const char* className, int id, DWORD style, int x, int y) {
        CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | style, x, y, 100, 18, dialog,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }

    TestParent parent{300, 160};
    HWND dialog = nullptr;
};

TEST_F(DialogItemsTest, RadioGroupGivesTheFirstCheckedButtonAndCheckBoxesToggle) {
    EXPECT_EQ(GetRadioGroupState(dialog, kFirstRadio, kLastRadio), 0);
    CheckDlgButton(dialog, 11, BST_CHECKED);
    EXPECT_EQ(GetRadioGroupState(dialog, kFirstRadio, kLastRadio), 11);
    CheckDlgButton(dialog, 12, BST_CHECKED);
    EXPECT_EQ(GetRadioGroupState(dialog, kFirstRadio, kLastRadio), 11);
    EXPECT_EQ(GetRadioGroupState(dialog, 12, 12), 12);

    EXPECT_TRUE(ToggleCheckBoxState(dialog, kCheckBox));
    EXPECT_EQ(IsDlgButtonChecked(dialog, kCheckBox), static_cast<UINT>(BST_CHECKED));
    EXPECT_FALSE(ToggleCheckBoxState(dialog, kCheckBox));
}

TEST_F(DialogItemsTest, TextTravelsAsPascalStringsWithinTheirLimits) {
    Str255 text;
    CToPString(std::string(255, 'a').c_str(), text);
    StuffText(dialog, kEdit, text);
    EXPECT_EQ(ItemText(dialog, kEdit), std::string(254, 'a')) << "the last character goes";

    SetDlgItemTextA(dialog, kEdit, std::string(300, 'b').c_str());
    FetchText(dialog, kEdit, text);
    EXPECT_EQ(text[0], 255);
    EXPECT_EQ(text[255], 'b');
    SetDlgItemTextA(dialog, kEdit, "Red");
    FetchText(dialog, kEdit, text);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), "Red");
}

TEST_F(DialogItemsTest, ClickTargetBecomesTheDefaultButtonAndTextItemIsSelected) {
    PerformControlClick(dialog, kButton);
    HWND button = GetDlgItem(dialog, kButton);
    EXPECT_EQ(GetWindowLongA(button, GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
    EXPECT_EQ(GetFocus(), button);

    SetDlgItemTextA(dialog, kEdit, "Tolerance");
    SelectTextItem(dialog, kEdit);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, kEdit));
    DWORD start = 1;
    DWORD end = 0;
    SendDlgItemMessageA(dialog, kEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                        reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 9u);
}

TEST_F(DialogItemsTest, CenteringUsesTheParentsClientAreaOrTheDesktop) {
    HWND owned = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 50, dialog, nullptr, nullptr,
                                 nullptr);
    CenterDialog(owned);
    RECT client;
    GetClientRect(dialog, &client);
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
    RECT frame;
    GetWindowRect(owned, &frame);
    EXPECT_EQ(frame.left, client.left + (client.right - client.left - 100) / 2);
    EXPECT_EQ(frame.top, client.top + (client.bottom - client.top - 50) / 2);

    HWND alone = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 50, nullptr, nullptr,
                                 nullptr, nullptr);
    CenterDialog(alone);
    GetWindowRect(alone, &frame);
    RECT desktop;
    GetClientRect(GetDesktopWindow(), &desktop);
    EXPECT_EQ(frame.left, (desktop.right - 100) / 2);
    EXPECT_EQ(frame.top, (desktop.bottom - 50) / 2);

    HWND child = GetDlgItem(dialog, kButton);
    CenterDialog(child);
    GetWindowRect(child, &frame);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&frame), 2);
    GetClientRect(dialog, &client);
    EXPECT_EQ(frame.left, (client.right - 100) / 2);
    DestroyWindow(owned);
    DestroyWindow(alone);
}

}  // namespace
