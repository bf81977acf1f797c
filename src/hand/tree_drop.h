#pragma once

// A node of the timeline list is dropped on another one, by the pointer or by a key. Nodes are told by their places in
// `forms::frmTimeline.tvwTimeline`, as in `TreeView::Selected`. Nothing is raised to the caller. Interface thread only.

#include <cstdint>
#include <vector>

namespace frmTimeline {

/// Whether a drop of the one node on the other would do anything: two items of one track, or an item of one audio track
/// and the other audio track or an item of it; nothing of it locked.
bool IsTreeDropValid(const std::vector<std::int32_t>& dragNode, const std::vector<std::int32_t>& dropNode);

/// A node of the list was dropped on another one: the whole command, with history, preview and menus.
void tvwTimeline_OLEDragDrop(const std::vector<std::int32_t>& dragNode, const std::vector<std::int32_t>& dropNode);

/// The item that is selected in the list changes places with the one above it, or below it: the lower of the two is
/// dropped on the upper one. It stays selected. Nothing at the track's ends.
void MoveListItemUp();
void MoveListItemDown();

} // namespace frmTimeline
