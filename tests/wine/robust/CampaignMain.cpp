// The randomized host campaign: runs the module through many random hosts
// and reports every configuration that went wrong, with the seed that
// replays it.
//
//   robust_campaign --seed 7 --count 300     configurations 0..299 of seed 7
//   robust_campaign --seed 7 --first 300 --count 300   and 300..599
//   robust_campaign --count 100000           a fresh seed (printed)
//   robust_campaign --replay 1234567         one configuration, described
//
// Options: --largest-side N (document side limit), --band-bytes N and
// --bands N (work of the band loop per run), --module PATH, --verbose (one
// line per configuration). Exit code 0 when every configuration passed.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/wine/robust/CampaignRun.h"
#include "tests/wine/robust/HostConfig.h"
#include "tests/wine/robust/Random.h"

namespace {

struct Options {
    uint64_t seed = 0;
    bool seedGiven = false;
    uint64_t first = 0;
    uint64_t count = 300;
    bool replay = false;
    uint64_t replaySeed = 0;
    bool verbose = false;
    std::string module = QUORVEX_MODULE_PATH;
    robust::CampaignLimits limits;
};

// The configuration running now, for the crash report.
volatile uint64_t g_currentSeed = 0;

// Reports the configuration an exception happened in. Called first, before
// any handler, so that even a fault that wrecks the stack or the heap names
// its seed; a fault the module or Wine handles itself is reported too.
LONG WINAPI ReportFault(EXCEPTION_POINTERS* info) {
    switch (info->ExceptionRecord->ExceptionCode) {
        case EXCEPTION_ACCESS_VIOLATION:
        case EXCEPTION_STACK_OVERFLOW:
        case EXCEPTION_ILLEGAL_INSTRUCTION:
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
        case STATUS_HEAP_CORRUPTION:
            std::fprintf(stderr,
                         "FAULT: exception 0x%08lx at %p in the configuration with seed %llu "
                         "(replay with --replay %llu)\n",
                         info->ExceptionRecord->ExceptionCode,
                         info->ExceptionRecord->ExceptionAddress,
                         static_cast<unsigned long long>(g_currentSeed),
                         static_cast<unsigned long long>(g_currentSeed));
            std::fflush(stderr);
            break;
        default:
            break;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

bool ParseOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        auto number = [&]() { return std::strtoull(argv[++i], nullptr, 10); };
        if (arg == "--seed" && hasValue) {
            options.seed = number();
            options.seedGiven = true;
        } else if (arg == "--first" && hasValue) {
            options.first = number();
        } else if (arg == "--count" && hasValue) {
            options.count = number();
        } else if (arg == "--replay" && hasValue) {
            options.replay = true;
            options.replaySeed = number();
        } else if (arg == "--largest-side" && hasValue) {
            options.limits.largestSide = static_cast<int>(number());
        } else if (arg == "--band-bytes" && hasValue) {
            options.limits.bandBytes = static_cast<int64_t>(number());
        } else if (arg == "--bands" && hasValue) {
            options.limits.bands = static_cast<int64_t>(number());
        } else if (arg == "--module" && hasValue) {
            options.module = argv[++i];
        } else if (arg == "--verbose") {
            options.verbose = true;
        } else {
            std::fprintf(stderr, "unknown option %s\n", arg.c_str());
            return false;
        }
    }
    if (!options.seedGiven)
        options.seed = GetTickCount64() ^ (uint64_t{GetCurrentProcessId()} << 32);
    return true;
}

// Runs one configuration; prints it when it fails (or always, when verbose).
bool RunOne(const Options& options, uint64_t index, uint64_t configSeed, int& runs) {
    g_currentSeed = configSeed;
    const robust::HostConfig config = robust::MakeConfiguration(configSeed, options.limits);
    if (options.verbose) {
        std::printf("#%llu %s\n", static_cast<unsigned long long>(index),
                    robust::Describe(config).c_str());
        std::fflush(stdout);
    }
    const ULONGLONG start = GetTickCount64();
    const robust::ConfigurationOutcome outcome = robust::RunConfiguration(config, options.module);
    runs += outcome.runs;
    if (options.verbose) {
        std::printf("    %d runs, %zu dialogs, %llu ms\n", outcome.runs, outcome.dialogs,
                    static_cast<unsigned long long>(GetTickCount64() - start));
    }
    if (outcome.problems.empty()) return true;
    std::printf("FAIL #%llu (replay with --replay %llu): %s\n",
                static_cast<unsigned long long>(index), static_cast<unsigned long long>(configSeed),
                robust::Describe(config).c_str());
    for (const std::string& problem : outcome.problems) std::printf("    %s\n", problem.c_str());
    std::fflush(stdout);
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!ParseOptions(argc, argv, options)) return 2;
    AddVectoredExceptionHandler(1, ReportFault);
    // Keep the module loaded for the whole campaign, as a host keeps its
    // plug-ins: module-wide state carries over from one host to the next.
    if (LoadLibraryA(options.module.c_str()) == nullptr) {
        std::fprintf(stderr, "cannot load %s\n", options.module.c_str());
        return 2;
    }

    int runs = 0;
    if (options.replay) {
        options.verbose = true;
        const bool ok = RunOne(options, 0, options.replaySeed, runs);
        std::printf("%d passed, %d failed\n", ok ? 1 : 0, ok ? 0 : 1);
        return ok ? 0 : 1;
    }
    std::printf("campaign seed %llu, %llu configurations\n",
                static_cast<unsigned long long>(options.seed),
                static_cast<unsigned long long>(options.count));
    std::fflush(stdout);
    uint64_t failed = 0;
    for (uint64_t n = 0; n < options.count; ++n) {
        const uint64_t i = options.first + n;
        if (!RunOne(options, i, robust::ConfigurationSeed(options.seed, i), runs)) ++failed;
        if ((n + 1) % 1000 == 0) {
            std::printf("... %llu configurations, %d runs, %llu failed\n",
                        static_cast<unsigned long long>(n + 1), runs,
                        static_cast<unsigned long long>(failed));
            std::fflush(stdout);
        }
    }
    std::printf("campaign seed %llu: %llu configurations, %d runs\n",
                static_cast<unsigned long long>(options.seed),
                static_cast<unsigned long long>(options.count), runs);
    std::printf("%llu passed, %llu failed\n",
                static_cast<unsigned long long>(options.count - failed),
                static_cast<unsigned long long>(failed));
    return failed == 0 ? 0 : 1;
}
