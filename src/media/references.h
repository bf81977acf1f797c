#pragma once

// Where the timeline uses a file. These raise what the engine raises, for callers that must not go on without an
// answer: a file whose use is not known is not closed.

#include "engine/types.h"

namespace media {

bool isFileInUse(engine::Handle file);
void removeSourcesOfFile(engine::Handle file);

} // namespace media
