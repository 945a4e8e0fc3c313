// Preview runs inside the open main dialog: what the filter leaves in the
// host's output buffer for the part of the image the detail pane shows, and
// where it reports that it is done.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "ExpectedPixels.h"
#include "RedEyeImage.h"
#include "plugin/FilterParameters.h"
#include "DialogRun.h"

namespace {

using testhost::Image;

// An RGB image with alpha and no selection, shown in a detail pane of
// 120 x 80: every preview run works on the view the record holds.
constexpr int kWidth = 300;
constexpr int kHeight = 200;
constexpr int kPlanes = 4;
constexpr ClientSize kDetailSize{120, 80};

struct PreviewCase {
    const char* name;
    float viewX;
    float viewY;
    float viewScale;
    // Worked out by hand: the part of the image copied to the output from
    // (0, 0) on, and the region corrected and written back shifted by the
    // copy's origin.
    int originX;
    int originY;
    int copyWidth;
    int copyHeight;
    PixelBox region;
};

const PreviewCase kCases[] = {
    // At 2 the pane shows 240 x 160 image pixels; from x 100 they would end
    // past the image, so the copy starts at 300 - 240 - 1. The region starts
    // at the view and is as large as the copy, cut at the image's last column.
    {"ZoomedOutPulledBackFromTheRightEdge",
     100.7f,
     30.2f,
     2.0f,
     59,
     30,
     240,
     160,
     {100, 30, 299, 190}},
    // At 1 the region is exactly what was copied.
    {"OneToOne", 10.9f, 5.5f, 1.0f, 10, 5, 120, 80, {10, 5, 130, 85}},
    // At 0.5 the pane shows 60 x 40 pixels, here from the bottom-right corner.
    {"ZoomedInAtTheCorner", 250.0f, 190.0f, 0.5f, 239, 159, 60, 40, {250, 190, 299, 199}},
    // A view before the image's first column and row copies from (0, 0); the
    // region still ends where the view would, 120 x 80 from (-20, -3).
    {"ViewBeforeTheImage", -20.5f, -3.0f, 1.0f, 0, 0, 120, 80, {0, 0, 100, 77}},
    // At 3 the image fills only 100 x 66 pane pixels: 300 x 198 image pixels,
    // the whole width, one row short of the whole height.
    {"ZoomedOutPastTheImage", 50.0f, 50.0f, 3.0f, 0, 1, 300, 198, {50, 50, 299, 199}},
};

void PrintTo(const PreviewCase& preview, std::ostream* out) { *out << preview.name; }

// The host's output buffer as an image of the document's size.
Image OutputBuffer(testhost::TestHost& host) {
    const FilterRecord& record = host.record();
    Image buffer(kWidth, kHeight, kPlanes);
    const auto* rows = static_cast<const uint8_t*>(record.outData);
    for (int y = 0; y < kHeight; ++y) {
        std::copy_n(rows + y * record.outRowBytes, buffer.RowBytes(),
                    buffer.Data() + y * buffer.RowBytes());
    }
    return buffer;
}

// The output buffer, which held the document when the dialog opened, after
// one preview run of `preview`.
Image AfterPreview(const Image& document, const PreviewCase& preview) {
    Image expected = document;
    for (int y = 0; y < preview.copyHeight; ++y) {
        for (int x = 0; x < preview.copyWidth; ++x) {
            expected.SetPixel(x, y, document.Pixel(preview.originX + x, preview.originY + y));
        }
    }
    const PixelLayout layout = LayoutOf(document);
    const PixelBox& region = preview.region;
    PutBox(expected.Data(), layout, region.left - preview.originX, region.top - preview.originY,
           region.Width(), region.Height(),
           CorrectBox(document.Data(), layout, region, 50.0f, 50.0f));
    return expected;
}

void SetUpDocument(DialogRun& run, const PreviewCase& preview) {
    run.SizePane(IDC_DETAIL_PANE, kDetailSize);
    run.host.image() = RedEyeImage(kWidth, kHeight, kPlanes);
    FilterParameters& record = run.Record();
    record.viewX = preview.viewX;
    record.viewY = preview.viewY;
    record.viewScale = preview.viewScale;
}

class PreviewRun : public ::testing::TestWithParam<PreviewCase> {};

TEST_P(PreviewRun, CopiesTheViewAndCorrectsTheRegionInTheOutputBuffer) {
    const PreviewCase& preview = GetParam();
    DialogRun run;
    SetUpDocument(run, preview);
    run.Run({
        [&run, &preview](HWND dialog) {
            ASSERT_NE(run.host.record().outData, nullptr);
            ASSERT_GE(run.host.record().outRowBytes, kWidth * kPlanes);
            EXPECT_EQ(testhost::DescribeDifference(OutputBuffer(run.host),
                                                   AfterPreview(run.host.image(), preview)),
                      "");
            const FilterParameters& record = run.Record();
            EXPECT_EQ(record.viewState, kViewStoredRect);
            EXPECT_EQ(record.viewLeft, preview.region.left);
            EXPECT_EQ(record.viewTop, preview.region.top);
            EXPECT_EQ(record.viewRight, preview.region.right);
            EXPECT_EQ(record.viewBottom, preview.region.bottom);
            SendCommand(dialog, IDOK);
        },
    });
    EXPECT_EQ(run.host.log().faults, std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(Dialog, PreviewRun, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<PreviewCase>& info) {
                             return ::testing::PrintToString(info.param);
                         });

// With a selection the dialog fits the view to its box and the preview
// corrects the box itself: 60 x 40 pixels round the left pupil fill the
// 120 x 80 pane at 0.5, so the copy starts at the box's corner and the
// corrected box lands at the output's (0, 0).
TEST(PreviewRunWithSelection, CorrectsTheBoxAndWritesItAtTheOutputsCorner) {
    const PreviewCase fitted{"FittedToTheSelection", 70.0f, 80.0f, 0.5f, 70, 80, 60, 40,
                             {70, 80, 130, 120}};
    DialogRun run;
    run.SizePane(IDC_DETAIL_PANE, kDetailSize);
    run.SizePane(IDC_NAVIGATOR_PANE, ClientSize{346, 260});
    run.host.image() = RedEyeImage(kWidth, kHeight, kPlanes);
    run.host.image().SelectRect(70, 80, 61, 41);
    run.Run({
        [&run, &fitted](HWND dialog) {
            const FilterParameters& record = run.Record();
            EXPECT_EQ(record.viewState, kViewSelectionBox);
            EXPECT_EQ(record.viewScale, fitted.viewScale);
            EXPECT_EQ(record.viewX, fitted.viewX);
            EXPECT_EQ(record.viewY, fitted.viewY);
            EXPECT_EQ(testhost::DescribeDifference(OutputBuffer(run.host),
                                                   AfterPreview(run.host.image(), fitted)),
                      "");
            SendCommand(dialog, IDOK);
        },
    });
    EXPECT_EQ(run.host.log().faults, std::vector<std::string>{});
}

// Stands in for a progress bar as the dialog's item 669, which its template
// does not have: added before the dialog sets itself up, it keeps the
// set-position messages sent to it.
class ProgressBarStandIn {
  public:
    ProgressBarStandIn() {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = Receive;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.lpszClassName = kClassName;
        RegisterClassA(&windowClass);
        messages_.clear();
        hook_ = SetWindowsHookExA(WH_CALLWNDPROC, AddToMainDialog, nullptr, GetCurrentThreadId());
    }
    ~ProgressBarStandIn() { UnhookWindowsHookEx(hook_); }
    ProgressBarStandIn(const ProgressBarStandIn&) = delete;
    ProgressBarStandIn& operator=(const ProgressBarStandIn&) = delete;

    struct Message {
        WPARAM wParam;
        LPARAM lParam;
    };
    // The set-position messages (WM_USER + 2) received so far.
    static const std::vector<Message>& SetPositions() { return messages_; }

  private:
    static constexpr char kClassName[] = "Quorvex test progress";

    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_USER + 2) messages_.push_back({wParam, lParam});
        return DefWindowProcA(window, message, wParam, lParam);
    }

    static LRESULT CALLBACK AddToMainDialog(int code, WPARAM wParam, LPARAM lParam) {
        const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && call->message == WM_INITDIALOG &&
            GetDlgItem(call->hwnd, IDC_DETAIL_PANE) != nullptr &&
            GetDlgItem(call->hwnd, IDC_PROGRESS) == nullptr) {
            CreateWindowExA(0, kClassName, "", WS_CHILD, 0, 0, 1, 1, call->hwnd,
                            reinterpret_cast<HMENU>(IDC_PROGRESS), GetModuleHandleA(nullptr),
                            nullptr);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline std::vector<Message> messages_;
    HHOOK hook_ = nullptr;
};

// Preview runs report to item 669 with a set-position message of 0 and
// never to the host; the real run after OK reports to the host and corrects
// the region the last preview left in the record. (The fields also run the
// preview when they lose the focus, so only the run a test asks for is
// counted exactly.)
TEST(PreviewRunCompletion, GoesToTheProgressItemAndTheRealRunUsesTheLastRegion) {
    ProgressBarStandIn progressBar;
    DialogRun run;
    const PreviewCase& opening = kCases[0];
    const PreviewCase& moved = kCases[1];
    SetUpDocument(run, opening);
    size_t atOpening = 0;
    run.Run({
        [&run, &atOpening](HWND) {
            atOpening = ProgressBarStandIn::SetPositions().size();
            EXPECT_GE(atOpening, 1u) << "the opening preview reported nothing";
            EXPECT_TRUE(run.host.log().progress.empty());
        },
        [&run, &moved, &atOpening](HWND dialog) {
            FilterParameters& record = run.Record();
            record.viewX = moved.viewX;
            record.viewY = moved.viewY;
            record.viewScale = moved.viewScale;
            // A drag of the detail picture that did not move it: the preview
            // runs again at the record's view.
            SendCommand(dialog, IDC_DETAIL_PANE);
            EXPECT_EQ(ProgressBarStandIn::SetPositions().size(), atOpening + 1);
            EXPECT_TRUE(run.host.log().progress.empty());
            SendCommand(dialog, IDOK);
        },
    });
    for (const ProgressBarStandIn::Message& message : ProgressBarStandIn::SetPositions()) {
        EXPECT_EQ(message.wParam, 0u);
        EXPECT_EQ(message.lParam, 0);
    }
    ASSERT_EQ(run.host.log().progress.size(), 1u);
    EXPECT_EQ(run.host.log().progress[0].done, 0);
    EXPECT_EQ(run.host.log().progress[0].total, 100);
    EXPECT_EQ(
        testhost::DescribeDifference(run.host.output(), Corrected(run.host.image(), moved.region)),
        "");
    EXPECT_EQ(run.host.log().faults, std::vector<std::string>{});
}

}  // namespace
