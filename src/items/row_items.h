#pragma once

// Everything that lies on the timeline, row by row. All raise what the engine raises. Interface thread only.

#include "items/items.h"
#include "items/track_rows.h"

namespace items {

constexpr ItemKind itemsOf(RowKind kind) { return kind == RowKind::kEffect ? ItemKind::kEffect : ItemKind::kSource; }

/// What one row shows: the sources of a track, or the effects of the video track. Overlays take their transitions along
/// where both are changed.
struct RowItems {
    RowKind kind;
    engine::Handle track;
    bool isLocked;
    Items items;
    Items transitions; // of the track; those of the overlay row alone belong to its items

    bool isOverlay() const { return kind == RowKind::kOverlay; }

    void setTimes(std::int16_t seq, ItemTimes times) const
    {
        items.setTimes(seq, times);
        if (isOverlay()) {
            transitions.setTimes(seq, times);
        }
    }

    /// Moves item fromSeq and all behind it by delta (ms).
    void shift(int fromSeq, engine::Milliseconds delta) const
    {
        items.shift(fromSeq, delta);
        if (isOverlay()) {
            transitions.shift(fromSeq, delta);
        }
    }

    void select(std::int16_t seq, bool selected) const
    {
        items.select(seq, selected);
        if (isOverlay()) {
            transitions.select(seq, selected);
        }
    }
};

/// Through a cast of the engine that the caller holds.
inline RowItems rowItems(engine::ITWTimeline& engine, const TrackRow& row)
{
    const engine::Handle track = trackOf(row);
    return {row.kind, track, row.isLocked(), Items(engine, itemsOf(row.kind), track),
            Items(engine, ItemKind::kTransition, track)};
}

/// Calls visit(row) for each row whose track could be made, in the order of the rows.
template <class Visit>
void forEachRow(engine::ITWTimeline& engine, const Visit& visit)
{
    for (const TrackRow& row : rows()) {
        if (isMade(row)) {
            visit(rowItems(engine, row));
        }
    }
}

/// Takes part in edits of a selection. The link of the effects stands in their box alone.
inline bool isLinked(engine::ITWTimeline& engine, const TrackRow& row)
{
    if (row.kind == RowKind::kEffect) {
        return row.chkLink.Value == 1;
    }
    engine::Bool16 linked = engine::kFalse;
    engine::check(engine.GetTrackLink(trackOf(row), linked));
    return linked != engine::kFalse;
}

} // namespace items
