#pragma once

// Closing files and their streams. Errors are trapped inside; nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

namespace moduleTarnwick {

/// Closes the files whose rows are selected, asking for each that the timeline uses.
void OnFileCloseClick();
/// Closes all streams of a file and drops them from `state::StreamCollection`.
void CloseStreams(engine::Handle file);
/// Closes every file and stream and empties the list, without a word. Sources on tracks stay as they are.
void CloseAllMediaFiles();

} // namespace moduleTarnwick
