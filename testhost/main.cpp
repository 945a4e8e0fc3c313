// testhost.exe: runs the filter module on a picture file as a photo editor
// replays a recorded filter step (or, with --dialog, with its dialog).
#include <cstdio>

#include "plugin/FilterParameters.h"
#include "testhost/CliOptions.h"
#include "testhost/ImageFile.h"
#include "testhost/TestHost.h"

namespace {

enum ExitCode { kOk = 0, kBadInput = 1, kModuleNotLoaded = 2, kModuleFailed = 3 };

int Fail(ExitCode code, const std::string& message) {
    std::fprintf(stderr, "testhost: %s\n", message.c_str());
    return code;
}

bool LoadSelection(const testhost::CliOptions& options, testhost::Image* image,
                   std::string* error) {
    if (!options.mask.empty()) return testhost::ReadMaskFile(options.mask, image, error);
    if (!options.rect) return true;
    const testhost::SelectionRect& r = *options.rect;
    if (r.x >= image->Width() || r.y >= image->Height() || r.x + r.width <= 0 ||
        r.y + r.height <= 0) {
        *error = "the --rect selection lies outside the " + std::to_string(image->Width()) + "x" +
                 std::to_string(image->Height()) + " image";
        return false;
    }
    image->SelectRect(r.x, r.y, r.width, r.height);
    return true;
}

void Report(const testhost::HostLog& log) {
    for (const testhost::ShownDialog& dialog : log.dialogs) {
        std::printf("testhost: the module showed \"%s\"", dialog.caption.c_str());
        for (const std::string& text : dialog.texts) std::printf(" \"%s\"", text.c_str());
        std::printf("\n");
    }
    for (const std::string& fault : log.faults) std::printf("testhost: fault: %s\n", fault.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    testhost::CliOptions options;
    std::string error;
    if (!testhost::ParseCli(argc, argv, &options, &error)) {
        std::fprintf(stderr, "testhost: %s\n%s", error.c_str(), testhost::kUsage);
        return kBadInput;
    }
    testhost::Image image;
    if (!testhost::ReadImageFile(options.image, &image, &error) ||
        !LoadSelection(options, &image, &error)) {
        return Fail(kBadInput, error);
    }

    testhost::TestHost host;
    if (!host.Load(options.module)) return Fail(kModuleNotLoaded, host.LoadError());
    host.image() = image;
    host.settings.parameters = testhost::ParametersCall::kNever;
    host.settings.playInfo = options.dialog ? plugInDialogDisplay : plugInDialogDontDisplay;
    host.settings.playDescriptor = std::vector<testhost::DescriptorItem>{};
    host.settings.blendThroughMask = true;
    host.settings.dismissDialogs = !options.dialog;
    if (options.dialog) host.settings.watchdogSeconds = 0;

    const OSErr parametersResult = host.Call(filterSelectorParameters);
    if (parametersResult != noErr) {
        Report(host.log());
        return Fail(kModuleFailed,
                    "the module answered parameters with " + std::to_string(parametersResult));
    }
    auto* parameters = host.ParametersAs<FilterParameters>();
    if (parameters == nullptr) return Fail(kModuleFailed, "the module made no parameters record");
    if (options.tolerance) parameters->tolerance = *options.tolerance;
    if (options.darkening) parameters->darkening = *options.darkening;

    const testhost::RunReport report = host.RunFromPrepare();
    Report(host.log());
    if (!report.Ok()) {
        return Fail(kModuleFailed, "the run ended at selector " +
                                       std::to_string(report.lastSelector) + " with result " +
                                       std::to_string(report.result));
    }
    if (!testhost::WriteImageFile(options.out, host.output(), &error)) {
        return Fail(kBadInput, error);
    }
    std::printf("testhost: wrote %s (%dx%d, %zu samples changed, %d continue calls)\n",
                options.out.c_str(), image.Width(), image.Height(),
                testhost::CountDifferentSamples(image, host.output()), report.continueCalls);
    return kOk;
}
