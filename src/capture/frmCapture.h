#pragma once

// The capture window: the picture of a camera as it comes, recorded with sound into an AVI or ASF file, and stills of
// it; both go on to the media list. All work with devices is the engine's; here are the order of its calls, the rules
// for files and for the end of a capture, and what is enabled when.
//
//     no device <- opening -> previewing -> capturing -> previewing       ends by hand, after a time, on a full disk,
//     or
//                                                                         with a device that is pulled out
//
// State: `forms::frmCapture`. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <functional>
#include <string_view>

namespace frmCapture {

/// Shows the window, which runs `Form_Load` as soon as it stands, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;
/// Makes the window as large as a picture of `CaptureWidth` x `CaptureHeight` wants it. Set by the screens.
inline std::function<void()> fitWindow;

void ShowModal();
/// Looks for the devices, tells what is missing, and brings the picture.
void Form_Load();
/// Gives all devices back.
void Form_Unload();
/// The workspace has a new size.
void Form_Resize(std::int32_t width, std::int32_t height);

/// The size of the picture that comes in; the window follows.
void ResizeToCaptureDimension();
void SetCaptureVideoDimension(std::int32_t width, std::int32_t height);
/// The screen is the camera of somebody who has none.
void cmdCaptureScreen_Click();

// --- Capturing: capture_run.cpp ------------------------------------------------------------------------------------

void mnuCaptureStart_Click();
void mnuCaptureStop_Click();
void tm_Timer();
bool IsCapturing();

// --- Devices and streams: capture_streams.cpp ----------------------------------------------------------------------

void mnuCapturePreview_Click();
void mnuCaptureStreamAudio_Click();
void mnuCaptureStreamVideo_Click();
void mnuaudiomaster_Click();
void mnuvideomaster_Click();
void mnuNone_Click();
void mnuCaptureCameraSettings_Click();
void mnuToolsVideoSettings_Click();
void mnuToolsAudioSettings_Click();
void mnuToolsAudioFromats_Click();
void mnutoolsOrignalSize_Click();

// --- What was captured: capture_files.cpp --------------------------------------------------------------------------

void mnuFileSetCapFile_Click();
void mnuFilePLCFile_Click();
void mnuFilePLCFrame_Click();
void mnuFileSaveas_Click();
void mnuFileExit_Click();
void mnuCaptureLCFtoML_Click();
void mnuCaptureLStoML_Click();
void mnuCaptureOptions_Click();
void mnuToolsTakeSnap_Click();
void mnuHelpContents_Click();

/// A button of the toolbar by its key; "CAPTURE_SETTINGS" opens the first of its entries that is enabled.
void tbr_ButtonClick(std::string_view key);

} // namespace frmCapture
