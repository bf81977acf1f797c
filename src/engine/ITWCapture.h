#pragma once

// Capture from a camera and a microphone. Operations come from the interface thread; opening a device takes the time
// that its driver needs, all else returns at once. Device statuses: 0 usable, 1 not found, 2 cannot be initialised.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWCapture {
public:
    virtual ~ITWCapture() = default;

    virtual Status InitCapture(Bool16& ok) = 0;
    virtual Status ReleaseCapture() = 0;
    virtual Status GetVideoDeviceStatus(std::int16_t& status) = 0;
    virtual Status GetAudioDeviceStatus(std::int16_t& status) = 0;
    /// Called only when the window closes, second.
    virtual Status TearDownCapture() = 0;
    /// Called only when the window closes, first.
    virtual Status TearDownPreview() = 0;
    virtual Status SetVideoDevice(Text name) = 0;
    virtual Status SetAudioDevice(Text name) = 0;
    virtual Status SetCaptureAudioCompressor(Text name) = 0;
    virtual Status SetCaptureVideoCompressor(Text name) = 0;
    /// Buffer of 128; blank behind the last.
    virtual Status GetVideoDeviceName(std::int16_t index, TextBuffer buffer) = 0;
    virtual Status GetAudioDeviceName(std::int16_t index, TextBuffer buffer) = 0;
    /// format: 0 AVI, 1 ASF. syncMaster: 1 video follows audio, 0 audio follows video, -1 neither.
    /// ok false: a compressor refuses.
    virtual Status StartCaptureToFile(Text path, std::int16_t format, std::int16_t syncMaster, Bool16& ok) = 0;
    virtual Status GetFramesCaptured(std::int32_t& count) = 0;
    virtual Status GetFramesDropped(std::int32_t& count) = 0;
    /// Places the live picture in its window, logical pixels.
    virtual Status SetVideoPosition(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
    virtual Status GetCaptureSize(std::int32_t& width, std::int32_t& height) = 0;
    virtual Status ShowCameraSettings(std::int32_t parentWindow) = 0;
    /// result: 0 nothing done, 2 the driver has no such dialogue.
    virtual Status ShowVideoSettings(std::int32_t parentWindow, std::int16_t& result) = 0;
    virtual Status ShowAudioSettings(std::int32_t parentWindow) = 0;
    virtual Status ShowAudioFormats(std::int32_t parentWindow) = 0;
    virtual Status SetPreviewing(Bool16& on) = 0;
    /// Connects the devices. 1 is success, 0 failure.
    virtual Status BuildGraph(Bool16& ok) = 0;
    virtual Status SetVideoWindow(std::int32_t windowHandle, Bool16& ok) = 0;
    virtual Status RunGraph(Bool16& ok) = 0;
    virtual Status StopCapture() = 0;
    /// Writes a bitmap of the current frame; -1, -1 means the size of the incoming picture.
    virtual Status TakeSnap(Text path, std::int16_t width, std::int16_t height) = 0;
};

} // namespace engine
