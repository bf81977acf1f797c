// The capture window: what it asks of the engine and in which order, what is enabled when, and how a capture ends.

#include "capture/capture_harness.h"

#include "core/forms/frmMediaList.h"

namespace logic_test {
namespace {

using testmedia::writeBytes;

TEST_F(CaptureTest, Opening)
{
    const struct {
        const char* what;
        std::function<void()> ahead;
        const char* boxes;
        const char* calls;
        const char* states; // start, stop, snap
        const char* ticks;  // of sound and picture
    } cases[] = {
        {"both", [] {}, "", "InitCapture BuildGraph SetVideoWindow RunGraph", "101 101", "11"},
        {"no capture at all", [&] { devices->refused = {"InitCapture"}; },
         "Unable to initialize capture device. The capture device may be busy or not installed.", "InitCapture",
         "000 000", "11"},
        {"no camera", [&] { devices->videoStatus = 1; }, "Video Device Not Found.", "InitCapture ReleaseCapture",
         "000 000", "11"},
        {"no microphone", [&] { devices->audioStatus = 1; }, "Audio device not found.",
         "InitCapture BuildGraph SetVideoWindow RunGraph", "101 101", "01"},
        {"a microphone in use", [&] { devices->audioStatus = 2; }, "Audio device could not be initialized.",
         "InitCapture SetVideoDevice(Cam) BuildGraph SetVideoWindow RunGraph", "101 101", "01"},
        {"a camera in use", [&] { devices->videoStatus = 2; }, "Video device could not be initialized.",
         "InitCapture SetAudioDevice(Mic) BuildGraph RunGraph", "101 101", "10"},
        {"both in use", [&] { devices->videoStatus = devices->audioStatus = 2; },
         "Video device could not be initialized.|Audio device could not be initialized.", "InitCapture", "000 000",
         "11"},
        {"no graph", [&] { devices->refused = {"RunGraph"}; },
         "Unable to initialize capture device. It may be busy or not installed.",
         "InitCapture BuildGraph SetVideoWindow RunGraph", "000 000", "11"},
    };
    for (const auto& [what, ahead, boxes, called, states, ticks] : cases) {
        SCOPED_TRACE(what);
        devices->refused.clear();
        devices->videoStatus = devices->audioStatus = 0;
        ahead();
        inWindow([&, boxes = boxes, called = called, states = states, ticks = std::string(ticks)] {
            EXPECT_EQ(told(), boxes);
            EXPECT_EQ(calls(), called);
            EXPECT_EQ(this->states(), states);
            EXPECT_EQ(window.mnuCaptureStreamAudio.Checked, ticks[0] == '1');
            EXPECT_EQ(window.mnuCaptureStreamVideo.Checked, ticks[1] == '1');
            EXPECT_EQ(window.lblHint.get().empty(), std::string(states) == "101 101");
            EXPECT_TRUE(window.mnuFileExit.Enabled && window.mnuHelpContents.Enabled);
            EXPECT_FALSE(window.mnuFilePLCFile.Enabled || window.mnuFileSaveas.Enabled
                         || window.mnuFilePLCFrame.Enabled);
        });
        EXPECT_EQ(calls(), "TearDownPreview TearDownCapture ReleaseCapture");
    }
    platform.depth = 16;
    inWindow([&] { EXPECT_FALSE(window.mnuToolsTakeSnap.Visible || window.tbr.at("TAKE_SNAP").Visible); });
}

TEST_F(CaptureTest, TheScreenStandsInForACamera)
{
    devices->videoStatus = 1;
    devices->cameras = {"Screen"};
    inWindow([&] {
        ASSERT_TRUE(window.cmdCaptureScreen.Visible);
        EXPECT_EQ(window.sbr.Panel(1).get(), "Capture device not found");
        calls();
        devices->videoStatus = 0;
        frmCapture::cmdCaptureScreen_Click();
        EXPECT_EQ(calls(), "InitCapture SetVideoDevice(Screen) SetAudioDevice(Mic) BuildGraph SetVideoWindow RunGraph");
        EXPECT_EQ(states(), "101 101");
        EXPECT_TRUE(!window.cmdCaptureScreen.Visible && window.lblHint.get().empty());
    });
    devices->videoStatus = 1;
    devices->cameras.clear();
    inWindow([&] {
        EXPECT_FALSE(window.cmdCaptureScreen.Visible);
        EXPECT_EQ(window.lblHint.get(), "Connect a camera and open this window again.");
    });
}

TEST_F(CaptureTest, ACaptureFromItsStartToItsEnd)
{
    window.CaptureVideoCompressor = "Motion JPEG";
    window.CaptureAudioCompressor = "Uncompressed";
    inWindow([&] {
        EXPECT_EQ(calls(), "InitCapture SetCaptureVideoCompressor(Motion JPEG) BuildGraph SetVideoWindow RunGraph");
        platform.tickCount = 4000;
        frmCapture::mnuvideomaster_Click();
        frmCapture::mnuCapturePreview_Click();
        calls();
        start();
        EXPECT_EQ(calls(), "StartCaptureToFile(Capture1.avi,0,0) SetVideoWindow RunGraph SetPreviewing(0)");
        EXPECT_EQ(states(), "010 010");
        for (const Menu* const entry :
             {&window.mnuCaptureOptions, &window.mnuFileSetCapFile, &window.mnuToolsAudioFromats,
              &window.mnuToolsVideoSettings, &window.mnuCaptureStreamAudio, &window.mnuaudiomaster}) {
            EXPECT_FALSE(entry->Enabled);
        }
        EXPECT_EQ(window.sbr.Panel("CAPTURE_STATUS").get(), "CAPTURE_ON");
        EXPECT_FALSE(platform.awake.expired());
        devices->captured = 31;
        devices->dropped = 2;
        tickAt(6500);
        EXPECT_EQ(window.sbr.Panel(1).get(), "31 Frames Captured, 2 Frames Dropped, 2 Seconds Captured");
        frmCapture::mnuCaptureStop_Click();
        EXPECT_EQ(calls(), "StopCapture SetCaptureVideoCompressor(Motion JPEG) BuildGraph SetVideoWindow RunGraph "
                           "SetPreviewing(0)");
        EXPECT_EQ(states(), "101 101");
        EXPECT_FALSE(window.tm.Enabled);
        EXPECT_TRUE(platform.awake.expired());
        EXPECT_EQ(window.LastCapturedFile, path("Capture1.avi"));
        EXPECT_TRUE(window.mnuFilePLCFile.Enabled && window.mnuFileSaveas.Enabled && window.mnuCaptureLCFtoML.Enabled);
        EXPECT_TRUE(window.mnuCaptureCameraSettings.Enabled && window.mnuToolsVideoSettings.Enabled);
        EXPECT_EQ(window.sbr.Panel("CAPTURE_STATUS").get(), "CAPTURE_OFF");
        devices->refused = {"BuildGraph"};
        frmCapture::mnuCaptureStop_Click();
        EXPECT_EQ(calls(), "StopCapture SetCaptureVideoCompressor(Motion JPEG) BuildGraph ReleaseCapture InitCapture "
                           "SetAudioDevice(Mic) SetVideoDevice(Cam) SetCaptureVideoCompressor(Motion JPEG) BuildGraph");
        EXPECT_FALSE(window.lblHint.get().empty());
    });
    calls();
    devices->refused.clear();
    inWindow([&] {
        EXPECT_TRUE(window.mnuFilePLCFile.Enabled) << "of the opening before";
        start();
        calls();
        frmCapture::mnuFileExit_Click();
        EXPECT_TRUE(calls().starts_with("StopCapture")) << "the file is whole";
    });
    EXPECT_EQ(closed, 1);
}

TEST_F(CaptureTest, WhatDoesNotBegin)
{
    const std::string file = path("Capture1.avi");
    const std::string kRecovered = "BuildGraph SetVideoWindow RunGraph";
    const struct {
        const char* what;
        std::function<void()> ahead;
        std::string boxes;
        std::string calls;
    } cases[] = {
        {"a compressor that refuses", [&] { devices->refused = {"StartCaptureToFile"}; },
         "Compressor Failure: Please select another compressor and try again.",
         "StartCaptureToFile(Capture1.avi,0,1) " + kRecovered},
        {"one that refuses sound alone",
         [&] {
             devices->refused = {"StartCaptureToFile"};
             frmCapture::mnuCaptureStreamVideo_Click();
             calls();
         },
         "Compressor Failure: Please select another compressor and try again.",
         "StartCaptureToFile(Capture1.avi,0,1) BuildGraph RunGraph"},
        {"one that refuses without a preview",
         [&] {
             devices->refused = {"StartCaptureToFile"};
             frmCapture::mnuCapturePreview_Click();
             calls();
         },
         "Compressor Failure: Please select another compressor and try again.",
         "StartCaptureToFile(Capture1.avi,0,1) " + kRecovered + " SetPreviewing(0)"},
        {"a folder that is closed",
         [&] {
             devices->statuses = {{"StartCaptureToFile", Status(engine::kAccessDenied.code(), "It is closed.")}};
         },
         "It is closed.", "StartCaptureToFile(Capture1.avi,0,1) " + kRecovered},
        {"ASF of one stream",
         [&] {
             window.CaptureFormat = 1;
             frmCapture::mnuCaptureStreamAudio_Click();
             calls();
             devices->onCall = [&](const std::string& call) { // once
                 devices->refused = call == "StartCaptureToFile" ? std::set<std::string>{"RunGraph"}
                                    : call == "BuildGraph"       ? std::set<std::string>{}
                                                                 : devices->refused;
             };
         },
         "You must enable both the streams (Video and Audio) to capture in ASF.",
         "StartCaptureToFile(Capture1.asf,1,1) SetVideoWindow RunGraph " + kRecovered},
        {"a microphone that is there no more", [&] { devices->audioStatus = 1; }, "Audio device not found.",
         kRecovered},
        {"a file that is there", [&] { writeBytes(file, "old"); }, "Overwrite Exisiting File " + file + "?", ""},
        {"a cancelled question", [&] { window.CaptureAllowed = false; }, "", ""},
        {"a disk that keeps silent", [&] { platform.isVolumeSilent = true; },
         "The folder of \"" + file + "\" does not answer. Choose another one.", ""},
    };
    expectsErrors = true; // what the engine and the disk say is in the log
    for (const auto& [what, ahead, boxes, called] : cases) {
        SCOPED_TRACE(what);
        inWindow([&, ahead = ahead, boxes = boxes, called = called] {
            calls();
            ahead();
            start();
            EXPECT_EQ(told(), boxes);
            EXPECT_EQ(calls(), called);
            EXPECT_EQ(states(), "101 101");
            EXPECT_FALSE(window.tm.Enabled || frmCapture::IsCapturing());
            EXPECT_EQ(window.sbr.Panel("CAPTURE_STATUS").get(), "CAPTURE_OFF");
            EXPECT_TRUE(window.CaptureAllowed);
        });
        devices->refused.clear();
        devices->statuses.clear();
        devices->onCall = nullptr;
        platform.isVolumeSilent = false;
        devices->audioStatus = 0;
        std::filesystem::remove(file);
        calls();
    }
}

TEST_F(CaptureTest, ADeviceThatWasPluggedInAgainCaptures)
{
    inWindow([&] {
        devices->videoStatus = 1;
        devices->onCall = [&](const std::string& call) {
            devices->videoStatus = call == "BuildGraph" ? 0 : devices->videoStatus;
        };
        start();
        EXPECT_EQ(told(), "");
        EXPECT_TRUE(frmCapture::IsCapturing());
    });
}

TEST_F(CaptureTest, AnOldFileMakesRoomWhenThePersonAgrees)
{
    const std::string file = path("Capture1.avi");
    for (const bool hasTrash : {true, false}) {
        platform.hasTrash = hasTrash;
        platform.trashed.clear();
        writeBytes(file, "old");
        inWindow([&] {
            platform.answers = {MessageAnswer::kYes};
            start();
            EXPECT_TRUE(frmCapture::IsCapturing());
            EXPECT_EQ(platform.trashed, std::vector<std::string>{"Capture1.avi"});
            EXPECT_FALSE(!hasTrash && std::filesystem::exists(file));
        });
    }
    std::filesystem::remove(file);
    open({"mjpeg.avi"});
    state::ProjectFilePath = path("film.qpj");
    for (const std::string& used : {media("mjpeg.avi"), state::ProjectFilePath}) {
        told();
        inWindow([&] {
            window.CaptureFile = "  " + used + " ";
            start();
            EXPECT_FALSE(frmCapture::IsCapturing());
        });
        EXPECT_EQ(told(),
                  "The specified file is being used by Quillmont. Please specify a different capture file name.");
    }
}

TEST_F(CaptureTest, WhatEndsACapture)
{
    const struct {
        const char* what;
        std::function<void()> ahead; // of the tick at 1000 ms
        bool isEnd;
        const char* boxes;
    } cases[] = {
        {"nothing", [] {}, false, ""},
        {"no time", [&] { window.StopMode = 1; }, true, ""},
        {"a second", [&] { window.StopMode = 1, window.CaptureDuration = 1; }, true, ""},
        {"two seconds", [&] { window.StopMode = 1, window.CaptureDuration = 2; }, false, ""},
        {"the last of the disk", [&] { platform.freeBytes = 10'485'760; }, true, "Insufficient Disk Space."},
        {"a byte more", [&] { platform.freeBytes = 10'485'761; }, false, ""},
        {"a disk that cannot say", [&] { platform.freeBytes.reset(); }, false, ""},
        {"a disk that keeps silent", [&] { platform.isVolumeSilent = true; }, false, ""},
        {"a camera that is pulled out", [&] { devices->videoStatus = 1; }, true,
         "The capture device has been removed. The movie holds what was captured up to there."},
        {"a microphone that is pulled out", [&] { devices->audioStatus = 1; }, true,
         "The capture device has been removed. The movie holds what was captured up to there."},
        {"a full disk in the engine's hands",
         [&] {
             window.StopMode = 1;
             devices->statuses = {{"StopCapture", Status(0, "The disk is full.")}};
         },
         true, "The disk is full."},
        {"a disk that fails",
         [&] {
             for (const char* call : {"GetFramesCaptured", "StopCapture"}) {
                 devices->statuses.emplace(call, Status(0, "The disk has failed."));
             }
         },
         true, "The disk has failed."},
    };
    for (const auto& [what, ahead, isEnd, boxes] : cases) {
        SCOPED_TRACE(what);
        platform.tickCount = 0;
        inWindow([&, ahead = ahead, isEnd = isEnd, boxes = std::string(boxes)] {
            window.CaptureDuration = 0;
            start();
            ahead();
            calls();
            tickAt(1000);
            EXPECT_EQ(told(), boxes);
            EXPECT_EQ(calls().starts_with("StopCapture"), isEnd);
            EXPECT_EQ(window.tm.Enabled, !isEnd);
            EXPECT_EQ(window.LastCapturedFile.empty(), !isEnd);
        });
        told();
        window.LastCapturedFile.clear();
        platform.freeBytes = std::int64_t{1} << 40;
        platform.isVolumeSilent = false;
        devices->videoStatus = devices->audioStatus = 0;
        devices->statuses.clear();
    }
}

TEST_F(CaptureTest, AnAmpleDiskIsAskedOnceASecondANearlyFullOneAtEachTick)
{
    for (const auto& [freeBytes, endsAt] : {std::pair{std::int64_t{1} << 40, 1000u}, {std::int64_t{1} << 29, 33u}}) {
        platform.tickCount = 0;
        inWindow([&, freeBytes = freeBytes, endsAt = endsAt] {
            platform.freeBytes = freeBytes;
            start();
            tickAt(0);
            platform.freeBytes = 0;
            tickAt(endsAt - 1);
            EXPECT_EQ(window.tm.Enabled, endsAt == 1000);
            tickAt(endsAt);
            EXPECT_FALSE(window.tm.Enabled);
        });
    }
}

TEST_F(CaptureTest, StreamsAndTheirDevices)
{
    inWindow([&] {
        const struct {
            const char* what;
            void (*deed)();
            std::string calls;
            const char* state; // ticks of sound, picture and preview; entries of sound, picture and of both
        } steps[] = {
            {"preview off", frmCapture::mnuCapturePreview_Click, "SetPreviewing(0)", "110 111"},
            {"sound off", frmCapture::mnuCaptureStreamAudio_Click,
             "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) BuildGraph SetVideoWindow RunGraph",
             "011 010"},
            {"picture off too", frmCapture::mnuCaptureStreamVideo_Click, "", "011 010"},
            {"sound on", frmCapture::mnuCaptureStreamAudio_Click,
             "StopCapture ReleaseCapture InitCapture SetAudioDevice(Mic) SetVideoDevice(Cam) BuildGraph SetVideoWindow "
             "RunGraph",
             "111 111"},
            {"picture off", frmCapture::mnuCaptureStreamVideo_Click,
             "StopCapture ReleaseCapture InitCapture SetAudioDevice(Mic) BuildGraph RunGraph", "101 100"},
            {"picture on", frmCapture::mnuCaptureStreamVideo_Click,
             "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) SetAudioDevice(Mic) BuildGraph SetVideoWindow "
             "RunGraph",
             "111 111"},
        };
        calls();
        for (const auto& [what, deed, called, state] : steps) {
            SCOPED_TRACE(what);
            deed();
            EXPECT_EQ(calls(), called);
            std::string now;
            for (const Menu* const tick :
                 {&window.mnuCaptureStreamAudio, &window.mnuCaptureStreamVideo, &window.mnuCapturePreview}) {
                now += tick->Checked ? '1' : '0';
            }
            now += ' ';
            for (const Menu* const entry :
                 {&window.mnuToolsAudioSettings, &window.mnuCaptureCameraSettings, &window.mnuNone}) {
                now += entry->Enabled ? '1' : '0';
            }
            EXPECT_EQ(now, state);
        }
        EXPECT_EQ(told(), "Atleast one stream (Video or Audio) should be kept selected.");
        frmCapture::mnuCaptureStreamVideo_Click();
        start();
        tickAt(2000);
        EXPECT_EQ(window.sbr.Panel(1).get(), "Captured Audio 2 Seconds");
    });
}

TEST_F(CaptureTest, TheFilesNameAndItsCountersAreThoseOfTheWholeFile)
{
    inWindow([&] {
        window.CaptureFile = "interview";
        devices->captured = 9;
        start();
        EXPECT_EQ(window.CaptureFile, path("interview.avi"));
        devices->captured = 30;
        devices->dropped = 4;
        frmCapture::mnuCaptureStop_Click();
        EXPECT_EQ(window.sbr.Panel(1).get(), "30 Frames Captured, 4 Frames Dropped, 0 Seconds Captured");
    });
}

TEST_F(CaptureTest, AStreamWithoutADeviceIsNotTicked)
{
    devices->audioStatus = 1;
    inWindow([&] {
        told(), calls();
        frmCapture::mnuCaptureStreamAudio_Click();
        EXPECT_EQ(told(), "Audio device not found.");
        EXPECT_FALSE(window.mnuCaptureStreamAudio.Checked || window.mnuToolsAudioSettings.Enabled);
        EXPECT_EQ(calls(), "StopCapture ReleaseCapture InitCapture SetVideoDevice(Cam) BuildGraph SetVideoWindow "
                           "RunGraph");
        devices->audioStatus = 0; // it has been plugged in
        frmCapture::mnuCaptureStreamAudio_Click();
        EXPECT_TRUE(window.mnuCaptureStreamAudio.Checked && window.AudioDeviceOk);
        EXPECT_NE(calls().find("SetAudioDevice(Mic)"), std::string::npos);
    });
    devices->audioStatus = 1;
    inWindow([&] {
        devices->refused = {"BuildGraph"};
        frmCapture::mnuToolsVideoSettings_Click(); // all of it is made anew
        EXPECT_TRUE(window.mnuCaptureStreamVideo.Checked && window.mnuCaptureCameraSettings.Enabled);
        EXPECT_FALSE(window.mnuCaptureStreamAudio.Checked || window.mnuNone.Enabled);
    });
}

TEST_F(CaptureTest, TheDevicesOwnDialogues)
{
    int fitted = 0;
    frmCapture::fitWindow = [&] { ++fitted; };
    inWindow([&] {
        const struct {
            std::int16_t result;
            bool isRefused;
            const char* calls;
        } cases[] = {{0, false, "ShowVideoSettings"},
                     {1, false, "ShowVideoSettings BuildGraph SetVideoWindow RunGraph"},
                     {2, false, "ShowVideoSettings BuildGraph SetVideoWindow RunGraph"},
                     {1, true,
                      "ShowVideoSettings BuildGraph ReleaseCapture InitCapture SetAudioDevice(Mic) "
                      "SetVideoDevice(Cam) BuildGraph"}};
        calls();
        fitted = 0;
        for (const auto& [result, isRefused, called] : cases) {
            devices->settingsResult = result;
            devices->refused = isRefused ? std::set<std::string>{"BuildGraph"} : std::set<std::string>{};
            devices->width = 800;
            frmCapture::mnuToolsVideoSettings_Click();
            EXPECT_EQ(calls(), called);
        }
        EXPECT_EQ(fitted, 4);
        EXPECT_EQ(window.CaptureWidth, 800);
        EXPECT_TRUE(told().starts_with("Video Settings not available with this Video device driver."));
        frmCapture::tbr_ButtonClick("CAPTURE_SETTINGS");
        frmCapture::mnuCaptureStreamVideo_Click();
        frmCapture::tbr_ButtonClick("CAPTURE_SETTINGS");
        const std::string called = calls();
        EXPECT_TRUE(called.starts_with("ShowCameraSettings") && called.ends_with("ShowAudioFormats")) << called;
        frmCapture::Form_Resize(400, 300);
        EXPECT_EQ(devices->position, (std::array{0, 0, 400, 300}));
    });
}

TEST_F(CaptureTest, Snaps)
{
    platform.settings["Quillmont 1.1/Capture Snap/Dimension"] = "-640 x y";
    platform.settings["Quillmont 1.1/Capture Snap/Capture Dimension"] = "0";
    platform.settings["Quillmont 1.1/Capture Snap/Folder"] = path("new/snaps");
    const auto snap = [&] {
        frmCapture::mnuToolsTakeSnap_Click();
        return window.sbr.Panel(1).get();
    };
    inWindow([&] {
        calls();
        EXPECT_EQ(snap(), "Snap0000.bmp (" + path("new/snaps") + ")");
        EXPECT_EQ(calls(), "TakeSnap(Snap0000.bmp,640,240)");
        EXPECT_EQ(window.LastSnapFile, path("new/snaps/Snap0000.bmp"));
        EXPECT_TRUE(window.mnuFilePLCFrame.Enabled && window.mnuCaptureLStoML.Enabled);
        EXPECT_EQ(window.sbr.Panel("SNAP_STATUS").get(), "SNAP_OFF");
        writeBytes(path("new/snaps/Snap0000.bmp"), "");
        writeBytes(path("new/snaps/Snap0001.bmp"), "");
        moduleCaptureSnap::SnapUseCaptureDimension = true;
        snap();
        EXPECT_EQ(calls(), "TakeSnap(Snap0002.bmp,-1,-1)");
        writeBytes(path("new/snaps/Snap9999.bmp"), "");
        moduleCaptureSnap::SnapCounter = 9999;
        EXPECT_EQ(snap(), "Snap10000.bmp (" + path("new/snaps") + ")");
        EXPECT_EQ(snap(), "Unable to take snap. Too many snaps present.");
        EXPECT_EQ(told(), "There are too many snaps present in the folder to which the snaps are being saved.");
        moduleCaptureSnap::SetSnapFolder(path("other"));
        EXPECT_EQ(snap(), "Snap0000.bmp (" + path("other") + ")");
        expectsErrors = true;
        moduleCaptureSnap::SnapCounter = 20;
        devices->statuses = {{"TakeSnap", Status(engine::kAccessDenied.code(), "It is closed.")}};
        EXPECT_EQ(snap(), "Unable to take snap.");
        EXPECT_EQ(told(), "It is closed.");
        EXPECT_EQ(window.LastSnapFile, path("other/Snap0000.bmp"));
    });
}

TEST_F(CaptureTest, WhatWasCapturedGoesOn)
{
    inWindow([&] {
        start();
        frmCapture::mnuCaptureStop_Click();
        frmCapture::mnuFilePLCFile_Click();
        EXPECT_EQ(told(), "File not found.");
        std::filesystem::copy_file(media("mjpeg.avi"), path("Capture1.avi"));
        frmCapture::mnuFilePLCFile_Click();
        EXPECT_EQ(platform.openedWithDesktop, std::vector{path("Capture1.avi")});
        calls();
        platform.opensWithDesktop = false;
        frmCapture::mnuFilePLCFile_Click();
        EXPECT_EQ(told(), "Application Access Failure.");
        EXPECT_EQ(calls(), "StopCapture BuildGraph SetVideoWindow RunGraph");
        frmCapture::mnuFileSaveas_Click(); // cancelled
        platform.savedFiles = {path("copy.avi")};
        frmCapture::mnuFileSaveas_Click();
        EXPECT_TRUE(std::filesystem::exists(path("copy.avi")));
        EXPECT_EQ(window.sbr.Panel(1).get(), "");
        state::ProjectModified = false;
        frmCapture::mnuCaptureLCFtoML_Click();
        EXPECT_EQ(forms::frmMediaList.lvwMediaList.Count(), 1);
        EXPECT_TRUE(state::ProjectModified);
        EXPECT_EQ(state::RecentFilePaths, std::vector{path("Capture1.avi")});
        frmCapture::mnuCaptureLCFtoML_Click();
        window.LastSnapFile = path("none.bmp");
        frmCapture::mnuCaptureLStoML_Click();
        EXPECT_EQ(state::RecentFilePaths.size(), 1u) << "neither twice nor what is not there";
    });
}

} // namespace
} // namespace logic_test
