#pragma once

// One item of a track becomes two that touch.
//
//     before   [   A 0-8000   ][ B ]        after   [ A 0-3000 ][ A 3000-8000 ][ B ]
//                    ^ 3000                            seq          seq + 1
//
// Both pieces keep stream, stretch mode, name and key; neither is selected. A position at an end of the item or outside
// it changes nothing, nor does a sequence number that is not there. When a call fails half way, what was done is taken
// back and the failure raised. The history, locks and drawing are the caller's. Interface thread only.

#include "engine/types.h"

#include <cstddef>
#include <cstdint>

namespace editing {

/// Splits source seq of the track at position (timeline ms). The media times at the position are the whole expressions
/// divided by the source's rate: of a source at another speed than its own they are not the ones that a cut gives.
/// Kept: a script that splits or pastes into a stretched source must show the same pictures again. With a media length
/// of 0 or less, which shows nothing, both pieces keep all of it. Raises error 6 on overflow.
void splitSource(engine::Handle track, std::int16_t seq, engine::Milliseconds position);

/// Splits effect seq. The name is read through a buffer of nameBytes and cut to it.
void splitEffect(engine::Handle track, std::int16_t seq, engine::Milliseconds position, std::size_t nameBytes);

/// Splits overlay seq as `splitSource` does, and its transition with it; both get its key. track is the overlay track.
void splitOverlay(engine::Handle track, std::int16_t seq, engine::Milliseconds position);

} // namespace editing
