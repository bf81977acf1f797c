#pragma once

// Files that are dragged over a row with Ctrl held, to be put in where the pointer is. Drops without Ctrl:
// `row_pointer.h`.
//
// x is a logical pixel of the row's picture, shift the sum of 1 Shift, 2 Ctrl, 4 Alt. Nothing is raised to the caller.
// Interface thread only.

#include "engine/types.h"
#include "items/track_rows.h"

#include <optional>

namespace frmTimeline {

/// The pointer is over the row: marks show where the files would lie, on every row, drawn to cuts and markers as an
/// end in the hand is. areListed: they are those that are selected in the media list, and their length is known.
void dragFilesOver(const items::TrackRow& row, float x, int shift, bool areListed);
/// The drag has left, or is over: no mark.
void dragFilesOff();
/// Where a drop at x puts them (timeline ms); nothing without Ctrl, and on a row that takes no files.
std::optional<engine::Milliseconds> dropPlace(const items::TrackRow& row, float x, int shift);
/// The selected files of the media list were dropped there.
void insertFiles(const items::TrackRow& row, engine::Milliseconds pos);

} // namespace frmTimeline
