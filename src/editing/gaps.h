#pragma once

// Gaps inside the selection, which cut and copy keep so that a paste restores the spacing.
//
//     selection   a |--------------------------| b
//                      [ A ]      [ B ]
//     gaps          |--|   |------|   |--------|     ahead of the first source of a track: none
//
// Called for each item twice: before it is cut or copied for the gap ahead of it, and after it for the gap behind it,
// seq then being that of the item, or of the one ahead when it has gone. `PrevStop` is the stop of the item visited
// before. Between effects that both lie in the selection, and between transitions, no gap is kept, so that a paste puts
// them close together: kept, scripts count on where they lie then. Every routine traps its own errors, and is false
// then. Interface thread only.

#include "editing/selection_edges.h"
#include "items/items.h"

#include <cstdint>

namespace moduleEdit {

bool LogGaps(engine::Handle track, std::int16_t seq, const items::ItemTimes& source,
             const editing::SelectionEdges& selection, bool before);
bool LogGapsEffects(engine::Handle track, std::int16_t seq, const items::ItemTimes& effect,
                    const editing::SelectionEdges& selection, bool before);
bool LogGapsTransition(engine::Handle track, std::int16_t seq, const items::ItemTimes& source,
                       const editing::SelectionEdges& selection, bool before);

} // namespace moduleEdit
