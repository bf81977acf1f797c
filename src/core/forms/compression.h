#pragma once

// Controls that several dialogues about saving share, as state.

#include "core/controls.h"

namespace forms {

/// One number of a compression: whether it is set at all, a slider for it, and the label that says its value.
struct CompressionValue {
    CheckBox chk;
    Slider sld;
    Shown<std::string> lbl;
    Shown<bool> lblEnabled{true};
};

struct CompressionValues {
    CompressionValue FrameRate;       // frames a second
    CompressionValue KeyFrameRate;    // frames
    CompressionValue PFrameFrequency; // frames
    CompressionValue Quality;         // per cent
};

/// A Windows Media profile, by a setting that names one or as one of all.
struct ProfileChoice {
    ComboBox cboSetting;
    ComboBox cboProfile;
    TextBox txtProfile; // in place of the list where the setting has chosen: seen, not changed
    Shown<bool> txtProfileVisible{false};
};

} // namespace forms
