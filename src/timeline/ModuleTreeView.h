#pragma once

// The timeline as a list: one node a track, one child an item, in `forms::frmTimeline.tvwTimeline`. It mirrors the
// engine and is filled anew after each command; what is selected in it is lost then.
//
//     Timeline
//       Video       tag: the track's handle      children: names of files, tags counting from 1 through the whole list
//       Effects     tag: 999999                  children: names of effects
//       Overlays, Audio 1, Audio 2               as Video
//
// Every routine traps its own errors and raises nothing. Interface thread only.

#include "core/controls.h"
#include "engine/types.h"

#include <cstdint>
#include <string_view>

namespace ModuleTreeView {

/// Stands for the effect lane where a track's handle is asked for. It never reaches the engine: the effects lie on
/// item 1 of the `TrackCollection`.
inline constexpr engine::Handle kEffectLane = 999999;

// Handles of the tracks that have a node, 0 while there is none.
inline engine::Handle VideoTrackNode = 0;
inline engine::Handle OverlayTrackNode = 0;
inline engine::Handle Audio1TrackNode = 0;
inline engine::Handle Audio2TrackNode = 0;

// What the searches found: places from 0 below the root and below the track's node, -1 for nothing.
inline std::int32_t TreeTrackNode = -1;
inline std::int32_t TreeItemNode = -1;

/// The root as it stands, with all below it.
const TreeNode& TreeRoot();

/// Clears the list and makes its root alone.
void MakeRoot();
/// Adds a node for a track below the root.
void AddTrack(std::string_view text, engine::Handle track);
/// Adds a node for an item as the last of its track, and expands the track's node.
void AddSource(std::string_view text, std::string_view imageKey, engine::Handle track);
/// Adds a node for an item after the position-th (from 1) of the track's node at that place below the root; position 0
/// puts it first.
void InsertSource(std::string_view text, std::int32_t trackNode, std::int32_t position);
/// Finds a track's node, into `TreeTrackNode`. `kEffectLane` finds the effects.
void SearchTrack(engine::Handle track);
/// Finds the position-th item (from 1) of `TreeTrackNode`, into `TreeItemNode`.
void SearchSource(std::int32_t position);
/// Selects the position-th item of a track in the list, if it is there.
void SetSourceSelected(engine::Handle track, std::int32_t position);
/// Empties the list and fills it from the engine.
void UpdateTreeView();

} // namespace ModuleTreeView
