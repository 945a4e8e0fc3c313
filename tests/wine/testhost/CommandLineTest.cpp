// testhost.exe as people use it: picture files in and out, clear failures.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <string>

#include "testhost/ImageFile.h"

namespace {

using testhost::Image;

std::string Artifact(const char* name) { return std::string(QUORVEX_ARTIFACT_DIR) + "\\" + name; }

struct Outcome {
    DWORD exitCode = 0;
    std::string output;  // stdout and stderr together
};

Outcome RunTestHost(const std::string& arguments) {
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    CreatePipe(&readEnd, &writeEnd, &inherit, 0);
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writeEnd;
    PROCESS_INFORMATION process = {};
    std::string commandLine = std::string("\"") + QUORVEX_TESTHOST_EXE + "\" " + arguments;
    Outcome outcome;
    if (!CreateProcessA(nullptr, &commandLine[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process)) {
        outcome.exitCode = 0xDEAD;
        return outcome;
    }
    CloseHandle(writeEnd);
    char buffer[512];
    DWORD got = 0;
    while (ReadFile(readEnd, buffer, sizeof buffer, &got, nullptr) && got > 0) {
        outcome.output.append(buffer, got);
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &outcome.exitCode);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    CloseHandle(readEnd);
    return outcome;
}

TEST(HostImageFiles, PngKeepsEverySampleAndTheAlphaPlane) {
    for (const int planes : {3, 4}) {
        Image written(7, 5, planes);
        written.FillNoise(static_cast<uint32_t>(planes));
        const std::string path = Artifact(planes == 4 ? "roundtrip-rgba.png" : "roundtrip-rgb.png");
        std::string error;
        ASSERT_TRUE(testhost::WriteImageFile(path, written, &error)) << error;
        Image read;
        ASSERT_TRUE(testhost::ReadImageFile(path, &read, &error)) << error;
        EXPECT_EQ(testhost::DescribeDifference(written, read), "");
    }
}

TEST(HostCommandLine, FailsClearlyOnBadInput) {
    Image picture(6, 4, 3);
    Image otherSize(5, 4, 3);
    std::string error;
    ASSERT_TRUE(testhost::WriteImageFile(Artifact("cli-picture.png"), picture, &error)) << error;
    ASSERT_TRUE(testhost::WriteImageFile(Artifact("cli-mask.png"), otherSize, &error)) << error;
    std::ofstream(Artifact("cli-text.png")) << "a few words, not a picture\n";
    const std::string module = std::string("\"") + QUORVEX_MODULE_PATH + "\"";
    const std::string out = " --out \"" + Artifact("cli-out.png") + "\"";
    const std::string image = " --image \"" + Artifact("cli-picture.png") + "\"";
    const struct {
        std::string arguments;
        DWORD exitCode;
        const char* message;
    } cases[] = {
        {module + out, 1, "no --image given"},
        {module + " --image \"" + Artifact("missing.png") + "\"" + out, 1, "no such file"},
        {module + " --image \"" + Artifact("cli-text.png") + "\"" + out, 1,
         "cannot read the image"},
        {module + image + " --mask \"" + Artifact("cli-mask.png") + "\"" + out, 1, "the mask"},
        {module + image + " --rect 9,9,2,2" + out, 1, "outside"},
        {module + image + " --tolerance 101" + out, 1, "from 0 to 100"},
        {"\"" + Artifact("nothing.8bf") + "\"" + image + out, 2, "cannot load module"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunTestHost(c.arguments);
        EXPECT_EQ(outcome.exitCode, c.exitCode) << c.arguments << "\n" << outcome.output;
        EXPECT_NE(outcome.output.find(c.message), std::string::npos) << outcome.output;
    }
}

TEST(HostCommandLine, RunsTheModuleOnAPicture) {
    if (GetFileAttributesA(QUORVEX_MODULE_PATH) == INVALID_FILE_ATTRIBUTES) {
        GTEST_SKIP() << "the module is not built";
    }
    Image picture(40, 30, 3);
    picture.Fill({200, 60, 50});
    std::string error;
    ASSERT_TRUE(testhost::WriteImageFile(Artifact("cli-run.png"), picture, &error)) << error;
    const Outcome outcome = RunTestHost(
        std::string("\"") + QUORVEX_MODULE_PATH + "\" --image \"" + Artifact("cli-run.png") +
        "\" --rect 5,5,20,10 --tolerance 40 --out \"" + Artifact("cli-run-out.png") + "\"");
    EXPECT_EQ(outcome.exitCode, 0u) << outcome.output;
    Image result;
    ASSERT_TRUE(testhost::ReadImageFile(Artifact("cli-run-out.png"), &result, &error)) << error;
    EXPECT_EQ(result.Width(), 40);
    EXPECT_EQ(result.Height(), 30);
    EXPECT_TRUE(testhost::SameOutside(picture, result, 5, 5, 20, 10));
}

}  // namespace
