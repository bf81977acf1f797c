#pragma once

// Commands over whole tracks.
//
// Each is a whole command with its entry of the history (`history/command.h`), and draws what it has changed. True when
// it has taken effect; one that fails half way puts the timeline back, but for the emptying of the effects. Every
// routine traps its own errors and raises nothing. Interface thread only. `EmptyTimeline` stands in
// `history/timeline_images.h`.

namespace moduleTimeline {

/// Closes all gaps on unlocked rows; overlays with their keys.
///
///     [AA]  [B]    [CC]     ->     [AA][B][CC]
bool PackTracks();

/// Gives every selected source the length of its media, on locked rows too. What follows is not shifted; where it would
/// be overlapped, it gives way.
///
///     [A*****]   [B]     with 3 of media     [A**]      [B]
bool RestoreSize();

/// Repeats the last source of the first audio track that has a selected one, until sound ends where video ends.
///
///     Video    [AAAAAAAAAAA]               Video    [AAAAAAAAAAA]
///     Audio 1  [B***]             ->       Audio 1  [B***][B][B]
///
/// The last one is cut short; its media then end at the length that was left, counted from 0: kept, scripts count on
/// it. Without anything to repeat, or nowhere to, the entry stays out of force. Stops at the 32,767 sources that a
/// track can hold.
bool RepeateAudio();

/// Splits what lies under the main slider on every unlocked row. A source and an overlay only where both pieces are
/// longer than 10 ms; an effect anywhere within.
bool SplitTracks();

/// Removes all effects. What could not be removed stays, and the entry counts.
bool EmptyEffectTrack();
/// Removes all overlays and their keys.
bool EmptyOverlayTrack();

} // namespace moduleTimeline
