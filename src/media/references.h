#pragma once

// Where the timeline uses a file. Interface thread only.

#include "engine/types.h"

/// These raise what the engine raises, for callers that must not go on without an answer: a file whose use is not known
/// is not closed.
namespace media {

bool isFileInUse(engine::Handle file);
void removeSourcesOfFile(engine::Handle file);

} // namespace media

/// These trap what is raised.
namespace moduleTarnwick {

/// True when a source on any track, the overlay track too, uses a stream of this file.
bool IsFileHandleReferenced(engine::Handle file);
/// Removes every source of the file from all tracks; on the overlay track its transition goes with it.
void RemoveFileReferences(engine::Handle file);

} // namespace moduleTarnwick
