#pragma once

// The trap of the routines of `moduleEdit`.

#include "core/trap.h"

#include <functional>

namespace editing {

/// An error was trapped since a command began: the timeline may be changed half way, and the command's entry of the
/// history must lead back. Interface thread only.
inline bool hasTrapped = false;

/// True when the body came to its end.
inline bool trapped(const char* routine, const std::function<void()>& body)
{
    const bool isWhole = Trapped("moduleEdit", routine, body);
    hasTrapped = hasTrapped || !isWhole;
    return isWhole;
}

} // namespace editing
