#pragma once

// What the pointer meets on the track pictures: tool tips, the pointer's shape, the pop-up menu, and files dropped from
// the media list. Presses, moves and keys: `row_events.h`.
//
// x and y are logical pixels from the picture's corner; index is the row of its kind, from 0. Nothing is raised to the
// caller. Interface thread only.

#include "core/forms/frmTimeline.h"
#include "items/track_rows.h"

#include <cstdint>

namespace moduleTimeline {

/// What the row's picture shows of the pointer.
forms::RowPointer& pointerOf(items::RowKind kind, std::int16_t index);

/// Write tool tip and pointer shape of the row for what lies under x. True in the zone where an item is resized: the
/// last 12 pixels of it, above y 12.
bool OnPicVideoMouseMove(float x, float y, std::int16_t index);
bool OnPicAudioMouseMove(float x, float y, std::int16_t index);
bool OnPicEffectMouseMove(float x, float y, std::int16_t index);
bool OnPicOverlayMouseMove(float x, float y, std::int16_t index);

} // namespace moduleTimeline

namespace frmTimeline {

/// Chooses the entries of the pop-up menu for the scale (context 0), video (1), audio and effects (2) or overlays (3).
/// In context 2, index is the audio row, or -1 for the effects. Entries that a context does not name stay as they are.
void ShowMenuItems(std::int16_t context, std::int16_t index);
/// The same, and pops the menu up.
void PopUpEditContext(std::int16_t context, std::int16_t index);

// Rows of the media list were dropped on a picture: the selected ones are added, or on the effects' picture the
// selected effect.
void picVideo_OLEDragDrop(std::int16_t index);
void picAudio_OLEDragDrop(std::int16_t index);
void picEffect_OLEDragDrop(std::int16_t index);
void picOverlay_OLEDragDrop(std::int16_t index);

} // namespace frmTimeline
