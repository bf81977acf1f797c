#pragma once

// Files between the rows of the timeline and the media list: dropped on a row, and asked for from a bar.
//
// x is a logical pixel of the row's picture. Nothing is raised to the caller. Interface thread only.

#include "engine/types.h"
#include "items/track_rows.h"

#include <optional>
#include <string>
#include <vector>

namespace moduleTarnwick {

/// Files that come from a file manager are opened as `OpenDroppedFiles` does it. What has opened is selected and added
/// behind the film, or put into it at pos (timeline ms) where there is one. A cancelled opening adds nothing.
void AddDroppedFiles(const std::vector<std::string>& paths, const items::TrackRow& row,
                     std::optional<engine::Milliseconds> pos);

/// The file of the source under x is selected alone in the list, and the small player shows what the film shows there.
/// False, and nothing is done, where there is no source, or while files are being opened.
bool ShowFileOfBar(const items::TrackRow& row, float x);

} // namespace moduleTarnwick
