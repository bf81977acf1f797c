#pragma once

// Going to a place without playing, and by whole frames. Nothing is raised to the caller; events run inside. Interface
// thread only.

#include "engine/types.h"

namespace moduleTWPreview {

/// Seek bar, main slider and player go to a place (ms), as far as the bar's range goes, and the view to the slider. A
/// player that plays pauses.
void PauseAt(engine::Milliseconds place);

/// So many frames on, or back for a number below 0: to the first moment at which that frame is shown, at most to the
/// last one. Frames are those of the first file with moving pictures, which are what the player shows; without one 25 a
/// second. Nothing on an empty timeline.
///
///     place         |        x            pos is in frame 1: a step goes to 2, a step back to 0
///     frames   0    1    2    3
void StepFrames(int count);

/// A place one frame behind another, or ahead of it, at the same distance from the frame's beginning; from the first
/// frame not ahead. Raises what the engine raises.
engine::Milliseconds frameBeside(engine::Milliseconds place, bool isBehind);

/// The frame rate above, frames a second, at most 60. Raises what the engine raises.
double shownFrameRate();

} // namespace moduleTWPreview
