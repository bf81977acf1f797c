#include "capture/entries.h"

#include "core/forms/frmCapture.h"

namespace capture {

namespace {

forms::FrmCapture& form = forms::frmCapture;

void enableAll(bool isOn)
{
    enable({&form.mnuFileSetCapFile, &form.mnuFilePLCFile, &form.mnuFilePLCFrame, &form.mnuFileSaveas,
            &form.mnuCaptureStart, &form.mnuCaptureStop, &form.mnuCapturePreview, &form.mnuCaptureLCFtoML,
            &form.mnuCaptureLStoML, &form.mnuCaptureOptions, &form.mnuToolsTakeSnap, &form.mnutoolsOrignalSize,
            &form.mnuFileExit, &form.mnuHelpContents},
           isOn);
    enableStreams(isOn);
    enableSynchronize(isOn);
    enableAudioEntries(isOn);
    enableVideoEntries(isOn);
    for (auto& [key, button] : form.tbr) {
        button.Enabled = isOn;
    }
}

} // namespace

void EnableAllMenuItems() { enableAll(true); }

void DisableAllMenuItems()
{
    enableAll(false);
    enable({&form.mnuFileExit, &form.mnuHelpContents}, true);
    enableButtons({"HELP"}, true);
}

void enable(std::initializer_list<Menu*> entries, bool isOn)
{
    for (Menu* const entry : entries) {
        entry->Enabled = isOn;
    }
}

void enableButtons(std::initializer_list<const char*> keys, bool isOn)
{
    for (const char* const key : keys) {
        form.tbr.at(key).Enabled = isOn;
    }
}

void enableAudioEntries(bool isOn) { enable({&form.mnuToolsAudioFromats, &form.mnuToolsAudioSettings}, isOn); }

void enableVideoEntries(bool isOn) { enable({&form.mnuToolsVideoSettings, &form.mnuCaptureCameraSettings}, isOn); }

void enableSynchronize(bool isOn) { enable({&form.mnuaudiomaster, &form.mnuvideomaster, &form.mnuNone}, isOn); }

void enableStreams(bool isOn) { enable({&form.mnuCaptureStreamAudio, &form.mnuCaptureStreamVideo}, isOn); }

void tickAudioStream(bool isOn)
{
    form.mnuCaptureStreamAudio.Checked = isOn;
    form.AudioStreamOn = isOn;
    enableSynchronize(isOn && form.VideoStreamOn);
    enableAudioEntries(isOn);
}

void tickVideoStream(bool isOn)
{
    form.mnuCaptureStreamVideo.Checked = isOn;
    form.VideoStreamOn = isOn;
    enableSynchronize(isOn && form.AudioStreamOn);
    enableVideoEntries(isOn);
}

void chooseSyncMaster(std::int16_t master)
{
    form.SyncMaster = master;
    form.mnuaudiomaster.Checked = master == 1;
    form.mnuvideomaster.Checked = master == 0;
    form.mnuNone.Checked = master == -1;
}

void showCapturing(bool isOn) { form.sbr.Panel("CAPTURE_STATUS") = std::string(isOn ? "CAPTURE_ON" : "CAPTURE_OFF"); }

void showSnapping(bool isOn) { form.sbr.Panel("SNAP_STATUS") = std::string(isOn ? "SNAP_ON" : "SNAP_OFF"); }

} // namespace capture
