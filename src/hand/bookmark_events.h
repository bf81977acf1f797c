#pragma once

// Markers by the hand: their buttons and menu, and the drag along the scale. Nothing is raised to the caller. Interface
// thread only.

#include <cstdint>

namespace frmTimeline {

void cmdAddBookmark_Click();
void cmdRemoveBookmark_Click();
void mnueditclearmarkers_Click();

/// A press selects the marker and begins its drag. x and y are logical pixels from the image's corner, which moves
/// along; `button` of a move is what is held down.
void imgBookmark_MouseDown(std::int16_t index, int button, float x, float y);
void imgBookmark_MouseMove(std::int16_t index, int button, float x, float y);
void imgBookmark_MouseUp(std::int16_t index, int button, float x, float y);

/// The selected marker goes by a picture, and the view along: as far as the pointer could drag it in any view. Nothing
/// without one.
void MoveMarkerBack();
void MoveMarkerOn();

} // namespace frmTimeline
