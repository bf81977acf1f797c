#pragma once

// The clipboard goes back on the tracks that it came from, at one time; what lies behind moves right.
//
//     before           [   A   ][ B ]          paste X at p           [ A ][ X ][ A ][ B ]
//                           p                                              p
//
// An item that the position falls into is split, if there is a record for its track. An empty track takes its records
// even when it is locked: a lock guards what lies on a row, and there is nothing to guard. Positions and lengths are ms
// on the timeline. Every routine traps its own errors. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace moduleEdit {

// The records of all tracks. With shift, the gap behind the item that ends exactly at the position is closed first, on
// every unlocked track. True unless an error was trapped, which ends it.
bool EditPasteSource(engine::Milliseconds position, bool shift);
bool EditPasteEffect(engine::Milliseconds position, bool shift);
/// Overlays with their transitions.
bool EditPasteOverlay(engine::Milliseconds position, bool shift);

// The run of one track, as items seq and following, from the position on. A piece that the engine has no room for is
// left out, and one without length too. When a call fails, the whole run is taken back, and the answer is false.
bool PasteBefore(engine::Handle track, std::int16_t seq, engine::Milliseconds position);
bool PasteEffectBefore(engine::Handle track, std::int16_t seq, engine::Milliseconds position);
bool PasteTransitionBefore(engine::Handle track, std::int16_t seq, engine::Milliseconds position);

// Close the gap behind the item that ends exactly at the position, by moving all behind it. False when there is none.
bool ShiftSourcesFromPos(engine::Milliseconds position, engine::Handle track);
bool ShiftEffectsFromPos(engine::Milliseconds position, engine::Handle track);
bool ShiftTransitionsFromPos(engine::Milliseconds position, engine::Handle track);

} // namespace moduleEdit
