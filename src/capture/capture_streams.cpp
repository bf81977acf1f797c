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

using capture::Window;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;

namespace {

constexpr const char* kModule = "frmCapture";

forms::FrmCapture& form = forms::frmCapture;

/// One of the two, seen from either side.
struct Stream {
    Menu& entry;
    Menu& other;
    void (*tick)(bool);
    void (*setDevice)();
    void (*setOther)();
};

const Stream kAudio{form.mnuCaptureStreamAudio, form.mnuCaptureStreamVideo, capture::tickAudioStream,
                    capture::setAudioDevice, capture::setVideoDevice};
const Stream kVideo{form.mnuCaptureStreamVideo, form.mnuCaptureStreamAudio, capture::tickVideoStream,
                    capture::setVideoDevice, capture::setAudioDevice};

void turnOver(const Stream& stream)
{
    const bool isOn = !stream.entry.Checked;
    if (!isOn && !stream.other.Checked) {
        tellUser("Atleast one stream (Video or Audio) should be kept selected.");
        return;
    }
    const WaitCursor wait;
    stream.tick(isOn);
    capture::stop();
    capture::renew();
    if (isOn) {
        stream.setDevice();
    }
    if (stream.other.Checked) {
        stream.setOther();
    }
    form.mnuCapturePreview.Checked = true; // ahead of the picture, which comes as it is ticked
    capture::goLive(capture::liveWindow());
    ResizeToCaptureDimension();
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
