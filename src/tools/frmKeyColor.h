#pragma once

// The dialogue that chooses the colour which an overlay loses, so that the video shows through: typed, by slider, one
// of eight primary colours, or picked with a dropper from the overlay's first frame.
//
//     box, slider, primary, dropper  ->  KeyColorRed, KeyColorGreen, KeyColorBlue  ->  OK: one step of the history
//
// Boxes and sliders follow each other. A text that is no number of 16 bits is passed over while it is typed: the colour
// stays, and OK sends it. A number outside 0 to 255 becomes the nearer end, in its box too.
//
// State: `forms::frmKeyColor`. Each routine traps its errors. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <functional>

namespace frmKeyColor {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

// What it opens with, to be set ahead of it. 0 to 255 each.
void SetRed(std::int16_t red);
void SetGreen(std::int16_t green);
void SetBlue(std::int16_t blue);
void SetRGB(std::int16_t red, std::int16_t green, std::int16_t blue);
void SetSequenceNumber(std::int16_t seq);
void SetStreamHandle(engine::Handle stream);

void ShowModal();
/// Draws the frame too, which takes at most two seconds; one that cannot be read leaves the picture black.
void Form_Load();

/// A primary colour: 0 black, 1 white, 2 red, 3 green, 4 blue, 5 magenta, 6 cyan, 7 yellow.
void lblPrimaryColors_Click(std::int16_t index);

// The dropper on the frame: pixels of the frame. Outside it the nearest one counts.
void imgDisplay_MouseDown(std::int32_t x, std::int32_t y);
void imgDisplay_MouseMove(std::int32_t x, std::int32_t y);
void imgDisplay_MouseUp();

void cmdOK_Click();
void cmdCancel_Click();

} // namespace frmKeyColor
