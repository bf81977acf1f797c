#pragma once

// The pointer and the keys on the track pictures.
//
// A press on an unlocked row makes the history entry, ahead of any change; the release takes it back when nothing has
// changed. In between, `forms::frmTimeline.DragActive` is set. A press that takes hold of an end to trim it
// (`trim_drag.h`) makes none and sets `Trimming`. A click with Alt selects an item with its sound, and leaves no trace
// in the history. Nothing is raised to the caller. Interface thread only.

#include <cstdint>

namespace frmTimeline {

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

/// The release will not come: what was moved or trimmed so far stays, and so does what is selected. Nothing when the
/// hand holds nothing.
void EndItemDrag();

// Left (37) and right (39) nudge what is selected by 5 pixels, with Shift by 1, without an entry in the history.
// Escape (27) gives a running drag up. Comma (188) and period (190) move an end (`edge_keys.h`).
void picVideo_KeyDown(std::int16_t index, int key, int shift);
void picEffect_KeyDown(std::int16_t index, int key, int shift);
void picOverlay_KeyDown(std::int16_t index, int key, int shift);
void picAudio_KeyDown(std::int16_t index, int key, int shift);

} // namespace frmTimeline
