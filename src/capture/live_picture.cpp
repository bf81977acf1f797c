#include "capture/live_picture.h"

#include "capture/entries.h"
#include "core/forms/frmCapture.h"
#include "core/platform.h"
#include "core/upcalls.h"
#include "engine/ITWCapture.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/text_buffer.h"
#include "export/compression_lists.h"

#include <utility>

namespace capture {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;
using engine::kFalse;

namespace {

forms::FrmCapture& form = forms::frmCapture;

void note(const char* call, const engine::Status& status)
{
    try {
        check(status);
    } catch (const engine::RuntimeError& error) {
        ReportError("live_picture", std::string(call) + "*", error);
    }
}

/// A failure counts as no.
Answer answer(const char* call, const engine::Status& status, Bool16 ok)
{
    note(call, status);
    return {!status.failed() && ok != kFalse, status.text()};
}

std::string deviceAt(engine::Status (ITWCapture::*nameAt)(std::int16_t, engine::TextBuffer), std::int16_t index)
{
    constexpr std::size_t kLongestName = 128;
    return engine::textFrom(kLongestName,
                            [&](auto buffer) { return (EngineAs<ITWCapture>().get()->*nameAt)(index, buffer); });
}

DeviceStatus statusOf(engine::Status (ITWCapture::*ask)(std::int16_t&))
{
    auto status = static_cast<std::int16_t>(DeviceStatus::kNotFound);
    check((EngineAs<ITWCapture>().get()->*ask)(status));
    return static_cast<DeviceStatus>(status);
}

bool isCompressor(const std::string& name) { return !name.empty() && name != frmAdvancedSaveOptions::kUncompressed; }

Answer sayWhetherLive(Answer last)
{
    form.lblHint =
        last ? std::string()
             : "There is no picture. Connect the camera, close other programs that use it, and open this window again.";
    return last;
}

} // namespace

Answer init()
{
    Bool16 ok = kFalse;
    const engine::Status status = EngineAs<ITWCapture>()->InitCapture(ok);
    return answer("InitCapture", status, ok);
}

void release() { check(EngineAs<ITWCapture>()->ReleaseCapture()); }

void renew()
{
    release();
    init();
}

std::string stop()
{
    const engine::Status status = EngineAs<ITWCapture>()->StopCapture();
    note("StopCapture", status);
    return status.text();
}

DeviceStatus videoStatus() { return statusOf(&ITWCapture::GetVideoDeviceStatus); }

DeviceStatus audioStatus() { return statusOf(&ITWCapture::GetAudioDeviceStatus); }

void tellVideo(DeviceStatus status)
{
    if (status != DeviceStatus::kUsable) {
        tellUser(status == DeviceStatus::kNotFound ? "Video Device Not Found."
                                                   : "Video device could not be initialized.");
    }
}

void tellAudio(DeviceStatus status)
{
    if (status != DeviceStatus::kUsable) {
        tellUser(status == DeviceStatus::kNotFound ? "Audio device not found."
                                                   : "Audio device could not be initialized.");
    }
}

void setVideoDevice() { check(EngineAs<ITWCapture>()->SetVideoDevice(form.VideoDeviceName)); }

void setAudioDevice() { check(EngineAs<ITWCapture>()->SetAudioDevice(form.AudioDeviceName)); }

std::string videoDeviceAt(std::int16_t index) { return deviceAt(&ITWCapture::GetVideoDeviceName, index); }

std::string audioDeviceAt(std::int16_t index) { return deviceAt(&ITWCapture::GetAudioDeviceName, index); }

Answer build()
{
    const auto capture = EngineAs<ITWCapture>();
    if (isCompressor(form.CaptureVideoCompressor)) {
        check(capture->SetCaptureVideoCompressor(form.CaptureVideoCompressor));
    }
    if (isCompressor(form.CaptureAudioCompressor)) {
        check(capture->SetCaptureAudioCompressor(form.CaptureAudioCompressor));
    }
    Bool16 ok = kFalse;
    const engine::Status status = capture->BuildGraph(ok);
    return answer("BuildGraph", status, ok);
}

Answer setWindow()
{
    Bool16 ok = kFalse;
    const engine::Status status = EngineAs<ITWCapture>()->SetVideoWindow(form.picMainWorkspaceWnd, ok);
    return answer("SetVideoWindow", status, ok);
}

Answer run()
{
    Bool16 ok = kFalse;
    const engine::Status status = EngineAs<ITWCapture>()->RunGraph(ok);
    return answer("RunGraph", status, ok);
}

Window liveWindow() { return form.mnuCaptureStreamVideo.Checked ? Window::kWorkspace : Window::kNone; }

Answer runLive(Window window)
{
    Answer last{true, {}};
    if (window == Window::kWorkspace) {
        last = setWindow();
    }
    last = last ? run() : last;
    if (window == Window::kWorkspace) {
        keepPreviewOff(); // a window that is set shows
    }
    return sayWhetherLive(std::move(last));
}

Answer goLive(Window window)
{
    Answer built = build();
    return built ? runLive(window) : sayWhetherLive(std::move(built));
}

void rebuild()
{
    renew();
    setAudioDevice();
    setVideoDevice();
    goLive(form.VideoDeviceOk ? Window::kWorkspace : Window::kNone);
    tickAudioStream(form.AudioDeviceOk);
    tickVideoStream(form.VideoDeviceOk);
}

void keepPreviewOff()
{
    if (!form.mnuCapturePreview.Checked) {
        Bool16 off = kFalse;
        check(EngineAs<ITWCapture>()->SetPreviewing(off));
    }
}

} // namespace capture
