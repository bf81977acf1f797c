#include "capture/menu_entries_form.h"

#include "capture/frmCapture.h"
#include "core/forms/frmCapture.h"

namespace frmCapture {

namespace {

constexpr Entry kRule{"", "", nullptr, nullptr, Kind::kRule};
constexpr Entry kSnapRule{"", "", nullptr, nullptr, Kind::kSnapRule};

forms::FrmCapture& f = forms::frmCapture;

} // namespace

const Entries kFile{
    {"mnuFileSetCapFile", "&Set Capture File...", &f.mnuFileSetCapFile, mnuFileSetCapFile_Click},
    kRule,
    {"mnuFilePLCFile", "&Play Last Captured File", &f.mnuFilePLCFile, mnuFilePLCFile_Click},
    {"mnuFilePLCFrame", "Play Last Captured F&rame", &f.mnuFilePLCFrame, mnuFilePLCFrame_Click},
    kRule,
    {"mnuFileSaveas", "Save Last Captured File &As...", &f.mnuFileSaveas, mnuFileSaveas_Click},
    kRule,
    {"mnuFileExit", "E&xit", &f.mnuFileExit, mnuFileExit_Click},
};
const Entries kCapture{
    {"mnuCaptureStart", "&Start Capture", &f.mnuCaptureStart, mnuCaptureStart_Click},
    {"mnuCaptureStop", "S&top Capture", &f.mnuCaptureStop, mnuCaptureStop_Click},
    kRule,
    {"mnuCapturePreview", "&Preview", &f.mnuCapturePreview, mnuCapturePreview_Click, Kind::kTick},
};
const Entries kStreams{
    {"mnuCaptureStreamAudio", "&Audio", &f.mnuCaptureStreamAudio, mnuCaptureStreamAudio_Click, Kind::kTick},
    {"mnuCaptureStreamVideo", "&Video", &f.mnuCaptureStreamVideo, mnuCaptureStreamVideo_Click, Kind::kTick},
};
const Entries kSynchronize{
    {"mnuaudiomaster", "&Video to Audio", &f.mnuaudiomaster, mnuaudiomaster_Click, Kind::kChoice},
    {"mnuvideomaster", "&Audio to Video", &f.mnuvideomaster, mnuvideomaster_Click, Kind::kChoice},
    {"mnuNone", "&None", &f.mnuNone, mnuNone_Click, Kind::kChoice},
};
const Entries kCaptureRest{
    kRule,
    {"mnuCaptureCameraSettings", "&Camera Settings...", &f.mnuCaptureCameraSettings, mnuCaptureCameraSettings_Click},
    kRule,
    {"mnuCaptureLCFtoML", "Add Last Captured &File to Media List", &f.mnuCaptureLCFtoML, mnuCaptureLCFtoML_Click},
    {"mnuCaptureLStoML", "Add &Last Snap to Media List", &f.mnuCaptureLStoML, mnuCaptureLStoML_Click},
    kRule,
    {"mnuCaptureOptions", "&Options...", &f.mnuCaptureOptions, mnuCaptureOptions_Click},
};
const Entries kTools{
    {"mnuToolsTakeSnap", "&Take Snap", &f.mnuToolsTakeSnap, mnuToolsTakeSnap_Click},
    kSnapRule,
    {"mnuToolsVideoSettings", "&Video Settings...", &f.mnuToolsVideoSettings, mnuToolsVideoSettings_Click},
    {"mnuToolsAudioFromats", "Audio &Formats...", &f.mnuToolsAudioFromats, mnuToolsAudioFromats_Click},
    {"mnuToolsAudioSettings", "&Audio Settings...", &f.mnuToolsAudioSettings, mnuToolsAudioSettings_Click},
    kRule,
    {"mnutoolsOrignalSize", "&Restore Size", &f.mnutoolsOrignalSize, mnutoolsOrignalSize_Click},
};
const Entries kHelp{
    {"mnuHelpContents", "&Contents", &f.mnuHelpContents, mnuHelpContents_Click, Kind::kEntry, "F1"},
};

} // namespace frmCapture
