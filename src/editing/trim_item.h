#pragma once

// One item whose end is trimmed: how far that end goes, and its times when it has gone there. For the trims alone.
//
// Deltas are timeline ms. All raise what the engine raises. Interface thread only.

#include "items/row_items.h"
#include "items/source_times.h"

#include <cstdint>
#include <optional>

namespace editing {

enum class ItemEnd : std::uint8_t { kStart, kStop };

struct TrimItem {
    const items::TrackRow* row;
    std::int16_t seq;
    bool keepsMedia;                     // a still shows the same from end to end, and an effect has no medium
    engine::Milliseconds mediaLength;    // of the stream
    items::SourceTimes times;            // as it lies; of an effect without media times
    std::optional<items::ItemTimes> key; // of an overlay's transition, where there is one

    engine::Milliseconds place(ItemEnd end) const { return end == ItemEnd::kStart ? times.start : times.stop; }
};

/// Nothing when there is no such item.
std::optional<TrimItem> readTrimItem(engine::ITWTimeline& engine, const items::TrackRow& row, std::int16_t seq);

/// The times of an item as they stand on its track. Nothing when there is no such item.
std::optional<items::SourceTimes> timesNow(engine::ITWTimeline& engine, const items::TrackRow& row, std::int16_t seq);

/// How far an end goes to either side; both count.
struct TrimReach {
    engine::Milliseconds left = 0;  // 0 or less
    engine::Milliseconds right = 0; // 0 or more
};

/// To the item beside it, to the end of the medium, and to 11 ms from the other end; an effect's also to the end of the
/// film. An end that is beyond its medium already goes no further.
TrimReach reachOf(engine::ITWTimeline& engine, const TrimItem& item, ItemEnd end);

/// The item when that end has gone by delta, which is in its reach.
TrimItem trimmed(const TrimItem& item, ItemEnd end, engine::Milliseconds delta);

/// Gives the item on the track these times.
void putTimes(engine::ITWTimeline& engine, const TrimItem& item);

} // namespace editing
