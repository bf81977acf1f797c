#pragma once

// The keys that move an end of what is selected by a picture: what a drag of a bar's end does.
//
//     , .              the end, as a drag of the upper right corner: of another length at another speed, or trimmed
//                      in the trim mode
//     Alt+,  Alt+.     trims the end, in any mode
//     Ctrl+, Ctrl+.    trims the start
//
// Presses in a row are one step of the history, as a drag of that way is: what moves, selects, locks or undoes anything
// in between ends it. Interface thread only.

#include "items/track_rows.h"

namespace frmTimeline {

/// A key (by the program's number, and the sum of 1 Shift, 2 Ctrl, 4 Alt) on a row. What is selected there is trimmed,
/// else what is selected on the first row that is not locked; a resize takes all that is selected. False for another
/// key. Raises what the engine raises.
bool takeEdgeKey(const items::TrackRow& row, int key, int shift);

} // namespace frmTimeline
