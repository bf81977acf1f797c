// The two streams, the preview, and the devices' own dialogues.

#include "capture/entries.h"
#include "capture/frmCapture.h"
#include "capture/live_picture.h"
#include "core/forms/frmCapture.h"
#include "core/platform.h"
#include "core/trap.h"
#include "core/wait_cursor.h"
#include "engine/ITWCapture.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace frmCapture {

using capture::DeviceStatus;
using capture::Window;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;

namespace {

constexpr const char* kModule = "frmCapture";

forms::FrmCapture& form = forms::frmCapture;

struct Device {
    std::string& name; // of the one that is set; empty: none could be used so far
    bool& isOk;
    DeviceStatus (*status)();
    std::string (*nameAt)(std::int16_t);
    void (*tell)(DeviceStatus);
    void (*set)();
};

const Device kMicrophone{form.AudioDeviceName,   form.AudioDeviceOk, capture::audioStatus,
                         capture::audioDeviceAt, capture::tellAudio, capture::setAudioDevice};
const Device kCamera{form.VideoDeviceName,   form.VideoDeviceOk, capture::videoStatus,
                     capture::videoDeviceAt, capture::tellVideo, capture::setVideoDevice};

/// One of the two, seen from either side.
struct Stream {
    Menu& entry;
    Menu& other;
    void (*tick)(bool);
    const Device& device;
    const Device& otherDevice;
};

const Stream kAudio{form.mnuCaptureStreamAudio, form.mnuCaptureStreamVideo, capture::tickAudioStream, kMicrophone,
                    kCamera};
const Stream kVideo{form.mnuCaptureStreamVideo, form.mnuCaptureStreamAudio, capture::tickVideoStream, kCamera,
                    kMicrophone};

/// One that was missing or busy at the opening may have come since. Asked ahead of any device that is set.
DeviceStatus lookAgain(const Device& device)
{
    if (!device.name.empty()) {
        return DeviceStatus::kUsable;
    }
    const DeviceStatus status = device.status();
    if (status == DeviceStatus::kUsable) {
        device.name = device.nameAt(0);
        device.isOk = true;
    }
    return status;
}

void turnOver(const Stream& stream)
{
    const bool isOn = !stream.entry.Checked;
    if (!isOn && !stream.other.Checked) {
        tellUser("Atleast one stream (Video or Audio) should be kept selected.");
        return;
    }
    const WaitCursor wait;
    capture::stop();
    capture::renew();
    const DeviceStatus status = isOn ? lookAgain(stream.device) : DeviceStatus::kUsable;
    stream.tick(isOn && status == DeviceStatus::kUsable); // else a file would lack what is ticked
    if (stream.entry.Checked) {
        stream.device.set();
    }
    if (stream.other.Checked) {
        stream.otherDevice.set();
    }
    form.mnuCapturePreview.Checked = true; // ahead of the picture, which comes as it is ticked
    capture::goLive(capture::liveWindow());
    ResizeToCaptureDimension();
    stream.device.tell(status);
}

/// Over the host of the window.
void showDialog(const char* handler, engine::Status (ITWCapture::*show)(std::int32_t))
{
    Trapped(kModule, handler, [&] { check((EngineAs<ITWCapture>().get()->*show)(form.hWnd)); });
}

/// What was set there may have changed the size.
void showVideoSettings()
{
    enum Result : std::int16_t { kNothingDone = 0, kNoDialog = 2 };
    std::int16_t result = kNothingDone;
    check(EngineAs<ITWCapture>()->ShowVideoSettings(form.hWnd, result));
    if (result == kNoDialog) {
        tellUser("Video Settings not available with this Video device driver. Please select another device and try "
                 "again.");
    }
    if (result != kNothingDone) {
        if (capture::build()) {
            capture::runLive(Window::kWorkspace);
        } else {
            capture::rebuild();
        }
    }
    ResizeToCaptureDimension();
}

} // namespace

void mnuCapturePreview_Click()
{
    Trapped(kModule, "mnuCapturePreview_Click", [] {
        Bool16 on = engine::toBool16(!form.mnuCapturePreview.Checked);
        form.mnuCapturePreview.Checked = on != engine::kFalse;
        check(EngineAs<ITWCapture>()->SetPreviewing(on));
    });
}

void mnuCaptureStreamAudio_Click()
{
    Trapped(kModule, "mnuCaptureStreamAudio_Click", [] { turnOver(kAudio); });
}

void mnuCaptureStreamVideo_Click()
{
    Trapped(kModule, "mnuCaptureStreamVideo_Click", [] { turnOver(kVideo); });
}

void mnuaudiomaster_Click() { capture::chooseSyncMaster(1); }
void mnuvideomaster_Click() { capture::chooseSyncMaster(0); }
void mnuNone_Click() { capture::chooseSyncMaster(-1); }

void mnuCaptureCameraSettings_Click() { showDialog("mnuCaptureCameraSettings_Click", &ITWCapture::ShowCameraSettings); }

void mnuToolsVideoSettings_Click() { Trapped(kModule, "mnuToolsVideoSettings_Click", showVideoSettings); }

void mnuToolsAudioSettings_Click() { showDialog("mnuToolsAudioSettings_Click", &ITWCapture::ShowAudioSettings); }

void mnuToolsAudioFromats_Click() { showDialog("mnuToolsAudioFromats_Click", &ITWCapture::ShowAudioFormats); }

void mnutoolsOrignalSize_Click()
{
    form.IsMaximised = false;
    ResizeToCaptureDimension();
}

} // namespace frmCapture
