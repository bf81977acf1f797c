#pragma once

// The player over the timeline: it is kept in step with every edit, and its seek bar with the timeline's slider.
//
// The engine plays; nothing of it is kept here but whether a player is built and what it was last told to do. Nothing
// is raised to the caller: an error is reported, and the player stays as it is. `UpdatePreview` and `OnSliderMove` are
// declared in `core/upcalls.h`. Times are milliseconds of the timeline. Interface thread only.

#include "core/forms/frmPreview.h"

#include <cstdint>
#include <string_view>

namespace moduleTWPreview {

/// 0 stopped, 1 playing, 2 paused.
inline std::int16_t& PreviewState = forms::frmPreview.PreviewState;
/// The engine's player exists.
inline engine::Bool16& PreviewBuilt = forms::frmPreview.PreviewBuilt;

// --- The transport -------------------------------------------------------------------------------------------------
// Events run inside all but pause, since the timeline's slider moves.

/// Plays on from where the player stands; over the selection while both its sliders are visible, which then give the
/// range of the seek bar. Nothing on an empty timeline, and while it plays.
void OnCmdPlayClick();
void OnCmdPauseClick();
/// Ends playing, and goes to the start, or to that of the selection.
void OnCmdStopClick();
/// A twentieth of the length back. Near the start the player is asked for a time below 0, which it takes as 0.
void OnCmdRewindClick();
/// A twentieth of the length ahead, at most to the end.
void OnCmdForwardClick();

/// Where the player stands; 0 when it cannot say.
std::int32_t GetCurrentPosition();

/// Clicks the button: "Play", "Pause", "Stop", "Rewind", "Forward", or turns "Loop playback" over. Nothing for any
/// other.
void DoPreviewAction(std::string_view action);

/// Pictures and tool tips of the buttons.
void SetInitialIcons();

} // namespace moduleTWPreview
