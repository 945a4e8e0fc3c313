// The library's start-up hook: keeps the instance handle and appends one
// line per load notification to a log file on drive C.
#include <windows.h>

#include <cstdio>
#include <ctime>

#include "plugin/FilterGlobals.h"

namespace {

const char* ReasonName(DWORD reason) {
    static const char* const kNames[] = {"DLL_PROCESS_DETACH", "DLL_PROCESS_ATTACH",
                                         "DLL_THREAD_ATTACH", "DLL_THREAD_DETACH"};
    return reason < 4 ? kNames[reason] : "DLL_UNKNOWN_REASON";
}

void AppendLoadLog(DWORD reason) {
    FILE* log = std::fopen("C:\\LoadLogTextFormat.txt", "a+");
    if (log == nullptr) return;  // a read-only drive C is no reason to fail loading
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    std::fprintf(log, "%s DllMain: %s", ReasonName(reason),
                 local != nullptr ? std::asctime(local) : "\n");
    std::fclose(log);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    (void)reserved;
    AppendLoadLog(reason);
    gModuleInstance = instance;
    return TRUE;
}
