// The two dialogues of the capture window: its options, and the question for file and end.

#include "capture/capture_harness.h"

#include "export/moduleProfiles.h"

namespace logic_test {
namespace {

class CaptureDialoguesTest : public CaptureTest {
protected:
    /// Opens the options, does that in them; and answers whether they have closed.
    bool inOptions(const std::function<void()>& deeds)
    {
        bool isClosed = false;
        frmCaptureOptions::closeDialogue = [&] { isClosed = true; };
        frmCaptureOptions::showDialogue = deeds;
        frmCapture::mnuCaptureOptions_Click();
        return isClosed;
    }
    std::string shown() const
    {
        return chosenText(options.cmbVideoDevices) + "|" + chosenText(options.cmbAudioDevices) + "|"
               + chosenText(options.cmbVideoCompressors) + "|" + chosenText(options.cmbAudioCompressors);
    }

    forms::FrmCaptureOptions& options = forms::frmCaptureOptions;
    forms::FrmCaptureValues& values = forms::frmCaptureValues;
};

TEST_F(CaptureDialoguesTest, OptionsGoToTheEngine)
{
    inWindow([&] {
        calls();
        EXPECT_TRUE(inOptions([&] {
            EXPECT_EQ(shown(), "Cam|Mic|Uncompressed|Uncompressed");
            EXPECT_FALSE(options.cmdOK.Enabled || options.cmdApply.Enabled);
            chooseText(options.cmbAudioDevices, "Line");
            EXPECT_TRUE(options.cmdOK.Enabled && options.cmdApply.Enabled);
            chooseText(options.cmbVideoCompressors, "Motion JPEG");
            frmCaptureOptions::cmdOK_Click();
        }));
        EXPECT_EQ(calls(), "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) SetAudioDevice(Line) "
                           "SetCaptureVideoCompressor(Motion JPEG) BuildGraph SetVideoWindow RunGraph");
        EXPECT_EQ(window.CaptureFile, path("Capture1.avi"));
        frmCapture::mnuCaptureStreamAudio_Click();
        frmCapture::mnuCapturePreview_Click();
        calls();
        EXPECT_FALSE(inOptions([&] {
            EXPECT_EQ(shown(), "Cam|Line|Motion JPEG|Uncompressed");
            frmCaptureOptions::cmdDefaultSO_Click();
            EXPECT_EQ(shown(), "Cam|Mic|Uncompressed|Uncompressed");
            frmCaptureOptions::cmdApply_Click();
            EXPECT_FALSE(options.cmdOK.Enabled || options.cmdApply.Enabled);
            EXPECT_EQ(calls(), "ReleaseCapture InitCapture SetVideoDevice(Cam) SetAudioDevice(Mic) BuildGraph "
                               "SetVideoWindow RunGraph SetPreviewing(0)");
        }));
        EXPECT_TRUE(window.mnuCaptureStreamAudio.Checked && window.mnuToolsAudioSettings.Enabled);
    });
}

TEST_F(CaptureDialoguesTest, AMicrophoneInUseKeepsNoOptionsBack)
{
    devices->audioStatus = 2;
    inWindow([&] {
        told(), calls();
        EXPECT_TRUE(inOptions([&] { frmCaptureOptions::cmdOK_Click(); }));
        EXPECT_EQ(told(), "Audio device could not be initialized.");
        EXPECT_EQ(calls(), "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) SetAudioDevice(Mic) "
                           "SetAudioDevice BuildGraph SetVideoWindow RunGraph");
        EXPECT_FALSE(window.mnuCaptureStreamAudio.Checked || window.AudioDeviceOk);
    });
}

TEST_F(CaptureDialoguesTest, RefusedOptionsLeaveTheSessionAsItWas)
{
    inWindow([&] {
        calls();
        devices->onCall = [&](const std::string& call) { // the second time it runs
            if (call == "StopCapture" && devices->calls != "StopCapture") {
                devices->refused.clear();
            }
        };
        devices->refused = {"RunGraph"};
        EXPECT_FALSE(inOptions([&] {
            chooseText(options.cmbVideoDevices, "Screen");
            chooseText(options.cmbVideoCompressors, "Motion JPEG");
            frmCaptureOptions::optASF_Click();
            frmCaptureOptions::cmdOK_Click();
            EXPECT_TRUE(options.cmdOK.Enabled);
        }));
        EXPECT_EQ(told(), "Compressor Failure: Please select another compressor and try again.");
        EXPECT_EQ(calls(), "StopCapture ReleaseCapture InitCapture SetVideoDevice(Screen) SetAudioDevice(Mic) "
                           "SetCaptureVideoCompressor(Motion JPEG) BuildGraph SetVideoWindow RunGraph "
                           "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) SetAudioDevice(Mic) BuildGraph "
                           "SetVideoWindow RunGraph");
        EXPECT_EQ(window.VideoDeviceName + window.CaptureVideoCompressor, "Cam");
        EXPECT_EQ(window.CaptureFormat, 0);
        frmCapture::mnuCaptureStreamAudio_Click();
        calls();
        devices->refused = {"RunGraph"};
        inOptions([&] { frmCaptureOptions::cmdApply_Click(); });
        EXPECT_TRUE(calls().ends_with("StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) BuildGraph "
                                      "SetVideoWindow RunGraph"))
            << "sound that is switched off stays so";
    });
}

TEST_F(CaptureDialoguesTest, TheFormatAndItsProfile)
{
    const struct {
        const char* before;
        bool isAsf;
        const char* after;
    } cases[] = {{"/a.b/my.file.avi", true, "/a.b/myfile.asf"},
                 {"/a/film.asf", false, "/a/film.avi"},
                 {" /a/film ", true, "/a/film.asf"}};
    inWindow([&] {
        for (const auto& [before, isAsf, after] : cases) {
            window.CaptureFile = before;
            inOptions([&, isAsf = isAsf] {
                isAsf ? frmCaptureOptions::optASF_Click() : frmCaptureOptions::optAVI_Click();
                EXPECT_EQ(options.Profile.cboSetting.Enabled, isAsf);
                EXPECT_EQ(options.cmbVideoCompressors.Enabled, !isAsf);
                frmCaptureOptions::cmdOK_Click();
            });
            EXPECT_EQ(window.CaptureFile, after);
        }
        inOptions([&] {
            EXPECT_TRUE(options.optASF && options.Profile.txtProfileVisible);
            options.Profile.cboSetting.ListIndex = 0;
            EXPECT_EQ(options.Profile.txtProfile.Text.get(),
                      "Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)");
            options.Profile.cboSetting.ListIndex = 3;
            options.Profile.cboProfile.ListIndex = 1;
            frmCaptureOptions::cmdOK_Click();
        });
        EXPECT_EQ(window.CaptureProfileIndex, 1) << "the place among those with pictures";
        EXPECT_EQ(window.CaptureProfileName, chosenText(options.Profile.cboProfile));
        inOptions([&] { EXPECT_EQ(options.Profile.cboProfile.ListIndex.get(), 1) << "it is shown again"; });
        start();
        EXPECT_TRUE(frmCapture::IsCapturing());
    });
}

TEST_F(CaptureDialoguesTest, HowSnapsAreKept)
{
    platform.pickedFolders = {path("snaps") + "/"};
    inWindow([&] {
        inOptions([&] {
            EXPECT_EQ(options.txtSnapFolder.Text.get(), platform.folder);
            EXPECT_FALSE(options.SnapDimension.cboDimension.Enabled || options.SnapDimension.fmeCustomPreviewEnabled);
            frmCaptureOptions::cmdSnapFolderBrowse_Click();
            frmCaptureOptions::optSaveSnapOthDim_Click();
            chooseText(options.SnapDimension.cboDimension, "Custom");
            options.SnapDimension.txtWidth.Text = std::string("2000");
            EXPECT_EQ(options.SnapDimension.txtWidth.Text.get(), "320") << "too large";
            options.SnapDimension.txtWidth.Text = std::string("400");
            EXPECT_EQ(options.SnapDimension.txtHeight.Text.get(), "300");
            frmCaptureOptions::cmdOK_Click();
        });
        EXPECT_EQ(platform.settings["Quillmont 1.1/Capture Snap/Folder"], path("snaps"));
        EXPECT_EQ(platform.settings["Quillmont 1.1/Capture Snap/Dimension"], "400 x 300");
        EXPECT_EQ(platform.settings["Quillmont 1.1/Capture Snap/Capture Dimension"], "0");
        inOptions([&] {
            EXPECT_TRUE(options.optSaveSnapOthDim && options.SnapDimension.txtWidth.Enabled);
            EXPECT_EQ(options.SnapDimension.txtHeight.Text.get(), "300");
            frmCaptureOptions::optSaveSnapCapDim_Click();
            EXPECT_FALSE(options.SnapDimension.txtWidth.Enabled);
        });
        platform.depth = 16;
        inOptions([&] { EXPECT_FALSE(options.TakeSnapTabVisible); });
    });
}

TEST_F(CaptureDialoguesTest, TheQuestionAheadOfACapture)
{
    inWindow([&] {
        frmCaptureValues::showDialogue = [&] {
            EXPECT_EQ(values.Caption.get() + " " + values.cmdOK.get(), "Start Capture Start");
            EXPECT_EQ(values.txtCaptureFile.Text.get(), path("Capture.avi"));
            EXPECT_FALSE(values.txtDuration.Enabled);
            frmCaptureValues::cmdCancel_Click();
        };
        frmCapture::mnuCaptureStart_Click();
        EXPECT_TRUE(!frmCapture::IsCapturing() && window.CaptureAllowed);
        frmCaptureValues::showDialogue = [&] {
            int closings = 0;
            frmCaptureValues::closeDialogue = [&] { ++closings; };
            values.chkShowWindow.Value = std::int16_t{1};
            frmCaptureValues::optDurationStop_Click();
            for (const char* const text : {"", " ", ".", "'", "%", "-1", "2147483648", "1e999"}) {
                values.txtDuration.Text = std::string(text);
                frmCaptureValues::cmdOK_Click();
            }
            EXPECT_EQ(closings, 0);
            EXPECT_EQ(told(), "Please specify a valid capture duration.|Please specify a valid capture duration.|"
                              "Please specify a valid capture duration.|Please specify a valid capture duration.|"
                              "Please specify a valid capture duration.|Please specify a valid capture duration.|"
                              "The capture duration is too long. Please specify at most 2147483647 seconds.|"
                              "Please specify a valid capture duration.");
            values.txtDuration.Text = std::string("2.5");
            frmCaptureValues::optDurationStop_Click(); // once more
            platform.savedFiles = {path("chosen.avi")};
            frmCaptureValues::cmdBrowse_Click();
            frmCaptureValues::cmdBrowse_Click(); // cancelled
            frmCaptureValues::cmdOK_Click();
            EXPECT_EQ(closings, 1);
            frmCaptureValues::closeDialogue = [] {};
        };
        frmCapture::mnuCaptureStart_Click();
        EXPECT_EQ(window.CaptureDuration, 2) << "ties go to the even one";
        EXPECT_EQ(window.CaptureFile, path("chosen.avi"));
        EXPECT_EQ(window.ShowStartDialog, 0);
        frmCapture::mnuCaptureStop_Click();
        frmCaptureValues::showDialogue = [&] {
            EXPECT_EQ(values.Caption.get() + " " + values.cmdOK.get(), "Set Capture File OK");
            EXPECT_EQ(values.txtCaptureFile.Text.get(), path("chosen.avi"));
            EXPECT_TRUE(values.optDurationStop && values.chkShowWindow.Value != 0);
            EXPECT_EQ(values.txtDuration.Text.get(), "2");
            frmCaptureValues::cmdCancel_Click();
        };
        frmCapture::mnuFileSetCapFile_Click();
        EXPECT_TRUE(window.CaptureAllowed);
    });
    for (const std::int32_t code : {48, 57, 46, 8, 39, 37}) {
        EXPECT_TRUE(frmCaptureValues::txtDuration_KeyPress(code)) << code;
    }
    for (const std::int32_t code : {47, 58, 45, 101, 32}) {
        EXPECT_FALSE(frmCaptureValues::txtDuration_KeyPress(code)) << code;
    }
}

} // namespace
} // namespace logic_test
