#pragma once

// Sources go to another track.
//
// A whole command with its entry of the history; one that fails half way puts the timeline back. Nothing is raised to
// the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace ModuleTreeView {

/// Moves the selected sources of one track, from place `position` on, to another track, at their present lengths: the
/// first of them to place `targetPosition` there, which begins where the source ahead of it ends. What follows there is
/// shifted by the length of the media. A place that is not there, as 0, stands for the track's end. Moves nodes of the
/// list along. Nothing happens while one of the tracks is locked. True when something has moved.
bool ChangeTrack(engine::Handle sourceTrack, engine::Handle targetTrack, std::int32_t position,
                 std::int32_t targetPosition);

} // namespace ModuleTreeView
