// Command line of testhost.exe.
#pragma once

#include <optional>
#include <string>

namespace testhost {

struct SelectionRect {
    int x = 0, y = 0, width = 0, height = 0;
};

struct CliOptions {
    std::string module;
    std::string image;
    std::string mask;
    std::optional<SelectionRect> rect;
    std::string out;
    std::optional<float> tolerance;
    std::optional<float> darkening;
    bool dialog = false;
};

extern const char kUsage[];

// False with `error` set for a missing or malformed argument.
bool ParseCli(int argc, char** argv, CliOptions* options, std::string* error);

}  // namespace testhost
