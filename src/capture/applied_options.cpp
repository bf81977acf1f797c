#include "capture/applied_options.h"

#include "capture/entries.h"
#include "capture/frmCapture.h"
#include "capture/frmCaptureOptions.h"
#include "capture/live_picture.h"
#include "core/file_text.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureOptions.h"
#include "core/platform.h"
#include "core/wait_cursor.h"
#include "media/working_folder.h"

#include <algorithm>
#include <filesystem>

namespace capture {

namespace {

constexpr std::int16_t kAsf = 1;

forms::FrmCaptureOptions& form = forms::frmCaptureOptions;
forms::FrmCapture& session = forms::frmCapture;

/// What the options change, to be put back where the engine refuses it.
struct Session {
    std::string videoDevice = session.VideoDeviceName;
    std::string audioDevice = session.AudioDeviceName;
    std::string videoCompressor = session.CaptureVideoCompressor;
    std::string audioCompressor = session.CaptureAudioCompressor;
    std::int16_t format = session.CaptureFormat;
    std::string profile = session.CaptureProfileName;
    std::int16_t profileIndex = session.CaptureProfileIndex;
    std::string file = session.CaptureFile;

    void putBack() const
    {
        session.VideoDeviceName = videoDevice;
        session.AudioDeviceName = audioDevice;
        session.CaptureVideoCompressor = videoCompressor;
        session.CaptureAudioCompressor = audioCompressor;
        session.CaptureFormat = format;
        session.CaptureProfileName = profile;
        session.CaptureProfileIndex = profileIndex;
        session.CaptureFile = file;
    }
};

/// A box that shows nothing leaves what is stored.
void takeChosen(std::string& stored, const ComboBox& box)
{
    const std::string chosen = file_text::Trimmed(chosenText(box));
    if (!chosen.empty()) {
        stored = chosen;
    }
}

/// One that could not be used so far, and cannot now, stays out: it must not keep the other from its work.
DeviceStatus takeDevice(std::string& stored, const ComboBox& box, void (*set)(), DeviceStatus (*status)())
{
    const bool wasOut = stored.empty();
    takeChosen(stored, box);
    set();
    const DeviceStatus now = wasOut && !stored.empty() ? status() : DeviceStatus::kUsable;
    if (now != DeviceStatus::kUsable) {
        stored.clear();
        set();
    }
    return now;
}

/// The devices at once, the compressors with the next build.
void takeDevices()
{
    tellVideo(takeDevice(session.VideoDeviceName, form.cmbVideoDevices, setVideoDevice, videoStatus));
    tellAudio(takeDevice(session.AudioDeviceName, form.cmbAudioDevices, setAudioDevice, audioStatus));
    takeChosen(session.CaptureVideoCompressor, form.cmbVideoCompressors);
    takeChosen(session.CaptureAudioCompressor, form.cmbAudioCompressors);
}

/// The name gets the format's ending; the dots inside it go, as they always have. Those of its folder are another
/// folder's name, and stay.
std::string withEnding(const std::string& file, const std::string& ending)
{
    if (file.empty()) {
        return media::inWorkingFolder("Capture1" + ending);
    }
    const std::filesystem::path path(file);
    std::string name = path.filename().string();
    name.resize(std::min(name.rfind('.'), name.size()));
    std::erase(name, '.');
    return (path.parent_path() / (name + ending)).string();
}

void takeFormat()
{
    session.CaptureFormat = form.optASF ? kAsf : std::int16_t{0};
    session.CaptureProfileName = chosenText(form.Profile.cboProfile);
    session.CaptureProfileIndex = static_cast<std::int16_t>(form.Profile.cboProfile.ListIndex.get());
    session.CaptureFile = withEnding(file_text::Trimmed(session.CaptureFile), form.optASF ? ".asf" : ".avi");
}

/// The devices that run are usable, whatever was found at the opening.
void noteDevices()
{
    session.VideoDeviceOk = session.VideoDeviceOk || !session.VideoDeviceName.empty();
    session.AudioDeviceOk = session.AudioDeviceOk || !session.AudioDeviceName.empty();
}

/// Both devices were set, so both streams run, if one was off before.
void tickStreams()
{
    if (session.AudioDeviceOk && !session.mnuCaptureStreamAudio.Checked) {
        tickAudioStream(true);
    }
    if (session.VideoDeviceOk && !session.mnuCaptureStreamVideo.Checked) {
        tickVideoStream(true);
    }
}

void goOnAsBefore(const Session& before)
{
    tellUser("Compressor Failure: Please select another compressor and try again.", MessageIcon::kCritical);
    before.putBack();
    stop();
    renew();
    if (session.mnuCaptureStreamVideo.Checked) {
        setVideoDevice();
    }
    if (session.mnuCaptureStreamAudio.Checked) { // one that is switched off is not to be heard
        setAudioDevice();
    }
    goLive(liveWindow());
    frmCapture::ResizeToCaptureDimension();
}

} // namespace

bool applyOptions(Options options)
{
    const WaitCursor wait;
    const Session before;
    renew();
    takeDevices();
    if (options == Options::kAll) {
        takeFormat();
    }
    if (!goLive(session.VideoDeviceName.empty() ? Window::kNone : Window::kWorkspace)) {
        goOnAsBefore(before);
        return false;
    }
    noteDevices();
    frmCaptureOptions::SaveTakeSnapOptions();
    tickStreams();
    frmCapture::ResizeToCaptureDimension();
    return true;
}

} // namespace capture
