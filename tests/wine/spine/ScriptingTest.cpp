// What the module does with the host's scripting descriptors.
#include "SpineFixture.h"

namespace {

using testhost::DescriptorItem;
using testhost::DescriptorSuiteMode;

class Scripting : public SpineTest {
  protected:
    // Parameters sets showDialog; start then reads the descriptor.
    bool ShowDialogAfterScriptRead(int16_t playInfo) {
        host.settings.playInfo = playInfo;
        host.settings.parameters = testhost::ParametersCall::kNever;
        EXPECT_EQ(host.Call(filterSelectorParameters), noErr);
        EXPECT_EQ(Parameters()->showDialog, 1);
        EXPECT_EQ(host.Call(filterSelectorPrepare), noErr);
        // Start clears the flag after the dialog, so look at what start
        // read by the dialog it showed.
        host.OnDialog(1076, [&](HWND dialog) {
            dialogShown = true;
            PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        host.Call(filterSelectorStart);
        return dialogShown;
    }
    bool dialogShown = false;
};

TEST_F(Scripting, EveryKeyOfAReplayedDescriptorIsSkipped) {
    host.settings.playDescriptor = std::vector<DescriptorItem>{
        DescriptorItem::Integer(FourCC("ClSt"), 3), DescriptorItem::Float(FourCC("Angl"), 45.0),
        DescriptorItem::Bool(FourCC("Invr"), true), DescriptorItem::Float(FourCC("Zzzz"), 1.0)};
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().descriptorReads.size(), 1u);
    const testhost::DescriptorRead& read = host.log().descriptorReads[0];
    EXPECT_TRUE(read.opened);
    EXPECT_EQ(read.delivered.size(), 4u);
    EXPECT_TRUE(read.valuesRead.empty());
    EXPECT_TRUE(read.closed);
    const std::vector<DescriptorKeyID> keys = {
        FourCC("ClSt"), FourCC("Geom"), FourCC("InvI"), FourCC("AntA"),
        FourCC("Invr"), FourCC("NoBr"), FourCC("UsBg"), FourCC("Angl"),
        FourCC("Spac"), FourCC("Wdth"), FourCC("BRel"), FourCC("Ampl"),
        FourCC("Shif"), FourCC("Usil"), FourCC("CntX"), FourCC("CntY")};
    EXPECT_EQ(read.keyArray, keys);
    EXPECT_EQ(Parameters()->tolerance, 50.0f);
}

TEST_F(Scripting, FinishRecordsAnEmptyDescriptor) {
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().descriptorWrites.size(), 1u);
    const testhost::DescriptorWrite& write = host.log().descriptorWrites[0];
    EXPECT_TRUE(write.closed);
    EXPECT_TRUE(write.items.empty());
    ASSERT_NE(host.record().descriptorParameters, nullptr);
    EXPECT_EQ(host.record().descriptorParameters->descriptor, write.descriptor);
    EXPECT_EQ(host.record().descriptorParameters->recordInfo, plugInDialogOptional);
}

TEST_F(Scripting, ACloseErrorReachesTheHostUnlessItIsAMissingParameter) {
    host.settings.playDescriptor = std::vector<DescriptorItem>{};
    host.settings.readerCloseError = errMissingParameter;
    EXPECT_TRUE(host.Run().Ok());

    host.settings.readerCloseError = paramErr;
    host.ClearLog();
    const testhost::RunReport report = host.Run();
    EXPECT_EQ(report.result, paramErr);
    EXPECT_EQ(report.lastSelector, filterSelectorStart);
}

TEST_F(Scripting, UnusableSuitesAreLeftAlone) {
    for (DescriptorSuiteMode mode : {DescriptorSuiteMode::kAbsent, DescriptorSuiteMode::kNullSuites,
                                     DescriptorSuiteMode::kShortSuites}) {
        host.settings.descriptorSuite = mode;
        host.ClearLog();
        EXPECT_TRUE(host.Run().Ok());
        EXPECT_TRUE(host.log().descriptorReads.empty());
        EXPECT_TRUE(host.log().descriptorWrites.empty());
    }
}

TEST_F(Scripting, OnlyPlayModeDisplayShowsTheDialog) {
    EXPECT_TRUE(ShowDialogAfterScriptRead(plugInDialogDisplay));
}

TEST_F(Scripting, DontDisplayKeepsTheDialogClosed) {
    EXPECT_FALSE(ShowDialogAfterScriptRead(plugInDialogDontDisplay));
}

TEST_F(Scripting, SilentKeepsTheDialogClosed) {
    EXPECT_FALSE(ShowDialogAfterScriptRead(plugInDialogSilent));
}

TEST_F(Scripting, WithoutTheSuiteTheParametersCallDecides) {
    host.settings.descriptorSuite = DescriptorSuiteMode::kAbsent;
    EXPECT_TRUE(ShowDialogAfterScriptRead(plugInDialogDontDisplay));
}

}  // namespace
