#pragma once

// What stands on the capture window, as state. Behaviour: `capture/`.
//
// Most of it begins anew with each opening; what stays for the whole run stands at the end.

#include "core/controls.h"
#include "engine/types.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace forms {

struct FrmCapture {
    Menu mnuFileSetCapFile, mnuFilePLCFile, mnuFilePLCFrame, mnuFileSaveas, mnuFileExit;
    Menu mnuCaptureStart, mnuCaptureStop, mnuCapturePreview, mnuCaptureStreamAudio, mnuCaptureStreamVideo,
        mnuaudiomaster, mnuvideomaster, mnuNone, mnuCaptureCameraSettings, mnuCaptureLCFtoML, mnuCaptureLStoML,
        mnuCaptureOptions;
    Menu mnuToolsTakeSnap, mnuToolsVideoSettings, mnuToolsAudioFromats, mnuToolsAudioSettings, mnutoolsOrignalSize;
    Menu mnuHelpContents;
    /// By their keys. The entries below "CAPTURE_SETTINGS" are those of the menus: one state for both.
    std::map<std::string_view, Button> tbr{
        {"SET_CAPTURE_FILE", {}}, {"START_CAPTURE", {}},    {"STOP_CAPTURE", {}}, {"TAKE_SNAP", {}},
        {"OPTIONS", {}},          {"CAPTURE_SETTINGS", {}}, {"HELP", {}}};
    Shown<bool> TakeSnapSeparatorVisible{true}; // in the menu and on the toolbar
    StatusBar sbr{"", "CAPTURE_STATUS", "SNAP_STATUS"};

    PictureBox picMainWorkspace;          // the live picture
    std::int32_t picMainWorkspaceWnd = 0; // its number among the engine's surfaces, given by the screens
    std::int32_t hWnd = 0;                // ... and that of the window's control panels
    Shown<std::string> lblHint;           // in place of a picture: why there is none, and what to do
    Button cmdCaptureScreen;              // below the hint
    Shown<bool> IsMaximised{false};
    Timer tm; // runs while capturing

    std::int16_t CaptureFormat = 0;   // 0 AVI, 1 ASF
    std::int16_t StopMode = 0;        // 0 by hand, 1 after `CaptureDuration`
    std::int32_t CaptureDuration = 0; // seconds
    std::string CaptureFile;          // may be blank
    std::int16_t ShowStartDialog = 1; // 1: ahead of each capture its file and end are asked for
    std::int16_t CaptureWidth = 320;  // pixels; of the picture that comes in
    std::int16_t CaptureHeight = 240;
    std::string CaptureProfileName;       // for ASF
    std::int16_t CaptureProfileIndex = 0; // its place in the options' list
    bool AudioStreamOn = true;            // as the two entries are ticked
    bool VideoStreamOn = true;
    std::int32_t CaptureStartTick = 0; // milliseconds
    bool MustEnumProfiles = false;     // the options have not listed them yet

    // For the whole run.
    bool VideoDeviceOk = false;
    bool AudioDeviceOk = false;
    bool CaptureAllowed = true;  // false: the question ahead of a capture was cancelled
    std::int16_t SyncMaster = 1; // 1 the picture follows the sound, 0 the sound the picture, -1 neither
    std::string VideoDeviceName, AudioDeviceName;
    std::string CaptureVideoCompressor, CaptureAudioCompressor; // blank: uncompressed
    std::string LastCapturedFile, LastSnapFile;                 // empty until there is one
};
inline FrmCapture frmCapture;

} // namespace forms
