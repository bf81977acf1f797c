#pragma once

// How much of a movie stands in it as its media have it, as the person reads it. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace exporting {

/// Frames of an AVI movie of these tracks that is so long: at the rate that is set, else at the media's own. Raises the
/// engine's failures.
std::int64_t framesOf(engine::Milliseconds length, const std::vector<engine::Handle>& tracks);

/// "1,142 of 1,500 frames copied unchanged"; empty where none are.
std::string copiedText(std::int64_t copied, std::int64_t all);

} // namespace exporting
