#include "items/track_locks.h"

#include "items/track_rows.h"

#include <algorithm>

namespace moduleTWState {

bool IsTrackLocked(engine::Handle track)
{
    using items::RowKind;
    const auto standsFor = [&](const items::TrackRow& row) {
        return row.kind != RowKind::kEffect && items::isMade(row) && items::trackOf(row) == track;
    };
    return track != 0 && std::ranges::any_of(items::rows(), [&](const items::TrackRow& row) {
               return row.isLocked() && standsFor(row);
           });
}

} // namespace moduleTWState
