// A capture: its file, its beginning, the look at it thirty times a second, its end.

#include "capture/capture_file.h"
#include "capture/entries.h"
#include "capture/frmCapture.h"
#include "capture/frmCaptureValues.h"
#include "capture/live_picture.h"
#include "core/forms/frmCapture.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "engine/ITWCapture.h"
#include "engine/ITWProfiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/moduleProfiles.h"

#include <optional>

namespace frmCapture {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmCapture";
constexpr std::int16_t kAsf = 1;

forms::FrmCapture& form = forms::frmCapture;

/// Of the capture that runs.
struct Running {
    std::shared_ptr<void> awake;
    bool hasVideo = false; // such a device took part at the start
    bool hasAudio = false;
    std::optional<std::uint32_t> askedTick; // when the volume was asked last
    std::int64_t freeBytes = 0;             // ... and what it had then
};
std::optional<Running> running;

double secondsPassed()
{
    constexpr double kMsPerSecond = 1000;
    return (ports.events->ticks() - static_cast<std::uint32_t>(form.CaptureStartTick)) / kMsPerSecond;
}

// --- The beginning -------------------------------------------------------------------------------------------------

/// The index is the place in the options' list, which leaves out profiles of sound alone; captures have long gone by
/// it.
void openProfile()
{
    const auto profiles = EngineAs<engine::ITWProfiles>();
    Bool16 ok = kFalse;
    check(moduleProfiles::IsSystemProfile(form.CaptureProfileName)
              ? profiles->OpenSystemProfile(form.CaptureProfileIndex, ok)
              : profiles->OpenProfile(form.CaptureProfileName, ok));
}

void enableDeviceEntries()
{
    capture::enable({&form.mnuFileSetCapFile}, true);
    if (form.AudioDeviceOk) {
        capture::enableAudioEntries(true);
    }
    if (form.VideoDeviceOk) {
        capture::enableVideoEntries(true);
    }
    capture::enable({&form.mnuCaptureOptions}, true);
    capture::enableStreams(true);
}

/// The live picture comes back, so that the person can choose again.
void recover()
{
    form.sbr.Panel(1) = std::string();
    capture::showCapturing(false);
    capture::goLive(capture::liveWindow());
    enableDeviceEntries();
}

/// What the engine could not write, or a compressor that refuses.
void giveUp(const std::string& text, MessageIcon icon)
{
    form.tm.Enabled = false;
    tellUser(text, icon);
    recover();
    capture::enable({&form.mnuCaptureStart}, true);
    capture::enableButtons({"START_CAPTURE"}, true);
}

/// Nothing comes from the devices into the file.
void tellSilence(const std::string& why)
{
    const bool isOneOff = !form.mnuCaptureStreamVideo.Checked || !form.mnuCaptureStreamAudio.Checked;
    if (form.CaptureFormat == kAsf && isOneOff) {
        tellUser("You must enable both the streams (Video and Audio) to capture in ASF.");
    } else {
        tellUser(why.empty() ? "Unable to initialize capture device. It may be busy or not installed." : why,
                 MessageIcon::kCritical);
    }
}

/// Nothing where the engine cannot say.
std::optional<bool> isUsable(engine::Status (ITWCapture::*ask)(std::int16_t&))
{
    std::int16_t status = 0;
    const bool isKnown = !(EngineAs<ITWCapture>().get()->*ask)(status).failed();
    return isKnown ? std::optional(status == 0) : std::nullopt;
}

void begin()
{
    running.emplace();
    running->awake = ports.machine->keepAwake("Capturing a movie");
    running->hasVideo = form.VideoStreamOn && isUsable(&ITWCapture::GetVideoDeviceStatus).value_or(false);
    running->hasAudio = form.AudioStreamOn && isUsable(&ITWCapture::GetAudioDeviceStatus).value_or(false);
    form.tm.Enabled = true;
    capture::keepPreviewOff();
    capture::enable({&form.mnuCaptureStart, &form.mnuCaptureOptions, &form.mnuFileSetCapFile, &form.mnuToolsTakeSnap,
                     &form.mnuFilePLCFile, &form.mnuFilePLCFrame, &form.mnuCaptureLCFtoML, &form.mnuCaptureLStoML,
                     &form.mnuFileSaveas},
                    false);
    capture::enableAudioEntries(false);
    capture::enableVideoEntries(false);
    capture::enableStreams(false);
    capture::enableSynchronize(false);
    capture::enable({&form.mnuCaptureStop}, true);
    capture::enableButtons({"START_CAPTURE", "OPTIONS", "TAKE_SNAP", "SET_CAPTURE_FILE", "CAPTURE_SETTINGS"}, false);
    capture::enableButtons({"STOP_CAPTURE"}, true);
}

/// Whether the engine has made the file; else the person knows why not.
bool isFileStarted()
{
    Bool16 ok = kFalse;
    try {
        check(EngineAs<ITWCapture>()->StartCaptureToFile(form.CaptureFile, form.CaptureFormat, form.SyncMaster, ok));
    } catch (const engine::RuntimeError& error) { // of the disk or the name, and no fault of ours
        ReportError(kModule, "StartCaptureToFile*", error);
        giveUp(error.what(), MessageIcon::kCritical);
        return false;
    }
    if (ok == kFalse) {
        giveUp("Compressor Failure: Please select another compressor and try again.", MessageIcon::kInformation);
    }
    return ok != kFalse;
}

/// Of what is ticked. A device that has gone meanwhile would be missed only in the finished file.
bool areDevicesUsable()
{
    using capture::DeviceStatus;
    const WaitCursor wait;
    const auto video = [] { return form.VideoStreamOn ? capture::videoStatus() : DeviceStatus::kUsable; };
    const auto audio = [] { return form.AudioStreamOn ? capture::audioStatus() : DeviceStatus::kUsable; };
    if (video() == DeviceStatus::kUsable && audio() == DeviceStatus::kUsable) {
        return true;
    }
    capture::goLive(capture::liveWindow()); // it may have been plugged in again
    const DeviceStatus lastVideo = video();
    const DeviceStatus lastAudio = audio();
    capture::tellVideo(lastVideo);
    capture::tellAudio(lastAudio);
    return lastVideo == DeviceStatus::kUsable && lastAudio == DeviceStatus::kUsable;
}

void StartCapture()
{
    if (!form.CaptureAllowed) {
        form.CaptureAllowed = true;
        return;
    }
    form.CaptureFile = capture::fileToCapture();
    if (!areDevicesUsable() || !capture::isPlaceFree(form.CaptureFile)) {
        return;
    }
    const WaitCursor wait;
    if (form.CaptureFormat == kAsf) {
        openProfile();
    }
    if (!isFileStarted()) {
        return;
    }
    form.CaptureStartTick = static_cast<std::int32_t>(ports.events->ticks());
    if (form.VideoDeviceOk) {
        capture::setWindow();
    }
    if (const capture::Answer ran = capture::run()) {
        begin();
    } else {
        form.tm.Enabled = false;
        tellSilence(ran.text);
        recover();
    }
}

// --- While it runs -------------------------------------------------------------------------------------------------

/// A volume that keeps silent, or cannot be asked, ends no capture. One with room for a second of anything is asked
/// once a second, any other at each tick.
bool isDiskFull()
{
    constexpr std::int64_t kLeastFreeBytes = 10'485'760;
    constexpr std::int64_t kAmpleBytes = std::int64_t{1} << 30;
    constexpr std::uint32_t kPauseMs = 1000;
    constexpr std::int32_t kMomentMs = 20;
    const std::uint32_t now = ports.events->ticks();
    if (running->askedTick && running->freeBytes > kAmpleBytes && now - *running->askedTick < kPauseMs) {
        return false;
    }
    const VolumeNews news = ports.machine->askVolume(form.CaptureFile, kMomentMs);
    running->askedTick = now;
    running->freeBytes = news.freeBytes.value_or(kAmpleBytes + 1); // one that cannot say is not asked more often
    return news.hasAnswered && news.freeBytes && *news.freeBytes <= kLeastFreeBytes;
}

bool isDeviceGone()
{
    return (running->hasVideo && !isUsable(&ITWCapture::GetVideoDeviceStatus).value_or(true))
           || (running->hasAudio && !isUsable(&ITWCapture::GetAudioDeviceStatus).value_or(true));
}

/// Nothing is written any more, of a disk that failed or a compressor that gave up.
bool hasEnded()
{
    std::int32_t ignored = 0;
    const engine::Status status = EngineAs<ITWCapture>()->GetFramesCaptured(ignored);
    return !status.failed() && !status.text().empty();
}

void showCounters(double seconds)
{
    const std::string whole = std::to_string(numbers::rounded<std::int32_t>(seconds));
    if (!form.mnuCaptureStreamVideo.Checked) {
        form.sbr.Panel(1) = "Captured Audio " + whole + " Seconds";
        return;
    }
    std::int32_t captured = 0;
    std::int32_t dropped = 0;
    check(EngineAs<ITWCapture>()->GetFramesCaptured(captured));
    check(EngineAs<ITWCapture>()->GetFramesDropped(dropped));
    form.sbr.Panel(1) = std::to_string(captured) + " Frames Captured, " + std::to_string(dropped) + " Frames Dropped, "
                        + whole + " Seconds Captured";
}

/// The file is whole before anybody has to answer a box.
void endWith(const char* text, MessageIcon icon)
{
    form.tm.Enabled = false;
    mnuCaptureStop_Click();
    tellUser(text, icon);
}

void tick()
{
    if (isDiskFull()) {
        endWith("Insufficient Disk Space.", MessageIcon::kCritical);
        return;
    }
    if (isDeviceGone()) {
        endWith("The capture device has been removed. The movie holds what was captured up to there.",
                MessageIcon::kInformation);
        return;
    }
    if (hasEnded()) {
        mnuCaptureStop_Click(); // which says why
        return;
    }
    const double seconds = secondsPassed();
    showCounters(seconds);
    if (form.StopMode == 1 && seconds >= form.CaptureDuration) {
        form.tm.Enabled = false;
        mnuCaptureStop_Click();
    }
}

// --- The end -------------------------------------------------------------------------------------------------------

void previewAgain()
{
    if (capture::build()) {
        capture::runLive(capture::liveWindow());
    } else {
        capture::rebuild();
    }
}

void enableAfterStop()
{
    capture::enable({&form.mnuCaptureStart, &form.mnuCaptureOptions, &form.mnuToolsTakeSnap, &form.mnuFilePLCFile,
                     &form.mnuCaptureLCFtoML},
                    true);
    capture::enableSynchronize(true);
    if (!form.LastSnapFile.empty()) {
        capture::enable({&form.mnuFilePLCFrame, &form.mnuCaptureLStoML}, true);
    }
    capture::enableButtons({"START_CAPTURE", "OPTIONS", "TAKE_SNAP", "SET_CAPTURE_FILE", "CAPTURE_SETTINGS"}, true);
    capture::enableButtons({"STOP_CAPTURE"}, false);
    capture::showCapturing(false);
}

/// Answers why the capture has ended before, if it did.
std::string stop()
{
    const double seconds = secondsPassed();
    std::string why = capture::stop();
    form.tm.Enabled = false;
    if (running) {
        showCounters(seconds); // what was still on its way to the file at the last tick is in it now, or lost
    }
    running.reset();
    capture::enable({&form.mnuCaptureStop}, false);
    capture::enableButtons({"STOP_CAPTURE"}, false);
    capture::enableButtons({"OPTIONS"}, true);
    capture::enable({&form.mnuFileSetCapFile}, true);
    if (form.mnuCaptureStreamAudio.Checked) {
        capture::enableAudioEntries(true);
    }
    if (form.mnuCaptureStreamVideo.Checked) {
        capture::enableVideoEntries(true);
    }
    capture::enableStreams(true);
    form.LastCapturedFile = form.CaptureFile;
    capture::enable({&form.mnuCaptureLCFtoML, &form.mnuFilePLCFile, &form.mnuFileSaveas}, true);
    return why;
}

} // namespace

bool IsCapturing() { return running.has_value(); }

void mnuCaptureStart_Click()
{
    if (IsCapturing()) {
        return;
    }
    Trapped(kModule, "mnuCaptureStart_Click", [] {
        if (form.ShowStartDialog == 1) {
            frmCaptureValues::ShowModal("Start Capture", "Start");
        }
        capture::showCapturing(true);
        StartCapture();
    });
    if (!IsCapturing()) { // for whatever reason
        capture::showCapturing(false);
    }
}

void mnuCaptureStop_Click()
{
    std::string why;
    {
        const WaitCursor wait;
        Trapped(kModule, "mnuCaptureStop_Click", [&] { why = stop(); });
        Trapped(kModule, "mnuCaptureStop_Click", previewAgain);
    }
    Form_Resize(form.picMainWorkspace.ScaleWidth, form.picMainWorkspace.ScaleHeight);
    enableAfterStop();
    if (!why.empty()) {
        tellUser(why);
    }
}

void tm_Timer()
{
    if (running) {
        Trapped(kModule, "tm_Timer*", tick);
    }
}

} // namespace frmCapture
