#pragma once

// What stands on the dialogue for the stretch mode, as state. Behaviour: `tools/`.

#include "core/controls.h"

namespace forms {

struct FrmStretchMode {
    // One of the four is chosen.
    Shown<bool> optStretch{true}, optCrop{false}, optPreserve{false}, optStretchPreserve{false};
    CheckBox chkApplyToEntireTrack;
    ImageBox imgPreview; // what the mode does, by its picture's key; none: empty
};
inline FrmStretchMode frmStretchMode;

} // namespace forms
