#pragma once

// Walks over everything that lies on the timeline, row by row. All raise what the engine raises. Interface thread only.

#include "core/shared_state.h"
#include "items/items.h"
#include "items/track_rows.h"

namespace items {

/// What one row shows: the sources of a track, or the effects of the video track.
struct RowItems {
    RowKind kind;
    engine::Handle track;
    bool isLocked;
    Items items;

    bool isOverlay() const { return kind == RowKind::kOverlay; }
};

/// Calls visit(row) for each row whose track could be made, in the order of the rows.
template <class Visit>
void forEachRow(engine::ITWTimeline& engine, const Visit& visit)
{
    for (const TrackRow& controls : rows()) {
        const bool isMade = controls.kind == RowKind::kOverlay ? state::OverlayTrack != 0
                                                               : placeOf(controls) <= state::TrackCollection.Count();
        if (isMade) {
            const ItemKind kind = controls.kind == RowKind::kEffect ? ItemKind::kEffect : ItemKind::kSource;
            const engine::Handle track = trackOf(controls);
            visit(RowItems{controls.kind, track, controls.isLocked(), Items(engine, kind, track)});
        }
    }
}

/// Moves item fromSeq and all behind it by delta (ms); overlays with their transitions.
inline void shiftRow(engine::ITWTimeline& engine, const RowItems& row, int fromSeq, engine::Milliseconds delta)
{
    row.items.shift(fromSeq, delta);
    if (row.isOverlay()) {
        engine::Bool16 ok = engine::kFalse;
        engine::check(engine.ShiftTransitions(row.track, static_cast<std::int16_t>(fromSeq), delta, ok));
    }
}

} // namespace items
