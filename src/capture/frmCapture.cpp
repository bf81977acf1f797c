#include "capture/frmCapture.h"

#include "capture/entries.h"
#include "capture/live_picture.h"
#include "capture/moduleCaptureSnap.h"
#include "core/forms/frmCapture.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/wait_cursor.h"
#include "engine/ITWCapture.h"
#include "engine/ITWProfiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/moduleProfiles.h"

namespace frmCapture {

using capture::DeviceStatus;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;

namespace {

constexpr const char* kModule = "frmCapture";

forms::FrmCapture& form = forms::frmCapture;

/// With fewer colours the stills would be useless.
void offerSnaps(bool isOffered)
{
    for (Menu* const entry : {&form.mnuToolsTakeSnap, &form.mnuFilePLCFrame, &form.mnuCaptureLStoML}) {
        entry->Visible = isOffered;
    }
    form.tbr.at("TAKE_SNAP").Visible = isOffered;
    form.TakeSnapSeparatorVisible = isOffered;
}

void SetCaptureIcons()
{
    for (auto& [key, button] : form.tbr) {
        button.Picture = std::string(key);
    }
    capture::showCapturing(false);
    capture::showSnapping(false);
}

void resetControls()
{
    form.VideoDeviceOk = form.AudioDeviceOk = false;
    capture::tickAudioStream(true);
    capture::tickVideoStream(true);
    form.mnuCapturePreview.Checked = true;
    capture::chooseSyncMaster(1);
    capture::DisableAllMenuItems(); // until the devices are there
    form.sbr.Panel(1) = std::string();
    form.lblHint = std::string();
    form.cmdCaptureScreen.Visible = false;
    form.tm.Enabled = false;
    constexpr std::int32_t kTickMs = 33;
    form.tm.Interval = kTickMs;
    form.tm.tick = tm_Timer;
    SetCaptureVideoDimension(320, 240);
    SetCaptureIcons();
}

void resetSession()
{
    constexpr std::size_t kPathLength = 128;
    form.CaptureFormat = 0;
    form.CaptureFile.assign(kPathLength, ' ');
    form.StopMode = 0;
    form.ShowStartDialog = 1;
    capture::enable({&form.mnuCaptureStop}, false);
    capture::enableButtons({"STOP_CAPTURE"}, false);
    if (form.LastCapturedFile.empty()) {
        capture::enable({&form.mnuFilePLCFile, &form.mnuCaptureLCFtoML, &form.mnuFileSaveas}, false);
    }
    if (form.LastSnapFile.empty()) {
        capture::enable({&form.mnuFilePLCFrame, &form.mnuCaptureLStoML}, false);
    }
}

/// Nothing can be captured; the window stays, to be read.
void standIdle(std::string hint)
{
    capture::DisableAllMenuItems();
    form.lblHint = std::move(hint);
}

bool initTold()
{
    const capture::Answer made = capture::init();
    if (!made) {
        tellUser("Unable to initialize capture device. The capture device may be busy or not installed.",
                 MessageIcon::kCritical);
        standIdle(made.text.empty() ? "Close other programs that capture, and open this window again." : made.text);
    }
    return made.isOk;
}

void withoutCamera()
{
    form.VideoDeviceOk = false;
    const std::string screen = capture::videoDeviceAt(0); // it is no camera until somebody chooses it
    capture::tellVideo(DeviceStatus::kNotFound);
    form.sbr.Panel(1) = std::string("Capture device not found");
    capture::release();
    standIdle(screen.empty() ? "Connect a camera and open this window again."
                             : "There is no camera. Connect one and open this window again, or capture the screen.");
    form.VideoDeviceName = screen;
    form.cmdCaptureScreen.Visible = !screen.empty();
    form.cmdCaptureScreen.Enabled = !screen.empty();
}

void checkAudio(DeviceStatus status)
{
    form.AudioDeviceOk = status == DeviceStatus::kUsable;
    capture::tellAudio(status);
}

/// A device that is there and cannot be used must not be among those that the engine takes by itself.
bool bringPicture(DeviceStatus videoStatus, DeviceStatus audioStatus)
{
    if (!form.VideoDeviceOk && !form.AudioDeviceOk) {
        return false;
    }
    if (form.VideoDeviceOk && audioStatus == DeviceStatus::kNotInitialized) {
        capture::setVideoDevice();
    }
    if (form.AudioDeviceOk && videoStatus == DeviceStatus::kNotInitialized) {
        capture::setAudioDevice();
    }
    const auto window = form.VideoDeviceOk ? capture::Window::kWorkspace : capture::Window::kNone;
    if (!capture::goLive(window)) {
        tellUser("Unable to initialize capture device. It may be busy or not installed.", MessageIcon::kCritical);
        return false;
    }
    if (form.VideoDeviceOk) {
        ResizeToCaptureDimension();
    }
    return true;
}

/// From the devices that are known to be there to the end of the opening.
void open(DeviceStatus videoStatus, DeviceStatus audioStatus)
{
    checkAudio(audioStatus);
    if (!bringPicture(videoStatus, audioStatus)) {
        standIdle("Close other programs that use the devices, and open this window again.");
        return;
    }
    capture::EnableAllMenuItems();
    if (!form.AudioDeviceOk) {
        capture::tickAudioStream(false);
    }
    if (!form.VideoDeviceOk) {
        capture::tickVideoStream(false);
    }
    resetSession();
}

void load()
{
    constexpr int kTrueColour = 24;
    resetControls();
    moduleProfiles::InitProfiles();
    form.MustEnumProfiles = true;
    moduleCaptureSnap::LoadSettings();
    offerSnaps(ports.shell->colourDepth() >= kTrueColour);
    if (!initTold()) {
        return;
    }
    form.VideoDeviceOk = form.AudioDeviceOk = form.CaptureAllowed = true;
    const DeviceStatus videoStatus = capture::videoStatus();
    if (videoStatus == DeviceStatus::kNotFound) {
        withoutCamera();
        return;
    }
    form.VideoDeviceOk = videoStatus == DeviceStatus::kUsable;
    capture::tellVideo(videoStatus);
    const DeviceStatus audioStatus = capture::audioStatus();
    form.VideoDeviceName = form.VideoDeviceOk ? capture::videoDeviceAt(0) : std::string();
    form.AudioDeviceName = audioStatus == DeviceStatus::kUsable ? capture::audioDeviceAt(0) : std::string();
    open(videoStatus, audioStatus);
}

void captureScreen()
{
    if (!initTold()) {
        return;
    }
    const DeviceStatus audioStatus = capture::audioStatus(); // before only the screen takes part
    capture::setVideoDevice();
    form.AudioDeviceName.clear();
    if (audioStatus == DeviceStatus::kUsable) {
        form.AudioDeviceName = capture::audioDeviceAt(0);
        capture::setAudioDevice();
    }
    form.VideoDeviceOk = true;
    form.cmdCaptureScreen.Visible = false;
    form.sbr.Panel(1) = std::string();
    open(DeviceStatus::kUsable, audioStatus);
}

} // namespace

void ShowModal()
{
    resetControls();
    ShowDialogue(kModule, showDialogue);
    Form_Unload();
}

void Form_Load()
{
    const WaitCursor wait;
    Trapped(kModule, "Form_Load", load);
}

void Form_Unload()
{
    if (IsCapturing()) { // the window was taken away
        mnuCaptureStop_Click();
    }
    // Each by itself: one that fails keeps no device open.
    for (const auto step : {&ITWCapture::TearDownPreview, &ITWCapture::TearDownCapture, &ITWCapture::ReleaseCapture}) {
        Trapped(kModule, "Form_Unload", [&] { check((EngineAs<ITWCapture>().get()->*step)()); });
    }
    Trapped(kModule, "Form_Unload", [] { check(EngineAs<engine::ITWProfiles>()->CloseProfile()); });
    moduleProfiles::UnInitProfiles();
}

void Form_Resize(std::int32_t width, std::int32_t height)
{
    form.picMainWorkspace.ScaleWidth = width;
    form.picMainWorkspace.ScaleHeight = height;
    if (form.VideoDeviceOk) {
        Trapped(kModule, "Form_Resize*", [&] { check(EngineAs<ITWCapture>()->SetVideoPosition(0, 0, width, height)); });
    }
}

void ResizeToCaptureDimension()
{
    Trapped(kModule, "ResizeToCaptureDimension", [] {
        std::int32_t width = 0;
        std::int32_t height = 0;
        check(EngineAs<ITWCapture>()->GetCaptureSize(width, height));
        SetCaptureVideoDimension(width, height);
        if (fitWindow) {
            fitWindow();
        }
    });
    // Also where the window has that size already: the engine may have forgotten the place.
    Form_Resize(form.picMainWorkspace.ScaleWidth, form.picMainWorkspace.ScaleHeight);
}

void SetCaptureVideoDimension(std::int32_t width, std::int32_t height)
{
    form.CaptureWidth = numbers::narrowed<std::int16_t>(width);
    form.CaptureHeight = numbers::narrowed<std::int16_t>(height);
}

void cmdCaptureScreen_Click()
{
    const WaitCursor wait;
    Trapped(kModule, "cmdCaptureScreen_Click", captureScreen);
}

} // namespace frmCapture
