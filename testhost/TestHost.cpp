#include "testhost/TestHost.h"

#include <algorithm>
#include <cstring>

#include "testhost/HostClock.h"

namespace testhost {

namespace {

constexpr size_t kRecordGuardBytes = 64;
constexpr uint8_t kRecordGuardByte = 0xA5;
constexpr char kWindowClass[] = "QuorvexTestHostWindow";

int16_t Clamp16(int32_t v) { return static_cast<int16_t>(std::clamp<int32_t>(v, -32768, 32767)); }

Rect16 ToRect16(const VRect& r) {
    return {Clamp16(r.top), Clamp16(r.left), Clamp16(r.bottom), Clamp16(r.right)};
}

Fixed ToFixed(double v) { return static_cast<Fixed>(v * 65536.0 + 0.5); }

int16_t DefaultImageMode(const Image& image) {
    const bool gray = image.Planes() < 3;
    if (image.Depth() == 16) return gray ? plugInModeGray16 : plugInModeRGB48;
    return gray ? plugInModeGrayScale : plugInModeRGBColor;
}

std::string LastErrorText(DWORD error) {
    char text[512] = {};
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                   text, sizeof text, nullptr);
    std::string message(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r')) {
        message.pop_back();
    }
    return message + " (error " + std::to_string(error) + ")";
}

}  // namespace

TestHost::TestHost() = default;

TestHost::~TestHost() {
    if (active_ == this) active_ = nullptr;
    if (window_ != nullptr) DestroyWindow(window_);
    if (module_ != nullptr) FreeLibrary(module_);
}

bool TestHost::Load(const std::string& path) {
    loadError_.clear();
    HMODULE module = LoadLibraryA(path.c_str());
    if (module == nullptr) {
        loadError_ = "cannot load module " + path + ": " + LastErrorText(GetLastError());
        return false;
    }
    // The entry point is cdecl; the generic procedure type goes through void*.
    auto entry = reinterpret_cast<EntryPoint>(
        reinterpret_cast<void*>(GetProcAddress(module, settings.entryPointName.c_str())));
    if (entry == nullptr) {
        loadError_ = "module " + path + " has no entry point " + settings.entryPointName;
        FreeLibrary(module);
        return false;
    }
    if (module_ != nullptr) FreeLibrary(module_);
    module_ = module;
    entry_ = entry;
    return true;
}

void TestHost::EnsureWindow() {
    if (window_ != nullptr || !settings.hostWindow) return;
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassA(&windowClass);  // fails harmlessly when already registered
    window_ = CreateWindowExA(0, kWindowClass, "Quorvex Test Host", WS_OVERLAPPEDWINDOW, 0, 0, 640,
                              480, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void TestHost::BeginRun() {
    Handle parameters = recordBytes_.empty() ? nullptr : record().parameters;
    if (settings.parameters == ParametersCall::kEveryRunFresh && parameters != nullptr) {
        handles_.Dispose(parameters);
        parameters = nullptr;
    }
    output_.Begin(image_);
    pixels_.Reset();
    handles_.Configure(settings);
    descriptors_.BeginRun(settings);
    EnsureWindow();
    platform_.hwnd = settings.hostWindow ? window_ : nullptr;
    recordSize_ = std::clamp(settings.recordSize, kMinimumFilterRecordSize, sizeof(FilterRecord));
    recordBytes_.assign(std::max(recordSize_ + kRecordGuardBytes, sizeof(FilterRecord)), 0);
    std::fill(recordBytes_.begin() + static_cast<ptrdiff_t>(recordSize_), recordBytes_.end(),
              kRecordGuardByte);
    FillRecord();
    record().parameters = parameters;
    std::memset(errorString_, 0, sizeof errorString_);
    runAbortPolls_ = 0;
    runInProgress_ = true;
}

void TestHost::FillRecord() {
    FilterRecord& r = record();
    const VRect whole{0, 0, image_.Height(), image_.Width()};
    const VRect filterRect = settings.filterRect.value_or(whole);
    const bool haveMask = image_.HasMask();

    r.abortProc = AbortProc;
    r.progressProc = ProgressProc;
    r.imageSize = {Clamp16(image_.Height()), Clamp16(image_.Width())};
    r.planes = static_cast<int16_t>(image_.Planes());
    r.filterRect = ToRect16(filterRect);
    r.background = {65535, 65535, 65535};
    r.foreground = {0, 0, 0};
    r.maxSpace = settings.maxSpace;
    r.haveMask = haveMask;
    r.autoMask = settings.blendThroughMask;
    std::memcpy(r.backColor, "\xFF\xFF\xFF\xFF", 4);
    std::memcpy(r.foreColor, "\x00\x00\x00\xFF", 4);
    r.hostSig = settings.hostSig;
    r.hostProc = HostProcDummy;
    r.imageMode = settings.imageMode.value_or(DefaultImageMode(image_));
    r.imageHRes = r.imageVRes = 72 << 16;
    r.wholeSize = r.imageSize;
    r.monitor = {ToFixed(2.2),  ToFixed(0.64), ToFixed(0.33),   ToFixed(0.30),  ToFixed(0.60),
                 ToFixed(0.15), ToFixed(0.06), ToFixed(0.3127), ToFixed(0.329), ToFixed(0.0)};
    r.platformData = &platform_;
    r.processEvent = ProcessEventProc;
    r.displayPixels = settings.displayPixels ? DisplayPixelsProc : nullptr;
    r.handleProcs = handles_.Procs();
    r.filterCase = settings.filterCase.value_or(haveMask ? filterCaseFlatImageWithSelection
                                                         : filterCaseFlatImageNoSelection);
    r.dummyPlaneValue = -1;
    r.advanceState = settings.advanceState ? AdvanceStateProc : nullptr;
    r.supportsPadding = 1;
    r.inputPadding = r.outputPadding = r.maskPadding = -3;  // out of bounds is an error
    r.samplingSupport = 2;                                  // any rate
    r.inputRate = r.maskRate = kFixedOne;
    r.colorServices =
        settings.colorServices == ColorServicesMode::kAbsent ? nullptr : ColorServicesProc;
    r.inNonLayerPlanes = r.outNonLayerPlanes = r.absNonLayerPlanes = r.planes;
    r.inTileHeight = r.outTileHeight = r.maskTileHeight = r.absTileHeight = r.imageSize.v;
    r.inTileWidth = r.outTileWidth = r.maskTileWidth = r.absTileWidth = r.imageSize.h;
    r.descriptorParameters = descriptors_.Parameters();
    r.errorString = &errorString_;
    r.depth = settings.depth.value_or(image_.Depth());
    r.bigDocumentData = settings.bigDocument ? &bigDocument_ : nullptr;
    if (recordSize_ >= sizeof(FilterRecord)) r.maxSpace64 = settings.maxSpace;

    bigDocument_ = {};
    bigDocument_.PluginUsing32BitCoordinates = settings.hostSets32BitCoordinates ? 1 : 0;
    bigDocument_.imageSize32 = {image_.Height(), image_.Width()};
    bigDocument_.filterRect32 = filterRect;
    bigDocument_.wholeSize32 = bigDocument_.imageSize32;
}

void TestHost::Activate() {
    active_ = this;
    handles_.MakeCurrent();
    handles_.CountRecoverSpaceIn(&log_.recoverSpaceCalls);
    handles_.LimitNewHandles(settings.newHandleLimit);
    descriptors_.MakeCurrent();
    dialogs_.SetDismiss(settings.dismissDialogs);
    dialogs_.SetWatchdog(settings.watchdogSeconds, window_);
}

OSErr TestHost::Call(int16_t selector) {
    if (entry_ == nullptr) {
        log_.faults.push_back("Call without a loaded module");
        return paramErr;
    }
    const bool about = selector == filterSelectorAbout;
    if (about) {
        EnsureWindow();
        platform_.hwnd = settings.hostWindow ? window_ : nullptr;
    } else if (!runInProgress_) {
        BeginRun();
    }
    Activate();
    int16_t result = noErr;
    AboutRecord aboutRecord{};
    aboutRecord.platformData = &platform_;
    void* block = about ? static_cast<void*>(&aboutRecord) : recordBytes_.data();
    dialogs_.BeginCall();
    callHostStart_ = HostTicks();
    callStart_ = Ticks();
    entry_(selector, block, &data_, &result);
    const int64_t end = Ticks();
    dialogs_.EndCall();
    CheckRecordGuard();
    handles_.CheckGuards();
    pixels_.CheckStaleData();

    CallRecord call;
    call.selector = selector;
    call.result = result;
    if (!recordBytes_.empty()) call.requestAfter = ReadRequest(record());
    call.globalsLocksAfter = GlobalsLocks();
    call.seconds = TicksToSeconds(end - callStart_);
    call.hostSeconds = TicksToSeconds(HostTicks() - callHostStart_);
    log_.calls.push_back(call);
    if (selector == filterSelectorFinish) {
        pixels_.Commit(output_, image_, settings.blendThroughMask);
        runInProgress_ = false;
    }
    return result;
}

RunReport TestHost::Run() {
    BeginRun();
    if (settings.callAbout) Call(filterSelectorAbout);
    bool callParameters = false;
    switch (settings.parameters) {
        case ParametersCall::kEveryRun:
        case ParametersCall::kEveryRunFresh:
            callParameters = true;
            break;
        case ParametersCall::kFirstRunOnly:
            callParameters = record().parameters == nullptr;
            break;
        case ParametersCall::kNever:
            break;
    }
    if (callParameters) {
        RunReport report;
        report.lastSelector = filterSelectorParameters;
        report.result = Call(filterSelectorParameters);
        if (report.result != noErr) {
            AbandonRun();
            return report;
        }
    }
    return RunFromPrepare();
}

RunReport TestHost::RunFromPrepare() {
    if (!runInProgress_) BeginRun();
    RunReport report;
    auto step = [this, &report](int16_t selector) {
        report.lastSelector = selector;
        report.result = Call(selector);
        return report.result == noErr;
    };
    if (!step(filterSelectorPrepare) || !step(filterSelectorStart)) {
        AbandonRun();
        return report;
    }
    while (DataWanted()) {
        if (report.continueCalls >= settings.maxContinueCalls) {
            log_.faults.push_back("the band loop did not end after " +
                                  std::to_string(report.continueCalls) + " continue calls");
            report.loopCapped = true;
            AbandonRun();
            return report;
        }
        report.lastSelector = filterSelectorContinue;
        report.result = Serve(ServeRecord::kBeforeContinue);
        ++report.continueCalls;
        if (report.result != noErr || !step(filterSelectorContinue)) {
            AbandonRun();
            return report;
        }
    }
    if (settings.staleDataForEmptyRects) pixels_.HandStaleData(record());
    step(filterSelectorFinish);
    return report;
}

OSErr TestHost::Serve(ServeRecord::Trigger trigger) {
    ServeRecord served;
    served.trigger = trigger;
    const OSErr result = pixels_.Serve(record(), image_, output_, settings, &served);
    log_.serves.push_back(served);
    return result;
}

bool TestHost::DataWanted() {
    const DataRequest request = ReadRequest(record());
    const bool mask = record().haveMask != 0;
    if (settings.loopEnd == LoopEnd::kWhileRightNonZero) {
        return request.outRect.right != 0 || request.inRect.right != 0 ||
               (mask && request.maskRect.right != 0);
    }
    return !IsEmpty(request.outRect) || !IsEmpty(request.inRect) ||
           (mask && !IsEmpty(request.maskRect));
}

void TestHost::AbandonRun() {
    pixels_.Reset();
    output_.Begin(image_);
    runInProgress_ = false;
}

void TestHost::CheckRecordGuard() {
    if (recordBytes_.empty()) return;
    const auto guard = recordBytes_.begin() + static_cast<ptrdiff_t>(recordSize_);
    const auto end = guard + static_cast<ptrdiff_t>(kRecordGuardBytes);
    if (std::all_of(guard, end, [](uint8_t b) { return b == kRecordGuardByte; })) return;
    log_.faults.push_back("module wrote past the end of the " + std::to_string(recordSize_) +
                          "-byte filter record");
    std::fill(guard, end, kRecordGuardByte);
}

void* TestHost::ParametersBlock() {
    if (recordBytes_.empty()) return nullptr;
    Handle h = record().parameters;
    // A handle of ours, or one the module made itself in the same shape.
    if (h == nullptr || (handles_.Procs() != nullptr && !handles_.IsLive(h))) return nullptr;
    return *h;
}

std::string TestHost::ErrorString() const {
    return std::string(reinterpret_cast<const char*>(&errorString_[1]), errorString_[0]);
}

TestHost::CallTimes TestHost::TimesInCall() const {
    const int64_t host = HostTicks() - callHostStart_;
    return {TicksToSeconds(Ticks() - callStart_ - host), TicksToSeconds(host)};
}

int TestHost::GlobalsLocks() const { return handles_.LockCount(reinterpret_cast<Handle>(data_)); }

std::vector<HandleInfo> TestHost::LeakedHandles() const {
    const auto* r = reinterpret_cast<const FilterRecord*>(recordBytes_.data());
    std::vector<Handle> kept = {reinterpret_cast<Handle>(data_)};
    if (!recordBytes_.empty()) {
        kept.push_back(r->parameters);
        if (r->descriptorParameters != nullptr) kept.push_back(r->descriptorParameters->descriptor);
    }
    std::vector<HandleInfo> leaked;
    for (const HandleInfo& info : handles_.Live()) {
        if (std::find(kept.begin(), kept.end(), info.handle) == kept.end()) leaked.push_back(info);
    }
    return leaked;
}

}  // namespace testhost
