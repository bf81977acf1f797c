#pragma once

// The clipboard's run of one track, put on that track. For `paste.cpp` alone; interface thread only.

#include "engine/ITWTimeline.h"

#include <vector>

namespace items {
class PutBack;
}

namespace editing {

/// Of the pieces of a run, the last one first: whether it was put on the track.
using PastedPieces = std::vector<bool>;

// Each puts the run at item seq from the position (ms) on, and moves what lies behind. All raise what the engine
// raises; putBack takes back what was done until then.

PastedPieces pasteSources(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq,
                          engine::Milliseconds position, items::PutBack& putBack);
void pasteEffects(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq, engine::Milliseconds position,
                  items::PutBack& putBack);
/// Of the pieces that `overlays` says no to, the transitions are left out. Without any it says yes to all.
void pasteTransitions(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq,
                      engine::Milliseconds position, const PastedPieces& overlays, items::PutBack& putBack);

} // namespace editing
