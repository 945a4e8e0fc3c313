// The test host: loads a filter module and plays the photo editor around it.
//
// Typical use in a test:
//
//   testhost::TestHost host;
//   ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
//   host.image() = testhost::Image(64, 48, 3);
//   host.image().SelectRect(10, 10, 20, 12);
//   host.settings.playInfo = plugInDialogDontDisplay;
//   testhost::RunReport report = host.Run();
//   EXPECT_TRUE(report.Ok());
//   EXPECT_EQ(host.log().faults, std::vector<std::string>{});
//   ... compare host.output() with host.image() ...
//
// The document has a source (image(), what inData and maskData come from;
// never changed by a run) and a destination (output(), what outData starts
// from and where it is committed). Every run begins with output() holding
// image()'s samples (the selection stays with image()). A run that fails or
// is cancelled leaves output()'s samples equal to image()'s, as a host
// restores the document.
//
// Callbacks reach the host through process-wide pointers set by every
// Call(): several hosts may exist, but only one can be inside a call at a
// time, all on the thread that created them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "hostapi/HostApi.h"
#include "testhost/DescriptorSuite.h"
#include "testhost/DestinationImage.h"
#include "testhost/DialogWatcher.h"
#include "testhost/HandleSuite.h"
#include "testhost/HostLog.h"
#include "testhost/HostSettings.h"
#include "testhost/Image.h"
#include "testhost/PixelExchange.h"

namespace testhost {

using EntryPoint = int32_t(__cdecl*)(int16_t selector, void* block, intptr_t* data,
                                     int16_t* result);

// The outcome of Run() or RunFromPrepare().
struct RunReport {
    OSErr result = noErr;       // of the call (or data delivery) that ended the run
    int16_t lastSelector = -1;  // the last selector called
    int continueCalls = 0;
    bool loopCapped = false;  // the band loop reached settings.maxContinueCalls
    bool Ok() const { return result == noErr && !loopCapped; }
};

class TestHost {
  public:
    TestHost();
    ~TestHost();
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    // Read when a run begins (BeginRun); entryPointName when loading.
    HostSettings settings;

    // ---- The module ----
    // Loads the module and finds its entry point; false with LoadError() set
    // when the file does not load or has no entry point.
    bool Load(const std::string& path);
    const std::string& LoadError() const { return loadError_; }
    // Uses a function of this process as the module (for testing the host).
    void UseEntryPoint(EntryPoint entry) { entry_ = entry; }

    // ---- The document ----
    // (Any change to the document goes through here, so the output first
    // takes its own copy of the rows it still shares with it.)
    Image& image() {
        output_.Detach();
        return image_;
    }
    // Holds for the run that is over; ask again after the next one.
    const Image& output() const { return output_.Whole(); }

    // ---- Calling the module ----
    // Fills a fresh filter record from the settings and the image, keeping
    // the parameters handle (unless settings.parameters is kEveryRunFresh)
    // and the data slot. Call() does it itself when no run is in progress.
    void BeginRun();
    // One call of the entry point. Selector 0 gets an AboutRecord. Finish
    // commits the last outData and ends the run.
    OSErr Call(int16_t selector);
    // A whole run as a host plays it: (about), parameters per
    // settings.parameters, prepare, start, continue while data is wanted
    // (settings.loopEnd; data is served before each continue), finish.
    // Stops at the first non-zero result without calling finish.
    RunReport Run();
    // The same from prepare on, continuing the run the test began with
    // Call(filterSelectorParameters) (as a recorded action replays).
    RunReport RunFromPrepare();

    // ---- What the module left ----
    // The record as the module sees it. With settings.recordSize at
    // kMinimumFilterRecordSize the fields after bigDocumentData may not exist.
    FilterRecord& record() { return *reinterpret_cast<FilterRecord*>(recordBytes_.data()); }
    // The data slot the host keeps for the module (its globals handle).
    intptr_t data() const { return data_; }
    // The block of the parameters handle seen as T (e.g. FilterParameters);
    // null when there is none.
    template <typename T>
    T* ParametersAs() {
        return static_cast<T*>(ParametersBlock());
    }
    // The error text the module left in errorString (for errReportString).
    std::string ErrorString() const;
    // The items of a descriptor handle this host made or was given back.
    std::vector<DescriptorItem> DescriptorContents(Handle descriptor) const {
        return descriptors_.Contents(descriptor);
    }

    // ---- Handles ----
    HandleSuite& handles() { return handles_; }
    // Lock count of the globals handle (*data); -1 when there is none.
    int GlobalsLocks() const;
    // Live handles other than the ones the host keeps for the module (the
    // parameters handle, the globals handle, the current descriptor).
    std::vector<HandleInfo> LeakedHandles() const;

    // ---- Windows ----
    // The hidden host window handed out in platformData (null when off or
    // when there is no display).
    HWND window() const { return window_; }
    // Dialogs with this item id go to `handler` instead of being dismissed.
    void OnDialog(int itemId, DialogHandler handler) {
        dialogs_.OnDialog(itemId, std::move(handler));
    }

    // ---- Records ----
    HostLog& log() { return log_; }
    void ClearLog() { log_ = HostLog{}; }
    // The call in progress so far, split into the module's own seconds and
    // those spent in host callbacks (for benchmarks that stop the clock
    // inside a call, e.g. when the dialog has opened).
    struct CallTimes {
        double module;
        double host;
    };
    CallTimes TimesInCall() const;

  private:
    void FillRecord();
    void Activate();
    bool DataWanted();
    void AbandonRun();
    void CheckRecordGuard();
    void* ParametersBlock();
    void EnsureWindow();
    OSErr Serve(ServeRecord::Trigger trigger);

    // Callbacks handed to the module (HostCallbacks.cpp).
    static Boolean AbortProc();
    static void ProgressProc(int32_t done, int32_t total);
    static OSErr AdvanceStateProc();
    static OSErr DisplayPixelsProc(const PSPixelMap* source, const VRect* srcRect, int32_t dstRow,
                                   int32_t dstCol, void* platformContext);
    static OSErr ColorServicesProc(ColorServicesInfo* info);
    static void ProcessEventProc(void* event);
    static void HostProcDummy(int16_t selector, intptr_t* data);
    static TestHost* active_;

    HostLog log_;
    HandleSuite handles_{&log_.faults};
    DescriptorSuite descriptors_{&handles_, &log_};
    PixelExchange pixels_{&log_.faults};
    DialogWatcher dialogs_{&log_};

    HMODULE module_ = nullptr;
    EntryPoint entry_ = nullptr;
    std::string loadError_;

    Image image_;
    mutable DestinationImage output_;
    std::vector<uint8_t> recordBytes_;
    size_t recordSize_ = 0;
    BigDocumentStruct bigDocument_{};
    PlatformData platform_{};
    Str255 errorString_{};
    HWND window_ = nullptr;
    intptr_t data_ = 0;
    bool runInProgress_ = false;
    int runAbortPolls_ = 0;
    int64_t callStart_ = 0;      // Ticks() when the call in progress began
    int64_t callHostStart_ = 0;  // HostTicks() then
};

}  // namespace testhost
