#pragma once

// What stands on the dialogue of the preferences, as state. Behaviour: `shell/`; their way to the settings and back:
// `settings/`.

#include "core/dimension_boxes.h"
#include "core/forms/compression.h"

namespace forms {

/// One of the two profiles: a choice of three, of all, and what it is.
struct PreferredProfile {
    ComboBox cboSetting;
    ComboBox cboProfile;
    Shown<std::string> txtProfile; // its description
};

/// One that the screens can speak.
struct Language {
    std::string code; // empty: as the desktop has it
    std::string name; // in itself
};

struct FrmPreferences {
    Shown<std::string> tbSettings{"GENERAL"}; // the tab in front, else "AVI_SAVE_OPTIONS" or "WMF_SAVE_OPTIONS"

    CheckBox chkDoNotShowTutorial, chkPreview;
    ComboBox cboLanguage;            // of the screens, from the next start on
    std::vector<Language> Languages; // the same; the screens say which there are
    TextBox txtPath;                 // the working folder
    Shown<std::int32_t> lblVideoColor, lblAudioColor, lblEffectColor, lblOverlayColor; // of their backs; red lowest

    ComboBox cboVideoCompressorST, cboAudioCompressorST;
    CompressionValues Values; // their boxes are always set
    DimensionBoxes VideoDimension;

    PreferredProfile Video, Audio;

    Button cmdApply;
};
inline FrmPreferences frmPreferences;

} // namespace forms
