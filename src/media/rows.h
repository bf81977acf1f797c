#pragma once

// The rows of the media list and the lists of handles beside them. `state::FileCollection` and the rows of
// `forms::frmMediaList.lvwMediaList` stand in the same order and change together; that place is the only link between a
// row and its file.
//
// Errors are trapped inside; nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>

namespace moduleTarnwick {

/// Empties the three lists of handles; true unless that failed.
bool Init();

/// "Video", "Audio" or "Image" by `state::LastOpenedExtension`, which is trimmed and put in small letters.
std::string GetMediaClass();
/// Adds the file to `state::FileCollection` and names the row of that place, which `OpenStreams` has made.
void AppendToTWListView(engine::Handle file);
/// Removes the file from `state::FileCollection` and its row.
void RemoveFromTWListView(engine::Handle file);
/// Writes one stream's facts in the row; the first stream of a file makes it.
void FillTWListView(engine::Handle stream);

} // namespace moduleTarnwick
