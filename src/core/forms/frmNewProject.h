#pragma once

// What stands on the dialogue for a new project, as state. Behaviour: `project/`.

#include "core/controls.h"

namespace forms {

struct FrmNewProject {
    ComboBox cboPreviewDimension;

    // The size: of the entry that is chosen, or the person's own.
    Shown<bool> fmeCustomPreviewEnabled{false};
    TextBox txtWidth, txtHeight; // pixels
    Shown<bool> lblIntoEnabled{false};
    CheckBox chkLockAspectRatio;
    double AspectRatio = 0;     // width to height, which the lock keeps
    bool DimensionGuard = true; // false while one of the boxes is written by the lock

    TextBox txtPath; // the working folder

    bool IsAccepted = false; // it was left by OK
};
inline FrmNewProject frmNewProject;

} // namespace forms
