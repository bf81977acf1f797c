#pragma once

// The timeline's fixed tracks; and, by the headers that it includes, what a press on them selects, their options, and
// the three sliders over them.
//
// This room is the view of the timeline: scale and zoom, bars, sliders, markers, the tint of the selection, the list,
// the options of the rows. It owns where all that stands (`forms::frmTimeline`), and makes the tracks. It marks items
// as selected, but never adds, changes or removes one and makes no step of the history: that is for `editing/`.
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
#include "timeline/selection.h"
#include "timeline/selection_shapes.h"
#include "timeline/sliders.h"
#include "timeline/track_options.h"

#include <cstdint>

namespace moduleTimeline {

/// Makes the tracks and the timeline list, loads the settings, and puts scale and sliders to their start. Called once,
/// when the form loads.
void InitTimeline();

/// The source of the track that holds pos (ms), -1 if none. Both ends count as inside: a joint belongs to the earlier.
std::int16_t GetSequenceNumberFromPos(engine::Handle track, engine::Milliseconds pos);
/// The same over the track's effects.
std::int16_t GetSequenceNumberAtPosEffect(engine::Handle track, engine::Milliseconds pos);
/// The stop of the last source of all tracks, in ms; effects do not count.
engine::Milliseconds GetTimelineDuration();
/// No track has a source.
bool IsTimelineEmpty();

/// Clears the selected flag of every source, effect and transition.
void ClearMFSTSubSelections();

} // namespace moduleTimeline
