#pragma once

// Yes-or-no questions about the timeline, for what is enabled and for the edit commands.
//
// Each answer is computed anew from the engine and from the check boxes of `forms::frmTimeline`; nothing is kept. Every
// routine traps its own errors and then answers false, or what it had found so far. Handles of tracks that are asked
// about must be the engine's. Interface thread only.
//
// `IsTimelineEmpty` stands in `timeline/moduleTimeline.h`, `CanUndo` and `CanRedo` in `history/ModuleHistory.h`.

#include "engine/types.h"
#include "items/track_locks.h" // IsTrackLocked

namespace moduleTWState {

// --- One track -----------------------------------------------------------------------------------------------------

/// Its disable box is 1; false for a handle that belongs to no row.
bool IsTrackDisabled(engine::Handle track);
// The boxes of the effect lane of a video track. A track of any other kind has no lane: false.
bool IsEffectLocked(engine::Handle track);
bool IsEffectDisabled(engine::Handle track);
/// Its link box is 1: the lane takes part in edits of a selection.
bool IsEffectSelected(engine::Handle track);
/// Some source, or effect, of the track has the engine's selected flag.
bool IsAnySourceSelected(engine::Handle track);
bool IsAnyEffectSelected(engine::Handle track);

// --- The whole timeline --------------------------------------------------------------------------------------------

/// The first track of the `TrackCollection` has no source.
bool IsVideoTrackEmpty();
/// No video track has an effect.
bool IsEffectTrackEmpty();
bool IsOverlayTrackEmpty();
/// Some audio track has a selected source.
bool IsAudioSourceSelected();
/// The same of Audio 1 alone, and of Audio 2.
bool IsAudio1SourceSelected();
bool IsAudio2SourceSelected();
/// Some video track has a selected source.
bool IsVideoSourceSelected();
bool IsOverlaySourceSelected();

/// There is something to cut, copy, delete or crop: with the selection shown, on a row that it reaches; else a selected
/// item on an unlocked row.
bool IsEditingValid();
/// A selected item lies on an unlocked row, whether the selection is shown or not.
bool IsTrimValid();
/// A selected source on an unlocked track plays at another speed than its medium's. False while a slider of the
/// selection is shown.
bool IsRestoreSizeValid();
/// There is a selected overlay, its track is not locked, and no slider of the selection is shown.
bool IsSetOverlayTransparencyValid();

/// There is something to paste.
bool IsClipboardFilled();

/// Exactly one row of the media list is selected.
bool IsOneMediaFileSelected();

} // namespace moduleTWState
