#pragma once

// Bookmarks: markers on the scale, each at a time (ms), in the order in which they were set.
//
// A marker is an image `forms::frmTimeline.imgBookmark(i)`, which stands 4 pixels left of its time. Element 0 is the
// pattern of the others: it is never unloaded and stands hidden at time 0. A removed marker is only hidden and keeps
// its place in both lists.
//
// In a project that was loaded the first marker is element 0. So `SelectedBookmark` 0 says that none is selected,
// unless element 0 is visible and looks selected.
//
// Interface thread only.

#include "core/controls.h"
#include "engine/types.h"

#include <cstdint>
#include <vector>

namespace moduleBookmarks {

inline constexpr std::int32_t kHalf = 4;                    // pixels from a marker's left to its time
inline constexpr const char* kPlain = "BOOKMARK";           // how a marker looks
inline constexpr const char* kSelectedLook = "BOOKMARKSEL"; // and the selected one

/// Raises error 9 for a marker that does not exist. All others trap their errors.
ImageBox& marker(std::int16_t index);

/// A marker at the main slider.
void AddBookmark();
/// This one is the selected one, and looks so. Raises error 9 for a marker that does not exist.
void select(std::int16_t index);
/// The first one that is seen and stands at that time (ms), if any.
void selectAt(engine::Milliseconds time);
/// Whether there is a selected marker.
bool isAnyMarked();
/// Hides the selected marker; the one below it, if there is one, becomes the selected one. Does nothing when none is
/// selected.
void RemoveBookmark();
/// Puts all markers to their times in the current view, but the one at `excluded` (-1: all). `show` makes them visible
/// too, removed ones included.
void UpdateBookmarks(std::int16_t excluded = -1, bool show = false);
/// Unloads all markers but the pattern, which goes to the beginning and is hidden.
void RemoveBookmarks();

/// The times of the markers that a project keeps: the visible ones, in their order; ms.
std::vector<engine::Milliseconds> bookmarkTimesToStore();
/// In place of all markers those of a project: the first time becomes element 0, none is selected. Without any time
/// there is the pattern alone. Raises error 6 for more than have a number, before anything has changed.
void takeBookmarks(const std::vector<engine::Milliseconds>& times);

} // namespace moduleBookmarks
