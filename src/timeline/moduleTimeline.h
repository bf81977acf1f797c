#pragma once

// The timeline's fixed tracks, what a press on them selects, their options, and the three sliders over them.
//
// What lies on the tracks is the engine's and is read anew by each routine. The options are the check boxes of
// `forms::frmTimeline`; the engine holds copies of link and disable, lock stands in its box alone. Sequence numbers
// count from 0 and hold until the next insertion or removal on their track. Every routine traps its own errors and
// raises nothing. Interface thread only.
//
//     row      picture         engine track
//     Video    picVideo(0)     TrackCollection 1
//     Effects  picEffect(0)    the effects of TrackCollection 1
//     Overlay  picOverlay(0)   OverlayTrack
//     Audio 1  picAudio(0)     TrackCollection 2
//     Audio 2  picAudio(1)     TrackCollection 3

#include "engine/types.h"

#include <cstdint>

namespace moduleTimeline {

/// Makes the tracks and the timeline list, loads the settings, and puts scale and sliders to their start. Called once,
/// when the form loads.
void InitTimeline();

// --- Lookups -------------------------------------------------------------------------------------------------------

/// The source of the track that holds pos (ms), -1 if none. Both ends count as inside: a joint belongs to the earlier.
std::int16_t GetSequenceNumberFromPos(engine::Handle track, engine::Milliseconds pos);
/// The same over the track's effects.
std::int16_t GetSequenceNumberAtPosEffect(engine::Handle track, engine::Milliseconds pos);
/// The stop of the last source of all tracks, in ms; effects do not count.
engine::Milliseconds GetTimelineDuration();
/// No track has a source.
bool IsTimelineEmpty();

// --- Selection -----------------------------------------------------------------------------------------------------

/// A press on a row's picture at `state::ClickX`. An item that is hit becomes the only selected one, or, with
/// `state::ClickShift` or `state::ClickCtrl`, is turned over; one that is selected already leaves all as it is.
void OnPicMediaClick(std::int16_t index, bool isVideo);
void OnPicOverlayClick(std::int16_t index);
void OnPicEffectClick(std::int16_t index);
/// Clears the selected flag of every source, effect and transition.
void ClearMFSTSubSelections();

// --- Link, lock and disable ----------------------------------------------------------------------------------------

/// Shows or hides the link boxes of all rows.
void EnableLinkOption(bool visible);
/// All options back to their start: enabled, unlocked, linked.
void ReInitLinkLockDisable();
/// After an addition: a row with exactly one item is enabled and linked. It only looks at the count, so it also undoes
/// what the person chose on a row that is down to one item; that is meant.
void UpdateTrackOptions();

// --- Sliders -------------------------------------------------------------------------------------------------------
// A slider is a handle, a line on the scale and a line over the tracks. The selection exists while both handles of it
// are visible. Positions that are read back come from the screen's places, and are as fine as the zoom.

/// Places the main slider at pos (ms) and shows it if that is in view; scroll brings it into view, at the left edge.
/// Events run inside.
void SetSliderPosition(engine::Milliseconds pos, bool scroll);
engine::Milliseconds GetSliderPosition();
/// Places a slider of the selection. The caller keeps the position: `SelStartPosition = GetSelSliderPosition(true)`.
/// Events run inside.
void SetSelSliderPosition(engine::Milliseconds pos, bool isStart);
engine::Milliseconds GetSelSliderPosition(bool isStart);

void ShowStartSelSlider(bool visible);
void ShowEndSelSlider(bool visible);
void ShowSelSliders(bool visible);
/// Hides the selection, or shows a new one of 100 pixels from the main slider on.
void ToggleSelSliders();
/// Shows the tinted shape on each row that the selection reaches: linked, not locked, not empty.
void ShowOrHideTrackSelections();
/// Places the tinted shapes between the handles, but on locked rows.
void RenderAllSelections();

} // namespace moduleTimeline
