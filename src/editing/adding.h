#pragma once

// Media files and effects go on the timeline. These are the only ways on it besides a paste.
//
// Each command writes its own entries of the history: before an item is added, and only for what was added, so that an
// adding that fails leaves history and timeline as they were; and it ends with the image of the newest state. Nothing
// is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace moduleTimeline {

/// Puts every selected file of the media list behind the end of the longest track: its picture on Video, its sound on
/// Audio 1, level with each other. Audio 2 gets nothing.
///
///     Video    [AAA][BBBBB]            +  C, D selected   [AAA][BBBBB][CC][DDD]
///     Audio 1  [AAA]                                      [AAA]       [CC][DDD]
void OnEditAddToTimelineClick();

/// Puts the picture of every selected file behind the last overlay, with its key. Sound is left out.
void OnEditAddToOverlayClick();

/// The same for one file, with a key of this colour (0 to 255 each).
void AddOverlaysOfFile(engine::Handle file, std::int16_t red, std::int16_t green, std::int16_t blue);

/// Puts the effect that is selected in the tools panel on the lane: from the main slider on with the engine's default
/// length, or over the selection when it is shown. True unless a message said that it failed. The caller keeps the
/// history.
bool OnEditAddEffectToTimelineClick();

/// Gives the last source of the track its key: from its start to its stop, with this colour (0 to 255 each). Raises
/// what the engine raises.
void AddNewKeyTransition(engine::Handle track, std::int16_t red, std::int16_t green, std::int16_t blue);

/// Brings a transition of the overlay track to its source where both its start and its stop differ. Where only one of
/// them does, it stays: a project may hold one that covers its overlay from one end on.
void SyncOverlayTransitions();

/// The whole command of the tools panel's button: lock, effect, history. True when an effect was added.
bool AddSelectedEffect();

} // namespace moduleTimeline
