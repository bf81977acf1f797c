#pragma once

// Capture from a camera and a microphone. Operations come from the interface thread; opening a device and ending a
// capture take the time that driver and compressor need (seconds at most), all else returns at once. Device statuses:
// 0 usable, 1 not found, 2 cannot be initialised.
//
//     InitCapture -> SetVideoDevice, SetAudioDevice -> BuildGraph -> SetVideoWindow -> RunGraph        live picture
//                    StartCaptureToFile -> SetVideoWindow -> RunGraph                                  capture
//                    StopCapture -> BuildGraph -> SetVideoWindow -> RunGraph                           live again
//
// Once a device has been set since InitCapture, only those that were set take part; with none set, the first of each
// kind do. The screen counts as a camera only once it has been set by its name.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWCapture {
public:
    virtual ~ITWCapture() = default;

    /// Both compressors are "Uncompressed" again, no device is set.
    virtual Status InitCapture(Bool16& ok) = 0;
    virtual Status ReleaseCapture() = 0;
    /// Of the device that takes part, asked at any time after InitCapture: one that has been pulled out is not found.
    virtual Status GetVideoDeviceStatus(std::int16_t& status) = 0;
    virtual Status GetAudioDeviceStatus(std::int16_t& status) = 0;
    /// Called only when the window closes, second.
    virtual Status TearDownCapture() = 0;
    /// Called only when the window closes, first.
    virtual Status TearDownPreview() = 0;
    /// A name that is blank, or of no device: none takes part.
    virtual Status SetVideoDevice(Text name) = 0;
    virtual Status SetAudioDevice(Text name) = 0;
    virtual Status SetCaptureAudioCompressor(Text name) = 0;
    virtual Status SetCaptureVideoCompressor(Text name) = 0;
    /// Buffer of 128; blank behind the last.
    virtual Status GetVideoDeviceName(std::int16_t index, TextBuffer buffer) = 0;
    virtual Status GetAudioDeviceName(std::int16_t index, TextBuffer buffer) = 0;
    /// format: 0 AVI, 1 ASF. syncMaster: 1 video follows audio, 0 audio follows video, -1 neither.
    /// ok false: a compressor refuses. A path that cannot be written fails with the cause as a sentence for people.
    virtual Status StartCaptureToFile(Text path, std::int16_t format, std::int16_t syncMaster, Bool16& ok) = 0;
    /// Pictures in the file, and pictures that came and are not in it; both stay until the next StartCaptureToFile.
    /// While a capture runs, a sentence in the status of the first says that it has ended by itself, and why.
    virtual Status GetFramesCaptured(std::int32_t& count) = 0;
    virtual Status GetFramesDropped(std::int32_t& count) = 0;
    /// Places the live picture in its window, logical pixels.
    virtual Status SetVideoPosition(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
    /// 320 x 240 while no picture comes in.
    virtual Status GetCaptureSize(std::int32_t& width, std::int32_t& height) = 0;
    /// These four run on the window's control-panel host. A device without such controls shows an empty panel.
    virtual Status ShowCameraSettings(std::int32_t parentWindow) = 0;
    /// result: 0 nothing done, 1 the size or the rate may be another, 2 the driver has no such dialogue.
    virtual Status ShowVideoSettings(std::int32_t parentWindow, std::int16_t& result) = 0;
    virtual Status ShowAudioSettings(std::int32_t parentWindow) = 0;
    virtual Status ShowAudioFormats(std::int32_t parentWindow) = 0;
    virtual Status SetPreviewing(Bool16& on) = 0;
    /// Connects the devices. 1 is success, 0 failure.
    virtual Status BuildGraph(Bool16& ok) = 0;
    virtual Status SetVideoWindow(std::int32_t windowHandle, Bool16& ok) = 0;
    /// After StartCaptureToFile false also where no device is left, or a profile wants a stream that none gives.
    virtual Status RunGraph(Bool16& ok) = 0;
    /// When it returns, a capture's file is whole. The sentence of its status tells why it ended early, if it did (a
    /// full disk): the file plays up to there; or that the disk, after some seconds, has not taken all of it yet.
    virtual Status StopCapture() = 0;
    /// Writes a bitmap of the current frame; -1, -1 means the size of the incoming picture.
    virtual Status TakeSnap(Text path, std::int16_t width, std::int16_t height) = 0;
};

} // namespace engine
