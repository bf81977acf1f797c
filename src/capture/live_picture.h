#pragma once

// The engine's capture, in the steps that all commands of the capture window are made of.
//
// What answers no has failed, with the engine's words in the log; a picture that cannot be had is said in its place on
// the window. Other failures of the engine are raised. Interface thread only.

#include "engine/status.h"
#include "engine/types.h"

#include <cstdint>
#include <string>

namespace capture {

/// What a step came to. The text is the engine's, for people; often empty.
struct Answer {
    bool isOk = false;
    std::string text;

    explicit operator bool() const { return isOk; }
};

Answer init();
void release();
/// Released and made anew: no device is set, nothing compresses.
void renew();
/// What runs ends. Answers why a capture has ended early, if it did.
std::string stop();

enum class DeviceStatus : std::int16_t { kUsable, kNotFound, kNotInitialized };
/// Of the devices that take part.
DeviceStatus videoStatus();
DeviceStatus audioStatus();
/// Says in a box what is wrong with it, if anything is.
void tellVideo(DeviceStatus status);
void tellAudio(DeviceStatus status);

/// Those of the shared state.
void setVideoDevice();
void setAudioDevice();
std::string videoDeviceAt(std::int16_t index);
std::string audioDeviceAt(std::int16_t index);

/// Connects the devices; the chosen compressors go to the engine ahead of it.
Answer build();
/// The picture goes to the window's workspace.
Answer setWindow();
Answer run();
enum class Window { kNone, kWorkspace };
/// Of a picture, unless that stream is switched off.
Window liveWindow();
/// The window where there is one, and run. A preview that is switched off stays so.
Answer runLive(Window window);
/// The same behind build.
Answer goLive(Window window);
/// All of it anew with the stored devices, where nothing less helps; each stream that has one is on then.
void rebuild();

/// Where a window was set, and the preview is switched off.
void keepPreviewOff();

} // namespace capture
