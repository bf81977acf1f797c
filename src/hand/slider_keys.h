#pragma once

// Keys that take the main slider to a place, and the player with it: as a click on the scale does, within the range of
// the seek bar, and a player that plays pauses there. The view follows. Nothing is raised to the caller; events run
// inside. Interface thread only.

namespace frmTimeline {

void GoToStart();
/// The end of the last source.
void GoToEnd();
// Neighbouring places: where an item of any row begins or ends, and markers; the last two go to markers alone. Nothing
// happens where there is none.
void GoToPreviousCut();
void GoToNextCut();
void GoToPreviousMarker();
void GoToNextMarker();

} // namespace frmTimeline
