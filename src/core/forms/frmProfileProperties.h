#pragma once

// What stands on the dialogue of a profile's properties, as state. Behaviour: `export/`.

#include "core/controls.h"

#include <array>

namespace forms {

/// A stream of pictures, column by column: number, name, bit rate, frame rate, key frame interval, quality.
using StreamDetails = std::array<std::string, 6>;

struct FrmProfileProperties {
    Shown<std::string> txtProfileName, txtDescription, txtTotalStreams;
    Shown<std::string> txtVideoDimension, txtAudioFormat;
    Shown<std::vector<StreamDetails>> lvwStreamDetails; // none: there is no tab "VIDEO"

    std::int16_t iSystemIndex = 0;
    std::string sName; // of one of the person's own
    bool bSystemProfileSet = false;
};
inline FrmProfileProperties frmProfileProperties;

} // namespace forms
