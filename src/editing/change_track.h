#pragma once

// Sources go to another track.
//
// The caller has made the history entry; what takes effect brings it into force. What fails half way puts the timeline
// back, and the entry stays out of force. Nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace ModuleTreeView {

/// Moves the selected sources of one track, from place `position` on, to another track, at their present lengths: the
/// first of them to place `targetPosition` there, which begins where the source ahead of it ends. What follows there is
/// shifted by the length of the media. A place that is not there, as 0, stands for the track's end. Moves nodes of the
/// list along. Nothing happens while one of the tracks is locked.
void ChangeTrack(engine::Handle sourceTrack, engine::Handle targetTrack, std::int32_t position,
                 std::int32_t targetPosition);

} // namespace ModuleTreeView
