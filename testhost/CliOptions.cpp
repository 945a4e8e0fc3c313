#include "testhost/CliOptions.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace testhost {

const char kUsage[] =
    "usage: testhost <module.8bf> --image in.png [--mask mask.png | --rect x,y,w,h]\n"
    "                --out out.png [--tolerance 0..100] [--darkening 0..100] [--dialog]\n"
    "Runs the filter module on the picture as a photo editor does and writes the result.\n"
    "  --mask       selection: every non-black pixel of the picture is selected\n"
    "  --rect       selection: this rectangle\n"
    "  --tolerance, --darkening  values stored in the module's parameters before the run\n"
    "  --dialog     show the module's dialog instead of replaying silently\n";

namespace {

bool ParsePercent(const char* text, std::optional<float>* value) {
    char* end = nullptr;
    const double number = std::strtod(text, &end);
    if (end == text || *end != '\0' || number < 0 || number > 100) return false;
    *value = static_cast<float>(number);
    return true;
}

bool ParseRect(const char* text, std::optional<SelectionRect>* rect) {
    SelectionRect r;
    char tail = 0;
    if (std::sscanf(text, "%d,%d,%d,%d%c", &r.x, &r.y, &r.width, &r.height, &tail) != 4 ||
        r.width <= 0 || r.height <= 0) {
        return false;
    }
    *rect = r;
    return true;
}

}  // namespace

bool ParseCli(int argc, char** argv, CliOptions* options, std::string* error) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        auto needs = [&](const char* what) {
            if (value == nullptr) *error = arg + " needs " + what;
            return value != nullptr;
        };
        if (arg == "--dialog") {
            options->dialog = true;
            continue;
        }
        if (arg == "--image" || arg == "--mask" || arg == "--out") {
            if (!needs("a file name")) return false;
            (arg == "--image"  ? options->image
             : arg == "--mask" ? options->mask
                               : options->out) = value;
        } else if (arg == "--rect") {
            if (!needs("x,y,w,h") || !ParseRect(value, &options->rect)) {
                *error = "--rect needs x,y,w,h with a positive width and height";
                return false;
            }
        } else if (arg == "--tolerance" || arg == "--darkening") {
            if (!needs("a number") ||
                !ParsePercent(value,
                              arg == "--tolerance" ? &options->tolerance : &options->darkening)) {
                *error = arg + " needs a number from 0 to 100";
                return false;
            }
        } else if (!arg.empty() && arg[0] != '-' && options->module.empty()) {
            options->module = arg;
            continue;
        } else {
            *error = "unknown argument " + arg;
            return false;
        }
        ++i;
    }
    if (options->module.empty()) {
        *error = "no module given";
    } else if (options->image.empty()) {
        *error = "no --image given";
    } else if (options->out.empty()) {
        *error = "no --out given";
    } else if (!options->mask.empty() && options->rect) {
        *error = "give either --mask or --rect";
    }
    return error->empty();
}

}  // namespace testhost
