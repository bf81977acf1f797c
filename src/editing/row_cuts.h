#pragma once

// Cuts through rows, for the commands that let what follows move on or up.
//
//     before    [   A   ][ B ]        cut at p    [ A ][ A ][ B ]        moved from p    [ A ]    [ A ][ B ]
//                   p                                 p                                      p
//
// All raise what the engine raises. Interface thread only.

#include "items/row_items.h"

namespace editing {

/// Linked, and not locked.
bool followsEdits(engine::ITWTimeline& engine, const items::TrackRow& row);

/// The item that pos falls inside becomes two that touch; overlays with their keys. Both pieces play at the item's
/// speed, also where it is not its medium's own; neither is selected. Raises error 5 where the track is full.
void cutRow(const items::RowItems& row, engine::ITWTimeline& engine, engine::Milliseconds pos);

/// The first item that begins at pos or behind it; the number of items when there is none.
std::int16_t firstFrom(const items::RowItems& row, engine::Milliseconds pos);

} // namespace editing
