// The library appends one line to C:\LoadLogTextFormat.txt for every load
// notification it gets.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <string>
#include <thread>
#include <vector>

namespace {

std::vector<std::string> ReadLines(const char* path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

TEST(LoadLog, OneTimeStampedLinePerNotification) {
    const char* path = "C:\\LoadLogTextFormat.txt";
    std::remove(path);
    HMODULE module = LoadLibraryA(QUORVEX_MODULE_PATH);
    ASSERT_NE(module, nullptr);
    std::thread([] {}).join();
    FreeLibrary(module);

    const std::vector<std::string> lines = ReadLines(path);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].rfind("DLL_PROCESS_ATTACH DllMain: ", 0), 0u) << lines[0];
    EXPECT_EQ(lines[1].rfind("DLL_THREAD_ATTACH DllMain: ", 0), 0u) << lines[1];
    EXPECT_EQ(lines[2].rfind("DLL_THREAD_DETACH DllMain: ", 0), 0u) << lines[2];
    EXPECT_EQ(lines[3].rfind("DLL_PROCESS_DETACH DllMain: ", 0), 0u) << lines[3];
    // The classic 24-character local time: "Sun Nov 22 00:30:00 2026".
    const std::regex stamp(
        R"(.* DllMain: [A-Z][a-z]{2} [A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d \d{4})");
    for (const std::string& line : lines) EXPECT_TRUE(std::regex_match(line, stamp)) << line;
}

}  // namespace
