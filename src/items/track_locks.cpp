#include "items/track_locks.h"

#include "core/shared_state.h"
#include "items/track_rows.h"

#include <algorithm>

namespace moduleTWState {

bool IsTrackLocked(engine::Handle track)
{
    using items::RowKind;
    const auto standsFor = [&](const items::TrackRow& row) {
        // A track that could not be made has no place in the collection, and its row no handle.
        const bool isMade = row.kind == RowKind::kOverlay || items::placeOf(row) <= state::TrackCollection.Count();
        return row.kind != RowKind::kEffect && isMade && items::trackOf(row) == track;
    };
    return track != 0 && std::ranges::any_of(items::rows(), [&](const items::TrackRow& row) {
               return row.isLocked() && standsFor(row);
           });
}

} // namespace moduleTWState
