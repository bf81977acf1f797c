#pragma once

// Moving and resizing what is selected.
//
// A move takes on each track the first selected item together with all behind it, whether they are selected or not; a
// resize takes the right end of every selected item, and what follows moves along:
//
//     before           [AAA] [B*][CC]   [D]
//     move by -1       [AAA][B*][CC]   [D]
//     resize by 2      [AAA] [B**][CC]   [D]     B plays slower, its media times stay
//
// Locked rows do not move, but they do resize: kept, so that picture and sound that are selected together stay of one
// length. Nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace moduleTimeline {

// --- Room to the left, in ms ---------------------------------------------------------------------------------------

/// From the item ahead, or from 0, to the start of source seq (from 0); 0 when there is no such source.
engine::Milliseconds GetSourceLeftMoveLength(engine::Handle track, std::int16_t seq);
/// The same of an effect.
engine::Milliseconds GetEffectLeftMoveLength(engine::Handle track, std::int16_t seq);
/// The smallest of these over the first selected item of each row, locked rows too; 0 when nothing is selected.
engine::Milliseconds GetSelMinLeftMoveLength();

// --- Changes -------------------------------------------------------------------------------------------------------
// True when anything has changed. Neither draws, nor touches the history.

/// Moves the first selected item of each unlocked row, and all behind it, by delta (ms). To the left it goes as far as
/// the item ahead or 0 lets each row.
bool ShiftSelSources(engine::Milliseconds delta);
/// Moves the right end of every selected item, and all behind it, by delta (ms). An item that would not stay longer
/// than 10 ms is left as it is.
bool ResizeSelSources(engine::Milliseconds delta);

} // namespace moduleTimeline
