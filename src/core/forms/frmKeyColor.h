#pragma once

// What stands on the dialogue for the key colour of an overlay, as state. Behaviour: `tools/`.

#include "core/controls.h"
#include "core/pixel_picture.h"
#include "engine/types.h"

namespace forms {

struct FrmKeyColor {
    std::int16_t KeyColorRed = 0, KeyColorGreen = 0, KeyColorBlue = 0; // 0 to 255; what OK sends
    std::int16_t SequenceNumber = 0;                                   // of the overlay
    engine::Handle StreamHandle = 0;                                   // of the overlay
    std::int32_t PickedRed = 0, PickedGreen = 0, PickedBlue = 0;       // below the dropper
    bool Picking = false;                                              // the pointer's button is down on the frame

    TextBox txtRed, txtGreen, txtBlue;
    Slider sldRed, sldGreen, sldBlue;       // 0 to 255
    Shown<std::int32_t> picCurrentColor{0}; // as the dialogue opened; red lowest
    Shown<std::int32_t> picColorDisplay{0}; // as it is chosen now
    PixelPicture picDisplay;                // the first frame of the overlay's stream
};
inline FrmKeyColor frmKeyColor;

} // namespace forms
