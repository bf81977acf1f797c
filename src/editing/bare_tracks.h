#pragma once

// What stays behind when a video track loses its last source.

namespace moduleTimeline {

/// Removes all effects of every video track of `state::TrackCollection` that has no sources left:
///
///     source  [      ]                    source
///     effect    [==]        ->            effect
///
/// Draws nothing. Traps its own errors. Interface thread only.
void EmptyEffectsOfBareTracks();

} // namespace moduleTimeline
