#pragma once

// The key of an overlay.

#include "engine/types.h"

#include <cstdint>

namespace moduleEdit {

/// Gives a transition the key by colour with this colour (0 to 255 each), in place of whatever parameters it had. False
/// when there is no such transition. All three steps are done also when one of them fails; the first failure is
/// raised then. Interface thread only.
bool ApplyTransitionKey(engine::Handle track, std::int16_t seq, std::int16_t red, std::int16_t green,
                        std::int16_t blue);

} // namespace moduleEdit
