#pragma once

// Moving and resizing what is selected, by the pointer on the track pictures and by the direction keys.
//
// A move takes on each track the first selected item together with all behind it, whether they are selected or not; a
// resize takes the right end of every selected item, and what follows moves along:
//
//     before           [AAA] [B*][CC]   [D]
//     move by -1       [AAA][B*][CC]   [D]
//     resize by 2      [AAA] [B**][CC]   [D]     B plays slower, its media times stay
//
// A press on an unlocked row makes the history entry, ahead of any change; the release takes it back when nothing has
// changed. In between, `forms::frmTimeline.DragActive` is set. Locked rows do not move, but they do resize; that is
// meant. Nothing is raised to the caller. Interface thread only.

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

namespace frmTimeline {

// --- Events of the track pictures ----------------------------------------------------------------------------------
// index is the row of its kind, from 0; button 1 left, 2 right (of a move: what is held); shift is the sum of 1 Shift,
// 2 Ctrl, 4 Alt; x and y are logical pixels from the picture's corner.

// Selects as `moduleTimeline::OnPicMediaClick` and its kin do. The left button then begins a drag, the right one pops a
// menu up; neither on a locked row.
void picVideo_MouseDown(std::int16_t index, int button, int shift, float x, float y);
void picEffect_MouseDown(std::int16_t index, int button, int shift, float x, float y);
void picOverlay_MouseDown(std::int16_t index, int button, int shift, float x, float y);
void picAudio_MouseDown(std::int16_t index, int button, int shift, float x, float y);

// Shows what lies under the pointer, or takes the drag one step further.
void picVideo_MouseMove(std::int16_t index, int button, int shift, float x, float y);
void picEffect_MouseMove(std::int16_t index, int button, int shift, float x, float y);
void picOverlay_MouseMove(std::int16_t index, int button, int shift, float x, float y);
void picAudio_MouseMove(std::int16_t index, int button, int shift, float x, float y);

// Ends the drag. When nothing has changed, the item under the press is left alone selected, unless a key is held that
// adds to the selection.
void picVideo_MouseUp(std::int16_t index, int button, int shift, float x, float y);
void picEffect_MouseUp(std::int16_t index, int button, int shift, float x, float y);
void picOverlay_MouseUp(std::int16_t index, int button, int shift, float x, float y);
void picAudio_MouseUp(std::int16_t index, int button, int shift, float x, float y);

// Left (37) and right (39) nudge what is selected by 5 pixels, with Shift by 1, without an entry in the history.
// Escape (27) gives a running drag up.
void picVideo_KeyDown(std::int16_t index, int key, int shift);
void picEffect_KeyDown(std::int16_t index, int key, int shift);
void picOverlay_KeyDown(std::int16_t index, int key, int shift);
void picAudio_KeyDown(std::int16_t index, int key, int shift);

/// The release will not come: what was moved so far stays, and so does what is selected. Nothing without a drag.
void EndItemDrag();

} // namespace frmTimeline
