#pragma once

// Cut, copy, delete and crop over the range between the selection sliders: the walk over all linked, unlocked rows, in
// the order video, audio, effects, overlay. What it does to each item stands in `range_actions.h`. No surviving item
// moves; a gap stays. Interface thread only.

#include "editing/edit_trap.h"
#include "engine/types.h"

#include <cstdint>

namespace moduleEdit {

// The last one deletes what a paste takes the place of.
enum class EditMode : std::int16_t { kCut = 0, kCopy = 1, kReserved = 2, kDelete = 3, kCrop = 4, kReplace = 5 };

// The state of the walk, begun anew for each row. It means nothing outside of it.
inline std::int16_t WalkSeq = 0;           // the item that is visited
inline std::int16_t ClipSeq = 0;           // of the next record of a source or an effect
inline std::int16_t TransitionClipSeq = 0; // of the next record of a transition
// Timeline ms of the item that was cut or copied before.
inline engine::Milliseconds PrevStart = 0;
inline engine::Milliseconds PrevStop = 0;
/// Of the running crop: what lies outside the selection stays.
inline bool CropSourcesOnly = false;

/// Edits the range and hides the sliders, which a copy does too. The flag is the last action's. Traps its own errors.
editing::Answer EditSelection(EditMode mode);

/// Ahead of a plain crop: removes what no edge of the selection lies in and what does not lie in the selection either.
/// An effect or an overlay that shares an edge with the selection goes, where a source stays: kept, scripts count on
/// what a crop leaves. False when an error was trapped.
bool DropOutsideSelection();

} // namespace moduleEdit
