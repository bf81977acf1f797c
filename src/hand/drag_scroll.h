#pragma once

// A drag of items, or a trim, goes on while the pointer waits left or right of the row: the view scrolls, and what is
// held goes along. Interface thread only.

namespace frmTimeline {

/// The pointer of a drag is at x, a view pixel; shift is the sum of keys. Outside the view scrolling begins, inside it
/// ends.
void scrollAtEdge(float x, int shift);
/// Scrolls by a few ticks, more of them the further the pointer is outside. Ends by itself with the drag. Raises
/// nothing.
void tmDrag_Timer();

} // namespace frmTimeline
