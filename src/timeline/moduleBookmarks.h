#pragma once

// Bookmarks: markers on the scale, each at a time (ms), in the order in which they were set.
//
// A marker is an image `forms::frmTimeline.imgBookmark(i)`, which stands 4 pixels left of its time. Element 0 is the
// pattern of the others: it is never unloaded, stands hidden at time 0, and `SelectedBookmark` 0 means that none is
// selected. A removed marker is only hidden and keeps its place in both lists.
//
// Every routine traps its own errors and raises nothing. Interface thread only.

#include "engine/types.h"

#include <cstdint>

namespace moduleBookmarks {

/// A marker at the main slider.
void AddBookmark();
/// Hides the selected marker; the one below it becomes the selected one. Does nothing when none is selected.
void RemoveBookmark();
/// Places the marker that was loaded last, shows it, and records its time.
void SetBookmarkPosition(engine::Milliseconds time, std::int16_t index);
/// Puts all markers to their times in the current view, but the one at `excluded` (-1: all). `show` makes them visible
/// too, removed ones included.
void UpdateBookmarks(std::int16_t excluded = -1, bool show = false);
/// Unloads all markers but the pattern, which goes to the beginning and is hidden.
void RemoveBookmarks();

} // namespace moduleBookmarks

namespace frmTimeline {

void cmdAddBookmark_Click();
void cmdRemoveBookmark_Click();
void mnueditclearmarkers_Click();

/// A press selects the marker and begins its drag. x and y are logical pixels from the image's corner, which moves
/// along; `button` of a move is what is held down.
void imgBookmark_MouseDown(std::int16_t index, int button, float x, float y);
void imgBookmark_MouseMove(std::int16_t index, int button, float x, float y);
void imgBookmark_MouseUp(std::int16_t index, int button, float x, float y);

} // namespace frmTimeline
