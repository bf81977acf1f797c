#pragma once

// Where a source stands, and which media times lie under a place in it.

#include "items/items.h"

namespace items {

/// Timeline and media times in ms.
struct SourceTimes {
    engine::Milliseconds start = 0;
    engine::Milliseconds stop = 0;
    engine::Milliseconds mediaStart = 0;
    engine::Milliseconds mediaStop = 0;

    ItemTimes onTimeline() const { return {start, stop}; }
    /// Timeline milliseconds for one of the medium. Raises error 11 for a media length of 0 or less.
    double rate() const;
};

} // namespace items
