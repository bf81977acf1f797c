#pragma once

// What stands on the dialogue that asks for a capture's file and end, as state. Behaviour: `capture/`.

#include "core/controls.h"

namespace forms {

struct FrmCaptureValues {
    Shown<std::string> Caption;
    TextBox txtCaptureFile;
    CheckBox chkShowWindow;             // ticked: the dialogue stays away ahead of a capture
    Shown<bool> optDurationStop{false}; // else by hand
    TextBox txtDuration;                // seconds
    Shown<std::string> cmdOK;           // its caption, which says what the dialogue was opened for
};
inline FrmCaptureValues frmCaptureValues;

} // namespace forms
