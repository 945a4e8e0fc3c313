// The module as a photographer installs it from the download: unpacked into
// a plug-ins folder with its manual beside it (QUORVEX_MODULE_PATH points
// there).
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "DialogRun.h"
#include "Portrait.h"
#include "QuorvexVersion.h"
#include "ShellRecorder.h"

namespace {

// F1 in the dialog opens the manual unpacked beside the module, and the
// About box shows the build's version.
TEST(InstalledModule, F1OpensTheShippedManualAndAboutShowsTheVersion) {
    DialogRun run;
    Portrait portrait = MakePortrait(600, 400);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
    ShellRecorder shell(LoadedModule());
    ASSERT_TRUE(shell.Active());
    run.Run({[](HWND dialog) {
        SendMessageA(dialog, WM_KEYDOWN, VK_F1, 0);
        SendCommand(dialog, IDC_ABOUT);
        SendCommand(dialog, IDOK);
    }});
    ASSERT_EQ(shell.Calls().size(), 1u);
    const std::string module = QUORVEX_MODULE_PATH;
    const std::string manual = module.substr(0, module.rfind('\\') + 1) + "KorvanthePhoto.pdf";
    EXPECT_EQ(shell.Calls()[0].verb, "open");
    EXPECT_EQ(shell.Calls()[0].file, manual);
    EXPECT_NE(GetFileAttributesA(manual.c_str()), INVALID_FILE_ATTRIBUTES) << manual;

    const std::vector<testhost::ShownDialog>& shown = run.host.log().dialogs;
    ASSERT_EQ(shown.size(), 2u);
    ASSERT_EQ(shown[1].caption, "About Quorvex");
    const std::string version = "Version " QUORVEX_VERSION_TEXT ", " QUORVEX_RELEASE_NAME;
    EXPECT_NE(std::find(shown[1].texts.begin(), shown[1].texts.end(), version),
              shown[1].texts.end())
        << "the About box does not show \"" << version << "\"";
}

// What Windows shows in the properties of the installed file.
TEST(InstalledModule, VersionResourceCarriesTheBuildsVersion) {
    DWORD ignored = 0;
    std::vector<char> info(GetFileVersionInfoSizeA(QUORVEX_MODULE_PATH, &ignored));
    ASSERT_FALSE(info.empty()) << "no version resource in " << QUORVEX_MODULE_PATH;
    ASSERT_TRUE(GetFileVersionInfoA(QUORVEX_MODULE_PATH, 0, info.size(), info.data()));
    auto query = [&info](const std::string& key) {
        char* value = nullptr;
        UINT length = 0;
        return VerQueryValueA(info.data(), key.c_str(), reinterpret_cast<void**>(&value), &length)
                   ? value
                   : nullptr;
    };
    const auto* fixed = reinterpret_cast<const VS_FIXEDFILEINFO*>(query("\\"));
    ASSERT_NE(fixed, nullptr);
    const WORD numbers[] = {QUORVEX_VERSION_NUMBERS};
    EXPECT_EQ(fixed->dwFileVersionMS, MAKELONG(numbers[1], numbers[0]));
    EXPECT_EQ(HIWORD(fixed->dwFileVersionLS), numbers[2]);
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
    const char* const strings[][2] = {{"FileVersion", QUORVEX_VERSION_TEXT},
                                      {"ProductName", "Quorvex"},
                                      {"OriginalFilename", "Korvanthe.8bf"}};
    for (const auto& string : strings) {  // in US English, Windows-1252
        EXPECT_STREQ(query(std::string("\\StringFileInfo\\040904E4\\") + string[0]), string[1]);
    }
}

}  // namespace
