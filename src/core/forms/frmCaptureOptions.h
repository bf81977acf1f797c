#pragma once

// What stands on the dialogue of capture options, as state. Behaviour: `capture/`.

#include "core/dimension_boxes.h"
#include "core/forms/compression.h"

namespace forms {

struct FrmCaptureOptions {
    Observed<std::string> tbs{"SAVE"}; // the tab in front, else "TAKE_SNAP"
    Shown<bool> TakeSnapTabVisible{true};

    ComboBox cmbVideoDevices, cmbAudioDevices, cmbVideoCompressors, cmbAudioCompressors;
    Shown<bool> optASF{false}; // else AVI
    ProfileChoice Profile;
    Button cmdCustomProfile;

    Shown<bool> optSaveSnapOthDim{false}; // else in the size of the capture
    DimensionBoxes SnapDimension;
    TextBox txtSnapFolder;
    Button cmdOK, cmdApply;
};
inline FrmCaptureOptions frmCaptureOptions;

} // namespace forms
