// The module as a photographer installs it from the download: unpacked into
// a plug-ins folder with its manual beside it (QUORVEX_MODULE_PATH points
// there).
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "QuorvexVersion.h"
#include "DialogRun.h"
#include "ImportPatch.h"
#include "Portrait.h"
#include "ShellRecorder.h"

namespace {

std::string InstalledFolder() {
    const std::string module = QUORVEX_MODULE_PATH;
    return module.substr(0, module.rfind('\\') + 1);
}

void ShowPortrait(DialogRun& run) {
    Portrait portrait = MakePortrait(600, 400);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
}

std::string FileStart(const std::string& path, size_t count) {
    std::ifstream file(path, std::ios::binary);
    std::string start(count, '\0');
    file.read(&start[0], static_cast<std::streamsize>(count));
    return file ? start : std::string();
}

// One string of the module's version resource, in US English, Windows-1252.
std::string VersionString(const std::vector<char>& info, const char* name) {
    const std::string key = std::string("\\StringFileInfo\\040904E4\\") + name;
    char* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(info.data(), key.c_str(), reinterpret_cast<void**>(&text), &length)) {
        return "";
    }
    return std::string(text);
}

TEST(InstalledModule, F1OpensTheManualShippedBesideIt) {
    DialogRun run;
    ShowPortrait(run);
    ShellRecorder shell(LoadedModule());
    ASSERT_TRUE(shell.Active());
    run.Run({[](HWND dialog) {
        SendMessageA(dialog, WM_KEYDOWN, VK_F1, 0);
        SendCommand(dialog, IDOK);
    }});
    ASSERT_EQ(shell.Calls().size(), 1u);
    const std::string manual = InstalledFolder() + "KorvanthePhoto.pdf";
    EXPECT_EQ(shell.Calls()[0].verb, "open");
    EXPECT_EQ(shell.Calls()[0].file, manual);
    EXPECT_EQ(FileStart(manual, 5), "%PDF-") << manual << " is not the shipped manual";
}

TEST(InstalledModule, AboutBoxShowsTheBuildsVersion) {
    DialogRun run;
    ShowPortrait(run);
    run.Run({[](HWND dialog) {
        SendCommand(dialog, IDC_ABOUT);
        SendCommand(dialog, IDOK);
    }});
    const std::vector<testhost::ShownDialog>& shown = run.host.log().dialogs;
    ASSERT_EQ(shown.size(), 2u);
    ASSERT_EQ(shown[1].caption, "About Quorvex");
    const std::string version = "Version " QUORVEX_VERSION_TEXT ", " QUORVEX_RELEASE_NAME;
    EXPECT_NE(std::find(shown[1].texts.begin(), shown[1].texts.end(), version),
              shown[1].texts.end())
        << "the About box does not show \"" << version << "\"";
}

TEST(InstalledModule, VersionResourceCarriesTheBuildsVersion) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(QUORVEX_MODULE_PATH, &ignored);
    ASSERT_GT(size, 0u) << "no version resource in " << QUORVEX_MODULE_PATH;
    std::vector<char> info(size);
    ASSERT_TRUE(GetFileVersionInfoA(QUORVEX_MODULE_PATH, 0, size, info.data()));

    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(info.data(), "\\", reinterpret_cast<void**>(&fixed), &length));
    const WORD numbers[] = {QUORVEX_VERSION_NUMBERS};
    EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), numbers[0]);
    EXPECT_EQ(LOWORD(fixed->dwFileVersionMS), numbers[1]);
    EXPECT_EQ(HIWORD(fixed->dwFileVersionLS), numbers[2]);
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);

    EXPECT_EQ(VersionString(info, "FileVersion"), QUORVEX_VERSION_TEXT);
    EXPECT_EQ(VersionString(info, "ProductName"), "Quorvex");
    EXPECT_EQ(VersionString(info, "OriginalFilename"), "Korvanthe.8bf");
}

}  // namespace
