#pragma once

// Where a source stands, and which media times lie under a place in it.

#include "engine/ITWTimeline.h"
#include "items/items.h"

#include <optional>

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

/// Nothing when there is no such source. Raises what the engine's calls raise. Interface thread only.
std::optional<SourceTimes> readSource(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq);

} // namespace items
