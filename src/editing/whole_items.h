#pragma once

// Cut, copy, delete and crop of whole items: the selected ones, while no selection between sliders is shown.
//
// Cut and delete remove them, cut and copy put them on the clipboard, without gaps between them. Crop removes all that
// are not selected on every track with a selected one. At the first item that it would touch on a locked track, a walk
// leaves that track. What stays keeps its times. True unless an error was trapped. Interface thread only.

namespace moduleEdit {

// Sources of the video and audio tracks.
bool EditCutSource();
bool EditCopySource();
bool EditDeleteSource();
bool EditCropSource();

bool EditCutEffect();
bool EditCopyEffect();
bool EditDeleteEffect();
bool EditCropEffect();

// Overlays with their transitions.
bool EditCutOverlay();
bool EditCopyOverlay();
bool EditDeleteOverlay();
bool EditCropOverlay();

} // namespace moduleEdit
