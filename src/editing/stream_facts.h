#pragma once

// What an edit asks of a stream.

#include "engine/types.h"

namespace editing {

struct StreamFacts {
    bool isStill = false;
    engine::Milliseconds length = 0;
};

/// Without length when there is no such stream. The stream is the subject of `ITWStreamInfo` then. Raises what the
/// engine raises. Interface thread only.
StreamFacts factsOf(engine::Handle stream);

} // namespace editing
