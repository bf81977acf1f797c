#pragma once

// What follows when an option of a row changes. The boxes' change handlers lead here; errors are trapped inside.
// Interface thread only.

#include "items/track_rows.h"

namespace timeline {

/// Gives the boxes of all rows their start values and pictures and binds their change handlers.
void bindOptions();

/// The person clicked an image box: its check box is turned over.
void turnLink(const items::TrackRow& row);
void turnLock(const items::TrackRow& row);
void turnDisable(const items::TrackRow& row);

} // namespace timeline
