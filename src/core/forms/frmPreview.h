#pragma once

// What stands on the preview player's form, as state.

#include "core/controls.h"

namespace forms {

struct FrmPreview {
    Slider sldPreview;       // its value is the playing position in ms
    Label lblPosition;       // the same as text
    std::int32_t Volume = 0; // -100 silent to 0 full
};
inline FrmPreview frmPreview;

} // namespace forms
