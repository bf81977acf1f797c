#pragma once

// What the addings of files have in common: which files, which streams, which tracks, and what is shown then. All raise
// what the engine raises. Interface thread only.

#include "engine/ITWTimeline.h"

#include <vector>

namespace editing {

/// Of the media list, as it lists them.
std::vector<engine::Handle> selectedFiles();
/// The open ones, picture first.
std::vector<engine::Handle> streamsOf(engine::Handle file);
bool isVideoStream(engine::Handle stream);
/// The first track of the collection of that kind; 0 when there is none.
engine::Handle targetTrack(engine::ITWTimeline& engine, bool isVideo);

void showAllRows();
/// A further picture leaves the movie its size, when the first one had offered another.
void keepFrameOfFirst(bool isPictureAdded);
/// The film has sources that it did not have.
void showFilmGrown(bool isPictureAdded);

} // namespace editing
