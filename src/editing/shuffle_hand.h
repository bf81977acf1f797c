#pragma once

// The hand of `shuffle.h`, filled without taking anything off.

#include "engine/ITWTimeline.h"

#include <cstdint>

namespace ModuleTreeView {

/// Fills the hand from a source, which stays. False when there is none. Raises what the engine raises.
bool readSource(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq);

} // namespace ModuleTreeView
