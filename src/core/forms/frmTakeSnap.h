#pragma once

// What stands on the window that saves a still of the timeline, as state. Behaviour: `tools/`.

#include "core/dimension_boxes.h"
#include "core/pixel_picture.h"

#include <cstdint>
#include <string>

namespace forms {

struct FrmTakeSnap {
    PixelPicture picWorkspace; // the still in its present size
    DimensionBoxes Dimension;  // without its list
    TextBox txtSaveTo;
    Button cmdOK;

    std::int32_t SnapWidth = 0; // pixels
    std::int32_t SnapHeight = 0;
    double SnapAspect = 1; // width to height at the start
    std::string SnapBaseName;
    std::string SnapTempFile; // the piece of the movie from which the still is drawn
};
inline FrmTakeSnap frmTakeSnap;

} // namespace forms
