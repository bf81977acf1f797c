#include "timeline/track_locks.h"

#include "core/shared_state.h"
#include "timeline/track_rows.h"

#include <algorithm>

namespace moduleTWState {

bool IsTrackLocked(engine::Handle track)
{
    using timeline::RowKind;
    const auto standsFor = [&](const timeline::TrackRow& row) {
        // A track that could not be made has no place in the collection, and its row no handle.
        const bool isMade = row.kind == RowKind::kOverlay || timeline::placeOf(row) <= state::TrackCollection.Count();
        return row.kind != RowKind::kEffect && isMade && timeline::trackOf(row) == track;
    };
    return track != 0 && std::ranges::any_of(timeline::rows(), [&](const timeline::TrackRow& row) {
               return row.isLocked() && standsFor(row);
           });
}

} // namespace moduleTWState
