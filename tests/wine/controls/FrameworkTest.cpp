// The control framework: class registration around the toolkit's lifetime,
// record life from creation to WM_NCDESTROY, lookup and tooltips.
#include <string>
#include <vector>

#include "GuiTestSupport.h"
#include "controls/ControlFramework.h"
#include "controls/SpinEdit.h"
#include "controls/ToolTip.h"
#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

namespace {

const char* const kToolkitClassNames[] = {"Rotor CPP", "Mac Slider CPP", "Preview Contaner CPP",
                                          "Contaner Color CPP", "Spin Edit CPP"};

bool IsRegistered(const char* className) {
    WNDCLASSA info;
    return GetClassInfoA(static_cast<HINSTANCE>(gModuleInstance), className, &info) != 0;
}

// A dialog template in memory: a "Spin Edit CPP" item 1076 and a push button 1.
class TemplateBuilder {
  public:
    TemplateBuilder(int items) {
        PutDword(WS_POPUP | WS_VISIBLE | DS_SETFONT);
        PutDword(0);
        words_.push_back(static_cast<WORD>(items));
        PutShorts({0, 0, 200, 100});
        words_.insert(words_.end(), {0, 0, 0});  // no menu, default class, no title
        words_.push_back(8);
        PutText("MS Shell Dlg");
    }
    void AddItem(const char* className, WORD id, DWORD style, short x, short y, short cx,
                 short cy) {
        if (words_.size() % 2 != 0) {
            words_.push_back(0);
        }
        PutDword(WS_CHILD | WS_VISIBLE | style);
        PutDword(0);
        PutShorts({x, y, cx, cy});
        words_.push_back(id);
        PutText(className);
        words_.insert(words_.end(), {0, 0});  // no title, no creation data
    }
    const DLGTEMPLATE* Template() const {
        return reinterpret_cast<const DLGTEMPLATE*>(words_.data());
    }

  private:
    void PutDword(DWORD value) {
        words_.push_back(LOWORD(value));
        words_.push_back(HIWORD(value));
    }
    void PutShorts(std::initializer_list<short> values) {
        for (short value : values) {
            words_.push_back(static_cast<WORD>(value));
        }
    }
    void PutText(const char* text) {
        for (const char* p = text; *p != '\0'; ++p) {
            words_.push_back(static_cast<WORD>(*p));
        }
        words_.push_back(0);
    }
    std::vector<WORD> words_;
};

INT_PTR CALLBACK PlainDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

int gRecordsMade = 0;
int gRecordsFreed = 0;

ControlRecord* CountedCreate() {
    ++gRecordsMade;
    return kSpinEditKind.create();
}

void CountedDestroy(ControlRecord* record) {
    ++gRecordsFreed;
    kSpinEditKind.destroy(record);
}

LRESULT CountedHandle(ControlRecord* record, HWND window, UINT message, WPARAM wParam,
                      LPARAM lParam) {
    return kSpinEditKind.handle(record, window, message, wParam, lParam);
}

const ControlKind kCountedSpinEdit = {CountedCreate, CountedDestroy, CountedHandle};

LRESULT CALLBACK CountedSpinEditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kCountedSpinEdit, window, message, wParam, lParam);
}

ControlRecord* NoRecord() { return nullptr; }

const ControlKind kRecordlessKind = {NoRecord, CountedDestroy, CountedHandle};

LRESULT CALLBACK RecordlessProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kRecordlessKind, window, message, wParam, lParam);
}

class FrameworkTest : public ToolkitTest {
  protected:
    HWND MakeWindow(const char* className, void* record = nullptr) {
        return CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE, 10, 10, 120, 50, Parent(),
                               reinterpret_cast<HMENU>(7), static_cast<HINSTANCE>(gModuleInstance),
                               record);
    }
};

TEST_F(FrameworkTest, ClassesLiveFromSetUpToTearDownAndComeBackOnTheNextSetUp) {
    for (const char* name : kToolkitClassNames) {
        EXPECT_TRUE(IsRegistered(name)) << name;
    }
    HFONT font = ControlFont;
    HBRUSH brush = FaceBrush;
    EXPECT_EQ(GetObjectType(font), static_cast<DWORD>(OBJ_FONT));
    EXPECT_EQ(GetObjectType(brush), static_cast<DWORD>(OBJ_BRUSH));

    TearDownControlToolkit();
    for (const char* name : kToolkitClassNames) {
        EXPECT_FALSE(IsRegistered(name)) << name;
    }
    EXPECT_EQ(GetObjectType(font), 0u);
    EXPECT_EQ(GetObjectType(brush), 0u);
    EXPECT_EQ(MakeWindow(kSpinEditClassName), nullptr);

    SetUpControlToolkit();
    for (const char* name : kToolkitClassNames) {
        EXPECT_TRUE(IsRegistered(name)) << name;
    }
    EXPECT_NE(MakeWindow(kSpinEditClassName), nullptr);
}

TEST_F(FrameworkTest, TemplateItemsGetFreshRecordsThatBindFindsAndOtherClassesDoNot) {
    TemplateBuilder builder(2);
    builder.AddItem("Spin Edit CPP", 1076, WS_TABSTOP, 10, 10, 52, 29);
    builder.AddItem("BUTTON", 1, BS_PUSHBUTTON, 10, 60, 50, 14);
    HWND dialog = CreateDialogIndirectParamA(static_cast<HINSTANCE>(gModuleInstance),
                                             builder.Template(), Parent(), PlainDialogProc, 0);
    ASSERT_NE(dialog, nullptr);

    SpinEditRecord* field =
        SpinEditBind(dialog, 1076, 0.0f, 100.0f, "Red Tolerance", "Red Tolerance");
    ASSERT_NE(field, nullptr);
    HWND item = GetDlgItem(dialog, 1076);
    RECT client;
    GetClientRect(item, &client);
    EXPECT_EQ(field->head.window, item);
    EXPECT_EQ(field->head.controlId, 1076);
    EXPECT_EQ(field->head.width, client.right);
    EXPECT_EQ(field->head.height, client.bottom);
    EXPECT_STREQ(field->valueName, "Red Tolerance");
    EXPECT_EQ(field->value, 0.0f);
    EXPECT_EQ(field->maximum, 100.0f);
    EXPECT_EQ(WindowText(field->editBox), "") << "a fresh field shows no text until given a value";
    EXPECT_EQ(field->notifyEveryStep, 1);

    EXPECT_EQ(SpinEditBind(dialog, 1, 0.0f, 100.0f, "hint", "name"), nullptr);
    EXPECT_EQ(SpinEditBind(dialog, 999, 0.0f, 100.0f, "hint", "name"), nullptr);
    DestroyWindow(dialog);
}

TEST_F(FrameworkTest, FindControlComparesTheClassNameExactly) {
    HWND spin = MakeWindow(kSpinEditClassName);
    ASSERT_NE(FindControl(spin, "Spin Edit CPP"), nullptr);
    EXPECT_EQ(FindControl(spin, "Spin edit CPP"), nullptr);
    EXPECT_EQ(FindControl(spin, "SPIN EDIT CPP"), nullptr);
    EXPECT_EQ(FindControl(spin, "Mac Slider CPP"), nullptr);
    EXPECT_EQ(FindControl(nullptr, "Spin Edit CPP"), nullptr);
}

TEST_F(FrameworkTest, RecordPassedAtCreationIsUsedAsIs) {
    ControlRecord* head = NewControlRecord<SliderRecord>();
    SliderRecord* slider = RecordOf<SliderRecord>(head);
    slider->value = 42.0f;
    slider->maximum = 50.0f;
    HWND window = MakeWindow(kSliderClassName, head);
    EXPECT_EQ(FindControl(window, kSliderClassName), head);
    EXPECT_EQ(slider->value, 42.0f);
    EXPECT_EQ(slider->maximum, 50.0f);
    EXPECT_EQ(slider->head.window, window);
    EXPECT_EQ(slider->head.controlId, 7);
}

TEST_F(FrameworkTest, RecordIsFreedOnceWithItsWindowAlsoWhenChildrenGoFirst) {
    HINSTANCE instance = static_cast<HINSTANCE>(gModuleInstance);
    RegisterControlClass(instance, "Counted Spin CPP", IDC_ARROW, CountedSpinEditProc);
    gRecordsMade = gRecordsFreed = 0;

    HWND whole = MakeWindow("Counted Spin CPP");
    ASSERT_NE(whole, nullptr);
    ControlRecord* head = reinterpret_cast<ControlRecord*>(GetWindowLongPtrA(whole, GWLP_USERDATA));
    head->pixelBuffer = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    head->ownedObject = CreateSolidBrush(RGB(1, 2, 3));
    head->ownsObject = 1;
    void* buffer = head->pixelBuffer;
    HGDIOBJ brush = head->ownedObject;
    DestroyWindow(whole);
    EXPECT_EQ(gRecordsMade, 1);
    EXPECT_EQ(gRecordsFreed, 1);
    MEMORY_BASIC_INFORMATION memory;
    VirtualQuery(buffer, &memory, sizeof memory);
    EXPECT_EQ(memory.State, static_cast<DWORD>(MEM_FREE));
    EXPECT_EQ(GetObjectType(brush), 0u);

    HWND parted = MakeWindow("Counted Spin CPP");
    SpinEditRecord* field = RecordOf<SpinEditRecord>(FindControl(parted, "Counted Spin CPP"));
    DestroyWindow(field->slider);
    DestroyWindow(field->editBox);
    SpinEditSetValue(field, 30.0f);  // must not reach the slider's freed record
    EXPECT_EQ(field->value, 30.0f);
    DestroyWindow(parted);
    EXPECT_EQ(gRecordsMade, 2);
    EXPECT_EQ(gRecordsFreed, 2);
    UnregisterClassA("Counted Spin CPP", instance);
}

TEST_F(FrameworkTest, WindowWithoutRecordBehavesAsDefaultWindow) {
    HINSTANCE instance = static_cast<HINSTANCE>(gModuleInstance);
    RegisterControlClass(instance, "Recordless CPP", IDC_ARROW, RecordlessProc);
    gRecordsFreed = 0;
    HWND window = MakeWindow("Recordless CPP");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(FindControl(window, "Recordless CPP"), nullptr);
    SetWindowTextA(window, "plain");
    EXPECT_EQ(WindowText(window), "plain");
    DestroyWindow(window);
    EXPECT_EQ(gRecordsFreed, 0);
    UnregisterClassA("Recordless CPP", instance);
}

TEST_F(FrameworkTest, ToolTipIsAWrappingBalloonWithTheHint) {
    HWND button = CreateWindowExA(0, "BUTTON", "Go", WS_CHILD | WS_VISIBLE, 5, 5, 60, 20, Parent(),
                                  nullptr, nullptr, nullptr);
    AddToolTip(button, "Go to our web site", nullptr);
    HWND tip = ToolTipOf(button);
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0), 1);
    EXPECT_EQ(SendMessageA(tip, TTM_GETMAXTIPWIDTH, 0, 0), 100);
    EXPECT_TRUE(GetWindowLongA(tip, GWL_STYLE) & TTS_BALLOON);
    char text[80] = "";
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.hwnd = button;
    tool.lpszText = text;
    SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
    EXPECT_STREQ(text, "Go to our web site");

    HWND bare = CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 10, 10, Parent(), nullptr, nullptr,
                                nullptr);
    AddToolTip(bare, nullptr, nullptr);
    AddToolTip(nullptr, "no window", nullptr);
    EXPECT_EQ(ToolTipOf(bare), nullptr);
}

}  // namespace
