#pragma once

// Link, lock and disable: what follows when an option of a row changes, and the options of all rows at once. The boxes'
// change handlers lead here; errors are trapped inside. Interface thread only.

namespace items {
struct TrackRow;
}

namespace timeline {

/// Gives the boxes of all rows their start values and pictures and binds their change handlers.
void bindOptions();

/// The person clicked an image box: its check box is turned over, which the project keeps.
void turnLink(const items::TrackRow& row);
void turnLock(const items::TrackRow& row);
void turnDisable(const items::TrackRow& row);

} // namespace timeline

namespace moduleTimeline {

/// Shows or hides the link boxes of all rows.
void EnableLinkOption(bool visible);
/// All options back to their start: enabled, unlocked, linked.
void ReInitLinkLockDisable();
/// After an addition: a row with exactly one item is enabled and linked. It is not said what was added and looks at the
/// count alone, so that it also undoes what the person chose on a row that is down to one item.
void UpdateTrackOptions();

} // namespace moduleTimeline
