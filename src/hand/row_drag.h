#pragma once

// The drag of items on a track picture: from the press, which makes the history entry, to the release, which keeps it
// or takes it back. What the screen may see of a drag stands in `forms::frmTimeline` (`DragActive` and its kin), the
// rest here. Interface thread only.

#include "items/track_rows.h"

namespace frmTimeline {

/// A press on a row that is not locked, what it selects being done. Makes the entry, unless the row is empty; then
/// there is nothing to drag. Raises what the engine raises.
void beginDrag(const items::TrackRow& row, float x, float y);
/// The pointer has moved to x. Draws what has changed.
void dragTo(float x);
/// The pointer waits outside the view: that scrolls by so many ticks, to the left below 0, and what is dragged goes
/// along, so that it stays under the pointer. Neither goes further than both can.
void dragWithView(std::int32_t ticks);
/// The release. Unless the selection is kept, what was pressed is left alone selected when nothing has changed. Raises
/// what the engine raises. Nothing without a drag.
void endDrag(bool keepsSelection);
/// Puts everything back to where it was at the press, the history as well. Raises what the engine raises. Nothing
/// without a drag.
void cancelDrag();

/// Clears all other selections. Raises what the engine raises.
void selectAlone(const items::TrackRow& row, std::int16_t seq);

} // namespace frmTimeline
