// The log the module writes on every load notification: one line each, the
// event and the classic 24-character local time ("Sun Nov 22 00:30:00 2026").
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <string>
#include <thread>

TEST(LoadLog, OneTimeStampedLinePerLoadNotification) {
    const char* path = "C:\\LoadLogTextFormat.txt";
    std::remove(path);
    HMODULE module = LoadLibraryA(QUORVEX_MODULE_PATH);
    ASSERT_NE(module, nullptr);
    std::thread([] {}).join();
    FreeLibrary(module);
    const std::string stamp =
        R"( DllMain: [A-Z][a-z]{2} [A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d \d{4})";
    std::ifstream file(path);
    std::string line;
    for (const char* event :
         {"DLL_PROCESS_ATTACH", "DLL_THREAD_ATTACH", "DLL_THREAD_DETACH", "DLL_PROCESS_DETACH"}) {
        ASSERT_TRUE(std::getline(file, line)) << event;
        EXPECT_TRUE(std::regex_match(line, std::regex(event + stamp))) << line;
    }
    EXPECT_FALSE(std::getline(file, line)) << line;
}
