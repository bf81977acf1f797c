#pragma once

// What stands on the dialogue of advanced save options, as state. Behaviour: `export/`.
//
// The names of the compressors and the descriptive texts stay while the dialogue is closed: the end of a save reads
// them.

#include "core/dimension_boxes.h"
#include "core/forms/compression.h"

namespace forms {

struct FrmAdvancedSaveOptions {
    Shown<std::string> tbs{"AVI_OPTIONS"}; // the tab in front, else "WMF_OPTIONS"

    ComboBox cboVideoCompressor, cboAudioCompressor;
    CompressionValues Values;
    CheckBox chkCopyUnchanged;
    DimensionBoxes VideoDimension;

    ProfileChoice Profile;
    Shown<std::string> txtDimension, txtFrameRate, txtFrequency; // of the profile

    TextBox txtTitle, txtAuthor, txtRating, txtCopyright, txtDescription;

    bool CopyUnchanged = true; // as the engine was told last
    std::string VideoCompressorName, AudioCompressorName;
    std::string Title, Author, Rating, Copyright, Description; // without blanks around them
};
inline FrmAdvancedSaveOptions frmAdvancedSaveOptions;

} // namespace forms
