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
    /// False with a media length of 0 or less: then there is nothing to show.
    bool hasRate() const { return mediaStart < mediaStop; }
    /// Timeline milliseconds for one of the medium. Raises error 11 where there is none.
    double rate() const;
    /// What lies under pos, at the source's speed; mediaStart throughout where there is nothing to show.
    engine::Milliseconds mediaAt(engine::Milliseconds pos) const;
    bool operator==(const SourceTimes&) const = default;
};

} // namespace items
