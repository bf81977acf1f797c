#pragma once

// The pointer trims: it takes hold of an end of a bar, and what the bar shows there moves with it.
//
//     +--12 px--+---------------+--12 px--+        short bars: a third at each end
//     |         |               | corner  |        the corner, above y 12: only in the trim mode, else it is where
//     |  start  |   the bar     |  stop   |        an item is resized
//     +---------+---------------+---------+
//
// A trim is no drag of items: it makes no entry ahead of its first change. Its running is
// `forms::frmTimeline.Trimming`. Those that can fail raise what the engine raises. Interface thread only.

#include "editing/trim_item.h"
#include "items/track_rows.h"

#include <cstdint>
#include <optional>

namespace frmTimeline {

/// An end of an item.
struct TrimGrip {
    std::int16_t seq;
    editing::ItemEnd end;
};

/// What a press at that place of the row (pixels) takes hold of: with Alt held (4 of the sum of keys), or in the trim
/// mode. Nothing on a locked row.
std::optional<TrimGrip> trimGripAt(const items::TrackRow& row, int shift, float x, float y);

/// The press. False when there is nothing to hold.
bool beginTrim(const items::TrackRow& row, const TrimGrip& grip, float x);
/// The pointer has moved to x, or the view under it: the end follows, drawn to cuts and markers unless Shift suspends
/// it, as far as it can go.
void trimTo(float x, int shift);
/// The pointer waits at x, outside the view: that scrolls by so many ticks, to the left below 0, and the end follows,
/// for as long as it can.
void trimWithView(std::int32_t ticks, float x, int shift);
/// The release. Unless the selection is kept, what was pressed is left alone selected when nothing is trimmed. Nothing
/// without a trim.
void endTrim(bool keepsSelection);
/// Puts everything back to where it was at the press. Nothing without a trim.
void cancelTrim();

} // namespace frmTimeline
