#pragma once

// The places of the timeline to which a hand goes: where items begin and end, and the markers. Interface thread only.

#include "items/row_items.h"

#include <functional>
#include <optional>
#include <vector>

namespace timeline {

/// Items whose ends do not count.
using SkipsItem = std::function<bool(const items::RowItems& row, std::int16_t seq)>;

/// Where the items of all rows begin and end (ms), in order, each place once. Raises what the engine raises.
std::vector<engine::Milliseconds> cutTimes(const SkipsItem& skips = {});
/// The visible markers (ms), in the order of their times, each place once.
std::vector<engine::Milliseconds> markerTimes();
/// Both.
std::vector<engine::Milliseconds> cutAndMarkerTimes();

/// Of times in their order the next one behind pos, or, looking back, ahead of it; nothing when there is none.
std::optional<engine::Milliseconds> neighbour(const std::vector<engine::Milliseconds>& times, engine::Milliseconds pos,
                                              bool isBehind);

} // namespace timeline
