#include "tests/wine/robust/CampaignRun.h"

#include <string>

#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"
#include "tests/wine/robust/ChangeMap.h"

namespace robust {

namespace {

using testhost::TestHost;

// The record behind the parameters handle, whoever made the handle: the
// host's handles and the module's own fallback both start with the block's
// address.
FilterParameters* StoredRecord(TestHost& host) {
    Handle h = host.record().parameters;
    if (h == nullptr || *h == nullptr) return nullptr;
    return reinterpret_cast<FilterParameters*>(*h);
}

void Store(TestHost& host, const StoredValues& v) {
    FilterParameters* p = StoredRecord(host);
    if (p == nullptr) return;
    p->tolerance = v.tolerance;
    p->darkening = v.darkening;
    p->viewX = v.viewX;
    p->viewY = v.viewY;
    p->viewScale = v.viewScale;
    p->viewLeft = v.viewLeft;
    p->viewTop = v.viewTop;
    p->viewRight = v.viewRight;
    p->viewBottom = v.viewBottom;
    p->viewState = v.viewState;
    p->previewOn = v.previewOn;
    p->showDialog = v.showDialog;
}

bool ValidResult(OSErr result, const HostConfig& config) {
    switch (result) {
        case noErr:
        case userCanceledErr:
        case memFullErr:
        case filterBadParameters:
            return true;
        default:
            return result == config.settings.readerCloseError ||
                   result == config.settings.advanceStateError;
    }
}

// Where the host's logs stood when a run began.
struct RunMarks {
    size_t firstCall;
    size_t firstServe;
    size_t firstDialog;
};

// Whether the module takes the host's handle services (version 1, a table
// not known to be short); otherwise it keeps its own Windows handles and
// cannot give back the descriptor handles the host makes.
bool ModuleUsesHostHandles(const testhost::HostSettings& s) {
    return s.handleSuite == testhost::HandleSuiteMode::kVersion1 &&
           (s.handleProcCount >= 8 || s.handleProcCount < 0);
}

bool Processes(int16_t imageMode) {
    return imageMode == plugInModeRGBColor || imageMode == plugInModeRGB48;
}

// The module's own message boxes and notice; any other dialog is the main
// dialog, whose preview runs write into the host's output buffers.
bool MainDialogShown(TestHost& host, size_t firstDialog) {
    const auto& dialogs = host.log().dialogs;
    for (size_t i = firstDialog; i < dialogs.size(); ++i) {
        const std::string& caption = dialogs[i].caption;
        if (caption != "WARNING" && caption != "Sory" && caption != "Notice") return true;
    }
    return false;
}

// After a completed run: the document may differ from the original only
// inside the regions the module corrected in the areas it was given (and,
// after the main dialog, anywhere in those areas).
std::string CheckPixels(TestHost& host, const RunMarks& marks) {
    ChangeMap changes(host.image());
    const FilterParameters* p = StoredRecord(host);
    const bool dialog = MainDialogShown(host, marks.firstDialog);
    if (p != nullptr && Processes(host.record().imageMode)) {
        const StoredRect stored{p->viewLeft, p->viewTop, p->viewRight, p->viewBottom};
        const auto& serves = host.log().serves;
        for (size_t i = marks.firstServe; i < serves.size(); ++i) {
            if (dialog) changes.AddWholeArea(serves[i]);
            changes.AddDelivery(serves[i], stored);
        }
    }
    return changes.ForbiddenChanges(host.image(), host.output());
}

void CheckRun(TestHost& host, const HostConfig& config, const testhost::RunReport& report,
              const RunMarks& marks, ConfigurationOutcome& outcome) {
    const int run = outcome.runs;
    auto problem = [&outcome, run](const std::string& text) {
        outcome.problems.push_back("run " + std::to_string(run) + ": " + text);
    };
    if (!ValidResult(report.result, config)) {
        problem("result " + std::to_string(report.result) + " after selector " +
                std::to_string(report.lastSelector));
    }
    const auto& calls = host.log().calls;
    for (size_t i = marks.firstCall; i < calls.size(); ++i) {
        if (!ValidResult(calls[i].result, config)) {
            problem("selector " + std::to_string(calls[i].selector) + " gave result " +
                    std::to_string(calls[i].result));
        }
        if (calls[i].globalsLocksAfter > 0) {
            problem("globals handle still locked " + std::to_string(calls[i].globalsLocksAfter) +
                    " times after selector " + std::to_string(calls[i].selector));
        }
    }
    if (report.result == noErr && report.lastSelector == filterSelectorFinish) {
        ++outcome.completedRuns;
        const std::string pixels = CheckPixels(host, marks);
        if (!pixels.empty()) problem(pixels);
    }
}

}  // namespace

ConfigurationOutcome RunConfiguration(const HostConfig& config, const std::string& modulePath) {
    ConfigurationOutcome outcome;
    TestHost host;
    host.settings = config.settings;
    if (!host.Load(modulePath)) {
        outcome.problems.push_back(host.LoadError());
        return outcome;
    }
    host.image() = MakeDocument(config);
    for (size_t run = 0; run < config.stored.size(); ++run) {
        const RunMarks marks{host.log().calls.size(), host.log().serves.size(),
                             host.log().dialogs.size()};
        testhost::RunReport report;
        if (config.storesValues[run]) {
            host.settings.parameters = testhost::ParametersCall::kNever;
            report.lastSelector = filterSelectorParameters;
            report.result = host.Call(filterSelectorParameters);
            Store(host, config.stored[run]);
            if (report.result == noErr) report = host.RunFromPrepare();
        } else {
            host.settings.parameters = config.settings.parameters;
            report = host.Run();
        }
        CheckRun(host, config, report, marks, outcome);
        ++outcome.runs;
    }
    outcome.dialogs = host.log().dialogs.size();
    for (const std::string& fault : host.log().faults) {
        outcome.problems.push_back("host fault: " + fault);
    }
    if (ModuleUsesHostHandles(config.settings)) {
        for (const testhost::HandleInfo& leaked : host.LeakedHandles()) {
            outcome.problems.push_back("handle of " + std::to_string(leaked.size) +
                                       " bytes left behind");
        }
    }
    return outcome;
}

}  // namespace robust
